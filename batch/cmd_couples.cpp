#include "batch/commandes.h"
#include "batch/deroule.h"

statut cmd_couples(const options& o, session& s, csv& sortie) {
    return deroule({"couples", {"j", "gradient", "aero", "solaire", "magnetique", "ctot"}}, o, s, sortie);
}
