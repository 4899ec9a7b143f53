/// What the main window keeps for the étude: its history, the copy for a crash, the step in progress.
#pragma once

#include <optional>
#include <string>

#include <QString>
#include <QThreadPool>
#include <QTimer>

#include "shell/etude_historique.h"
#include "shell/etude_recuperation.h"

class menu;

struct atelier_etude {
    explicit atelier_etude(session& s);

    etude_historique historique;
    etude_recuperation recuperation;
    QTimer copie;                     ///< until the recovery copy is written
    QThreadPool fil;                  ///< writes it
    bool note_demandee = false;       ///< an edit will be noted once the events run
    std::optional<std::string> etape; ///< label of the opening in progress
};

/// An opening, with all that it brings along, is one step. The outermost one gives the label.
class etape_etude {
public:
    etape_etude(menu& m, const QString& libelle);
    ~etape_etude();
    etape_etude(const etape_etude&) = delete;
    etape_etude& operator=(const etape_etude&) = delete;

private:
    menu& m_;
    bool premiere_;
};
