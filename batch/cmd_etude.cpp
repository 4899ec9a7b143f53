#include "batch/commandes.h"
#include "project/etude_fichier.h"

statut cmd_etude(const options& o, session& s, csv& sortie) {
    std::string raison;
    if (!o.sortie.empty()) {
        if (sauve_etude(o.sortie, s, raison)) return reussi;
        signale(raison);
        return entree_illisible;
    }
    etude relue;
    if (!lit_texte_etude(texte_etude(s), relue, raison)) {
        signale(raison);
        return entree_illisible;
    }
    sortie.texte(texte_etude(s));
    return reussi;
}
