/// Consumption modes in a table, with a strip that shows when each is in force over a day.
#pragma once

#include <QWidget>

#include <functional>
#include <vector>

#include "analysis/windows/bande_modes.h"
#include "shell/session.h"
#include "widgets/tache.h"

class QLabel;
class QPushButton;
class QTableWidget;

class page_modes : public QWidget {
    Q_OBJECT
public:
    explicit page_modes(session& s, QWidget* parent = nullptr);

    /// Shows the étude's modes.
    void relit();

signals:
    /// The modes have been changed: what was done, for the undo step.
    void change(const QString& libelle);

private:
    void ajoute();
    void retire();
    void remplit();
    void valide_saisie();
    void edite(int ligne, const char* quoi, const std::function<void(mode_conso&)>& change_mode);
    void calcule_journee();
    QWidget* choix_quand(int ligne);
    QWidget* parametres(int ligne);
    QWidget* choix_station(int ligne);
    QWidget* boite_orbites(int ligne);

    session& s_;
    std::vector<mode_conso> montres_; ///< what the table shows
    bool remplissage_ = false, jamais_ = true;
    tache<journee_de_modes> tache_;
    QTableWidget* tab_modes_;
    bande_modes* bande_;
    QPushButton* cmd_retire_;
    QLabel* lab_inconnues_;
};
