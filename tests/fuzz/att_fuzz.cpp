/// Any bytes as an attitude project: always read, and one step on what they spell ends.
#include <cstdlib>

#include "attitude/att_defin_attitude.h"
#include "project/att_fichier.h"
#include "tests/fuzz/fichier_memoire.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    const fichier_memoire f(donnees, taille);
    attitude_record a;
    std::string raison;
    if (!charge_attitude(f.chemin(), a, raison)) abort();
    bilan_masses(a);
    attitude_init(a, pointage_record{});
    return 0;
}
