#include "batch/commandes.h"
#include "batch/deroule.h"

statut cmd_couple(const options& o, session& s, csv& sortie) { return deroule(jeu_couple(s), o, s, sortie); }
