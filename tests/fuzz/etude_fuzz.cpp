/// Any text as an étude: read or refused with a reason, and what was read is written and read back the same.
#include <cstdlib>

#include "project/etude_fichier.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    etude e;
    std::string raison;
    if (!lit_texte_etude({reinterpret_cast<const char*>(donnees), taille}, e, raison)) {
        if (raison.empty()) abort();
        return 0;
    }
    const std::string texte = texte_etude(e);
    etude relue;
    if (!lit_texte_etude(texte, relue, raison) || texte_etude(relue) != texte) abort();
    return 0;
}
