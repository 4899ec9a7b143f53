/// Any text as a list of components: what can be put into an étude leaves one that reads back.
#include <cstdlib>

#include "project/composants.h"
#include "project/etude_fichier.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    const liste_composants l = lit_composants({reinterpret_cast<const char*>(donnees), taille});
    for (const composant& c : l.composants)
        for (const drapeau externes : {vrai, faux}) {
            etude e = etude_par_defaut(), relue;
            e.power.opt_panel_ext = externes;
            std::string raison;
            const std::string avant = texte_etude(e);
            if (!pose_composant(e, c, 0, raison)) {
                if (raison.empty() || texte_etude(e) != avant) abort();
            } else if (!lit_texte_etude(texte_etude(e), relue, raison)) {
                abort();
            }
        }
    return 0;
}
