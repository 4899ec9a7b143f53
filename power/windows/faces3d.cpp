#include "power/windows/faces3d.h"

#include <algorithm>
#include <cmath>

#include "orbit/orb_trajecto.h"
#include "power/power_panneaux.h"

namespace {

constexpr double flux_max = 1600; ///< [W/m2] Sun at perihelion, with some of the Earth's light

/// The elements that the body in use has, each with its value.
template <class F>
void par_face(const power_record& p, valeurs_faces& v, F valeur) {
    if (p.opt_panel_ext == vrai) {
        for (int i = 0; i < 6; ++i) v.caisse[std::size_t(i)] = valeur(2 + i);
        v.panneau = valeur(0);
        v.dos_panneau = valeur(1);
        return;
    }
    const int cotes = p.opt_faces == 2 ? nb_bandes : p.nb_faces;
    for (int i = 0; i < cotes; ++i) v.cotes[std::size_t(i)] = valeur(i);
    v.dessus = valeur(-1);
    v.dessous = valeur(-2);
}

} // namespace

valeurs_faces faces_par_flux(const power_record& p, const orbit_state& o) {
    valeurs_faces v;
    v.max = flux_max;
    if (!(vec_norme(o.sat_pos) > rayon_terre + 1)) return v;
    const vue_terre terre(o);
    const auto flux = [&](double elevation, double azimut) {
        const double f = solar_flux_direct(p, elevation, azimut) +
                         terre.facteur(p, elevation, azimut) * (p.flux_alb + p.flux_ir);
        return std::isfinite(f) ? f : 0;
    };
    par_face(p, v, [&](int i) {
        if (i == -1) return flux(demi_pi, 0);
        if (i == -2) return flux(-demi_pi, 0);
        if (p.opt_panel_ext != vrai)
            return p.opt_faces == 2 ? flux(0, (i * 10 + 5) * rad_par_degre)
                                    : flux(p.face_elev[std::size_t(i)], p.face_azim[std::size_t(i)]);
        if (i == 0) return flux(p.pan_angle, pi);
        if (i == 1) return flux(-p.pan_angle, 0);
        constexpr double directions[6][2] = {{0, 0},        {0, pi},      {0, demi_pi},
                                             {0, -demi_pi}, {demi_pi, 0}, {-demi_pi, 0}};
        return flux(directions[i - 2][0], directions[i - 2][1]);
    });
    return v;
}

valeurs_faces faces_par_temperature(const power_record& p) {
    valeurs_faces v;
    double min = 1e9, max = -1e9;
    par_face(p, v, [&](int i) {
        const int base = p.opt_faces == 2 ? nb_bandes : 8;
        const int noeud = i == -1 ? base : i == -2 ? base + 1 : p.opt_panel_ext == vrai && i == 1 ? 0 : i;
        const double t = p.node_t[std::size_t(noeud)] - zero_celsius;
        if (std::isfinite(t)) min = std::min(min, t), max = std::max(max, t);
        return std::isfinite(t) ? t : 0;
    });
    if (min > max) min = max = 0;
    v.min = 20 * std::floor(min / 20);
    v.max = std::max(v.min + 40, 20 * std::ceil(max / 20));
    return v;
}

std::array<double, 3> couleur_echelle(double part) {
    constexpr std::array<double, 3> reperes[] = {
        {.11, .09, .30}, {.44, .12, .46}, {.78, .24, .36}, {.96, .55, .20}, {.99, .94, .62}};
    const double x = std::clamp(std::isfinite(part) ? part : 0.0, 0.0, 1.0) * 4;
    const int i = std::min(3, int(x));
    std::array<double, 3> c;
    for (std::size_t k = 0; k < 3; ++k) c[k] = reperes[i][k] + (x - i) * (reperes[i + 1][k] - reperes[i][k]);
    return c;
}
