#include "analysis/listes_resultats.h"

#include <string>

namespace {

using enum conversion;
constexpr int un = 1, deux = 2, trois = 3;

constexpr variable_liste par_panneau(const char* texte, const char* nom, int decimales,
                                     conversion vers = aucune) {
    return {texte, nom, decimales, vers, 0, true};
}
constexpr variable_liste noeud(const char* texte, int n, const char* sens) {
    return {texte, "node_t", deux, celsius, n, false, sens};
}

constexpr variable_liste communes[nb_variables_communes] = {
    {"Batterie Courant (A)", "bat_i", trois},
    {"Batterie Taux de charge", "bat_soc", trois},
    {"Batterie Tension (V)", "bat_v", trois, aucune, 0, false,
     "tension d'un seul accumulateur ; celle de la batterie est ce nombre fois les accumulateurs en série"},
    {"Batterie Temps de Décharge (mn)", "t_discharge", un, minutes},
    {"Batterie Temps de Charge (mn)", "t_charge", un, minutes},
    {"Dissipation Bat/CU (W)", "p_loss_de", deux},
    {"Dissipation GS/CU (W)", "p_loss_gs", deux},
    {"Dissipation CU (W)", "p_loss_pl", deux},
    {"Dissipation recharge batterie (W)", "p_loss_ch", deux},
    {"Dissipation totale (W)", "p_heat", deux},
    {"Puissance batterie (W)", "bat_p", deux},
    {"Puissance GS (W)", "gen_power", deux},
    {"Puissance disponible (W)", "p_disponible", deux},
    {"Puissance excédente (W)", "p_excess", deux},
    {"Puissance utile (W)", "p_payload", deux},
};

constexpr variable_liste externes[] = {
    {"Angle d'incidence Solaire (°)", "incidence_sun", deux, degres},
    {"Angle d'incidence Albedo (°)", "incidence_earth", deux, degres},
    {"Rendement cellules", "cell_eff", trois},
    {"Flux Albedo Incident (W/m²)", "albedo_flux", deux},
    {"Flux infrarouge Incident (W/m²)", "earth_ir_flux", deux},
    {"Flux Solaire Incident (W/m²)", "solar_flux_direct", deux},
    {"Flux Total (W/m²)", "solar_albedo_flux", deux},
    {"Flux Total Effectif (W/m²)", "cell_flux", deux},
    {"Flux Optimal (W/m²)", "flux_optimal", deux},
    {"Flux Optimal Effectif. (W/m²)", "flux_optimal_effectif", deux},
    {"Orientation de MAX Flux (°)", "angle_max_flux", deux, degres},
    {"Orientation de MAX Flux Effectif (°)", "angle_max_flux_effectif", deux, degres},
    {"Orientation Courante (°)", "pan_angle", deux, degres},
    noeud("Température Face Y (°C)", 2, "face latérale, nœud 2 : « Face X » des réglages thermiques"),
    noeud("Température Face Z (°C)", 3, "face latérale, nœud 3 : « Face -X » des réglages thermiques"),
    noeud("Température Face -Y (°C)", 4, "face latérale, nœud 4 : « Face Y » des réglages thermiques"),
    noeud("Température Face -Z (°C)", 5, "face latérale, nœud 5 : « Face -Y » des réglages thermiques"),
    noeud("Température Face Supérieure (°C)", 6,
          "face supérieure, nœud 6 : « Face Z » des réglages thermiques"),
    noeud("Température Face Inférieure (°C)", 7,
          "face inférieure, nœud 7 : « Face -Z » des réglages thermiques"),
    noeud("Température Noeud Intérieur (°C)", 8, "intérieur du corps, nœud 8"),
    noeud("Température Panneaux (°C)", 0, "panneaux externes, nœud 0"),
};

constexpr variable_liste cylindre[] = {
    {"Rendement max", "cell_eff_max", trois},
    {"Rendement min", "cell_eff_min", trois},
    {"Flux Albedo Incident max (W/m²)", "albedo_flux_max", deux},
    {"Flux infrarouge Incident max (W/m²)", "earth_ir_flux_max", deux},
    {"Flux Solaire Incident max (W/m²)", "solar_flux_direct_max", deux},
    noeud("Température Face Supérieure (°C)", 36, "face supérieure, nœud 36"),
    noeud("Température Face Inférieure (°C)", 37, "face inférieure, nœud 37"),
    noeud("Température Noeud Intérieur (°C)", 38, "intérieur du corps, nœud 38"),
    {"Température Panneaux max (°C)", "node_t_max", deux, celsius},
    {"Température Panneaux min (°C)", "node_t_min", deux, celsius},
};

constexpr variable_liste prisme[] = {
    par_panneau("Angle d'incidence solaire (°)", "incidence_sun", deux, degres),
    par_panneau("Angle d'incidence albedo (°)", "incidence_earth", deux, degres),
    par_panneau("Rendement cellules", "cell_eff", trois),
    par_panneau("Flux albedo (W/m²)", "albedo_flux", deux),
    par_panneau("Flux infrarouge (W/m²)", "earth_ir_flux", deux),
    par_panneau("Flux solaire (W/m²)", "solar_flux_direct", deux),
    par_panneau("Flux total (W/m²)", "solar_albedo_flux", deux),
    par_panneau("Flux total effectif (W/m²)", "cell_flux", deux),
    par_panneau("Puissance (W)", "pan_power", deux),
    par_panneau("Température panneaux (°C)", "node_t", deux, celsius),
    noeud("Température face supérieure (°C)", 8, "face supérieure, nœud 8"),
    noeud("Température face inférieure (°C)", 9, "face inférieure, nœud 9"),
    noeud("Température noeud Intérieur (°C)", 10, "intérieur du corps, nœud 10"),
};

constexpr variable_liste couples[] = {
    {"Couple radiation solaire (mN)", "solaire", 0, milliemes, 0, true,
     "pression du rayonnement solaire, mN·m ; nul en éclipse"},
    {"Couple frottement atmosphérique (mN)", "aero", 0, milliemes, 0, true,
     "frottement de l'atmosphère, mN·m"},
    {"Couple magnétique (mN)", "magnetique", 0, milliemes, 0, true, "dipôle dans le champ terrestre, mN·m"},
    {"Couple gradient de gravité (mN)", "gradient", 0, milliemes, 0, true, "gradient de gravité, mN·m"},
    {"Couple total (mN)", "ctot", 0, milliemes, 0, true, "somme des quatre couples, mN·m"},
};

std::vector<variable_liste> liste(std::span<const variable_liste> suite) {
    std::vector<variable_liste> v(std::begin(communes), std::end(communes));
    v.insert(v.end(), suite.begin(), suite.end());
    return v;
}

} // namespace

