/// "Rapport…": asks for a file, makes the report beside the window's thread and writes it.
#pragma once

#include <QString>

#include "shell/session.h"
#include "widgets/tache.h"

class menu;

class rapporteur {
public:
    rapporteur(const session& s, menu& m);

    /// Asks for the file; its ending says the form: .html, else PDF.
    void demande();
    bool en_cours() const { return tache_.en_cours(); }

private:
    struct ecrit {
        QString chemin;
        std::string raison; ///< why it could not be written; empty when it was
    };
    void fini(const ecrit& e);

    const session& s_;
    menu& m_;
    tache<ecrit> tache_;
};
