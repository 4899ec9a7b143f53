#include "batch/commandes.h"
#include "batch/deroule.h"

statut cmd_energie(const options& o, session& s, csv& sortie) {
    return deroule(jeu_energie(s), o, s, sortie);
}
