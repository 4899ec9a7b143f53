#include "power/diagnostic.h"

#include <algorithm>
#include <cfenv>
#include <cmath>

#include "orbit/orb_trajecto.h"
#include "power/catalogues.h"
#include "power/montage.h"
#include "power/power_bat.h"
#include "power/power_champs.h"
#include "power/power_thermique.h"
#include "shell/formats.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

std::string nombre(double x, const char* image = "0.0") { return format_image(x, image); }

/// The value at no load or in short circuit less the one at the maximum power point, as a straight line in
/// the temperature: the cell's model needs it above 0.
struct ecart_cellule_t {
    double a_tref, pente;

    ecart_cellule_t(double haut, double d_haut, double bas, double d_bas, double r_haut, double r_bas)
        : a_tref(haut * r_haut - bas * r_bas), pente(d_haut * r_haut - d_bas * r_bas) {}
    bool perdu(double dT) const { return !(a_tref + pente * dT > 0); }
};

std::string nom_cellule(const power_record& p) {
    constexpr const char* noms[nb_cellules_catalogue] = {"AsGa", "Silicium"};
    return p.cel_type >= 0 && p.cel_type < nb_cellules_catalogue ? noms[p.cel_type] : "photovoltaïques";
}

/// The panel whose cells the temperature has put outside of their model; -1: none.
int panneau_fautif(const power_record& p, const ecart_cellule_t& e, bool courants) {
    for (int i = 0; i < nombre_panneaux(p); ++i) {
        const auto n = static_cast<std::size_t>(i);
        const double t = p.node_t[n];
        // A fault in the cells goes on into the temperatures of the same step.
        if (std::isfinite(t) ? e.perdu(t - zero_celsius - p.cel_tref)
                             : courants && !std::isfinite(p.cell_eff[n]))
            return i;
    }
    return -1;
}

std::string cause_cellules(const power_record& p, bool courants) {
    const bool eol = p.cel_opt_beol != 0;
    const auto ecart = [&](bool vieillie) {
        if (courants)
            return ecart_cellule_t(p.cel_isc, p.cel_disc, p.cel_imp, p.cel_dimp,
                                   vieillie ? p.cel_radisc : 1.0, vieillie ? p.cel_radimp : 1.0);
        return ecart_cellule_t(p.cel_voc, p.cel_dvoc, p.cel_vmp, p.cel_dvmp, vieillie ? p.cel_radvoc : 1.0,
                               vieillie ? p.cel_radvmp : 1.0);
    };
    const std::string haut = courants ? "Isc" : "Voc", bas = courants ? "Imp" : "Vmp";
    const ecart_cellule_t neuve = ecart(false), e = ecart(eol);
    if (neuve.perdu(0))
        return "Cellules " + nom_cellule(p) + " : " + haut + " ne dépasse pas " + bas +
               ". Corrigez ces valeurs (Configuration, page « Cellules »).";
    if (e.perdu(0))
        return "Cellules " + nom_cellule(p) + " en fin de vie : le produit de " + haut +
               " par son rapport ne dépasse pas celui de " + bas +
               ". Corrigez les rapports de fin de vie (Configuration, page « Cellules »).";
    const int i = panneau_fautif(p, e, courants);
    if (i < 0) return {};
    const double limite = p.cel_tref - e.a_tref / e.pente;
    const double t = p.node_t[static_cast<std::size_t>(i)] - zero_celsius;
    std::string r = "Les cellules " + nom_cellule(p) + " du panneau " + std::to_string(i + 1) +
                    (e.pente > 0 ? " sont descendues sous " : " sont montées au-dessus de ") +
                    nombre(limite) + " °C";
    if (std::isfinite(t)) r += " (" + nombre(t) + " °C)";
    return r + " : " + haut + " n'y dépasse plus " + bas +
           ", leur modèle ne va pas plus loin. Revoyez la thermique du panneau, l'orbite ou les coefficients "
           "de "
           "température des cellules.";
}

std::string cause_orbite(const orbit_state& o, double date) {
    const int an = jour_vers_date(date).an;
    if (an < 1901 || an > 2099)
        return "La date sort du calendrier du programme (1901 à 2099). Corrigez la période.";
    orbit_state place = o;
    if (place.sat_pos == vec3{}) orb_position(date, place); // the fault came before any place
    const double r = vec_norme(place.sat_pos);
    if (r > rayon_ombre) return {};
    if (!std::isfinite(r))
        return "L'orbite ne donne pas de position. Corrigez ses éléments (Orbite, page « Orbite »).";
    return "Le satellite est à " + nombre(r, "0") + " km du centre de la Terre, sous les " +
           nombre(rayon_ombre, "0") +
           " km du modèle d'éclipse. Relevez le périgée (Orbite, page « Orbite »).";
}

