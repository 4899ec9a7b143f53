/// Any bytes as an orbit: always read; the propagation on what they spell ends, with or without a fault.
#include <cstdlib>

#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "project/orb_fichier.h"
#include "tests/fuzz/fichier_memoire.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    const fichier_memoire f(donnees, taille);
    orbit_state o;
    std::string raison;
    if (!charge_orbite(f.chemin(), o.orbite, raison)) abort();
    orb_position(18707.5, o);
    sous_point(18707.5, o);
    return 0;
}
