#include "shell/lecture.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
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

std::vector<std::string> fichiers_du_dossier(const std::string& dossier, const std::string& fin) {
    std::vector<std::string> chemins;
    std::error_code erreur;
    // By hand: the loop over a range throws where a folder becomes unreadable on the way.
    for (std::filesystem::directory_iterator i(dossier, erreur), bout; !erreur && i != bout;
         i.increment(erreur))
        if (std::string chemin = i->path().string(); chemin.ends_with(fin))
            chemins.push_back(std::move(chemin));
    return chemins;
}
