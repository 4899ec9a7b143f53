#include "batch/commandes.h"
#include "batch/deroule.h"
#include "batch/donnees.h"
#include "project/att_fichier.h"

statut cmd_attitude(const options& o, session& s, csv& sortie) {
    if (o.ecriture < 1) {
        signale("--ecriture doit être au moins 1");
        return usage_incorrect;
    }
    const jeu j = jeu_attitude(s);
    // By dates, as the other commands: a row at the start of the period, then one at the end of each step.
    if (s.modele.physique) return deroule(j, o, s, sortie, o.ecriture);
    std::vector<voie> choix;
    if (!choisit_voies(o, j, s.power, choix)) return usage_incorrect;
    ecrit_noms(choix, sortie);

    atmosphere air(dossier_donnees());
    const att_run_bilan bilan = deroule_attitude(
        s, choix, o.ecriture, air,
        [&](const std::vector<double>& ligne) { ecrit_valeurs(choix, ligne, sortie); },
        [](double) { signale(std::string(message_divergence) + " Choisissez un pas plus petit."); });
    if (bilan.fin != att_run_fin::faute) return reussi;
    signale(texte_faute(bilan));
    return air.faute().empty() ? faute_numerique : entree_illisible;
}
