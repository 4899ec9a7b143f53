#include "power/power_panneaux.h"

#include <algorithm>

#include "orbit/orb_trajecto.h"

namespace {

double cosinus_incidence(double z, double sxy, double az, double a, double b) {
    return std::sin(a) * z + sxy * std::cos(a) * std::cos(az - b);
}

/// Derivative of `cell_cosine` with respect to the elevation a, at b = pi.
double derivee_cellule(const loi_cellule& loi, double z, double sxy, double az, double a) {
    const auto [s, c] = sincos_de(a);
    const double cos_az = std::cos(az - pi);
    const double theta = arccos_v(s * z + sxy * c * cos_az);
    const double u = c * z - sxy * s * cos_az;
    return loi.pente(theta, u);
}

} // namespace

double incidence_sun(const power_record& p, double a, double b) {
    return arccos_v(cosinus_incidence(p.sun_z, p.sun_sxy, p.sun_az, a, b));
}

double incidence_earth(const power_record& p, double a, double b) {
    return arccos_v(cosinus_incidence(p.nad_z, p.nad_sxy, p.nad_az, a, b));
}

azimut azimut_de(const power_record& p, double b) { return {std::cos(p.sun_az - b), std::cos(p.nad_az - b)}; }

incidence incidence_de(const power_record& p, const sinus_cosinus& el, const azimut& az) {
    return {el.s * p.sun_z + p.sun_sxy * el.c * az.soleil,
            arccos_v(el.s * p.nad_z + p.nad_sxy * el.c * az.terre)};
}

incidences_corps::incidences_corps(const power_record& p, forme_corps c) {
    constexpr sinus_cosinus equateur = {0, 1};
    static const sinus_cosinus haut = sincos_de(pi / 2), bas = sincos_de(-pi / 2);
    if (c == forme_corps::cylindre)
        for (int i = 0; i < nb_bandes; ++i)
            lateraux[i] = incidence_de(p, equateur, azimut_de(p, (i * 10 + 5) * rad_par_degre));
    else
        for (int i = 0; i < p.nb_faces; ++i) {
            const double a = p.face_elev[i];
            lateraux[i] = incidence_de(p, a == 0 ? equateur : sincos_de(a), azimut_de(p, p.face_azim[i]));
        }
    const azimut nord = azimut_de(p, 0);
    dessus = incidence_de(p, haut, nord);
    dessous = incidence_de(p, bas, nord);
}

loi_cellule::loi_cellule(const power_record& p, int surfaces)
    : d(static_cast<double>(p.inc_div) * rad_par_degre), m(static_cast<double>(p.inc_max) * rad_par_degre) {
    // The margin is far above the errors of the arc function.
    if (const double fin = std::max(d, m); surfaces > 1 && fin >= 0 && fin < pi) rien = std::cos(fin) - 1e-4;
    if (!(d < m)) return; // nothing between the two angles
    const auto [s, c] = sincos_de(d);
    A = (s * (m - d) - c) / ((m - d) * (m - d));
    B = -s - 2 * A * d;
    C = -A * m * m - B * m;
}

double loi_cellule::cosinus(double theta) const {
    double c = 0;
    if (!(theta > d))
        c = std::cos(theta);
    else if (theta < m)
        c = A * theta * theta + B * theta + C;
    return c < 0 ? 0 : c;
}

double loi_cellule::pente(double theta, double u) const {
    if (theta < d) return u;
    if (!(theta < m)) return 0;
    return -(2 * A * theta + B) * u / std::sin(theta);
}

double loi_cellule::flux(const power_record& p, double a, double b) const {
    return flux(p, incidence_de(p, sincos_de(a), azimut_de(p, b)));
}

double loi_cellule::flux(const power_record& p, const incidence& i) const {
    double solaire = 0;
    if (p.eclipse != vrai && !(i.soleil < rien)) {
        const double g = cosinus(arccos_v(i.soleil));
        if (g > 0) solaire = static_cast<double>(p.flux_sun) * g;
    }
    const double h = cosinus(i.terre);
    return solaire + (h > 0 ? p.flux_alb * h : 0);
}

double cell_cosine(const power_record& p, double theta) { return loi_cellule(p).cosinus(theta); }

double cell_flux(const power_record& p, double a, double b) { return loi_cellule(p).flux(p, a, b); }

double solar_flux_direct(const power_record& p, double a, double b) {
    return solar_flux_direct(p, {cosinus_incidence(p.sun_z, p.sun_sxy, p.sun_az, a, b), 0});
}

double solar_flux_direct(const power_record& p, const incidence& i) {
    if (p.eclipse == vrai) return 0;
    // The cosine of `arccos_v(x)` without the angle, margin of the arc function included.
    static const double marge = std::sqrt(1.0000000001);
    const double x = i.soleil, c = std::fabs(x) == 1 ? x : x / marge;
    return c > 0 ? static_cast<double>(p.flux_sun) * c : 0;
}

vue_terre::vue_terre(const orbit_state& o) {
    const double r = vec_norme(o.sat_pos);
    rho = arcsin_v(rayon_terre / r);
    const double s = std::sin(rho);
    F0 = (0.664 + 0.521 * rho - 0.203 * (rho * rho)) * s * s;
    L = std::log(r - rayon_terre);
}

vue_terre::vue_terre(power_record& p, const orbit_state& o) : vue_terre(o) { p.earth_half = rho; }

