/// Consumption modes in a table, with a strip that shows when each is in force over a day.
#pragma once

#include <QWidget>

#include <vector>

#include "shell/session.h"
#include "widgets/tache.h"

class QLabel;
class QLabel;
class QPushButton;
class QTableWidget;
class bande_modes;

class page_modes : public QWidget {
    Q_OBJECT
public:
    explicit page_modes(session& s, QWidget* parent = nullptr);

    /// Shows the étude's modes.
    void relit();

    /// A day of steps: for each mode the parts of the day, from 0 to 1, in which it is in force.
    using journee = std::vector<std::vector<std::pair<double, double>>>;

signals:
    /// The modes have been changed: what was done, for the undo step.
    void change(const QString& libelle);

private:
    void ajoute();
    void retire();
    void remplit();
    void lit_ligne(int ligne);
    void calcule_journee();
    QWidget* choix_quand(int ligne);
    QWidget* parametres(int ligne);

    session& s_;
    std::vector<mode_conso> montres_; ///< what the table shows
    bool remplissage_ = false, jamais_ = true;
    tache<journee> tache_;
    QTableWidget* tab_modes_;
    bande_modes* bande_;
    QPushButton* cmd_retire_;
    QLabel* lab_inconnues_;
};
