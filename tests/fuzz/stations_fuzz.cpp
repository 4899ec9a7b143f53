/// Any text as a list of stations: what is read reads back to itself, the rest is refused with a reason.
#include <cstdlib>

#include "orbit/station.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    std::vector<station> lues;
    std::string raison;
    if (!lit_stations({reinterpret_cast<const char*>(donnees), taille}, lues, raison)) {
        if (raison.empty() || !lues.empty()) abort();
        return 0;
    }
    for (const station& s : lues) {
        station relue;
        if (!lit_station(station_vers_texte(s), relue, raison) || relue != s) abort();
    }
    return 0;
}
