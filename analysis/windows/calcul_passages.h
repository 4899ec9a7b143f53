/// Passes computed beside the window's thread, on copies: a new request ends the one before.
#pragma once

#include <QObject>

#include <thread>

#include "analysis/passages.h"

class calcul_passages : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void demande(const record_orbite& o, const options_modele& modele, std::vector<station> stations,
                 double debut, double fin);
    bool en_cours() const { return en_cours_; }
    const resultat_passages& resultat() const { return resultat_; }
    const std::vector<station>& stations() const { return stations_; } ///< of the result

signals:
    void pret();

private:
    resultat_passages resultat_;
    std::vector<station> stations_;
    unsigned tour_ = 0;
    bool en_cours_ = false;
    std::jthread fil_; ///< last: it ends before the rest goes
};
