/// The flow drawing of the power system: panels, battery, bus, payload and shunt, with arrows whose width
/// follows the power and whose value stands on them.
#pragma once

#include <QWidget>

#include "power/power.h"

class QGridLayout;
class QLabel;
class fleche;
class icone_batterie;
class image_eclipse;

/// What the payload lacks in the record's working state ("non alimentée"); empty when it is fed.
QString mot_alimentation(const power_record& p);

class synoptique : public QWidget {
    Q_OBJECT
public:
    explicit synoptique(QWidget* parent = nullptr);

    /// Shows the record's working state.
    void affiche(const power_record& p);
    /// The widths start again from the powers of the settings.
    void reinitialise(const power_record& p);
    /// The flows move on by a part of their pattern.
    void avance(double pas);
    /// The battery picture's next frame.
    void avance_batterie();

private:
    void place_energie(QGridLayout* grille);
    void place_consommation(QGridLayout* grille);

    QLabel *lab_pgs_, *lab_pbat_, *lab_pava_, *lab_puse_, *lab_exc_;
    QLabel *lab_pgs_diss_, *lab_pbat_diss_, *lab_diss_charge_, *lab_disscu_;
    QLabel *lab_eclairement_, *lab_alimentation_;
    fleche *fl_gs_, *fl_charge_, *fl_decharge_, *fl_utile_, *fl_shunt_;
    icone_batterie* batterie_;
    image_eclipse* img_pan_eclipse_;
    double reference_ = 1; ///< [W] power of a full-width arrow: the largest seen in the run
    double phase_ = 0;
};
