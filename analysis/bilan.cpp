#include "analysis/bilan.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/modes.h"
#include "analysis/reglages_etude.h"
#include "orbit/orb_trajecto.h"
#include "power/montage.h"
#include "shell/utilitaires.h"

namespace {

constexpr colonne_bilan table[] = {
    {"orbite", "Orbite", "", 0, &tour_bilan::orbite, true},
    {"debut", "Début", "j", 5, &tour_bilan::debut},
    {"duree", "Durée", "s", 0, &tour_bilan::duree},
    {"eclipse", "Éclipse", "s", 0, &tour_bilan::eclipse},
    {"e_gen", "Énergie du générateur", "Wh", 2, &tour_bilan::e_gen},
    {"e_demande", "Énergie demandée", "Wh", 2, &tour_bilan::e_demande},
    {"e_utile", "Énergie fournie à la charge utile", "Wh", 2, &tour_bilan::e_utile},
    {"e_manque", "Énergie qui manque", "Wh", 2, &tour_bilan::e_manque},
    {"e_excedent", "Excédent", "Wh", 2, &tour_bilan::e_excedent},
    {"e_pertes", "Pertes", "Wh", 2, &tour_bilan::e_pertes},
    {"e_charge", "Énergie mise dans la batterie", "Wh", 2, &tour_bilan::e_charge},
    {"e_decharge", "Énergie tirée de la batterie", "Wh", 2, &tour_bilan::e_decharge},
    {"soc_min", "Charge la plus basse", "", 3, &tour_bilan::soc_min},
    {"soc_fin", "Charge à la fin", "", 3, &tour_bilan::soc_fin},
    {"dod", "Profondeur de décharge", "%", 1, &tour_bilan::dod},
    {"t_bat_min", "Batterie, température la plus basse", "°C", 1, &tour_bilan::t_bat_min},
    {"t_bat_max", "Batterie, température la plus haute", "°C", 1, &tour_bilan::t_bat_max},
    {"t_pan_min", "Panneaux, température la plus basse", "°C", 1, &tour_bilan::t_pan_min},
    {"t_pan_max", "Panneaux, température la plus haute", "°C", 1, &tour_bilan::t_pan_max},
    {"marge", "Marge", "%", 1, &tour_bilan::marge},
};

constexpr double infini = std::numeric_limits<double>::infinity();

/// Sums and extremes of the turn in hand.
class accumulateur {
public:
    void ajoute(const etat_calcul& s, double pas, int panneaux) {
        const power_record& p = s.energie;
        if (pas_ == 0)
            t_ = {.debut = s.periode.j_courant,
                  .soc_min = infini,
                  .t_bat_min = infini,
                  .t_bat_max = -infini,
                  .t_pan_min = infini,
                  .t_pan_max = -infini};
        ++pas_;
        duree_ = pas;
        if (p.eclipse != faux) ++eclipse_;
        t_.e_gen += p.gen_power;
        t_.e_demande += p.p_demande;
        t_.e_utile += p.p_payload;
        t_.e_manque += std::max(-p.p_excess, 0.0);
        t_.e_excedent += std::max(p.p_excess, 0.0);
        t_.e_pertes += p.p_loss_ch + p.p_loss_de + p.p_loss_gs;
        t_.e_perte_charge += p.p_loss_ch;
        t_.e_charge += std::max(-p.bat_p, 0.0);
        t_.e_decharge += std::max(p.bat_p, 0.0);
        t_.soc_min = std::min(t_.soc_min, p.bat_soc);
        t_.soc_fin = p.bat_soc;
        t_.t_bat_min = std::min(t_.t_bat_min, p.t_bat);
        t_.t_bat_max = std::max(t_.t_bat_max, p.t_bat);
        for (int i = 0; i < panneaux; ++i) {
            const double t = p.node_t[static_cast<std::size_t>(i)] - zero_celsius;
            t_.t_pan_min = std::min(t_.t_pan_min, t);
            t_.t_pan_max = std::max(t_.t_pan_max, t);
        }
    }
    /// The turn as a row; the next step begins another one.
    tour_bilan ferme(int orbite) {
        const double heures = duree_ / 3600;
        for (double tour_bilan::*e :
             {&tour_bilan::e_gen, &tour_bilan::e_demande, &tour_bilan::e_utile, &tour_bilan::e_manque,
              &tour_bilan::e_excedent, &tour_bilan::e_pertes, &tour_bilan::e_perte_charge,
              &tour_bilan::e_charge, &tour_bilan::e_decharge})
            t_.*e *= heures;
        t_.orbite = orbite;
        t_.duree = pas_ * duree_;
        t_.eclipse = eclipse_ * duree_;
        t_.dod = 100 * (1 - t_.soc_min);
        t_.marge = t_.e_demande != 0 ? 100 * (t_.e_excedent - t_.e_manque) / t_.e_demande
                                     : std::numeric_limits<double>::quiet_NaN();
        pas_ = eclipse_ = 0;
        return t_;
    }
    bool vide() const { return pas_ == 0; }

private:
    tour_bilan t_;
    long pas_ = 0, eclipse_ = 0;
    double duree_ = 0; ///< [s] of a step
};

constexpr double manque_max = 0.001;  // [Wh] a turn
constexpr double derive_max = 0.0005; // of the charge, from a turn to the next

/// The charge has settled, or the turns asked for are done.
bool assez(const std::vector<tour_bilan>& tours, int orbites) {
    const auto n = static_cast<int>(tours.size());
    if (orbites > 0) return n >= orbites;
    if (n >= orbites_max_bilan) return true;
    return n >= 2 && std::fabs(tours[n - 1].soc_fin - tours[n - 2].soc_fin) < derive_max;
}

void juge(bilan& b, const criteres_valeurs& c) {
    if (b.tours.empty()) return;
    const tour_bilan& dernier = b.tours.back();
    const int n = static_cast<int>(b.tours.size());
    const auto exige = [&b](bool tenu, const char* critere, double valeur, double limite, int orbite) {
        if (!tenu) b.raisons.push_back({critere, valeur, limite, orbite});
    };
    for (const tour_bilan& t : b.tours)
        if (!(t.e_manque < manque_max)) {
            exige(false, "manque", t.e_manque, manque_max, static_cast<int>(t.orbite));
            break; // the first turn in which something is missing tells enough
        }
    if (n >= 2) {
        const double derive = dernier.soc_fin - b.tours[static_cast<std::size_t>(n) - 2].soc_fin;
        exige(derive >= -derive_max, "derive", derive, -derive_max, n);
    }
    exige(dernier.dod <= c.dod_max, "dod", dernier.dod, c.dod_max, n);
    exige(dernier.t_bat_min >= c.t_bat_min, "t_bat", dernier.t_bat_min, c.t_bat_min, n);
    exige(dernier.t_bat_max <= c.t_bat_max, "t_bat", dernier.t_bat_max, c.t_bat_max, n);
    exige(std::isnan(dernier.marge) || dernier.marge >= c.marge_min, "marge", dernier.marge, c.marge_min, n);
    b.tient = b.raisons.empty();
}

} // namespace

