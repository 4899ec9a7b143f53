#include "batch/commandes.h"
#include "batch/deroule.h"

statut cmd_orbite(const options& o, session& s, csv& sortie) { return deroule(jeu_orbite(s), o, s, sortie); }
