#include "project/champs_notes.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr const char
    *kepler = "mouvement de Kepler, mu du modèle de référence",
    *exponentielle = "modèle de référence des cellules, à une exponentielle",
    *quatre_points = "modèle de référence des accumulateurs, par quatre points (parabole, droite, parabole)",
    *noeuds = "modèle thermique de référence, nœuds concentrés ; rayonnement de Stefan",
    *bilan = "modèle de référence, bilan de puissance du bus", *corps = "équations d'Euler du corps rigide",
    *amortisseur = "masse, ressort et amortisseur sur l'axe",
    *plaque = "écoulement moléculaire libre sur une plaque",
    *lumiere = "réflexion spéculaire et diffuse sur une plaque",
    *pd = "B. Wie, Space Vehicle Dynamics and Control (1998), 7.3";

// clang-format off
constexpr note_champ notes[] = {
    // Orbit
    {"orb_demi", "a", "Période T = 2 pi racine(a³/mu) ; rayon r = a (1 - e cos E)", kepler},
    {"orb_moy_mvt", "n", "n = racine(mu/a³), en tours par jour : lié au demi-grand axe", kepler},
    {"orb_excentricite", "e", "Périgée a (1 - e), apogée a (1 + e) ; équation de Kepler M = E - e sin E", kepler},
    {"orb_inclinaison", "i", "Angle du plan de l'orbite et de l'équateur : fixe les latitudes survolées et, avec le nœud, l'angle bêta du Soleil", kepler},
    {"orb_ascension", "Ω", "Oriente le plan de l'orbite : avec l'inclinaison et la date, décide de la durée des éclipses", kepler},
    {"orb_argument", "ω", "Place du périgée dans le plan de l'orbite, comptée du nœud", kepler},
    {"orb_anomalie", "M", "M(t) = M0 + n (t - t0)", kepler},
    {"orb_jour", "t0", "Jour de l'année de l'époque t0 : M(t) = M0 + n (t - t0)", kepler},
    // Pointing
    {"vspin", "", "Lacet(t) = lacet initial + 6 v (t - début), en degrés et secondes, v en tours par minute", ""},
    // Cells
    {"cel_isc", "Isc", "I(V) = Isc - I0 (exp(V/Vt) - 1), I0 = Isc/(exp(Voc/Vt) - 1), Vt = (Voc - Vmp)/ln(Isc/(Isc - Imp))", exponentielle},
    {"cel_imp", "Imp", "Vt = (Voc - Vmp)/ln(Isc/(Isc - Imp)) ; doit rester sous Isc", exponentielle},
    {"cel_voc", "Voc", "Au-delà de Voc × cellules en série, le courant est nul ; Vt = (Voc - Vmp)/ln(Isc/(Isc - Imp))", exponentielle},
    {"cel_vmp", "Vmp", "Vt = (Voc - Vmp)/ln(Isc/(Isc - Imp)) ; doit rester sous Voc", exponentielle},
    {"cel_disc", "dIsc/dT", "Isc(T) = Isc + (T - Tréf) dIsc/dT", exponentielle},
    {"cel_dimp", "dImp/dT", "Imp(T) = Imp + (T - Tréf) dImp/dT", exponentielle},
    {"cel_dvoc", "dVoc/dT", "Voc(T) = Voc + (T - Tréf) dVoc/dT", exponentielle},
    {"cel_dvmp", "dVmp/dT", "Vmp(T) = Vmp + (T - Tréf) dVmp/dT", exponentielle},
    {"cel_radisc", "", "En fin de vie, Isc(T) est multiplié par ce rapport", exponentielle},
    {"cel_radimp", "", "En fin de vie, Imp(T) est multiplié par ce rapport", exponentielle},
    {"cel_radvoc", "", "En fin de vie, Voc(T) est multiplié par ce rapport", exponentielle},
    {"cel_radvmp", "", "En fin de vie, Vmp(T) est multiplié par ce rapport", exponentielle},
    {"cel_tref", "Tréf", "Température à laquelle les quatre valeurs sont données : X(T) = X + (T - Tréf) dX/dT", exponentielle},
    {"cel_ns", "Ns", "Tension d'une cellule = tension du bus / Ns ; au-delà de Voc elle ne donne rien", exponentielle},
    {"cel_np", "Np", "Courant du panneau = Np × courant d'une cellule ; aire = Ns Np × surface", exponentielle},
    {"cel_surface", "S", "Rendement = 10000 I Vbus/(1368 S Np Ns) ; puissance = flux × rendement × Ns Np S", exponentielle},
    {"inc_div", "θd", "Jusqu'à θd le flux suit cos θ ; de θd à θm, une parabole A θ² + B θ + C qui s'y raccorde", ""},
    {"inc_max", "θm", "Au-delà de θm la cellule ne reçoit plus rien", ""},
    {"cel_opt_beol", "", "Fin de vie : les quatre rapports de fin de vie multiplient Isc, Imp, Voc et Vmp", exponentielle},
    // Panels
    {"pan_speed", "", "L'angle des panneaux se rapproche de sa cible de vitesse × pas au plus, une fois le retard passé", ""},
    {"pan_tolerance", "", "Les panneaux ne bougent que si l'écart à la cible dépasse cette valeur", ""},
    // Thermal
    {"ext_alpha0", "α0", "α(t) = αlim (1 - q exp(-k t)), q = 1 - α0/αlim, k = ln(100 q)/t99", noeuds},
    {"ext_alpha_lim", "αlim", "α(t) = αlim (1 - q exp(-k t)), q = 1 - α0/αlim, k = ln(100 q)/t99", noeuds},
    {"ext_t99", "t99", "α(t) = αlim (1 - q exp(-k t)), k = ln(100 q)/t99, t en heures depuis l'état neuf", noeuds},
    {"ext_eps", "ε", "Flux émis = ε σ T⁴, σ = 5,67e-8 W/m²/K⁴ ; infrarouge absorbé = ε F × rayonnement de la Terre", noeuds},
    {"ext_cond", "C", "Flux de la face au nœud interne : C (T - Ti) + R σ (T⁴ - Ti⁴)", noeuds},
    {"ext_rad", "R", "Flux de la face au nœud interne : C (T - Ti) + R σ (T⁴ - Ti⁴)", noeuds},
    {"ext_mass", "m", "dT/dt = somme des flux/(m cp)", noeuds},
    {"ext_cp", "cp", "dT/dt = somme des flux/(m cp)", noeuds},
    {"fac_alpha0", "α0", "α(t) = αlim (1 - q exp(-k t)), q = 1 - α0/αlim, k = ln(100 q)/t99", noeuds},
    {"fac_alpha_lim", "αlim", "α(t) = αlim (1 - q exp(-k t)), q = 1 - α0/αlim, k = ln(100 q)/t99", noeuds},
    {"fac_t99", "t99", "α(t) = αlim (1 - q exp(-k t)), k = ln(100 q)/t99, t en heures depuis l'état neuf", noeuds},
    {"fac_eps", "ε", "Flux émis = ε σ T⁴, σ = 5,67e-8 W/m²/K⁴ ; infrarouge absorbé = ε F × rayonnement de la Terre", noeuds},
    {"fac_cond", "C", "Flux de la face au nœud interne : C (T - Ti) + R σ (T⁴ - Ti⁴)", noeuds},
    {"fac_rad", "R", "Flux de la face au nœud interne : C (T - Ti) + R σ (T⁴ - Ti⁴)", noeuds},
    {"fac_mass", "m", "dT/dt = somme des flux/(m cp)", noeuds},
    {"fac_cp", "cp", "dT/dt = somme des flux/(m cp)", noeuds},
    {"int_mass", "mi", "dTi/dt = (chaleur dissipée + flux des faces)/(mi cpi)", noeuds},
    {"int_cp", "cpi", "dTi/dt = (chaleur dissipée + flux des faces)/(mi cpi)", noeuds},
    // Environment
    {"sun_power", "P", "Flux solaire = P/(4 pi d²), d la distance au Soleil", "loi de l'inverse du carré"},
    {"albedo", "a", "Flux d'albédo = a × flux solaire × cos(0,9 θ)^1,5, θ l'angle du Soleil à la verticale du satellite ; × facteur de vue pour la thermique", ""},
    {"earth_ir", "", "Absorbé par une face = ε F × cette valeur ; Modèle ISO : (1 - albédo) × flux solaire/4", "Terre isotherme en équilibre"},
    // Management
    {"gst_charge_init", "", "Taux de charge au début de chaque calcul", ""},
    {"gst_vch_max", "", "Si la tension d'un accumulateur en charge la dépasse, elle y est tenue et le courant baisse", bilan},
    {"gst_i_maint", "", "Courant d'un accumulateur plein", bilan},
    {"gst_ich_max", "", "Le courant de charge d'un accumulateur ne la dépasse pas", bilan},
    {"gst_k_recharge", "k", "Charge gagnée = I Δt/(3600 k C) ; chaleur de recharge = (k - 1)/k × puissance de charge", bilan},
    {"gst_rend_bat", "ηb", "La batterie fournit (demande - générateur)/ηb ; le reste chauffe", bilan},
    {"gst_rend_gs", "ηg", "La charge utile reçoit ηg × puissance du générateur ; le reste chauffe", bilan},
    {"gst_vregul", "", "Tension du bus régulé : tension d'une cellule = tension du bus / cellules en série", bilan},
    {"gst_regulated", "", "Régulé : tension fixe ; sinon accumulateurs en série × tension d'un accumulateur", bilan},
    {"p_demand", "Pd", "Excès = ηg Pgs + ηb Pbat - Pd ; négatif, il manque à la charge utile", bilan},
    {"p_dissip", "", "Chaleur à bord = part × puissance reçue par la charge utile", bilan},
    // Battery
    {"bat_c", "C", "Décharge : Δcharge = -I Δt/(3600 fi ft C), fi l'influence du courant, ft celle de la température", bilan},
    {"bat_ns", "", "Tension de la batterie = nombre en série × tension d'un accumulateur", bilan},
    {"bat_np", "", "Puissance de la batterie = série × parallèle × I V d'un accumulateur", bilan},
    {"ch_pt", "", "Tension = V + dV (T - 25 °C) + dV' log10(I/C), de même pour l'abscisse de chaque point", quatre_points},
    {"de_pt", "", "Tension = V + dV (T - 25 °C) + dV' log10(I/C), de même pour l'abscisse de chaque point", quatre_points},
    {"bat_cmax", "", "fi = 1 - (1 - C10/Cnom) log10(I/C), au plus Cmax/Cnom", ""},
    {"bat_c10", "", "fi = 1 - (1 - C10/Cnom) log10(I/C), au plus Cmax/Cnom", ""},
    {"bat_cmin_pct", "c", "ft = (1 - c) (1 - exp(-(T - Tmin) k)) + c, k = ln(1000 (1 - c))/(T99,9 - Tmin)", ""},
    {"bat_tmin", "Tmin", "ft = (1 - c) (1 - exp(-(T - Tmin) k)) + c, k = ln(1000 (1 - c))/(T99,9 - Tmin)", ""},
    {"bat_t999", "T99,9", "ft = (1 - c) (1 - exp(-(T - Tmin) k)) + c, k = ln(1000 (1 - c))/(T99,9 - Tmin)", ""},
    // Attitude
    {"Masse", "M", "Entre dans la masse totale et le centre de masse du bilan", corps},
    {"I_corps", "I", "I dω/dt + ω × (I ω + h) = couples ; gradient de gravité (3 mu/r³) n × I n", corps},
    {"dim", "", "Aires des faces et bras de levier des couples : traînée et pression solaire", corps},
    {"cm", "", "Bras de levier de chaque face = centre de la face - centre de masse", corps},
    {"mext", "m", "Ajoute 2 m d² aux deux inerties transverses : c'est le mât à gradient de gravité", corps},
    {"dext", "d", "Ajoute 2 m d² aux deux inerties transverses : c'est le mât à gradient de gravité", corps},
    {"omega_init", "ω0", "Vitesse au début de la simulation : I dω/dt + ω × (I ω + h) = couples", corps},
    {"dip_res", "D", "Couple magnétique = D × B, B le champ terrestre", "champ IGRF (IAGA)"},
    {"dip_act", "", "Dipôle commandé × champ terrestre ; sans boucle, il n'est jamais commandé dans le modèle de référence", "champ IGRF (IAGA)"},
    {"JR", "J", "Moment cinétique de la roue h = J Ω sur son axe", corps},
    {"OM_init", "Ω", "Moment cinétique de la roue h = J Ω sur son axe", corps},
    {"md", "m", "m x'' + c x' + k x = -m × accélération au bras de levier", amortisseur},
    {"ld", "l", "Distance de la masse de l'amortisseur au centre : l'accélération y croît avec elle", amortisseur},
    {"c", "c", "m x'' + c x' + k x = -m × accélération au bras de levier", amortisseur},
    {"k", "k", "m x'' + c x' + k x = -m × accélération au bras de levier ; période 2 pi racine(m/k)", amortisseur},
    {"sn", "σn", "Force normale d'une face = -2 q A (2 - σn) cos²θ, q la pression dynamique", plaque},
    {"st", "σt", "Force tangentielle d'une face = -2 q A σt cosθ sinθ, q la pression dynamique", plaque},
    {"cr", "cr", "Force d'une face = -p A cosθ ((1 - cr) s + 2 (cr + cd/3) n), s vers le Soleil, n la normale", lumiere},
    {"cd", "cd", "Force d'une face = -p A cosθ ((1 - cr) s + 2 (cr + cd/3) n), s vers le Soleil, n la normale", lumiere},
    // Control of the physical model
    {"gain", "", "Dipôle = -gain × dB/dt, B le champ en axes corps", "A. C. Stickler et K. T. Alfriend, J. Spacecraft 13, 282 (1976)"},
    {"dipole_max", "", "Limite du dipôle de chaque axe", ""},
    {"frequence", "ωn", "Couple = -I (ωn² × écart + 2 ζ ωn × vitesse)", pd},
    {"amortissement", "ζ", "Couple = -I (ωn² × écart + 2 ζ ωn × vitesse)", pd},
    // Criteria and period
    {"dod_max", "", "Le satellite tient si 100 (1 - charge minimale) reste dessous à la dernière orbite", ""},
    {"marge_min", "", "Marge = 100 (excédent - manque)/demande, en énergie sur une orbite", ""},
    {"pas", "Δt", "Durée d'un pas de calcul : restez à 60 s ou au-dessous en orbite basse", ""},
};
// clang-format on

} // namespace

const note_champ* note_de(std::string_view nom) {
    const auto* n =
        std::find_if(std::begin(notes), std::end(notes), [nom](const note_champ& x) { return nom == x.nom; });
    return n == std::end(notes) ? nullptr : n;
}