double convertit(double x, conversion c) {
    switch (c) {
    case degres: return x * 180.0 / pi;
    case degres_etude: return radians_vers_degres(x);
    case celsius: return x - zero_celsius;
    case minutes: return x / 60.0;
    case milliemes: return x * 1000;
    default: return x;
    }
}

voie variable_liste::quoi(int position) const {
    const variable* v = cherche_variable(nom);
    if (!avec_selecteur) return {nom, v, element};
    if (v->elements == 3 && position == 3) return {nom, cherche_variable(nom + std::string("_norme")), 0};
    return {nom, v, position};
}

std::span<const variable_liste> liste_energie(montage m) {
    static const std::vector<variable_liste> listes[] = {liste(externes), liste(cylindre), liste(prisme)};
    return listes[static_cast<int>(m) - 1];
}

std::span<const variable_liste> liste_couples() { return couples; }

std::vector<variable_liste> liste_panneaux(grandeur_panneaux g, const power_record& p) {
    const bool ext = montage_de(p) == montage::externes;
    std::vector<variable_liste> l;
    const auto chaque = [&](const char* nom, int decimales, conversion vers) {
        for (int i = 0; i < nombre_panneaux(p); ++i) l.push_back({"", nom, decimales, vers, i});
    };
    switch (g) {
    case grandeur_panneaux::temperature:
        chaque("node_t", 3, celsius);
        l.push_back({"Maximum", "node_t_max", 3, celsius});
        l.push_back({"Minimum", "node_t_min", 3, celsius});
        break;
    case grandeur_panneaux::puissance: chaque("pan_power", 2, aucune); break;
    case grandeur_panneaux::flux:
        if (!ext) {
            chaque("cell_flux", 1, aucune);
            break;
        }
        l = {{"Solaire direct", "solar_flux_direct", 1},
             {"Albédo", "albedo_flux", 1},
             {"Solaire et albédo", "solar_albedo_flux", 1},
             {"Vu par les cellules", "cell_flux", 1}};
        break;
    case grandeur_panneaux::angles:
        if (ext)
            l = {{"Incidence Soleil", "incidence_sun", 2, degres_etude},
                 {"Incidence Terre", "incidence_earth", 2, degres_etude},
                 {"Angle courant", "pan_angle", 2, degres_etude},
                 {"Meilleur angle", "angle_max_flux_effectif", 2, degres_etude}};
        break;
    }
    return l;
}
