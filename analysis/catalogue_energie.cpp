/// The power system: environment, generator, battery, bus, temperatures, and what each panel receives.
#include <algorithm>

#include "analysis/catalogue_tables.h"
#include "power/montage.h"
#include "power/power_panneaux.h"

namespace {

using E = etat_calcul;
constexpr unsigned en = besoin::energie;

std::size_t rang(int i) { return static_cast<std::size_t>(i); }

/// Readers of a field of the power record.
template <auto champ>
double reel(const E& e, int) {
    return static_cast<double>(e.energie.*champ);
}
template <auto champ>
double tableau(const E& e, int i) {
    return static_cast<double>((e.energie.*champ)[rang(i)]);
}

/// A function of the normal of a panel.
template <double (*f)(const power_record&, double, double)>
double au_panneau(const E& e, int i) {
    const auto [a, b] = normale_panneau(e.energie, i);
    return f(e.energie, a, b);
}

/// Albedo and infrared of the Earth, of flux `champ`, on a surface of normal (a, b).
template <double power_record::*champ>
double de_la_terre(const E& e, double a, double b) {
    return vue_terre(e.orbite).facteur(e.energie, a, b) * e.energie.*champ;
}
template <double power_record::*champ>
double de_la_terre_au_panneau(const E& e, int i) {
    const auto [a, b] = normale_panneau(e.energie, i);
    return de_la_terre<champ>(e, a, b);
}
double soleil_et_albedo(const E& e, double a, double b) {
    return solar_flux_direct(e.energie, a, b) + de_la_terre<&power_record::flux_alb>(e, a, b);
}

/// Extremes over the panels.
template <double (*f)(const E&, int), bool le_plus_grand = true>
double extreme(const E& e, int) {
    double x = f(e, 0);
    for (int i = 1; i < nombre_panneaux(e.energie); ++i)
        x = le_plus_grand ? std::max(x, f(e, i)) : std::min(x, f(e, i));
    return x;
}

// External panels. Without a target (the mark 1000.0) the panel stays where it is, so that the optimum is the
// angle in force.
double cible(const power_record& p) { return p.pan_target == sans_cible ? p.pan_angle : p.pan_target; }
double cible_effective(const power_record& p) {
    const double a = panel_target_refined(p);
    return a == sans_cible ? p.pan_angle : a;
}

using P = power_record;

constexpr variable table[] = {
    // The columns of a run of the power system, in their order.
    {"eclipse", "Éclipse", "", 0, "-1 derrière la Terre (6378,137 km), 0 sinon", en, reel<&P::eclipse>, 1,
     false, true},
    {"flux_sun", "Flux solaire", "W/m²", 1, "à la distance du Soleil, éclipse ou non", en,
     reel<&P::flux_sun>},
    {"flux_alb", "Flux d'albédo", "W/m²", 1, "réfléchi par la Terre sous le satellite", en,
     reel<&P::flux_alb>},
    {"flux_ir", "Flux infrarouge", "W/m²", 1, "émis par la Terre", en, reel<&P::flux_ir>},
    {"sun_z", "Soleil : composante z", "", 6, "direction du Soleil en axes satellite", en, reel<&P::sun_z>},
    {"sun_sxy", "Soleil : composante xy", "", 6, "direction du Soleil en axes satellite", en,
     reel<&P::sun_sxy>},
    {"sun_az", "Soleil : azimut", "rad", 6, "direction du Soleil en axes satellite, depuis x", en,
     reel<&P::sun_az>},
    {"nad_z", "Nadir : composante z", "", 6, "direction de la Terre en axes satellite", en, reel<&P::nad_z>},
    {"nad_sxy", "Nadir : composante xy", "", 6, "direction de la Terre en axes satellite", en,
     reel<&P::nad_sxy>},
    {"nad_az", "Nadir : azimut", "rad", 6, "direction de la Terre en axes satellite, depuis x", en,
     reel<&P::nad_az>},
    {"sun_nadir_cos", "Cosinus Soleil-nadir", "", 6, "de l'angle entre le Soleil et le centre de la Terre",
     en, reel<&P::sun_nadir_cos>},
    {"earth_half", "Demi-angle de la Terre", "rad", 6, "vue du satellite", en, reel<&P::earth_half>},
    {"pan_target", "Cible du panneau", "rad", 4, "panneaux externes : angle voulu, 1000 sans cible", en,
     reel<&P::pan_target>},
    {"pan_angle", "Angle du panneau", "rad", 4, "panneaux externes : angle courant", en, reel<&P::pan_angle>},
    {"pan_wait", "Attente du panneau", "s", 0, "avant de tourner ; -1 sans attente", en, reel<&P::pan_wait>,
     1, false, true},
    {"pan_moving", "Panneau en mouvement", "", 0, "-1 quand il tourne", en, reel<&P::pan_moving>, 1, false,
     true},
    {"gen_power", "Puissance du générateur", "W", 2, "de tous les panneaux", en, reel<&P::gen_power>},
    {"bat_soc", "Taux de charge", "", 3, "état de charge de la batterie, de 0 à 1", en, reel<&P::bat_soc>},
    {"bat_v", "Tension d'accumulateur", "V", 3, "d'un accumulateur, non de la batterie", en, reel<&P::bat_v>},
    {"bat_i", "Courant de branche", "A", 3, "d'une branche d'accumulateurs", en, reel<&P::bat_i>},
    {"bat_p", "Puissance de la batterie", "W", 2, "positive en décharge, négative en charge", en,
     reel<&P::bat_p>},
    {"p_payload", "Puissance utile", "W", 2, "fournie à la charge utile", en, reel<&P::p_payload>},
    {"p_excess", "Puissance excédente", "W", 2, "bilan du bus : négatif, il manque de la puissance", en,
     reel<&P::p_excess>},
    {"p_loss_ch", "Perte à la recharge", "W", 2, "dissipée par la batterie en charge", en,
     reel<&P::p_loss_ch>},
    {"p_loss_de", "Perte batterie vers charge utile", "W", 2, "au transfert, en décharge", en,
     reel<&P::p_loss_de>},
    {"p_loss_gs", "Perte générateur vers charge utile", "W", 2, "au transfert", en, reel<&P::p_loss_gs>},
    {"p_loss_pl", "Dissipation de la charge utile", "W", 2,
     "part de la puissance utile dissipée à l'intérieur", en, reel<&P::p_loss_pl>},
    {"p_heat", "Chaleur intérieure", "W", 2, "dissipation totale, reçue par le nœud intérieur", en,
     reel<&P::p_heat>},
    {"bat_state_full", "Marque de charge", "", 0, "0 au pas où la charge atteint 100 %, -1 sinon", en,
     reel<&P::bat_state_full>, 1, false, true},
    {"t_charge", "Durée de charge", "s", 0, "de la charge en cours", en, reel<&P::t_charge>, 1, false, true},
    {"t_discharge", "Durée de décharge", "s", 0, "de la décharge en cours", en, reel<&P::t_discharge>, 1,
     false, true},
    {"t_bat", "Température de la batterie", "°C", 2, "celle du nœud intérieur ; 20 avec des faces planes", en,
     reel<&P::t_bat>},
    {"node_t", "Température du nœud", "K", 2,
     "panneaux externes : 0 panneau, 2 à 7 faces, 8 intérieur ; cylindre : 0 à 35 bandes, 36 dessus, 37 "
     "dessous, 38 intérieur ; prisme : faces depuis 0, 8 dessus, 9 dessous, 10 intérieur",
     en, tableau<&P::node_t>, nb_noeuds},
    {"cell_eff", "Rendement des cellules", "", 4, "rendement de conversion, par panneau", en,
     tableau<&P::cell_eff>, nb_bandes},
    {"pan_power", "Puissance du panneau", "W", 2, "puissance électrique, par panneau", en,
     tableau<&P::pan_power>, nb_bandes},

    {"p_demande", "Puissance demandée", "W", 2, "demande du pas, modes de consommation compris", en,
     reel<&P::p_demande>},
    {"p_disponible", "Puissance disponible", "W", 2,
     "générateur et batterie après transfert : utile plus excédent", en,
     [](const E& e, int) { return e.energie.p_payload + std::max(e.energie.p_excess, 0.0); }},
    {"part_soleil", "Part visible du Soleil", "", 3, "1 en pleine lumière, 0 en éclipse", besoin::orbite,
     reel<&P::part_soleil>},

    // By panel: what it receives
    {"incidence_sun", "Incidence du Soleil", "rad", 4, "entre la normale du panneau et le Soleil", en,
     au_panneau<incidence_sun>, nb_bandes, true},
    {"incidence_earth", "Incidence de la Terre", "rad", 4,
     "entre la normale du panneau et le centre de la Terre", en, au_panneau<incidence_earth>, nb_bandes,
     true},
    {"solar_flux_direct", "Flux solaire reçu", "W/m²", 1, "flux solaire direct reçu par le panneau", en,
     au_panneau<solar_flux_direct>, nb_bandes, true},
    {"albedo_flux", "Flux d'albédo reçu", "W/m²", 1, "flux d'albédo reçu par le panneau", en,
     de_la_terre_au_panneau<&P::flux_alb>, nb_bandes, true},
    {"earth_ir_flux", "Flux infrarouge reçu", "W/m²", 1, "flux infrarouge terrestre reçu par le panneau", en,
     de_la_terre_au_panneau<&P::flux_ir>, nb_bandes, true},
    {"solar_albedo_flux", "Flux solaire et d'albédo reçus", "W/m²", 1,
     "flux solaire et d'albédo reçus par le panneau", en,
     [](const E& e, int i) {
         const auto [a, b] = normale_panneau(e.energie, i);
         return soleil_et_albedo(e, a, b);
     },
     nb_bandes, true},
    {"cell_flux", "Flux vu par les cellules", "W/m²", 1, "selon leur loi d'incidence", en,
     au_panneau<cell_flux>, nb_bandes, true},

    // Extremes over the panels
    {"node_t_max", "Température du panneau le plus chaud", "K", 2, "sur tous les panneaux", en,
     extreme<tableau<&P::node_t>>},
    {"node_t_min", "Température du panneau le plus froid", "K", 2, "sur tous les panneaux", en,
     extreme<tableau<&P::node_t>, false>},
    {"cell_eff_max", "Plus grand rendement", "", 4, "sur tous les panneaux", en,
     extreme<tableau<&P::cell_eff>>},
    {"cell_eff_min", "Plus petit rendement", "", 4, "sur tous les panneaux", en,
     extreme<tableau<&P::cell_eff>, false>},
    {"solar_flux_direct_max", "Plus grand flux solaire reçu", "W/m²", 1, "sur tous les panneaux", en,
     extreme<au_panneau<solar_flux_direct>>},
    {"albedo_flux_max", "Plus grand flux d'albédo reçu", "W/m²", 1, "sur tous les panneaux", en,
     extreme<de_la_terre_au_panneau<&P::flux_alb>>},
    {"earth_ir_flux_max", "Plus grand flux infrarouge reçu", "W/m²", 1, "sur tous les panneaux", en,
     extreme<de_la_terre_au_panneau<&P::flux_ir>>},

    // External panels: the best orientation
    {"panel_target_refined", "Meilleur angle du panneau", "rad", 4,
     "panneaux externes : plus grand flux vu par les cellules, 1000 sans cible", en,
     [](const E& e, int) { return panel_target_refined(e.energie); }},
    {"angle_max_flux", "Orientation du plus grand flux", "rad", 4,
     "panneaux externes : la cible, ou l'angle courant sans cible", en,
     [](const E& e, int) { return cible(e.energie); }},
    {"angle_max_flux_effectif", "Orientation du plus grand flux vu par les cellules", "rad", 4,
     "panneaux externes : meilleur angle, ou l'angle courant sans cible", en,
     [](const E& e, int) { return cible_effective(e.energie); }},
    {"flux_optimal", "Flux optimal", "W/m²", 1, "flux solaire et d'albédo à l'orientation du plus grand flux",
     en, [](const E& e, int) { return soleil_et_albedo(e, cible(e.energie), pi); }},
    {"flux_optimal_effectif", "Flux optimal effectif", "W/m²", 1,
     "flux vu par les cellules à leur meilleure orientation", en,
     [](const E& e, int) { return cell_flux(e.energie, cible_effective(e.energie), pi); }},
};

} // namespace

std::span<const variable> variables_puissance() { return table; }
