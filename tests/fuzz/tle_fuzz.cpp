/// Any text as two-line elements: read into orbits that the model can follow, or refused with a reason.
#include <cmath>
#include <cstdlib>

#include "orbit/orb_trajecto.h"
#include "project/tle_fichier.h"
#include "shell/utilitaires.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    std::vector<elements_tle> lus;
    std::string raison;
    if (!lit_tle({reinterpret_cast<const char*>(donnees), taille}, lus, raison)) {
        if (raison.empty() || !lus.empty()) abort();
        return 0;
    }
    if (lus.empty()) abort();
    for (const elements_tle& e : lus) {
        orbit_state o;
        o.orbite = e.orbite;
        orb_position(date_epoque(o.orbite.orb_an, o.orbite.orb_jour - 1), o);
        for (const double x : o.sat_pos)
            if (!std::isfinite(x)) abort();
    }
    return 0;
}
