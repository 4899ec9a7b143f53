#include "project/orb_fichier.h"

#include <filesystem>

bool fichier_existe(const std::string& chemin) {
    std::error_code erreur;
    const auto etat = std::filesystem::status(chemin, erreur);
    return !erreur && std::filesystem::exists(etat) && !std::filesystem::is_directory(etat);
}