double vue_terre::facteur(double deg) const {
    double F;
    // The lateral faces stand at 90 degrees to within rounding: the margin keeps them on one branch.
    if (deg < 89.99999)
        F = F0 * ((1 - 0.0031 * deg) - L * deg * (0.0668 / 90));
    else
        F = F0 * ((2.395 - 0.02345 * deg + 5.367e-05 * (deg * deg)) -
                  L * (0.1091 - 2.833e-06 * (deg * deg) - 0.000215 * deg));
    return F < 0.001 ? 0 : F;
}

double vue_terre::facteur(const power_record& p, double a, double b) const {
    return facteur(radians_vers_degres(incidence_earth(p, a, b)));
}

double earth_view_factor(power_record& p, const orbit_state& o, double deg) {
    return vue_terre(p, o).facteur(deg);
}

double albedo_flux(power_record& p, const orbit_state& o, double a, double b) {
    return vue_terre(p, o).facteur(p, a, b) * p.flux_alb;
}

double earth_ir_flux(power_record& p, const orbit_state& o, double a, double b) {
    return vue_terre(p, o).facteur(p, a, b) * p.flux_ir;
}

double solar_albedo_flux(power_record& p, const orbit_state& o, double a, double b) {
    return solar_flux_direct(p, a, b) + albedo_flux(p, o, a, b);
}

void panel_target_update(power_record& p, const orbit_state& o) {
    panel_target_update(p, vue_terre(p, o), azimut_de(p, pi));
}

void panel_target_update(power_record& p, const vue_terre& vue, const azimut& az) {
    const double c1 = az.soleil;
    const bool avec_albedo = p.flux_alb > 0;
    if (avec_albedo) {
        const double k = p.eclipse == vrai ? 0 : static_cast<double>(p.flux_sun) / p.flux_alb;
        const double c2 = az.terre;
        p.pan_target = std::atan((p.sun_z * k + p.nad_z) / (p.sun_sxy * k * c1 + p.nad_sxy * c2));
    } else if (p.flux_alb == 0) {
        if (std::fabs(p.sun_z) < 0.001 && std::fabs(p.sun_az - pi) < 0.001) {
            p.pan_target = sans_cible;
            return;
        }
        p.pan_target = std::fabs(p.sun_sxy) < 0.001 ? demi_pi : std::atan(p.sun_z / (p.sun_sxy * c1));
    } else {
        return;
    }

    // The arctangent leaves a half-turn open: the side that receives more wins.
    const auto flux = [&](double a) {
        const incidence i = incidence_de(p, sincos_de(a), az);
        return solar_flux_direct(p, i) + vue.facteur(i) * p.flux_alb;
    };
    if (flux(p.pan_target + pi) > flux(p.pan_target)) p.pan_target -= signe(p.pan_target) * pi;

    if (!avec_albedo && (p.eclipse == vrai || cell_flux(p, p.pan_target, pi) == 0)) p.pan_target = sans_cible;
}

double panel_target_refined(const power_record& p) {
    const double depart = p.pan_target;
    if (depart == sans_cible || p.flux_sun == 0 || p.flux_alb == 0) return depart;
    const loi_cellule loi(p);
    const auto D = [&](double a) {
        return static_cast<double>(p.flux_sun) * derivee_cellule(loi, p.sun_z, p.sun_sxy, p.sun_az, a) +
               p.flux_alb * derivee_cellule(loi, p.nad_z, p.nad_sxy, p.nad_az, a);
    };
    constexpr double tolerance = 1e-5;
    double a0 = depart, d0 = D(a0);
    if (!(std::fabs(d0) > tolerance)) return a0;
    double a1 = a0 + 0.1, d1 = D(a1);
    for (int passe = 0; passe < 100; ++passe) {
        if (!(std::fabs(d1) > tolerance)) return a1;
        if (d1 == d0) break;
        const double a2 = a1 - (a1 - a0) * d1 / (d1 - d0);
        a0 = a1;
        d0 = d1;
        a1 = a2;
        d1 = D(a1);
    }
    return depart;
}

void panel_drive_update(power_record& p, int32_t step) {
    double delta = p.pan_target - p.pan_angle;
    if (p.pan_target == sans_cible || p.pan_fixed == vrai || delta == 0) return;
    const double tolerance = static_cast<double>(p.pan_tolerance) * rad_par_degre;

    int64_t reste; // seconds of this step left for the move
    if (std::fabs(delta) > tolerance && p.pan_moving == faux && p.pan_wait < 0) {
        p.pan_wait = p.pan_delay;
        reste = int64_t{step} - p.pan_wait;
    } else {
        reste = int64_t{step} - p.pan_wait;
        p.pan_wait = p.pan_wait >= 0 ? p.pan_wait - step : -1;
    }
    const double n = static_cast<double>(std::clamp<int64_t>(reste, 0, step));

    double sens = signe(delta);
    if (std::fabs(delta) > pi) {
        sens = -sens;
        // Meant as it stands: it enlarges |delta|, while the sense already points the short way.
        delta -= deux_pi * sens;
    }
    if ((!(std::fabs(delta) > tolerance) || n < 1) && p.pan_moving != vrai) return;

    const double course = static_cast<double>(p.pan_speed) * rad_par_degre * n;
    if (course < std::fabs(delta)) {
        p.pan_moving = vrai;
        p.pan_angle += course * sens;
    } else {
        p.pan_angle = p.pan_target;
        p.pan_moving = faux;
    }
    if (std::fabs(p.pan_angle) > pi) p.pan_angle -= deux_pi * signe(p.pan_angle);
}
