#include "project/json_texte.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

namespace {

/// Builds the value of a text as its parts are told, and stops at the first defect.
class lecteur {
public:
    explicit lecteur(std::string_view texte) : texte_(texte) {}

    json resultat;
    std::string raison;

    using number_integer_t = json::number_integer_t;
    using number_unsigned_t = json::number_unsigned_t;
    using number_float_t = json::number_float_t;
    using string_t = json::string_t;
    using binary_t = json::binary_t;

    bool null() { return pose(nullptr); }
    bool boolean(bool x) { return pose(x); }
    bool number_integer(number_integer_t x) { return pose(x); }
    bool number_unsigned(number_unsigned_t x) { return pose(x); }
    bool number_float(number_float_t x, const string_t&) { return pose(x); }
    bool string(string_t& x) { return pose(std::move(x)); }
    bool binary(binary_t&) { return false; }

    bool start_object(std::size_t) { return entre(json::object()); }
    bool start_array(std::size_t) { return entre(json::array()); }
    bool end_object() { return sort(); }
    bool end_array() { return sort(); }
    bool key(string_t& nom) {
        json& objet = *pile_.back();
        if (objet.size() >= json_cles_max) { // they are sought one by one
            raison = "plus de " + std::to_string(json_cles_max) + " clés";
            return false;
        }
        if (objet.contains(nom)) {
            raison = "la clé « " + nom + " » est là deux fois";
            return false;
        }
        cle_ = nom;
        return true;
    }

    bool parse_error(std::size_t octet, const std::string&, const nlohmann::detail::exception& e) {
        const auto debut = texte_.substr(0, octet);
        raison = "ligne " + std::to_string(1 + std::count(debut.begin(), debut.end(), '\n'));
        raison += e.id == 406 ? " : nombre trop grand" : " : ce n'est pas du JSON";
        return false;
    }

private:
    /// Where the next value goes.
    json* ajoute(json&& x) {
        if (pile_.empty()) return &(resultat = std::move(x));
        json& parent = *pile_.back();
        if (parent.is_array()) {
            parent.push_back(std::move(x));
            return &parent.back();
        }
        return &(parent[cle_] = std::move(x));
    }
    bool pose(json&& x) {
        ajoute(std::move(x));
        return true;
    }
    /// Containers on the way stand in their parents' last place: the pointers stay good while they are open.
    bool entre(json&& x) {
        if (pile_.size() >= json_profondeur_max) {
            raison = "plus de " + std::to_string(json_profondeur_max) + " niveaux";
            return false;
        }
        pile_.push_back(ajoute(std::move(x)));
        return true;
    }
    bool sort() {
        pile_.pop_back();
        return true;
    }

    std::string_view texte_;
    std::vector<json*> pile_;
    std::string cle_;
};

class ecrivain {
public:
    explicit ecrivain(bool court) : court_(court) {}
    std::string texte;

    void valeur(const json& j, int niveau) {
        if (j.is_object())
            conteneur(j, niveau, '{', '}', j.empty());
        else if (j.is_array())
            conteneur(j, niveau, '[', ']', j.empty() || de_nombres(j));
        else if (j.is_number_float())
            reel(j.get<double>());
        else
            texte += j.dump(-1, ' ', false, json::error_handler_t::replace);
    }

private:
    static bool de_nombres(const json& j) {
        return std::all_of(j.begin(), j.end(), [](const json& x) { return x.is_number() || x.is_boolean(); });
    }
    void conteneur(const json& j, int niveau, char ouvre, char ferme, bool une_ligne) {
        const bool ligne = !une_ligne && !court_;
        const auto saute = [&](int n) {
            if (ligne) texte += '\n' + std::string(2 * static_cast<std::size_t>(n), ' ');
        };
        texte += ouvre;
        bool premier = true;
        for (auto i = j.begin(); i != j.end(); ++i) {
            if (!premier) texte += ligne ? "," : ", ";
            premier = false;
            saute(niveau + 1);
            if (j.is_object()) {
                texte += json(i.key()).dump(-1, ' ', false, json::error_handler_t::replace);
                texte += ": ";
            }
            valeur(*i, niveau + 1);
        }
        saute(niveau);
        texte += ferme;
    }
    /// The shortest form; with a point where it would read back as an integer.
    void reel(double x) {
        if (!std::isfinite(x)) {
            texte += "null";
            return;
        }
        char tampon[32];
        const auto fin = std::to_chars(tampon, tampon + sizeof tampon, x);
        const std::string_view t(tampon, static_cast<std::size_t>(fin.ptr - tampon));
        texte += t;
        if (t.find_first_of(".e") == t.npos) texte += ".0";
    }

    bool court_;
};

} // namespace

bool lit_json(std::string_view texte, json& j, std::string& raison) {
    if (texte.size() > json_taille_max) {
        raison = "plus de " + std::to_string(json_taille_max >> 20) + " Mo";
        return false;
    }
    lecteur l(texte);
    if (!json::sax_parse(texte.begin(), texte.end(), &l)) {
        raison = l.raison;
        return false;
    }
    j = std::move(l.resultat);
    return true;
}

std::string ecrit_json(const json& j) {
    ecrivain e(false);
    e.valeur(j, 0);
    return e.texte + '\n';
}

std::string ecrit_json_court(const json& j) {
    ecrivain e(true);
    e.valeur(j, 0);
    return e.texte;
}

json nombre_json(double x) {
    constexpr double entiers_exacts = 9007199254740992;
    if (x == std::floor(x) && std::abs(x) < entiers_exacts && !(x == 0 && std::signbit(x)))
        return static_cast<int64_t>(x);
    return x;
}
