#include "attitude/att_couples.h"
#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "batch/donnees.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

struct etat {
    double j;
    const attitude_record& a;
};
using col = colonne<etat>;

std::vector<col> table() {
    std::vector<col> t = {{"j", [](const etat& e, int) { return e.j; }}};
    ajoute_vecteur(t, "gradient", [](const etat& e, int i) { return e.a.c_gradient[i]; });
    ajoute_vecteur(t, "aero", [](const etat& e, int i) { return e.a.c_aero[i]; });
    ajoute_vecteur(t, "solaire", [](const etat& e, int i) { return e.a.c_solaire[i]; });
    ajoute_vecteur(t, "magnetique", [](const etat& e, int i) { return e.a.c_magnetique[i]; });
    ajoute_vecteur(t, "ctot", [](const etat& e, int i) { return e.a.ctot[i]; });
    return t;
}

} // namespace

statut cmd_couples(const options& o, session& s, csv& sortie) {
    const auto toutes = table();
    std::vector<col> choix;
    if (!choisit_colonnes(toutes, toutes.size(), o.colonnes, choix)) return usage_incorrect;
    ecrit_entete(choix, sortie);

    atmosphere air(dossier_donnees());
    surveillance veille;
    const double fin = fin_de_periode(s.periode), pas = s.periode.pas_sim / secondes_par_jour;
    for (double j = s.periode.j_debut; j <= fin; j += pas) {
        couples_a_la_date(s.attitude, s.orbit, j, s.periode.j_debut, air);
        if (veille.faute()) {
            if (air.faute().empty()) return signale_faute("couples", j);
            signale("couples : " + air.faute());
            return faute_numerique;
        }
        ecrit_ligne(choix, {j, s.attitude}, sortie);
    }
    return reussi;
}
