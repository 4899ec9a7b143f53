/// The drawings of the report, and the run that they show.
#pragma once

#include <string>
#include <vector>

#include "analysis/carte.h"
#include "analysis/rapport.h"

/// The last turn of a budget, step by step, and along the orbit.
struct tour_rapport {
    double debut = 0;                                         ///< [days] first step
    std::vector<double> minutes;                              ///< of each step since then
    std::vector<double> generateur, demande, utile, batterie; ///< [W]
    std::vector<double> charge;                               ///< [%]
    std::vector<double> t_batterie, t_pan_min, t_pan_max;     ///< [degC]
    std::vector<bool> eclipse;
    std::string alerte; ///< what the run has to say of itself
    std::string cause;  ///< of its fault, where the settings explain it

    /// A turn of even points from the same start: in the orbit's plane, x towards the perigee, and on the
    /// ground.
    struct point {
        double x, y; ///< [km]
        point_sol sol;
        bool eclipse;
    };
    std::vector<point> orbite;
    double soleil_x = 0,
           soleil_y = 0; ///< direction of the Sun along the plane (shorter the higher it stands)
};

/// The same steps as the budget's last turn (of none: nothing).
tour_rapport dernier_tour(etude e, const bilan& b, const reglages_rapport& r);

bloc_figure figure_orbite(const etude& e, const tour_rapport& t);
bloc_figure figure_carte(const etude& e, const tour_rapport& t, const std::string& dossier_donnees);
bloc_figure figure_puissances(const tour_rapport& t);
bloc_figure figure_charge(const tour_rapport& t, const criteres_valeurs& c);
bloc_figure figure_temperatures(const tour_rapport& t, const criteres_valeurs& c);
