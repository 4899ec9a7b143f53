#include "orbit/soleil.h"

vec3 soleil_position(double j) {
    const double T = j - 18262.5; // days from 2000, noon
    const double t = j + 18262.5; // days from 1900

    const double g = T * 0.01720196965 + 6.239994691;
    // The double angles of both series come from the single ones: their small factors hide the rounding.
    const double cg = std::cos(g), c2g = 2 * cg * cg - 1;
    const double R = (1.00014 - 0.01675 * cg - 0.00014 * c2g) * 149596000.0;

    // Obliquity, eccentricity, mean longitude and mean anomaly of the date.
    const double epsilon =
        ((t * 1.8016676426329e-22 - 2.14556050619e-17) * t - 6.2179594501235e-09) * t + 0.40931974744572;
    const double e = (t * -9.4447419350758e-17 - 1.1444216290212e-09) * t + 0.0167104;
    const double L = (t * 3.9640538620461e-15 + 0.017202791266239) * t + 4.881627972897;
    const double M =
        ((t * -1.0745532659839e-21 - 1.962402902003e-15) * t + 0.017201969767685) * t + 6.2565835223195;

    const auto [sM, cM] = sincos_de(M);
    double lambda = 2 * e * sM + L + 1.25 * e * e * (2 * sM * cM);
    // One step towards one turn, on purpose not a full reduction.
    if (lambda >= deux_pi) lambda -= deux_pi;
    if (lambda < 0) lambda += deux_pi;

    const auto [sl, cl] = sincos_de(lambda);
    const auto [se, ce] = sincos_de(epsilon);
    const auto [sp, cp] = sincos_de(j * 6.11902e-07); // precession since 1950
    const double x = cp * cl + sp * ce * sl;
    const double y = -sp * cl + cp * ce * sl;
    const double z = se * sl;
    return {R * x, R * y, R * z};
}
