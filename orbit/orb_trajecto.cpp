#include "orbit/orb_trajecto.h"

#include "orbit/soleil.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

simulation_period periode_par_defaut(const record_orbite& o) {
    simulation_period p;
    p.j_debut = date_epoque(o.orb_an, o.orb_jour - 1.0);
    p.j_fin = p.j_debut + 1.0 / o.orb_moy_mvt;
    p.j_courant = p.j_debut;
    return p;
}

double noeud_1950(const record_orbite& o) {
    const double d = o.orb_jour - 1.0;
    const double om = o.orb_ascension - (((o.orb_an - 1950) * 365.25 + d) * 12.81161661111) / 365250.0;
    return om < 0 ? om + 360.0 : om;
}

void orb_satellite(double j, orbit_state& o) {
    // A circular or equatorial orbit keeps a defined perigee and node.
    const record_orbite& el = o.orbite;
    const double i = el.orb_inclinaison == 0 ? 5e-06 : el.orb_inclinaison;
    const double e = el.orb_excentricite == 0 ? 1e-07 : el.orb_excentricite;
    const double d = el.orb_jour - 1.0;
    orb_kepler(j, el.orb_demi, e, i, el.orb_argument, noeud_1950(el), el.orb_anomalie, d, el.orb_an, o);
}

void orb_position(double j, orbit_state& o) {
    o.soleil_pos = soleil_position(j);
    orb_satellite(j, o);

    const double r2 = vec_scalaire(o.sat_pos, o.sat_pos);
    const double r = std::sqrt(r2);
    o.vec_nadir = {-o.sat_pos[0] / r, -o.sat_pos[1] / r, -o.sat_pos[2] / r};
    const vec3 vers_soleil = vec_difference(o.soleil_pos, o.sat_pos);
    const double distance = vec_norme(vers_soleil);
    o.vec_soleil = {vers_soleil[0] / distance, vers_soleil[1] / distance, vers_soleil[2] / distance};

    // In shadow when the Sun stands within the apparent disc of the Earth.
    const double c = vec_scalaire(o.vec_nadir, o.vec_soleil);
    const double k = std::sqrt(r2 - rayon_ombre * rayon_ombre) / r;
    o.eclipse = k < c ? vrai : faux;
}

void orb_kepler(double j, double a, double e, double i, double w, double om, double m0, double d, int an,
                orbit_state& o) {
    i *= rad_par_degre;
    w *= rad_par_degre;
    om *= rad_par_degre;
    m0 *= rad_par_degre;
    const double t0 = date_epoque(an, d);
    const double n = std::sqrt(mu_terre / a) / a;
    const double m = modulo(n * (j - t0) * secondes_par_jour + m0, deux_pi);
    o.anomalie_moy = m;
    orb_cartesien(a, e, i, w, om, m, o);
}

namespace {

/// The perifocal axes, computed again only where the elements have changed.
const axes_orbite& axes_perifocaux(axes_orbite& axes, double w, double om, double i) {
    if (axes.w == w && axes.om == om && axes.i == i) return axes;
    const auto [sw, cw] = sincos_de(w);
    const auto [so, co] = sincos_de(om);
    const auto [si, ci] = sincos_de(i);
    axes.P = {cw * co - so * sw * ci, cw * so + co * sw * ci, si * sw};
    axes.Q = {-sw * co - so * cw * ci, -sw * so + co * cw * ci, cw * si};
    axes.w = w, axes.om = om, axes.i = i;
    return axes;
}

} // namespace

double orb_cartesien(double a, double e, double i, double w, double om, double m, orbit_state& o) {
    m = m - 2 * std::floor(m / deux_pi) * pi;

    double E = m, sin_E = std::sin(m), cos_E = std::cos(m);
    for (int passe = 0;; ++passe) {
        const double avant = E;
        E = E - (E - e * sin_E - m) / (1 - e * cos_E);
        if (const double ecart = E - avant; std::fabs(ecart) < 1e-6) { // the cube of the change is nothing
            const double s = sin_E, moitie = ecart * ecart / 2;
            sin_E += ecart * cos_E - moitie * s;
            cos_E -= ecart * s + moitie * cos_E;
        } else {
            sin_E = std::sin(E);
            cos_E = std::cos(E);
        }
        if (std::fabs(E - avant) < 1e-12) break;
        if (!std::isfinite(E) || passe == passes_max) {
            leve_faute();
            break;
        }
    }

    const axes_orbite& axes = axes_perifocaux(o.axes, w, om, i);
    const double s = std::sqrt(1 - e * e);
    const double n = std::sqrt(mu_terre / (a * a * a));
    const double E_point = n / (1 - e * cos_E);
    for (int k = 0; k < 3; ++k) {
        o.sat_pos[k] = a * ((cos_E - e) * axes.P[k] + s * sin_E * axes.Q[k]);
        o.sat_vit[k] = a * E_point * (s * cos_E * axes.Q[k] - sin_E * axes.P[k]);
    }
    return E;
}

double kepler_inverse(double m, double e) {
    if (e < 1e-11) return m;
    const double S = std::sin(m);
    if (S < 1e-11) return m;
    const double C = std::cos(m);
    const double D = std::sqrt(e * e + 1 - 2 * e * C);
    const double t = S * e / D;
    double E = t + m - (t * t * t * t * C / (6 * S)) * (1 - e * e);
    for (int passe = 0; passe < 10; ++passe) {
        const double suivant = E + (e * std::sin(E) + m - E) / (1 - e * std::cos(E));
        if (std::fabs(suivant - E) < 1e-11) return suivant;
        E = suivant;
    }
    return E;
}

double anomalie_excentrique(double m, double e) {
    m = std::remainder(m, deux_pi);
    // From the apsis on the body's side Newton's steps go down to the solution without turning.
    double E = e < 0.5 ? m : std::copysign(pi, m);
    for (int passe = 0; passe < 60; ++passe) {
        const double pas = (E - e * std::sin(E) - m) / (1 - e * std::cos(E));
        E -= pas;
        if (std::fabs(pas) < 1e-12) break;
    }
    return E;
}

double altitude_perigee(const record_orbite& o) {
    return (1 - o.orb_excentricite) * o.orb_demi - rayon_terre;
}
double altitude_apogee(const record_orbite& o) { return (1 + o.orb_excentricite) * o.orb_demi - rayon_terre; }

double moy_mvt_de_demi(double demi) {
    return std::sqrt(mu_terre / std::exp(3 * std::log(demi))) * secondes_par_jour / 2 / pi;
}

double demi_de_moy_mvt(double moy_mvt) {
    const double n = 2 * moy_mvt * pi / secondes_par_jour;
    return std::exp(std::log(mu_terre / n / n) / 3);
}