/// The ageing of a coating needs an initial absorptivity below its limit, by more than a hundredth of it.
std::string cause_revetement(const power_record& p, double date) {
    const auto cherche = [&](const auto& a0, const auto& lim, const auto& t99) {
        for (std::size_t i = 0; i < a0.size(); ++i)
            if (a0[i] != lim[i] && (a0[i] > lim[i] || !(t99[i] > 0) ||
                                    !(alpha(p, static_cast<float>(date), a0[i], lim[i], t99[i]) >= 0)))
                return static_cast<int>(i);
        return -1;
    };
    const bool externes = montage_de(p) == montage::externes;
    const int i = externes ? cherche(p.ext_alpha0, p.ext_alpha_lim, p.ext_t99)
                           : cherche(p.fac_alpha0, p.fac_alpha_lim, p.fac_t99);
    if (i < 0) return {};
    if (date < p.date_cell)
        return "La date précède celle des revêtements neufs (« Date initiale cellules ») : leur "
               "vieillissement n'a "
               "pas de sens. Corrigez l'une ou l'autre.";
    constexpr const char* noms_externes[] = {"la face avant des panneaux",
                                             "la face arrière des panneaux",
                                             "la face X",
                                             "la face -X",
                                             "la face Y",
                                             "la face -Y",
                                             "la face Z",
                                             "la face -Z"};
    constexpr const char* noms_faces[] = {"les faces latérales", "la face supérieure", "la face inférieure"};
    return std::string("L'absorptivité initiale dépasse sa limite ou en est à moins de 1 %, ou le temps 99 % "
                       "est nul, pour ") +
           (externes ? noms_externes[i] : noms_faces[i]) +
           ". Corrigez ce revêtement (Configuration, page « Thermique »).";
}

std::string cause_batterie(const power_record& p) {
    if (!(p.bat_t999 > p.bat_tmin) || !(p.bat_cmin_pct < 100))
        return "L'influence de la température sur la capacité de la batterie est impossible : il faut une "
               "capacité minimale sous 100 % et une température à 99,9 % au-dessus de la minimale "
               "(Configuration, page « Batteries »).";
    if (std::isfinite(p.t_bat) && !(bat_cap_temp(p, p.t_bat) > 0))
        return "La batterie est à " + nombre(p.t_bat) +
               " °C, où elle n'a plus de capacité. Réchauffez l'intérieur du satellite, ou revoyez "
               "l'influence "
               "de la température (Configuration, page « Batteries »).";
    if (!std::isfinite(p.t_bat)) return {};
    const surveillance veille;
    const volatile double v = bat_v_discharge(p, 1, p.t_bat, .5); // its slope divides by the points' distance
    (void)v;
    if (veille.faute())
        return "Deux points de la courbe de décharge de la batterie ont la même abscisse. Corrigez la courbe "
               "(Configuration, page « Batteries »).";
    return {};
}

/// Keeps the caller's status flags: looking for a cause raises flags of its own.
struct drapeaux_gardes {
    drapeaux_gardes() { std::feholdexcept(&avant); }
    ~drapeaux_gardes() { std::fesetenv(&avant); }
    std::fenv_t avant;
};

/// The setting that is furthest from its usual value, where no satellite has it.
std::string cause_demesuree(const power_record& p) {
    constexpr double grand = 1e3, petit = 1e-7; // times the usual value, or 1000 where that is 0
    static const power_record usuel;
    std::string pire;
    double loin = 0;
    for (const champ& c : power_champs()) {
        if (c.type != type_champ::f32 && c.type != type_champ::f64 && c.type != type_champ::puissance_sun)
            continue;
        for (int i = 0; i < c.nombre; ++i) {
            const double x = valeur(p, c, i), d = valeur(usuel, c, i), q = std::fabs(x / (d != 0 ? d : 1000));
            const double ecart = std::fabs(std::log(q)); // infinite for 0, which is usual for many
            if ((q <= grand && (d == 0 || q >= petit)) || !(ecart > loin) || x == 0) continue;
            loin = ecart;
            pire = std::string("« ") + c.sens + " » vaut " + format_general(x, 3) + ' ' + c.unite +
                   ", d'ordinaire " + format_general(d, 3) +
                   " : c'est sans doute la cause. Corrigez cette valeur.";
        }
    }
    return pire;
}

/// The thermal passes last 1 s whatever the step, but for the cylinder's beyond 300 s.
std::string cause_thermique(const power_record& p, int32_t pas) {
    if (!std::isfinite(p.p_heat)) return {}; // it did not begin here
    if (std::all_of(p.node_t.begin(), p.node_t.end(), [](double t) { return std::fabs(t) < 5000; }))
        return {};
    if (montage_de(p) == montage::cylindre && pas >= 600)
        return "Les échanges thermiques divergent : prenez un pas de moins de 10 min.";
    return "Les échanges thermiques divergent : une masse ou une chaleur massique est trop petite devant les "
           "conductances (Configuration, page « Thermique »).";
}

} // namespace

std::string cause_de_faute(const power_record& p, const orbit_state& o, const simulation_period& periode) {
    const drapeaux_gardes garde;
    // Coatings before cells: those make these cold.
    for (const std::string& cause :
         {cause_orbite(o, periode.j_courant), cause_revetement(p, periode.j_courant), cause_cellules(p, true),
          cause_cellules(p, false), cause_batterie(p), cause_demesuree(p),
          cause_thermique(p, periode.pas_sim)})
        if (!cause.empty()) return cause;
    return {};
}

std::string refus_etude_batterie(const power_record& p, double temperature) {
    const drapeaux_gardes garde;
    if (bat_cap_temp(p, temperature) > 0) return {};
    return "À " + format_court(temperature) +
           " °C l'accumulateur n'a plus de capacité : prenez une température plus haute, ou revoyez "
           "l'influence de la température (Configuration, page « Batteries »).";
}
