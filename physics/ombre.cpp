#include "physics/ombre.h"

#include <algorithm>
#include <numbers>

#include "orbit/orb_trajecto.h"

double part_visible(double a, double b, double c) {
    if (c >= a + b) return 1;
    if (c <= b - a) return 0;
    if (c <= a - b) return 1 - carre(b / a);
    const double x = (c * c + a * a - b * b) / (2 * c);
    const double y = std::sqrt(std::max(0.0, a * a - x * x));
    // The two segments on either side of the common chord; arctangents, because the arcs are small.
    const double couvert = a * a * std::atan2(y, x) - x * y + b * b * std::atan2(y, c - x) - (c - x) * y;
    return std::clamp(1 - couvert / (std::numbers::pi * a * a), 0.0, 1.0);
}

double part_du_soleil(const vec3& satellite, const vec3& soleil) {
    const vec3 vers = vec_difference(soleil, satellite);
    const double r = vec_norme(satellite), d = vec_norme(vers);
    const double cosinus = -vec_scalaire(satellite, vers) / (r * d);
    // The Earth's disc reaches at most to the horizon plane, a Sun's radius further for the penumbra.
    if (cosinus < -0.01 && r >= rayon_terre) return 1;
    const double c = std::acos(std::clamp(cosinus, -1.0, 1.0));
    return part_visible(std::asin(rayon_soleil / d), std::asin(rayon_terre / r), c);
}
