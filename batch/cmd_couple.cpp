#include "batch/commandes.h"
#include "batch/deroule.h"

statut cmd_couple(const options& o, session& s, csv& sortie) {
    std::vector<const char*> colonnes = colonnes_energie(s);
    for (const char* nom : {"roulis", "tangage", "lacet", "omega"}) colonnes.push_back(nom);
    return deroule({.nom = "couple",
                    .defaut = colonnes,
                    .plus = colonnes_energie_plus(),
                    .attitude = true,
                    .couple = true},
                   o, s, sortie);
}
