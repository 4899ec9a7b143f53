#include "project/exp_variables.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "power/power_panneaux.h"
#include "shell/formats.h"

namespace {

using P = power_record;
using O = orbit_state;

constexpr int un = 1, deux = 2, trois = 3;

constexpr double degres(double rad) { return rad * 180.0 / pi; }
constexpr double celsius(double k) { return k - zero_celsius; }
std::size_t rang(int i) { return static_cast<std::size_t>(i); }

/// Power on the bus: generator after its transfer, and battery after its own.
double disponible(const P& p) { return p.p_payload + std::max(p.p_excess, 0.0); }

constexpr variable_energie communes[nb_variables_communes] = {
    {"Batterie Courant (A)", trois, "courant d'une branche d'accumulateurs",
     [](P& p, const O&, int) { return p.bat_i; }},
    {"Batterie Taux de charge", trois, "état de charge, de 0 à 1",
     [](P& p, const O&, int) { return p.bat_soc; }},
    {"Batterie Tension (V)", trois,
     "tension d'un seul accumulateur ; celle de la batterie est ce nombre fois les accumulateurs en série",
     [](P& p, const O&, int) { return p.bat_v; }},
    {"Batterie Temps de Décharge (mn)", un, "durée de la décharge en cours",
     [](P& p, const O&, int) { return p.t_discharge / 60.0; }},
    {"Batterie Temps de Charge (mn)", un, "durée de la charge en cours",
     [](P& p, const O&, int) { return p.t_charge / 60.0; }},
    {"Dissipation Bat/CU (W)", deux, "perte au transfert de la batterie à la charge utile",
     [](P& p, const O&, int) { return p.p_loss_de; }},
    {"Dissipation GS/CU (W)", deux, "perte au transfert du générateur à la charge utile",
     [](P& p, const O&, int) { return p.p_loss_gs; }},
    {"Dissipation CU (W)", deux, "part de la puissance utile dissipée à l'intérieur",
     [](P& p, const O&, int) { return p.p_loss_pl; }},
    {"Dissipation recharge batterie (W)", deux, "perte à la recharge",
     [](P& p, const O&, int) { return p.p_loss_ch; }},
    {"Dissipation totale (W)", deux, "chaleur reçue par le nœud intérieur",
     [](P& p, const O&, int) { return p.p_heat; }},
    {"Puissance batterie (W)", deux, "positive en décharge, négative en charge",
     [](P& p, const O&, int) { return p.bat_p; }},
    {"Puissance GS (W)", deux, "puissance du générateur solaire",
     [](P& p, const O&, int) { return p.gen_power; }},
    {"Puissance disponible (W)", deux, "générateur et batterie après transfert : utile plus excédent",
     [](P& p, const O&, int) { return disponible(p); }},
    {"Puissance excédente (W)", deux, "bilan du bus : négatif, il manque de la puissance",
     [](P& p, const O&, int) { return p.p_excess; }},
    {"Puissance utile (W)", deux, "puissance fournie à la charge utile",
     [](P& p, const O&, int) { return p.p_payload; }},
};

// External panels. Without a target (the mark 1000.0) the panel stays where it is, so that the optimum is the
// angle in force.

double cible(const P& p) { return p.pan_target == sans_cible ? p.pan_angle : p.pan_target; }
double cible_effective(const P& p) {
    const double a = panel_target_refined(p);
    return a == sans_cible ? p.pan_angle : a;
}

template <int n>
double noeud(P& p, const O&, int) {
    return celsius(p.node_t[n]);
}

constexpr variable_energie externes[] = {
    {"Angle d'incidence Solaire (°)", deux, "entre la normale du panneau et le Soleil",
     [](P& p, const O&, int) { return degres(incidence_sun(p, p.pan_angle, pi)); }},
    {"Angle d'incidence Albedo (°)", deux, "entre la normale du panneau et le centre de la Terre",
     [](P& p, const O&, int) { return degres(incidence_earth(p, p.pan_angle, pi)); }},
    {"Rendement cellules", trois, "rendement de conversion à la température du panneau",
     [](P& p, const O&, int) -> double { return p.cell_eff[0]; }},
    {"Flux Albedo Incident (W/m²)", deux, "flux d'albédo reçu par le panneau",
     [](P& p, const O& o, int) { return albedo_flux(p, o, p.pan_angle, pi); }},
    {"Flux infrarouge Incident (W/m²)", deux, "flux infrarouge terrestre reçu par le panneau",
     [](P& p, const O& o, int) { return earth_ir_flux(p, o, p.pan_angle, pi); }},
    {"Flux Solaire Incident (W/m²)", deux, "flux solaire direct reçu par le panneau",
     [](P& p, const O&, int) { return solar_flux_direct(p, p.pan_angle, pi); }},
    {"Flux Total (W/m²)", deux, "flux solaire et d'albédo reçus par le panneau",
     [](P& p, const O& o, int) { return solar_albedo_flux(p, o, p.pan_angle, pi); }},
    {"Flux Total Effectif (W/m²)", deux, "flux vu par les cellules, selon leur loi d'incidence",
     [](P& p, const O&, int) { return cell_flux(p, p.pan_angle, pi); }},
    {"Flux Optimal (W/m²)", deux, "flux solaire et d'albédo à l'orientation de MAX flux",
     [](P& p, const O& o, int) { return solar_albedo_flux(p, o, cible(p), pi); }},
    {"Flux Optimal Effectif. (W/m²)", deux, "flux vu par les cellules à l'orientation de MAX flux effectif",
     [](P& p, const O&, int) { return cell_flux(p, cible_effective(p), pi); }},
    {"Orientation de MAX Flux (°)", deux,
     "orientation du plus grand flux (l'orientation courante sans cible)",
     [](P& p, const O&, int) { return degres(cible(p)); }},
    {"Orientation de MAX Flux Effectif (°)", deux,
     "orientation du plus grand flux vu par les cellules (l'orientation courante sans cible)",
     [](P& p, const O&, int) { return degres(cible_effective(p)); }},
    {"Orientation Courante (°)", deux, "angle du panneau",
     [](P& p, const O&, int) { return degres(p.pan_angle); }},
    {"Température Face Y (°C)", deux, "face latérale, nœud 2 : « Face X » des réglages thermiques", noeud<2>},
    {"Température Face Z (°C)", deux, "face latérale, nœud 3 : « Face -X » des réglages thermiques",
     noeud<3>},
    {"Température Face -Y (°C)", deux, "face latérale, nœud 4 : « Face Y » des réglages thermiques",
     noeud<4>},
    {"Température Face -Z (°C)", deux, "face latérale, nœud 5 : « Face -Y » des réglages thermiques",
     noeud<5>},
    {"Température Face Supérieure (°C)", deux, "face supérieure, nœud 6 : « Face Z » des réglages thermiques",
     noeud<6>},
    {"Température Face Inférieure (°C)", deux,
     "face inférieure, nœud 7 : « Face -Z » des réglages thermiques", noeud<7>},
    {"Température Noeud Intérieur (°C)", deux, "intérieur du corps, nœud 8", noeud<8>},
    {"Température Panneaux (°C)", deux, "panneaux externes, nœud 0", noeud<0>},
};

// Cylinder: extremes over its strips.

double azimut_bande(int i) { return (i * 10 + 5) * rad_par_degre; }

template <class F>
double max_bandes(F&& f) {
    double m = f(0);
    for (int i = 1; i < nb_bandes; ++i) m = std::max(m, f(i));
    return m;
}

double extreme_temperature(const P& p, bool max) {
    const auto fin = p.node_t.begin() + nb_bandes;
    return celsius(max ? *std::max_element(p.node_t.begin(), fin) : *std::min_element(p.node_t.begin(), fin));
}

constexpr variable_energie cylindre[] = {
    {"Rendement max", trois, "plus grand rendement des bandes",
     [](P& p, const O&, int) -> double { return *std::max_element(p.cell_eff.begin(), p.cell_eff.end()); }},
    {"Rendement min", trois, "plus petit rendement des bandes",
     [](P& p, const O&, int) -> double { return *std::min_element(p.cell_eff.begin(), p.cell_eff.end()); }},
    {"Flux Albedo Incident max (W/m²)", deux, "plus grand flux d'albédo reçu par une bande",
     [](P& p, const O& o, int) {
         return max_bandes([&](int i) { return albedo_flux(p, o, 0, azimut_bande(i)); });
     }},
    {"Flux infrarouge Incident max (W/m²)", deux, "plus grand flux infrarouge reçu par une bande",
     [](P& p, const O& o, int) {
         return max_bandes([&](int i) { return earth_ir_flux(p, o, 0, azimut_bande(i)); });
     }},
    {"Flux Solaire Incident max (W/m²)", deux, "plus grand flux solaire direct reçu par une bande",
     [](P& p, const O&, int) {
         return max_bandes([&](int i) { return solar_flux_direct(p, 0, azimut_bande(i)); });
     }},
    {"Température Face Supérieure (°C)", deux, "face supérieure, nœud 36", noeud<36>},
    {"Température Face Inférieure (°C)", deux, "face inférieure, nœud 37", noeud<37>},
    {"Température Noeud Intérieur (°C)", deux, "intérieur du corps, nœud 38", noeud<38>},
    {"Température Panneaux max (°C)", deux, "bande la plus chaude",
     [](P& p, const O&, int) { return extreme_temperature(p, true); }},
    {"Température Panneaux min (°C)", deux, "bande la plus froide",
     [](P& p, const O&, int) { return extreme_temperature(p, false); }},
};

// Prism: the first ten exist once per panel.

template <double (*f)(P&, const O&, double, double)>
double sur_face(P& p, const O& o, int i) {
    return f(p, o, p.face_elev[rang(i)], p.face_azim[rang(i)]);
}
double incidence_soleil(P& p, const O&, double a, double b) { return degres(incidence_sun(p, a, b)); }
double incidence_terre(P& p, const O&, double a, double b) { return degres(incidence_earth(p, a, b)); }
double flux_direct(P& p, const O&, double a, double b) { return solar_flux_direct(p, a, b); }
double flux_cellules(P& p, const O&, double a, double b) { return cell_flux(p, a, b); }

constexpr variable_energie prisme[] = {
    {"Angle d'incidence solaire (°)", deux, "entre la normale du panneau et le Soleil",
     sur_face<incidence_soleil>, true},
    {"Angle d'incidence albedo (°)", deux, "entre la normale du panneau et le centre de la Terre",
     sur_face<incidence_terre>, true},
    {"Rendement cellules", trois, "rendement de conversion à la température du panneau",
     [](P& p, const O&, int i) -> double { return p.cell_eff[rang(i)]; }, true},
    {"Flux albedo (W/m²)", deux, "flux d'albédo reçu par le panneau", sur_face<albedo_flux>, true},
    {"Flux infrarouge (W/m²)", deux, "flux infrarouge terrestre reçu par le panneau", sur_face<earth_ir_flux>,
     true},
    {"Flux solaire (W/m²)", deux, "flux solaire direct reçu par le panneau", sur_face<flux_direct>, true},
    {"Flux total (W/m²)", deux, "flux solaire et d'albédo reçus par le panneau", sur_face<solar_albedo_flux>,
     true},
    {"Flux total effectif (W/m²)", deux, "flux vu par les cellules, selon leur loi d'incidence",
     sur_face<flux_cellules>, true},
    {"Puissance (W)", deux, "puissance électrique du panneau",
     [](P& p, const O&, int i) { return p.pan_power[rang(i)]; }, true},
    {"Température panneaux (°C)", deux, "température du panneau",
     [](P& p, const O&, int i) { return celsius(p.node_t[rang(i)]); }, true},
    {"Température face supérieure (°C)", deux, "face supérieure, nœud 8", noeud<8>},
    {"Température face inférieure (°C)", deux, "face inférieure, nœud 9", noeud<9>},
    {"Température noeud Intérieur (°C)", deux, "intérieur du corps, nœud 10", noeud<10>},
};

std::vector<variable_energie> liste(std::span<const variable_energie> suite) {
    std::vector<variable_energie> v(std::begin(communes), std::end(communes));
    v.insert(v.end(), suite.begin(), suite.end());
    return v;
}

} // namespace

