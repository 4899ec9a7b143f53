/// The Earth's magnetic field.
///
/// Expected values: main field of IGRF 1995 (IAGA Division V, 1996, degree 10, coefficients at 1995.0),
/// evaluated apart from this program from the Legendre polynomials in exact fractions and numerical
/// derivatives of the potential; once cut at degree 6, once whole.
#include <gtest/gtest.h>

#include "attitude/att_igrf.h"
#include "tests/releve.h"

namespace {

constexpr double date_1995 = 16425; // 45 times 365 days
constexpr double deg = pi / 180;

vec3 champ(double r, double lat, double lon, double date = date_1995) {
    return champ_igrf(date).synthese(r, sincos_de((90 - lat) * deg), sincos_de(lon * deg));
}

struct point {
    double r, lat, lon;
    vec3 degre_6, degre_10;
    double ecart; ///< [nT] largest component of the degrees 7 to 10
};
constexpr point points[] = {
    {6371.2, 48.8, 2.3, {-43253.37, -19935.27, -852.03}, {-42776.2, -20305.6, -941.1}, 477},
    {6371.2, -33.9, -70.7, {14028.62, -21362.51, 2007.05}, {13966.9, -21012.1, 2020.2}, 350},
    {6371.2, 75.0, -100.0, {-58542.39, -1197.69, -185.76}, {-57777.9, -678.9, -198.4}, 764},
    {6371.2, 0.0, 105.0, {14060.18, -39913.44, -16.47}, {14225.2, -40080.2, -28.5}, 167},
    {7171.2, -26.0, -49.0, {8789.64, -14293.22, -3481.21}, {8887.9, -14275.2, -3466.1}, 98},
    {7171.2, 51.6, 150.0, {-32834.05, -15404.61, -1517.28}, {-32844.2, -15413.6, -1463.4}, 54},
};

} // namespace

TEST(igrf, published_field_of_1995) {
    for (const point& p : points) {
        const vec3 B = champ(p.r, p.lat, p.lon);
        for (int i = 0; i < 3; ++i) {
            // h(5,3) is held at its value of 1996, 0.3 nT from the published one; times its order 3.
            RELEVE("igrf95.degre_6", B[i], p.degre_6[i], 0.9) << p.lat << " " << p.lon << " component " << i;
            EXPECT_NEAR(B[i], p.degre_10[i], p.ecart + 1.2) << p.lat << " " << p.lon << " component " << i;
        }
    }
}

/// Outside of its sources the field has neither divergence nor curl: the three sums belong together.
TEST(igrf, field_derives_from_a_potential) {
    const auto cartesien = [](const vec3& x) {
        const double r = vec_norme(x), c = x[2] / r, s = std::sqrt(1 - c * c);
        const double lon = std::atan2(x[1], x[0]);
        const auto [sl, cl] = sincos_de(lon);
        const vec3 B = champ_igrf(19000).synthese(r, {s, c}, {sl, cl});
        return vec3{(s * B[0] + c * B[1]) * cl - B[2] * sl, (s * B[0] + c * B[1]) * sl + B[2] * cl,
                    c * B[0] - s * B[1]};
    };
    for (const vec3& x : {vec3{4000, 3000, 4500}, vec3{-6000, 2500, -1000}, vec3{50, 20, 6900}}) {
        double d[3][3]; // derivative of component i along j [nT/km]
        for (int j = 0; j < 3; ++j) {
            vec3 avant = x, apres = x;
            avant[j] -= 1;
            apres[j] += 1;
            const vec3 a = cartesien(avant), b = cartesien(apres);
            for (int i = 0; i < 3; ++i) d[i][j] = (b[i] - a[i]) / 2;
        }
        // Single derivatives are about 10 nT/km.
        RELEVE("igrf95.potentiel", d[0][0] + d[1][1] + d[2][2], 0, 1e-4);
        EXPECT_NEAR(d[0][1], d[1][0], 1e-4);
        EXPECT_NEAR(d[0][2], d[2][0], 1e-4);
        EXPECT_NEAR(d[1][2], d[2][1], 1e-4);
    }
}

TEST(igrf, pole_and_secular_variation) {
    const champ_igrf champ_pole(date_1995);
    const vec3 pole = champ_pole.synthese(6371.2, {0, 1}, sincos_de(0.3));
    const vec3 pres = champ_pole.synthese(6371.2, {1e-9, 1}, sincos_de(0.3));
    EXPECT_EQ(pole[2], 0); // by its divisor of 1e-10, where the limit is not zero
    EXPECT_GT(std::fabs(pres[2]), 100);
    EXPECT_NEAR(pole[0], pres[0], 1e-3);
    EXPECT_NEAR(pole[1], pres[1], 1e-3);

    // The axial dipole decays by 17.6 nT a year of 365 days: its part of the radial field at the pole is
    // -2 g(1,0) while the odd degrees 3 and 5 and the even ones add their own, known, rates.
    const double attendu = 2 * 17.6 + 3 * -13.2 + 4 * 1.5 + 5 * 0.8 + 6 * 0.8 + 7 * 0.5;
    const double an = champ_igrf(date_1995 + 365).synthese(6371.2, {0, 1}, {0, 1})[0] - pole[0];
    RELEVE("igrf95.seculaire", an, attendu, 1e-6);
}
