#include "attitude/att_run.h"
#include "batch/commandes.h"
#include "batch/deroule.h"
#include "batch/donnees.h"
#include "project/att_fichier.h"

statut cmd_attitude(const options& o, session& s, csv& sortie) {
    if (o.ecriture < 1) {
        signale("--ecriture doit être au moins 1");
        return usage_incorrect;
    }
    // By dates, as the other commands: a row at the start of the period, then one at the end of each step.
    if (s.modele.physique) return deroule(jeu_attitude(), o, s, sortie, o.ecriture);
    const std::vector<voie> toutes = voies_de(colonnes_resultats, s.power);
    std::vector<voie> choix;
    if (!choisit_voies(o, s.power, toutes, toutes, besoin::attitude, choix)) return usage_incorrect;
    ecrit_noms(choix, sortie);

    atmosphere air(dossier_donnees());
    etat_calcul etat{s.periode, s.orbit, s.power, s.attitude};
    std::vector<double> ligne(choix.size());
    att_run_rappels rappels;
    rappels.ecrit = [&](const enregistrement_att& e) {
        etat.enregistrement = &e;
        for (std::size_t c = 0; c < choix.size(); ++c) ligne[c] = choix[c].lit(etat);
        ecrit_valeurs(choix, ligne, sortie);
    };
    rappels.diverge = [](double) {
        signale(std::string(message_divergence) + " Choisissez un pas plus petit.");
    };
    const att_run_bilan bilan = att_run(s.attitude, s.orbit, s.periode, o.ecriture, air, rappels);
    if (bilan.fin != att_run_fin::faute) return reussi;
    signale(texte_faute(bilan));
    return air.faute().empty() ? faute_numerique : entree_illisible;
}
