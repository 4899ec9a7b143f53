#include "physics/soleil_almanach.h"

#include <numbers>

#include "physics/repere.h"

vec3 soleil_almanach(double j) {
    constexpr double degre = std::numbers::pi / 180;
    const double n = j - jour_j2000;
    const double L = 280.460 + 0.9856474 * n;
    const auto [sg, cg] = sincos_de((357.528 + 0.9856003 * n) * degre);
    const double s2g = 2 * sg * cg, c2g = 2 * cg * cg - 1;
    const auto [sl, cl] = sincos_de((L + 1.915 * sg + 0.020 * s2g) * degre);
    const auto [se, ce] = sincos_de((23.439 - 0.0000004 * n) * degre);
    const double R = (1.00014 - 0.01671 * cg - 0.00014 * c2g) * unite_astronomique;
    return {R * cl, R * ce * sl, R * se * sl};
}
