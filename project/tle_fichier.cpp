#include "project/tle_fichier.h"

#include <algorithm>
#include <charconv>

#include "orbit/orb_trajecto.h"
#include "shell/formats.h"
#include "shell/lecture.h"

namespace {

constexpr std::size_t longueur_ligne = 69;
constexpr double altitude_min = rayon_ombre - rayon_terre; ///< [km] below, the shadow has no solution

std::string_view sans_blancs(std::string_view t) {
    const auto debut = t.find_first_not_of(" \t\r");
    if (debut == std::string_view::npos) return {};
    return t.substr(debut, t.find_last_not_of(" \t\r") - debut + 1);
}

/// A number and its columns (from 1).
struct champ {
    const char* nom;
    std::size_t debut, longueur;
    double min, max;
    double record_orbite::*valeur;
};
constexpr champ annee = {"année de l'époque", 19, 2, 0, 99, nullptr};
constexpr champ jour = {"jour de l'époque", 21, 12, 1, 366.99999999, &record_orbite::orb_jour};
constexpr champ champs_ligne2[] = {
    {"inclinaison", 9, 8, 0, 180, &record_orbite::orb_inclinaison},
    {"ascension droite du nœud", 18, 8, 0, 360, &record_orbite::orb_ascension},
    {"excentricité", 27, 7, 0, 9999999, &record_orbite::orb_excentricite}, // "0." is understood
    {"argument du périgée", 35, 8, 0, 360, &record_orbite::orb_argument},
    {"anomalie moyenne", 44, 8, 0, 360, &record_orbite::orb_anomalie},
    {"moyen mouvement", 53, 11, 0.01, 20, &record_orbite::orb_moy_mvt},
};

// Each routine below returns what is wrong, empty when nothing is.

std::string lit_champ(std::string_view ligne, const champ& c, double& x) {
    const std::string_view t = sans_blancs(ligne.substr(c.debut - 1, c.longueur));
    const auto [fin, faute] = std::from_chars(t.data(), t.data() + t.size(), x, std::chars_format::fixed);
    if (t.empty() || faute != std::errc{} || fin != t.data() + t.size())
        return std::string(c.nom) + " : « " + std::string(t) + " » n'est pas un nombre";
    if (!(x >= c.min && x <= c.max))
        return std::string(c.nom) + " " + format_court(x) + " : de " + format_court(c.min) + " à " +
               format_court(c.max);
    return {};
}

/// Length and checksum: the digits' sum, a minus counting for one, modulo 10.
std::string verifie_ligne(std::string_view ligne) {
    if (ligne.size() != longueur_ligne) return std::to_string(ligne.size()) + " caractères au lieu de 69";
    int somme = 0;
    for (const char c : ligne.substr(0, longueur_ligne - 1)) {
        if (c < ' ' || c > '~') return "caractère interdit";
        somme += c >= '0' && c <= '9' ? c - '0' : c == '-' ? 1 : 0;
    }
    const char attendue = static_cast<char>('0' + somme % 10);
    if (ligne.back() != attendue)
        return std::string("somme de contrôle ") + ligne.back() + " au lieu de " + attendue;
    return {};
}

std::string lit_ligne1(std::string_view l, record_orbite& o) {
    double an = 0;
    std::string mal = lit_champ(l, annee, an);
    if (mal.empty()) mal = lit_champ(l, jour, o.orb_jour);
    o.orb_an = static_cast<int16_t>(an < 57 ? 2000 + an : 1900 + an);
    return mal;
}

std::string lit_ligne2(std::string_view l, record_orbite& o) {
    for (const champ& c : champs_ligne2)
        if (std::string mal = lit_champ(l, c, o.*c.valeur); !mal.empty()) return mal;
    o.orb_excentricite /= 1e7;
    o.orb_demi = demi_de_moy_mvt(o.orb_moy_mvt);
    const double perigee = altitude_perigee(o);
    if (perigee < altitude_min)
        return "périgée à " + format_image(perigee, "0") + " km d'altitude : au moins " +
               format_image(altitude_min, "0") + " km";
    return {};
}

/// The lines of a text, gathered into sets of elements.
class lecteur {
public:
    std::string ligne(std::string_view l) {
        if (l.starts_with("1 ")) return ligne_un(l);
        if (l.starts_with("2 ")) return ligne_deux(l);
        if (!ligne1_.empty()) return "ligne 2 des éléments attendue";
        if (!nom_.empty()) return "ligne 1 des éléments attendue";
        nom_ = sans_blancs(l.starts_with("0 ") ? l.substr(2) : l);
        // A name is shown, and stored in an orbit file: plain characters alone.
        std::replace_if(
            nom_.begin(), nom_.end(), [](char c) { return c < ' ' || c > '~'; }, '_');
        return {};
    }
    std::string fin() const {
        if (!ligne1_.empty()) return "la ligne 2 des éléments manque";
        if (!nom_.empty() || lus_.empty()) return "pas d'éléments : deux lignes de 69 caractères attendues";
        return {};
    }
    std::vector<elements_tle> lus() { return std::move(lus_); }

private:
    std::string ligne_un(std::string_view l) {
        if (!ligne1_.empty()) return "ligne 2 des éléments attendue";
        std::string mal = verifie_ligne(l);
        if (mal.empty()) mal = lit_ligne1(l, orbite_);
        ligne1_ = l;
        return mal;
    }
    std::string ligne_deux(std::string_view l) {
        if (ligne1_.empty()) return "ligne 1 des éléments attendue";
        std::string mal = verifie_ligne(l);
        if (!mal.empty()) return mal;
        const std::string_view numero = l.substr(2, 5);
        if (const std::string attendu = ligne1_.substr(2, 5); numero != attendu)
            return "satellite " + std::string(numero) + " au lieu de " + attendu;
        mal = lit_ligne2(l, orbite_);
        if (!mal.empty()) return mal;
        if (nom_.empty()) nom_ = sans_blancs(numero);
        orbite_.orb_nom.fill(' ');
        std::copy_n(nom_.begin(), std::min(nom_.size(), orbite_.orb_nom.size()), orbite_.orb_nom.begin());
        lus_.push_back({std::move(nom_), orbite_});
        nom_.clear(), ligne1_.clear(), orbite_ = {};
        return {};
    }

    std::vector<elements_tle> lus_;
    std::string nom_, ligne1_;
    record_orbite orbite_;
};

} // namespace

bool lit_tle(std::string_view texte, std::vector<elements_tle>& lus, std::string& raison) {
    lecteur l;
    for (int numero = 1; !texte.empty(); ++numero) {
        const auto fin = texte.find('\n');
        const std::string_view ligne = sans_blancs(texte.substr(0, fin));
        texte.remove_prefix(fin == std::string_view::npos ? texte.size() : fin + 1);
        if (ligne.empty() || ligne.front() == '#') continue;
        if (const std::string mal = l.ligne(ligne); !mal.empty()) {
            raison = "ligne " + std::to_string(numero) + " : " + mal;
            return false;
        }
    }
    raison = l.fin();
    if (raison.empty()) lus = l.lus();
    return raison.empty();
}

bool charge_tle(const std::string& chemin, std::vector<elements_tle>& lus, std::string& raison) {
    std::string texte;
    return lit_fichier_court(chemin, tle_taille_max, texte, raison) && lit_tle(texte, lus, raison);
}
