/// The frame "Contrôle simulation": period, step and real-time mode of every simulation.
#pragma once

#include <QGroupBox>
#include <QList>

#include "shell/session.h"

class QCheckBox;
class QComboBox;
class QLabel;
class boite_date;

class fra_simulation : public QGroupBox {
    Q_OBJECT
public:
    explicit fra_simulation(session& s, QWidget* parent = nullptr);

    /// Shows the session's period and step, as after opening a project. A date outside 1901..2099 stays in
    /// the session and is shown at the picker's limit; a step that the list does not restore leaves the list.
    void montre();
    /// All controls in one row, where the tools leave no room beside them.
    void en_une_rangee(bool oui);
    /// Shows the simulated time of a second, at the pace of the complete simulation.
    void montre_echelle();
    /// Takes a date that is still being typed.
    void valide_saisie();

signals:
    /// Period, step or real-time mode have changed.
    void change();

private:
    void cmb_pas_change();
    void chk_RealTime_change(bool coche);
    void date_change(bool debut, double jour);
    void montre_dates();

    session& s_;
    QCheckBox* chk_RealTime_;
    QComboBox* cmb_pas_;
    boite_date* txt_date_debut_;
    boite_date* txt_date_fin_;
    QLabel* lab_scale_;
    QList<QList<QWidget*>> rangees_; ///< by row and column
    bool une_rangee_ = false;
};
