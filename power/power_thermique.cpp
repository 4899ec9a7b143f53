#include "power/power_thermique.h"

#include "power/power_panneaux.h"
#include "power/power_thermique_noyau.h"

namespace {

constexpr double sigma = 5.67e-08; ///< [W/m2/K4] Stefan
constexpr double dix_degres = 0.17453292519943278;
constexpr sinus_cosinus equateur = {0, 1};
const sinus_cosinus nord = sincos_de(pi / 2), sud = sincos_de(-pi / 2);

/// Flux absorbed by a surface: Sun and albedo on one side, the Earth's infrared on the other [W/m2].
struct flux_surface {
    double sa, ir;
    flux_surface(const power_record& p, const vue_terre& vue, const incidence& i) {
        const double f = vue.facteur(i);
        sa = solar_flux_direct(p, i) + f * p.flux_alb;
        ir = f * p.flux_ir;
    }
    double absorbe(double alpha, double eps) const { return alpha * sa + eps * ir; }
};

double alpha_face(const power_record& p, float t, int j) {
    return alpha(p, t, p.fac_alpha0[j], p.fac_alpha_lim[j], p.fac_t99[j]);
}

} // namespace

double alpha(const power_record& p, float t, double a0, double alim, double t99) {
    if (a0 == alim) return alim;
    const double q = 1 - a0 / alim;
    const double rythme = -std::log(q * 100) / t99;
    return alim * (1 - q * std::exp(rythme * (static_cast<double>(t) - p.date_cell) * 24));
}

azimuts_lateraux::azimuts_lateraux(const power_record& p) {
    for (int k = 0; k < 4; ++k) quarts[k] = azimut_de(p, k * pi / 2);
}

void thermal_ext_panels(power_record& p, const orbit_state& o, double date, int32_t pas) {
    const vue_terre vue(p, o);
    const azimuts_lateraux az(p);
    thermal_ext_panels(p, vue, az, incidence_de(p, sincos_de(p.pan_angle), az.panneaux()), date, pas);
}

void thermal_cylinder(power_record& p, const orbit_state& o, double date, int32_t pas) {
    const vue_terre vue(p, o);
    thermal_cylinder(p, vue, incidences_corps(p, forme_corps::cylindre), date, pas);
}

void thermal_faces(power_record& p, const orbit_state& o, double date, int32_t pas) {
    const vue_terre vue(p, o);
    thermal_faces(p, vue, incidences_corps(p, forme_corps::prisme), date, pas);
}

void thermal_ext_panels(power_record& p, const vue_terre& vue, const azimuts_lateraux& az,
                        const incidence& panneau, double date, int32_t pas) {
    const auto t = static_cast<float>(date);
    std::array<double, 8> alphas;
    for (int i = 0; i < 8; ++i) {
        const bool comme_avant = i > 0 && p.ext_alpha0[i] == p.ext_alpha0[i - 1] &&
                                 p.ext_alpha_lim[i] == p.ext_alpha_lim[i - 1] &&
                                 p.ext_t99[i] == p.ext_t99[i - 1];
        alphas[i] =
            comme_avant ? alphas[i - 1] : alpha(p, t, p.ext_alpha0[i], p.ext_alpha_lim[i], p.ext_t99[i]);
    }

    modele_surfaces m; // place 0 the panel, 1 to 6 the faces
    const auto surface = [&](int i, const incidence& vers) {
        return flux_surface(p, vue, vers).absorbe(alphas[i], p.ext_eps[i]);
    };
    const incidence arriere = incidence_de(p, sincos_de(p.pan_angle + pi), az.panneaux());
    m.Q[0] = surface(0, panneau) + surface(1, arriere) - p.pan_power[0] / static_cast<double>(p.ext_area);
    m.E[0] = (static_cast<double>(p.ext_eps[0]) + p.ext_eps[1]) * sigma;
    m.inv[0] = 1 / (static_cast<double>(p.ext_mass[0]) * p.ext_cp[0]);
    m.T[0] = p.node_t[0];
    for (int i = 2; i < 8; ++i) {
        const int n = i - 1, k = i - 2;
        const sinus_cosinus& elevation = i < 6 ? equateur : i == 6 ? nord : sud;
        m.Q[n] = surface(i, incidence_de(p, elevation, az.quarts[i < 6 ? k : 0]));
        m.E[n] = p.ext_eps[i] * sigma;
        m.C[n] = p.ext_cond[k];
        m.R[n] = p.ext_rad[k] * sigma;
        m.W[n] = p.body_face_area;
        m.inv[n] = 1 / (static_cast<double>(p.ext_cp[i]) * p.ext_mass[i]);
        m.T[n] = p.node_t[i];
    }
    m.T_int = p.node_t[8];
    m.chaleur = p.p_heat;
    m.inv_int = 1 / (static_cast<double>(p.ext_cp[8]) * p.ext_mass[8]);

    integre_surfaces(m, pas);

    p.node_t[0] = m.T[0];
    for (int i = 2; i < 8; ++i) p.node_t[i] = m.T[i - 1];
    p.node_t[8] = m.T_int;
    p.t_bat = p.node_t[8] - zero_celsius;
}

