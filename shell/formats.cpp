#include "shell/formats.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

/// The parts of a picture such as "#0.00E+00 V".
struct image_lue {
    std::string avant, apres; ///< texts kept as they stand
    int entiers = 0;          ///< least digits before the point
    int decimales = 0;        ///< digits after the point, optional ones included
    int decimales_fixes = 0;  ///< those that are always written
    char exposant = 0;        ///< 'E', 'e' or 0
    bool exposant_signe = false;
    int chiffres_exposant = 0;
};

bool est_chiffre(char c) { return c == '0' || c == '#'; }

image_lue lit_image(std::string_view im) {
    image_lue r;
    size_t i = 0;
    auto debut_nombre = [&] {
        return est_chiffre(im[i]) || (im[i] == '.' && i + 1 < im.size() && est_chiffre(im[i + 1]));
    };
    while (i < im.size() && !debut_nombre()) r.avant += im[i++];
    for (; i < im.size() && est_chiffre(im[i]); ++i) r.entiers += im[i] == '0';
    if (i < im.size() && im[i] == '.') {
        for (++i; i < im.size() && est_chiffre(im[i]); ++i) {
            ++r.decimales;
            if (im[i] == '0') r.decimales_fixes = r.decimales;
        }
    }
    if (i + 2 < im.size() && (im[i] == 'E' || im[i] == 'e') && (im[i + 1] == '+' || im[i + 1] == '-') &&
        im[i + 2] == '0') {
        r.exposant = im[i];
        r.exposant_signe = im[i + 1] == '+';
        for (i += 2; i < im.size() && im[i] == '0'; ++i) ++r.chiffres_exposant;
    }
    r.apres = im.substr(i);
    return r;
}

/// x with so many decimals, rounded exactly, whatever the locale.
std::string imprime(double x, std::chars_format forme, int decimales) {
    std::string t(static_cast<size_t>(decimales) + 320, '\0'); // the largest double has 309 digits
    const auto r = std::to_chars(t.data(), t.data() + t.size(), x, forme, decimales);
    t.resize(static_cast<size_t>(r.ptr - t.data()));
    return t;
}

/// Optional decimals are dropped where they are zeros.
void coupe_zeros(std::string& t, const image_lue& im) {
    int en_trop = im.decimales - im.decimales_fixes;
    for (; en_trop > 0 && t.back() == '0'; --en_trop) t.pop_back();
    if (t.back() == '.') t.pop_back();
}

} // namespace

std::string format_image(double x, std::string_view image) {
    const image_lue im = lit_image(image);
    if (!std::isfinite(x)) return im.avant + (std::isnan(x) ? "nan" : x < 0 ? "-inf" : "inf") + im.apres;
    std::string chiffres, exposant;
    if (im.exposant) {
        chiffres = imprime(std::fabs(x), std::chars_format::scientific, im.decimales);
        const size_t e = chiffres.find('e');
        const int valeur = std::atoi(chiffres.c_str() + e + 1);
        chiffres.resize(e);
        std::string n = std::to_string(std::abs(valeur));
        if (static_cast<int>(n.size()) < im.chiffres_exposant)
            n.insert(0, im.chiffres_exposant - n.size(), '0');
        exposant = im.exposant;
        if (valeur < 0)
            exposant += '-';
        else if (im.exposant_signe)
            exposant += '+';
        exposant += n;
    } else {
        chiffres = imprime(std::fabs(x), std::chars_format::fixed, im.decimales);
    }
    if (im.decimales > 0) coupe_zeros(chiffres, im);
    const size_t entiers = std::min(chiffres.find('.'), chiffres.size());
    if (entiers < static_cast<size_t>(im.entiers)) chiffres.insert(0, im.entiers - entiers, '0');
    if (im.entiers == 0 && chiffres.size() > 1 && chiffres[0] == '0') chiffres.erase(0, 1);
    // A value that rounds to zero carries no sign.
    const bool nul = chiffres.find_first_of("123456789") == std::string::npos;
    return im.avant + (std::signbit(x) && !nul ? "-" : "") + chiffres + exposant + im.apres;
}

std::string texte_fixe(double x, int decimales) {
    char t[400];
    const auto r = std::to_chars(t, t + sizeof t, x, std::chars_format::fixed, decimales);
    // A value that rounds to zero carries no sign.
    const bool zero_negatif =
        t[0] == '-' && std::none_of(t, r.ptr, [](char c) { return c >= '1' && c <= '9'; });
    return {zero_negatif ? t + 1 : t, r.ptr};
}

std::string format_duree(long secondes) {
    const bool negatif = secondes < 0;
    const unsigned long s = negatif ? 0UL - static_cast<unsigned long>(secondes) : secondes;
    char t[40];
    std::snprintf(t, sizeof t, "%s%02lu:%02lu:%02lu", negatif ? "-" : "", s / 3600, s / 60 % 60, s % 60);
    return t;
}

namespace {

template <class T>
std::string court(T x) {
    char t[40];
    const auto r = std::to_chars(t, t + sizeof t, x);
    return {t, r.ptr};
}

} // namespace

std::string format_general(double x, int chiffres) {
    char t[64];
    return {t, std::to_chars(t, t + sizeof t, x, std::chars_format::general, chiffres).ptr};
}

std::string format_court(double x) { return court(x); }
std::string format_court(float x) { return court(x); }

bool lit_nombre(std::string_view texte, double& x) {
    auto blanc = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!texte.empty() && blanc(texte.front())) texte.remove_prefix(1);
    while (!texte.empty() && blanc(texte.back())) texte.remove_suffix(1);
    if (texte.size() > 1 && texte[0] == '+' && texte[1] != '-') texte.remove_prefix(1);
    std::string t(texte);
    if (const size_t v = t.find(','); v != std::string::npos) t[v] = '.';
    double lu = 0.0;
    const auto [fin, faute] = std::from_chars(t.data(), t.data() + t.size(), lu);
    if (faute != std::errc{} || fin != t.data() + t.size() || !std::isfinite(lu)) return false;
    x = lu;
    return true;
}
