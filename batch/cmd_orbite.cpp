#include "batch/commandes.h"
#include "batch/deroule.h"

statut cmd_orbite(const options& o, session& s, csv& sortie) {
    commande_dates c = {"orbite",
                        {"j", "sat_pos", "sat_vit", "soleil_pos", "vec_nadir", "vec_soleil", "anomalie_moy",
                         "eclipse=eclipse_orbite", "sat_lon", "sat_lat", "sat_alt"}};
    if (s.modele.physique) c.defaut.push_back("part_soleil");
    return deroule(c, o, s, sortie);
}
