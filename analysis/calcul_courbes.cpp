#include "analysis/calcul_courbes.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

#include "analysis/reglages_etude.h"
#include "attitude/att_run.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"

namespace {

constexpr double rien = std::numeric_limits<double>::quiet_NaN();
constexpr double manque_sensible = 1e-3; // [W]
constexpr long pas_par_coup_d_oeil = 64;

/// The columns of one loop over the dates, filled row by row.
struct colonnes {
    std::vector<voie> voies;
    std::vector<double> dates;
    std::vector<std::vector<double>> valeurs;

    void reserve(std::size_t lignes) {
        valeurs.resize(voies.size());
        dates.reserve(lignes);
        for (auto& v : valeurs) v.reserve(lignes);
    }
    void ajoute(double date, const std::vector<double>& ligne) {
        dates.push_back(date);
        for (std::size_t c = 0; c < voies.size(); ++c) {
            // The mark "no target" is no angle.
            const bool absent = ligne[c] == sans_cible && std::string_view(voies[c].quoi->unite) == "rad";
            valeurs[c].push_back(absent ? rien : ligne[c]);
        }
    }
};

/// Looks at the steps of a run and notes what begins and what ends.
class guetteur {
public:
    explicit guetteur(resultat_courbes& r) : r_(r) {}

    /// `puissance` is null where the power model does not run.
    void regarde(double j, bool eclipse, const power_record* puissance) {
        note(eclipse_, eclipse, j, evenement::entree_eclipse, evenement::sortie_eclipse);
        if (eclipse_ && !avant_) debut_ = j;
        if (!eclipse_ && avant_) r_.eclipses.emplace_back(debut_, j);
        avant_ = eclipse_;
        if (puissance) regarde_energie(j, *puissance);
        premier_ = false;
    }
    void ferme(double j) {
        if (avant_) r_.eclipses.emplace_back(debut_, j);
    }

private:
    void regarde_energie(double j, const power_record& p) {
        monte(pleine_, p.bat_soc >= 1, j, evenement::batterie_pleine);
        monte(vide_, p.bat_soc <= 0, j, evenement::batterie_vide);
        note(manque_, p.p_excess < -manque_sensible, j, evenement::manque, evenement::fin_manque);
    }
    void note(bool& etat, bool nouveau, double j, evenement debut, evenement fin) {
        if (nouveau != etat && !premier_) r_.evenements.push_back({j, nouveau ? debut : fin});
        // Power that is short from the first step on must be seen.
        if (nouveau && premier_ && debut == evenement::manque) r_.evenements.push_back({j, debut});
        etat = nouveau;
    }
    void monte(bool& etat, bool nouveau, double j, evenement quoi) {
        if (nouveau && !etat && !premier_) r_.evenements.push_back({j, quoi});
        etat = nouveau;
    }

    resultat_courbes& r_;
    bool premier_ = true, avant_ = false;
    bool eclipse_ = false, pleine_ = false, vide_ = false, manque_ = false;
    double debut_ = 0;
};

/// Steps of a period at most; of one that no run comes to the end of, so many that the cadence fits its type.
long pas_de(const simulation_period& p) {
    constexpr double bien_assez = 1e14;
    if (!(p.j_fin >= p.j_debut) || p.pas_sim <= 0) return 1;
    return static_cast<long>(std::min((p.j_fin - p.j_debut) * secondes_par_jour / p.pas_sim, bien_assez)) + 2;
}

struct parcours {
    etude& e;
    const std::string& dossier;
    suivi_courbes& suivi;
    const std::stop_token& abandon;
    const reglages_courbes& reglages;
    double poids = 1, depuis = 0; ///< share of the whole work, and what was done before
    resultat_courbes& r;

    bool continue_(double j) const {
        const double duree = e.periode.j_fin - e.periode.j_debut;
        if (duree > 0) suivi.part = depuis + poids * std::clamp((j - e.periode.j_debut) / duree, 0., 1.);
        return voulu();
    }
    bool voulu() const { return !suivi.arret && !abandon.stop_requested(); }

