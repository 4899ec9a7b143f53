#include "project/pwr_nombres.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

/// d.ddde+xx, rounded exactly, whatever the locale.
std::string scientifique(double x, int decimales) {
    char t[64];
    const auto r = std::to_chars(t, t + sizeof t, x, std::chars_format::scientific, decimales);
    return {t, r.ptr};
}

} // namespace

std::string ecrit_reel(double x, int chiffres) {
    if (x == 0) return " 0 ";
    // The value rounded to its significant digits, as d.ddddE+xx: digits and exponent are taken from it.
    const std::string rendu = scientifique(std::fabs(x), chiffres - 1);
    const std::size_t e = std::min(rendu.find('e'), rendu.size());
    std::string mantisse = rendu.substr(0, e);
    std::erase(mantisse, '.');
    const int exposant = std::atoi(rendu.c_str() + std::min(e + 1, rendu.size()));
    mantisse.erase(mantisse.find_last_not_of('0') + 1);
    const int n = static_cast<int>(mantisse.size());

    std::string texte;
    if (exposant < -2 || exposant >= chiffres) {
        texte = mantisse.substr(0, 1);
        if (n > 1) texte += "." + mantisse.substr(1);
        texte += 'E' + rendu.substr(e + 1); // a sign, two digits at least
    } else if (exposant < 0) {
        texte = "." + std::string(-exposant - 1, '0') + mantisse;
    } else if (n <= exposant + 1) {
        texte = mantisse + std::string(exposant + 1 - n, '0');
    } else {
        texte = mantisse.substr(0, exposant + 1) + "." + mantisse.substr(exposant + 1);
    }
    return (x < 0 ? "-" : " ") + texte + " ";
}

std::string ecrit_entier(long x) { return (x < 0 ? "" : " ") + std::to_string(x) + " "; }

std::string ecrit_puissance_sun(double x) {
    std::string t = scientifique(x, 4);
    std::replace(t.begin(), t.end(), 'e', 'E');
    return t;
}

namespace {

std::string_view sans_blancs(std::string_view t) {
    const auto debut = t.find_first_not_of(" \t");
    if (debut == std::string_view::npos) return {};
    return t.substr(debut, t.find_last_not_of(" \t") - debut + 1);
}

bool lit_entier(double& x, double min, double max, std::string& raison) {
    x = std::nearbyint(x);
    if (x >= min && x <= max) return true;
    raison = "nombre hors de l'étendue de son type";
    return false;
}

/// A piece of the file for people: its texts are bytes of code page 1252, here within Latin-1.
std::string en_utf8(std::string_view octets) {
    std::string r;
    for (const char octet : octets) {
        const auto c = static_cast<unsigned char>(octet);
        if (c >= 0x80) {
            r += static_cast<char>(0xC0 | (c >> 6));
            r += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            r += octet;
        }
    }
    return r;
}

} // namespace

bool lit_jeton(std::string_view jeton, type_champ type, double& x, std::string& raison) {
    std::string_view t = sans_blancs(jeton);
    if (t.size() > 1 && t[0] == '+' && t[1] != '-') t.remove_prefix(1);
    auto r = std::from_chars(t.data(), t.data() + t.size(), x);
    if (r.ec == std::errc::result_out_of_range) {
        if (t.find("E-") == t.npos && t.find("e-") == t.npos) {
            raison = "nombre hors de l'étendue de son type";
            return false;
        }
        x = 0; // too small for a double
        r.ec = {};
    }
    if (r.ec != std::errc{} || r.ptr != t.data() + t.size() || t.empty() || !std::isfinite(x)) {
        raison = t.empty() ? "valeur absente" : "« " + en_utf8(t) + " » n'est pas un nombre";
        return false;
    }
    switch (type) {
    case type_champ::i16: return lit_entier(x, INT16_MIN, INT16_MAX, raison);
    case type_champ::pas:
    case type_champ::i32: return lit_entier(x, INT32_MIN, INT32_MAX, raison);
    case type_champ::u8: return lit_entier(x, 0, UINT8_MAX, raison);
    case type_champ::f32:
        if (std::fabs(x) <= std::numeric_limits<float>::max()) return true;
        raison = "nombre hors de l'étendue de son type";
        return false;
    default: return true;
    }
}
