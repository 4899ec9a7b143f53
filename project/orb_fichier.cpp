#include "project/orb_fichier.h"

#include <array>
#include <cstring>
#include <filesystem>

#include "orbit/orb_champs.h"
#include "project/enregistrement.h"

namespace {

constexpr std::size_t taille_case = 128;
constexpr std::size_t taille_record = 114;

/// Calls `v` with the place in the file, the place in the record and the size of each field of the file.
template <class Octets, class Visiteur>
void parcourt(Octets* record, Visiteur&& v) {
    for (const champ_orb& c : orb_champs())
        if (c.decalage >= 0) v(c.decalage, record + c.place, c.taille());
}

} // namespace

bool fichier_existe(const std::string& chemin) {
    std::error_code erreur;
    const auto etat = std::filesystem::status(chemin, erreur);
    return !erreur && std::filesystem::exists(etat) && !std::filesystem::is_directory(etat);
}

bool sauve_orbite(const std::string& chemin, const record_orbite& o, std::string& raison) {
    std::array<char, taille_case> tampon{};
    parcourt(reinterpret_cast<const char*>(&o), [&](int place, const char* champ, std::size_t taille) {
        std::memcpy(tampon.data() + place, champ, taille);
    });
    return ecrit_enregistrement(chemin, tampon.data(), tampon.size(), false, raison);
}

bool charge_orbite(const std::string& chemin, record_orbite& o, std::string& raison) {
    std::array<char, taille_record> tampon{};
    if (!lit_enregistrement(chemin, tampon.data(), tampon.size(), raison)) return false;
    parcourt(reinterpret_cast<char*>(&o), [&](int place, char* champ, std::size_t taille) {
        std::memcpy(champ, tampon.data() + place, taille);
    });
    return true;
}

std::string extrait_nom_fichier(const std::string& chemin) {
    const auto debut = chemin.find_first_not_of(' ');
    if (debut == std::string::npos) return {};
    std::string nom = chemin.substr(debut, chemin.find_last_not_of(' ') - debut + 1);
    if (const auto barre = nom.find_last_of("/\\"); barre != std::string::npos) nom.erase(0, barre + 1);
    if (const auto point = nom.rfind('.'); point != std::string::npos) nom.erase(point);
    return nom;
}