    void par_dates(colonnes& c) const {
        c.reserve(static_cast<std::size_t>(pas_de(e.periode) / r.cadence + 1));
        calcul run(modeles_de(e), c.voies,
                   reglages_de(e, {.besoins = reglages.energie ? besoin::energie : besoin::orbite,
                                   .dossier_donnees = dossier,
                                   .cadence = r.cadence,
                                   .arret = [this] { return !voulu(); }}));
        guetteur g(r);
        long n = 0;
        // A step of a fast rotation alone may take long.
        const long coup_d_oeil = e.modele.physique ? 1 : pas_par_coup_d_oeil;
        while (run.suivant()) {
            c.ajoute(run.date(), run.ligne());
            const etat_calcul& etat = run.etat();
            if (reglages.energie)
                g.regarde(run.date(), etat.energie.eclipse == vrai, &etat.energie);
            else
                g.regarde(run.date(), etat.orbite.eclipse == vrai, nullptr);
            if (++n % coup_d_oeil == 0 && !continue_(run.date())) {
                r.partiel = true;
                break;
            }
        }
        if (run.arrete()) r.partiel = true;
        if (!c.dates.empty()) g.ferme(c.dates.back());
        for (const evenement_controle& x : run.evenements())
            if (x.debut) r.evenements.push_back({x.j, evenement::saturation, texte_limite(x)});
        r.pas += n * r.cadence;
        r.alerte = run.alerte();
        if (!run.faute()) return;
        r.partiel = true;
        r.raison =
            "Calcul interrompu le " + date_vers_texte(jour_vers_date(run.date())) + " : " + run.raison();
    }

    void attitude(colonnes& c) const {
        c.reserve(static_cast<std::size_t>(pas_de(e.periode) / r.cadence + 2));
        atmosphere air(dossier);
        etat_calcul etat{e.periode, e.orbit, e.power, e.attitude};
        std::vector<double> ligne(c.voies.size());
        att_run_rappels rappels;
        rappels.ecrit = [&](const enregistrement_att& x) {
            etat.enregistrement = &x;
            for (std::size_t k = 0; k < ligne.size(); ++k) ligne[k] = c.voies[k].lit(etat);
            c.ajoute(x[0], ligne);
        };
        rappels.progres = [&](float p) {
            return continue_(e.periode.j_debut + p / 100.0 * (e.periode.j_fin - e.periode.j_debut));
        };
        rappels.diverge = [&](double j) {
            r.evenements.push_back({j, evenement::pas_trop_grand, message_divergence});
        };
        const att_run_bilan b = att_run(e.attitude, e.orbit, e.periode, r.cadence, air, rappels);
        r.pas += b.pas;
        if (b.fin == att_run_fin::terminee) return;
        r.partiel = true;
        if (b.fin == att_run_fin::faute) r.raison = texte_faute(b);
    }
};

/// A column of the physical model's attitude in the reference model: the same angle or rate of its own run,
/// so that runs of both are overlaid.
void remplace_par_reference(voie& v) {
    constexpr std::pair<std::string_view, int> memes[] = {{"roulis", 7},  {"tangage", 8}, {"lacet", 9},
                                                          {"omega_x", 1}, {"omega_y", 2}, {"omega_z", 3}};
    for (const auto& [nom, colonne] : memes)
        if (v.nom == nom) {
            v.quoi = cherche_variable(colonnes_resultats[static_cast<std::size_t>(colonne)]);
            v.element = 0;
        }
}

void range(colonnes& c, const std::vector<std::pair<int, std::size_t>>& places, int boucle,
           std::vector<courbe_calculee>& courbes) {
    const auto dates = std::make_shared<const std::vector<double>>(std::move(c.dates));
    for (std::size_t k = 0; k < places.size(); ++k) {
        if (places[k].first != boucle) continue;
        const voie& v = c.voies[places[k].second];
        courbes[k] = {v, serie(dates, std::move(c.valeurs[places[k].second]), tour_variable(*v.quoi))};
    }
}

} // namespace

const courbe_calculee* resultat_courbes::cherche(const std::string& nom) const {
    const auto c =
        std::find_if(courbes.begin(), courbes.end(), [&](const auto& x) { return x.quoi.nom == nom; });
    return c == courbes.end() ? nullptr : &*c;
}

