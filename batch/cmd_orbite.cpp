#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

struct etat {
    double j;
    const orbit_state& o;
};
using col = colonne<etat>;

std::vector<col> table() {
    std::vector<col> t = {{"j", [](const etat& e, int) { return e.j; }}};
    ajoute_vecteur(t, "sat_pos", [](const etat& e, int i) { return e.o.sat_pos[i]; });
    ajoute_vecteur(t, "sat_vit", [](const etat& e, int i) { return e.o.sat_vit[i]; });
    ajoute_vecteur(t, "soleil_pos", [](const etat& e, int i) { return e.o.soleil_pos[i]; });
    ajoute_vecteur(t, "vec_nadir", [](const etat& e, int i) { return e.o.vec_nadir[i]; });
    ajoute_vecteur(t, "vec_soleil", [](const etat& e, int i) { return e.o.vec_soleil[i]; });
    t.push_back({"anomalie_moy", [](const etat& e, int) { return e.o.anomalie_moy; }});
    t.push_back({"eclipse", [](const etat& e, int) -> double { return e.o.eclipse; }, 0, true});
    t.push_back({"sat_lon", [](const etat& e, int) { return e.o.sat_lon; }});
    t.push_back({"sat_lat", [](const etat& e, int) { return e.o.sat_lat; }});
    t.push_back({"sat_alt", [](const etat& e, int) { return e.o.sat_alt; }});
    return t;
}

} // namespace

statut cmd_orbite(const options& o, session& s, csv& sortie) {
    const auto toutes = table();
    std::vector<col> choix;
    if (!choisit_colonnes(toutes, toutes.size(), o.colonnes, choix)) return usage_incorrect;
    ecrit_entete(choix, sortie);

    surveillance veille;
    const double fin = fin_de_periode(s.periode), pas = s.periode.pas_sim / secondes_par_jour;
    for (double j = s.periode.j_debut; j <= fin; j += pas) {
        orb_position(j, s.orbit);
        sous_point(j, s.orbit);
        if (veille.faute()) return signale_faute("orbite", j);
        ecrit_ligne(choix, {j, s.orbit}, sortie);
    }
    return reussi;
}
