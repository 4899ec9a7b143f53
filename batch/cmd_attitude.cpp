#include "attitude/att_run.h"
#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "batch/donnees.h"
#include "project/att_fichier.h"

namespace {

using col = colonne<enregistrement_att>;

std::vector<col> table() {
    std::vector<col> t;
    for (int i = 0; i < nb_colonnes_resultats; ++i)
        t.push_back({colonnes_resultats[i], [](const enregistrement_att& e, int k) { return e[k]; }, i});
    return t;
}

} // namespace

statut cmd_attitude(const options& o, session& s, csv& sortie) {
    const auto toutes = table();
    std::vector<col> choix;
    if (!choisit_colonnes(toutes, toutes.size(), o.colonnes, choix)) return usage_incorrect;
    if (o.ecriture < 1) {
        signale("--ecriture doit être au moins 1");
        return usage_incorrect;
    }
    ecrit_entete(choix, sortie);

    atmosphere air(dossier_donnees());
    att_run_rappels rappels;
    rappels.ecrit = [&](const enregistrement_att& e) { ecrit_ligne(choix, e, sortie); };
    rappels.diverge = [](double) {
        signale(std::string(message_divergence) + " Choisissez un pas plus petit.");
    };
    const att_run_bilan bilan = att_run(s.attitude, s.orbit, s.periode, o.ecriture, air, rappels);
    if (bilan.fin != att_run_fin::faute) return reussi;
    signale(texte_faute(bilan));
    return faute_numerique;
}