std::string texte_fixe(double x, int decimales) {
    char t[400];
    const auto r = std::to_chars(t, t + sizeof t, x, std::chars_format::fixed, decimales);
    // A value that rounds to zero carries no sign.
    const bool zero_negatif =
        t[0] == '-' && std::none_of(t, r.ptr, [](char c) { return c >= '1' && c <= '9'; });
    return {zero_negatif ? t + 1 : t, r.ptr};
}

std::span<const variable_energie> variables_energie(montage m) {
    static const std::vector<variable_energie> listes[] = {liste(externes), liste(cylindre), liste(prisme)};
    return listes[static_cast<int>(m) - 1];
}

std::span<const variable_couple> variables_couples() {
    static constexpr variable_couple liste[] = {
        {"Couple radiation solaire (mN)", "pression du rayonnement solaire, mN·m ; nul en éclipse",
         &attitude_record::c_solaire},
        {"Couple frottement atmosphérique (mN)", "frottement de l'atmosphère, mN·m",
         &attitude_record::c_aero},
        {"Couple magnétique (mN)", "dipôle dans le champ terrestre, mN·m", &attitude_record::c_magnetique},
        {"Couple gradient de gravité (mN)", "gradient de gravité, mN·m", &attitude_record::c_gradient},
        {"Couple total (mN)", "somme des quatre couples, mN·m", &attitude_record::ctot},
    };
    return liste;
}

std::string texte_couple(const vec3& couple, int axe) {
    const double x =
        axe < 3 ? couple[static_cast<std::size_t>(axe)] : std::hypot(couple[0], couple[1], couple[2]);
    return format_image(x * 1000, "0.000E+00");
}