resultat_courbes calcule_courbes(etude e, std::span<const std::string> noms, const std::string& dossier,
                                 suivi_courbes& suivi, const std::stop_token& abandon,
                                 const reglages_courbes& reglages) {
    const auto depart = std::chrono::steady_clock::now();
    resultat_courbes r;
    r.cadence = static_cast<int>(1 + (pas_de(e.periode) - 1) / reglages.lignes_max);
    colonnes deux[2]; // by dates; of the reference model's attitude
    std::vector<std::pair<int, std::size_t>> places;
    for (const std::string& nom : noms) {
        std::vector<voie> une;
        if (!ajoute_voies(nom, e.power, une)) continue;
        if (!e.modele.physique)
            for (voie& v : une) remplace_par_reference(v);
        const int boucle = !e.modele.physique && (une[0].quoi->lit & besoin::attitude);
        for (voie& v : une) {
            deux[boucle].voies.push_back(std::move(v));
            places.emplace_back(boucle, deux[boucle].voies.size() - 1);
        }
    }
    const bool attitude = !deux[1].voies.empty();
    etude autre = e; // the attitude starts from the records as they were
    parcours{e, dossier, suivi, abandon, reglages, attitude ? .4 : 1, 0, r}.par_dates(deux[0]);
    if (!deux[0].dates.empty()) r.debut = deux[0].dates.front(), r.fin = deux[0].dates.back();
    if (attitude && !suivi.arret && !abandon.stop_requested())
        parcours{autre, dossier, suivi, abandon, reglages, .6, .4, r}.attitude(deux[1]);
    else
        deux[1].reserve(0);
    std::stable_sort(r.evenements.begin(), r.evenements.end(),
                     [](const auto& a, const auto& b) { return a.date < b.date; });
    r.courbes.resize(places.size());
    range(deux[0], places, 0, r.courbes);
    range(deux[1], places, 1, r.courbes);
    suivi.part = 1;
    r.duree = std::chrono::duration<double>(std::chrono::steady_clock::now() - depart).count();
    return r;
}

const char* nom_evenement(evenement e) {
    static constexpr const char* noms[nb_evenements] = {
        "Entrée en éclipse", "Sortie d'éclipse",       "Batterie pleine",
        "Batterie vide",     "Manque de puissance",    "Fin du manque de puissance",
        "Pas trop grand",    "Saturation du contrôle", "Passage"};
    return noms[static_cast<int>(e)];
}

std::vector<jeu_courbes> jeux_courbes(const etude& e) {
    std::vector<jeu_courbes> j = {
        {"Puissances", {{"gen_power", "p_demande", "p_payload"}, {"bat_p", "p_excess"}}},
        {"Batterie", {{"bat_soc"}, {"bat_v", "bat_i"}, {"t_bat"}}},
        {"Températures", {{"t_bat"}, {"node_t_min", "node_t_max"}}},
        {"Flux", {{"flux_sun"}, {"flux_alb", "flux_ir"}, {"solar_flux_direct_max"}}},
        {"Orbite", {{"sat_alt"}, {"sat_lat", "sat_lon"}, {"sun_nadir_cos"}}},
    };
    // By the names that both models have, so that a kept run of the other one is overlaid.
    j.push_back({"Attitude",
                 {{colonnes_resultats[7], colonnes_resultats[8], colonnes_resultats[9]},
                  {colonnes_resultats[1], colonnes_resultats[2], colonnes_resultats[3]}}});
    if (e.modele.physique) {
        j.push_back({"Rotation (modèle physique)", {{"energie"}, {"h_x", "h_y", "h_z", "h_norme"}}});
        j.push_back({"Directions (modèle physique)",
                     {{"angle_nadir_x", "angle_nadir_y", "angle_nadir_z"},
                      {"angle_soleil_x", "angle_soleil_y", "angle_soleil_z"}}});
        j.push_back({"Contrôle (modèle physique)",
                     {{"commande_x", "commande_y", "commande_z"},
                      {"couple_roue_x", "couple_roue_y", "couple_roue_z"},
                      {"vitesse_roue_x", "vitesse_roue_y", "vitesse_roue_z"}}});
    }
    return j;
}

double tour_variable(const variable& v) {
    const std::string_view u = v.unite;
    return u == "°" ? 360 : u == "rad" ? 2 * pi : 0;
}

std::string nombre_courbe(double x, int decimales) {
    if (!std::isfinite(x)) return "—";
    const double a = std::fabs(x);
    if (a != 0 && (a >= 1e9 || a < std::pow(10, -decimales - 1))) return format_image(x, "0.000E+00");
    return format_image(x, "0" + (decimales > 0 ? "." + std::string(static_cast<std::size_t>(decimales), '0')
                                                : std::string()));
}
