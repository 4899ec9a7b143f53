/// The dashboard under the view: battery gauges, state word, timers, date, and the strip of the last orbit.
#pragma once

#include <QPair>
#include <QVector>
#include <QWidget>

#include "shell/session.h"

class QGridLayout;
class QLabel;
class graphe;
class jauge;

class tableau_bord : public QWidget {
    Q_OBJECT
public:
    explicit tableau_bord(QWidget* parent = nullptr);

    /// Shows the record and the date, and adds the step to the strip.
    void affiche(const session& s);
    /// A run begins again: scales from the settings, an empty strip.
    void reinitialise(const session& s);
    /// The two timers at zero.
    void zero_compteurs();
    /// The word of the battery's state.
    void montre_mot(int etat);
    graphe* bande() const { return bande_; }
    /// The legend that folds must not take room from the view above.
    bool hasHeightForWidth() const override { return false; }

protected:
    void changeEvent(QEvent* e) override; ///< the legend follows the palette

private:
    void montre_legende();
    QWidget* zone_etat();
    void affiche_jauges(const power_record& p);
    void ajoute_a_la_bande(const session& s);

    jauge *voltmetre_, *amperemetre_, *chargemetre_;
    QLabel *lab_state_, *lab_chtime_, *lab_distime_, *lab_cdate_, *lab_chour_;
    QLabel* legende_;
    graphe* bande_;
    int c_generateur_ = 0, c_utile_ = 0, c_charge_ = 0;
    QVector<QPair<double, double>> eclipses_;
    bool en_eclipse_ = false;
    bool une_orbite_ = true;          ///< the strip holds one, not a number of steps
    double p_max_ = 1;                ///< [W] top of the strip: the largest power of the run
    double depart_ = 0, dernier_ = 0; ///< [days] dates of the run's first and last points
};
