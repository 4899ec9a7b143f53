#include "shell/lecture.h"

#include <algorithm>
#include <cerrno>
#include <fstream>

#include "shell/ecriture.h"
#include "shell/utilitaires.h"

bool lit_fichier(const std::string& chemin, std::size_t taille_max, std::string& texte, std::string& raison) {
    texte.clear();
    if (est_dossier(chemin)) {
        raison = raison_systeme(EISDIR);
        return false;
    }
    std::ifstream fichier(chemin, std::ios::binary);
    if (!fichier) {
        raison = raison_systeme(errno);
        return false;
    }
    char bloc[65536];
    while (texte.size() <= taille_max) {
        const std::size_t place = std::min(sizeof bloc, taille_max + 1 - texte.size());
        fichier.read(bloc, static_cast<std::streamsize>(place));
        if (fichier.gcount() == 0) break;
        texte.append(bloc, static_cast<std::size_t>(fichier.gcount()));
    }
    if (fichier.bad()) raison = raison_systeme(EIO);
    return !fichier.bad();
}

bool lit_fichier_court(const std::string& chemin, std::size_t taille_max, std::string& texte,
                       std::string& raison) {
    if (!lit_fichier(chemin, taille_max, texte, raison)) return false;
    if (texte.size() <= taille_max) return true;
    raison = "plus de " + std::to_string(taille_max >> 20) + " Mo";
    return false;
}
