#include "batch/deroule.h"

#include <map>

#include "analysis/banc_attitude.h"
#include "analysis/reglages_etude.h"
#include "batch/donnees.h"
#include "shell/utilitaires.h"

bool choisit_voies(const options& o, const jeu& j, const power_record& p, std::vector<voie>& choix) {
    std::string refus;
    choix = choisit_voies(j, o.colonnes, p, refus);
    if (!refus.empty()) signale(refus);
    return refus.empty();
}

void ecrit_noms(const std::vector<voie>& choix, csv& sortie) {
    std::vector<std::string> noms;
    for (const voie& v : choix) noms.push_back(v.nom);
    sortie.entete(noms);
}

void ecrit_valeurs(const std::vector<voie>& choix, const std::vector<double>& valeurs, csv& sortie) {
    for (std::size_t c = 0; c < choix.size(); ++c)
        choix[c].quoi->entier ? sortie.valeur(static_cast<long>(valeurs[c])) : sortie.valeur(valeurs[c]);
    sortie.fin_de_ligne();
}

namespace {

/// Each limit that the control has reached, once.
void signale_saturations(std::span<const evenement_controle> evenements) {
    std::map<std::string, std::pair<int, double>> debuts; // how often, first date
    for (const evenement_controle& e : evenements)
        if (e.debut && debuts.try_emplace(texte_limite(e), 0, e.j).first->second.first++ == 0) continue;
    for (const auto& [texte, d] : debuts)
        signale(texte + ", " + std::to_string(d.first) + " fois, la première le " +
                date_vers_texte(jour_vers_date(d.second)));
}

} // namespace

statut deroule(const jeu& c, const options& o, session& s, csv& sortie, int cadence) {
    std::vector<voie> choix;
    if (!choisit_voies(o, c, s.power, choix)) return usage_incorrect;
    ecrit_noms(choix, sortie);

    reglages_calcul r;
    r.besoins = besoins_de(
        voies_de(c.defaut, s.power)); // faults of the command's own models show whatever the columns
    r.dossier_donnees = dossier_donnees();
    r.couple = c.couple;
    r.cadence = cadence;
    if (c.attitude)
        for (const std::string& a : avertissements_attitude(s)) signale(a);
    calcul run(modeles_de(s), choix, reglages_de(s, r));
    while (run.suivant()) {
        ecrit_valeurs(choix, run.ligne(), sortie);
        if (run.alerte_a_signaler()) signale(run.alerte());
    }
    signale_saturations(run.evenements());
    if (run.charge_a_signaler()) signale(message_charge_incompatible);
    if (run.faute_de_donnees()) {
        signale(c.nom + (" : " + run.raison()));
        return entree_illisible;
    }
    if (run.faute())
        return signale_faute(c.nom + std::string(run.faute_initiale() ? " (état initial)" : ""), run.date(),
                             run.raison(), run.cause());
    return reussi;
}
