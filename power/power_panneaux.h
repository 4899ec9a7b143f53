/// Where each surface points, the fluxes that it receives, and the drive of an external panel.
///
/// A normal is given by its elevation a from the body's xy plane and its azimuth b, in radians; an external
/// panel has b = pi. All fluxes in W/m2, at the geometry left by `environment_update`.
#pragma once

#include "power/power.h"

/// Angle between a normal and the Sun, and the Earth's centre [rad].
double incidence_sun(const power_record& p, double a, double b);
double incidence_earth(const power_record& p, double a, double b);

/// How a surface stands to the Sun and the Earth: the same numbers as above, for those that need them several
/// times in a step.
struct incidence {
    double soleil; ///< cosine of the angle to the Sun, before `arccos_v`
    double terre;  ///< [rad] `incidence_earth`
};
/// What an azimuth alone gives: cosines of its distances to those of the Sun and of the Earth's centre.
struct azimut {
    double soleil, terre;
};
azimut azimut_de(const power_record& p, double b);
/// Incidence of a normal from sine and cosine of its elevation.
incidence incidence_de(const power_record& p, const sinus_cosinus& elevation, const azimut& az);

/// The surfaces of a body that carries its cells: lateral faces or strips, then the two lids.
enum class forme_corps { cylindre, prisme };
struct incidences_corps {
    incidences_corps(const power_record& p, forme_corps c);
    std::array<incidence, nb_bandes> lateraux;
    incidence dessus, dessous;
};

/// Effective cosine of a cell at the incidence theta [rad]: the cosine up to inc_div, a parabola of equal
/// value and slope to zero at inc_max.
double cell_cosine(const power_record& p, double theta);

/// That law, its coefficients computed once for several surfaces.
class loi_cellule {
public:
    /// For so many surfaces of one date.
    explicit loi_cellule(const power_record& p, int surfaces = 1);
    double cosinus(double theta) const;
    /// Derivative of the effective cosine with respect to a parameter, u being that of the plain cosine.
    double pente(double theta, double u) const;
    /// `cell_flux` of a normal.
    double flux(const power_record& p, double a, double b) const;
    double flux(const power_record& p, const incidence& i) const;

private:
    double d, m;                ///< [rad] inc_div, inc_max
    double A = 0, B = 0, C = 0; ///< parabola between the two
    double rien = -2;           ///< a cosine below this is an angle beyond both: nothing
};

/// Flux seen by the cells: Sun outside of eclipse plus albedo as a point source at nadir.
double cell_flux(const power_record& p, double a, double b);
/// Solar flux with the plain cosine, 0 in eclipse.
double solar_flux_direct(const power_record& p, double a, double b);
double solar_flux_direct(const power_record& p, const incidence& i);
double albedo_flux(power_record& p, const orbit_state& o, double a, double b);
double solar_albedo_flux(power_record& p, const orbit_state& o, double a, double b);
double earth_ir_flux(power_record& p, const orbit_state& o, double a, double b);
/// View factor of the Earth from a surface whose normal stands `deg` degrees from nadir; refreshes
/// earth_half.
double earth_view_factor(power_record& p, const orbit_state& o, double deg);

/// The view factor for every surface of one date: what depends on the satellite's distance alone, computed
/// once. An empirical fit, linear then quadratic in the angle, logarithmic in the altitude, for low orbits:
/// from 300 to 1500 km it stays within 3 % of the exact factor of a plate that faces the Earth and within 7 %
/// of that of a plate on edge; the two branches differ by 1 % at 90 degrees, and a surface turned away still
/// gets up to 4.5 % above 500 km, where the exact factor is 0.
class vue_terre {
public:
    /// A satellite inside the Earth is a numerical fault.
    explicit vue_terre(const orbit_state& o);
    /// Refreshes earth_half too, as `earth_view_factor` does.
    vue_terre(power_record& p, const orbit_state& o);
    double facteur(double deg) const;
    /// Factor of a surface.
    double facteur(const power_record& p, double a, double b) const;
    double facteur(const incidence& i) const { return facteur(radians_vers_degres(i.terre)); }

private:
    double rho, F0, L; ///< half-angle of the Earth [rad]; what the distance gives to each branch
};

/// Angle wanted by an external panel, in closed form, into pan_target (1000.0: none).
void panel_target_update(power_record& p, const orbit_state& o);
/// The same with the view factor of the date and the azimuth of the panels.
void panel_target_update(power_record& p, const vue_terre& vue, const azimut& az);
/// The same refined by secant on the cell's own law; changes no field. The angle is a stationary point, which
/// may be the lesser of two maxima where albedo and Sun stand far apart.
double panel_target_refined(const power_record& p);
/// The panel's servo over a step [s].
void panel_drive_update(power_record& p, int32_t step);
