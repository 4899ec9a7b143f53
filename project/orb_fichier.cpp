#include "project/orb_fichier.h"

#include <array>
#include <cstring>
#include <filesystem>

#include "project/enregistrement.h"

namespace {

constexpr std::size_t taille_case = 128;
constexpr std::size_t taille_record = 114;

/// Walks the record's fields in file order with a reader or a writer.
template <class Record, class Visiteur>
void parcourt(Record& o, Visiteur&& v) {
    v(0, o.orb_nom);
    v(24, o.orb_inclinaison);
    v(32, o.orb_ascension);
    v(40, o.orb_excentricite);
    v(48, o.orb_argument);
    v(56, o.orb_anomalie);
    v(64, o.orb_moy_mvt);
    v(72, o.orb_an);
    v(74, o.orb_jour);
    v(82, o.orb_demi);
    v(90, o.reserve);
}

} // namespace

bool fichier_existe(const std::string& chemin) {
    std::error_code erreur;
    const auto etat = std::filesystem::status(chemin, erreur);
    return !erreur && std::filesystem::exists(etat) && !std::filesystem::is_directory(etat);
}

bool sauve_orbite(const std::string& chemin, const record_orbite& o, std::string& raison) {
    std::array<char, taille_case> tampon{};
    parcourt(o, [&](std::size_t place, const auto& champ) {
        std::memcpy(tampon.data() + place, &champ, sizeof champ);
    });
    return ecrit_enregistrement(chemin, tampon.data(), tampon.size(), false, raison);
}

bool charge_orbite(const std::string& chemin, record_orbite& o, std::string& raison) {
    std::array<char, taille_record> tampon{};
    if (!lit_enregistrement(chemin, tampon.data(), tampon.size(), raison)) return false;
    parcourt(
        o, [&](std::size_t place, auto& champ) { std::memcpy(&champ, tampon.data() + place, sizeof champ); });
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