std::span<const colonne_bilan> colonnes_bilan() { return table; }

const colonne_bilan* cherche_colonne_bilan(std::string_view nom) {
    const auto* c = std::find_if(std::begin(table), std::end(table),
                                 [nom](const colonne_bilan& x) { return nom == x.nom; });
    return c == std::end(table) ? nullptr : c;
}

bilan calcule_bilan(etude e, const reglages_bilan& r) {
    bilan b;
    e.power.t_bat = 0; // whatever ran before: the budget of an étude is the same everywhere
    const double duree = duree_orbite(e), pas = e.periode.pas_sim;
    const int panneaux = nombre_panneaux(e.power);
    const criteres_valeurs criteres = criteres_en_vigueur(e);
    reglages_calcul reglages =
        reglages_de(e, {.besoins = besoin::energie, .dossier_donnees = r.dossier_donnees});
    if (r.environnement)
        reglages.environnement = [&pas_connus = *r.environnement,
                                  n = std::size_t(0)](double, power_record& p, orbit_state& o,
                                                      const simulation_period&) mutable {
            pose_environnement(pas_connus.at(n++), p, o);
        };
    calcul c(modeles_de(e), {}, std::move(reglages));

    accumulateur tour;
    long orbite = 0;
    bool va = c.demarre();
    for (; va; c.avance()) {
        const long k = orbite_de(c.date(), e.periode.j_debut, duree);
        if (k != orbite && !tour.vide()) {
            b.tours.push_back(tour.ferme(static_cast<int>(orbite) + 1));
            if (assez(b.tours, r.orbites)) break;
        }
        orbite = k;
        if (r.arret.stop_requested()) {
            b.interrompu = true;
            break;
        }
        va = c.pas();
        if (!va) break;
        tour.ajoute(c.etat(), pas, panneaux);
    }
    if (c.faute()) b.faute = {c.date(), c.raison(), c.cause()};
    b.charge_incompatible = e.power.courbe_charge_incompatible;
    if (!b.faute && !b.interrompu) juge(b, criteres);
    return b;
}

double angle_beta(const etude& e, double date) {
    orbit_state o = e.orbit;
    place_orbite(e, date, o);
    const vec3 normale = vec_vectoriel(o.sat_pos, o.sat_vit);
    return radians_vers_degres(
        std::asin(vec_scalaire(o.soleil_pos, normale) / (vec_norme(o.soleil_pos) * vec_norme(normale))));
}

std::vector<date_bilan> calcule_annee(const etude& e, int dates, const reglages_bilan& r) {
    std::vector<date_bilan> annee;
    for (int k = 0; k < dates && !r.arret.stop_requested(); ++k) {
        etude jour = e;
        jour.periode.j_debut = e.periode.j_debut + k * 365.25 / dates;
        date_bilan d{jour.periode.j_debut, angle_beta(jour, jour.periode.j_debut), {}};
        d.resultat = calcule_bilan(std::move(jour), r);
        const bool faute = d.resultat.faute.has_value();
        annee.push_back(std::move(d));
        if (faute) break;
    }
    return annee;
}
