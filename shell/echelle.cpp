#include "shell/echelle.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "shell/formats.h"

double limite_arrondie(double x) {
    if (x == 0 || !std::isfinite(x)) return x;
    const std::string texte = format_image(std::fabs(x), "0.00e+00");
    const auto e = texte.find('e');
    const auto valeur = [](const std::string& t) {
        double lu = HUGE_VAL; // beyond the largest double
        std::from_chars(t.data(), t.data() + t.size(), lu);
        return lu;
    };
    const double mantisse = valeur(texte.substr(0, e));
    const char* premier = mantisse <= 2 ? "2" : mantisse <= 5 ? "5" : "10";
    return std::copysign(valeur(premier + texte.substr(e)), x);
}

void echelle::arrondit() {
    if (min >= 0 && max >= 0) {
        min = 0;
    } else if (min < 0 && max < 0) {
        max = 0;
    } else {
        // A maximum of 0 counts as not negative: negative values alone get a symmetrical scale.
        max = std::max(std::fabs(min), std::fabs(max));
        min = -max;
    }
    min = limite_arrondie(min);
    max = limite_arrondie(max);
}

std::string texte_limite(double x, std::string_view image) {
    std::string texte = format_image(x, image);
    double lu = 0;
    if (lit_nombre(texte, lu) && lu == x) return texte;
    return format_image(x, "0.0E+00");
}
