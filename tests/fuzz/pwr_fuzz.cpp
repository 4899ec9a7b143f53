/// Any bytes as an energy project: either read, or refused with a line and a reason.
#include <cstdlib>

#include "project/pwr_fichier.h"
#include "tests/fuzz/fichier_memoire.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    const fichier_memoire f(donnees, taille);
    power_record p;
    simulation_period periode;
    erreur_fichier erreur;
    if (!charge_energie(f.chemin(), p, periode, erreur) && (erreur.ligne < 1 || erreur.raison.empty()))
        abort();
    return 0;
}