void thermal_faces(power_record& p, const vue_terre& vue, const incidences_corps& vues, double date,
                   int32_t pas) {
    const auto t = static_cast<float>(date);
    const double largeur = p.body_width, cote = largeur * p.body_height;
    const int n = p.nb_faces;
    double couvercle = 0;
    if (p.opt_faces == 0) couvercle = largeur * largeur;
    if (p.opt_faces == 1) couvercle = (n * (largeur * largeur) / 4) / std::tan(pi / n);

    modele_surfaces m; // places 0 to 5 the faces, 6 the top, 7 the bottom
    const auto surface = [&](int place, int j, double alpha_j, double aire, const incidence& vers, double T) {
        m.Q[place] = flux_surface(p, vue, vers).absorbe(alpha_j, p.fac_eps[j]);
        m.E[place] = p.fac_eps[j] * sigma;
        m.C[place] = p.fac_cond[j];
        m.R[place] = p.fac_rad[j] * sigma;
        m.W[place] = aire;
        m.inv[place] = 1 / (static_cast<double>(p.fac_mass[j]) * p.fac_cp[j]);
        m.T[place] = T;
    };
    const double alpha_lateral = alpha_face(p, t, 0);
    for (int i = 0; i < n; ++i) surface(i, 0, alpha_lateral, cote, vues.lateraux[i], p.node_t[i]);
    surface(6, 1, alpha_face(p, t, 1), couvercle, vues.dessus, p.node_t[8]);
    surface(7, 2, alpha_face(p, t, 2), couvercle, vues.dessous, p.node_t[9]);
    m.T_int = p.node_t[10];
    m.chaleur = p.p_heat;
    m.inv_int = 1 / (static_cast<double>(p.int_cp) * p.int_mass);

    integre_surfaces(m, pas);

    for (int i = 0; i < n; ++i) p.node_t[i] = m.T[i];
    p.node_t[8] = m.T[6];
    p.node_t[9] = m.T[7];
    p.node_t[10] = m.T_int;
    p.t_bat = 20.0;
}

void thermal_cylinder(power_record& p, const vue_terre& vue, const incidences_corps& vues, double date,
                      int32_t pas) {
    const auto t = static_cast<float>(date);
    const int32_t k = pas > 300 ? pas / 300 : 1;
    const int32_t passes = pas / k;
    const double largeur = p.body_width, bande = largeur * dix_degres, disque = pi * largeur * largeur / 4;

    modele_cylindre m;
    const double alpha_lateral = alpha_face(p, t, 0);
    for (int i = 0; i < nb_bandes; ++i) {
        m.T[i] = p.node_t[i];
        m.Q[i] = flux_surface(p, vue, vues.lateraux[i]).absorbe(alpha_lateral, p.fac_eps[0]);
    }
    m.E = p.fac_eps[0] * sigma;
    m.C = p.fac_cond[0];
    m.R = p.fac_rad[0] * sigma;
    m.tour = p.cyl_cond / bande;
    m.inv = 1 / (static_cast<double>(p.fac_cp[0]) * p.fac_mass[0]) * k;
    m.W = bande;
    for (int j = 1; j <= 2; ++j) {
        disque_cylindre& d = m.disques[j - 1];
        d.T = p.node_t[35 + j];
        d.Q = flux_surface(p, vue, j == 1 ? vues.dessus : vues.dessous)
                  .absorbe(alpha_face(p, t, j), p.fac_eps[j]);
        d.E = p.fac_eps[j] * sigma;
        d.C = p.fac_cond[j];
        d.R = p.fac_rad[j] * sigma;
        d.inv = 1 / (static_cast<double>(p.fac_cp[j]) * p.fac_mass[j]) * k;
        d.W = disque;
    }
    m.T_int = p.node_t[38];
    m.chaleur = p.p_heat;
    m.inv_int = 1 / (static_cast<double>(p.int_cp) * p.int_mass) * k;

    integre_cylindre(m, passes);

    for (int i = 0; i < nb_bandes; ++i) p.node_t[i] = m.T[i];
    p.node_t[36] = m.disques[0].T;
    p.node_t[37] = m.disques[1].T;
    p.node_t[38] = m.T_int;
    p.t_bat = p.node_t[38] - zero_celsius;
}
