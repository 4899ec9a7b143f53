/// Sun, Earth rotation, ground point. Expected values: soleil_reference.csv (IAU routines) and
/// geodesie_reference.csv (PROJ), with their provenance in their first lines.
#include <gtest/gtest.h>

#include "orbit/orb_projection.h"
#include "orbit/soleil.h"
#include "shell/surveillance.h"
#include "tests/lecture_csv.h"
#include "tests/releve.h"

namespace {

/// The program's turn between the equinox of date and that of 1950: about the pole alone.
constexpr double precession = 6.11902e-07; // [rad/day]

} // namespace

TEST(soleil, position_against_the_iau_routines) {
    const auto lignes = lit_reference("soleil_reference.csv");
    ASSERT_GE(lignes.size(), 28u);
    for (const auto& l : lignes) {
        const double j = l[0];
        const vec3 attendu = {l[2], l[3], l[4]}, v = soleil_position(j);
        const double c = std::cos(j * precession), s = std::sin(j * precession);
        const vec3 date = {c * v[0] - s * v[1], s * v[0] + c * v[1], v[2]}; // back to the equinox of date
        const vec3 ecart = vec_vectoriel(attendu, date);
        const double angle = vec_norme(ecart) / vec_norme(attendu) / vec_norme(date);
        RELEVE("soleil.direction", angle, 0, 2e-4) << j; // [rad] the planets and the Moon are left out
        RELEVE("soleil.distance", vec_norme(v) / vec_norme(attendu), 1, 1.2e-4) << j;
    }
}

TEST(terre, sidereal_angle_against_the_iau_formula) {
    for (const auto& l : lit_reference("soleil_reference.csv")) {
        const double j = l[0];
        const double ecart = std::remainder(temps_sideral(j) - (l[1] - j * precession), 2 * pi);
        RELEVE("terre.sideral", ecart, 0, 1.5e-5) << j; // 3 arcseconds
    }
    for (double j = 11680; j < 11700; j += 0.13) {
        EXPECT_GE(temps_sideral(j), 0);
        EXPECT_LE(temps_sideral(j), deux_pi);
        EXPECT_NEAR(std::remainder(temps_sideral(j + 1) - temps_sideral(j) - 6.30038748, 2 * pi), 0, 1e-7);
    }
}

TEST(terre, turns_with_the_earth_and_back) {
    const vec3 v = {7000, -1200, 340};
    const vec3 retour = vers_inertiel(18707.3, vers_terrestre(18707.3, v));
    for (int k = 0; k < 3; ++k) EXPECT_NEAR(retour[k], v[k], 1e-11);
}

TEST(terre, geodetic_coordinates_against_proj) {
    const auto lignes = lit_reference("geodesie_reference.csv");
    ASSERT_EQ(lignes.size(), 70u);
    for (const auto& l : lignes) {
        double lon, lat, alt;
        cart_vers_geodesique({l[3], l[4], l[5]}, lon, lat, alt);
        RELEVE("terre.latitude", lat / rad_par_degre, l[1], 2e-10) << l[1] << ' ' << l[2];
        RELEVE("terre.altitude", alt, l[2], 1e-8) << l[1] << ' ' << l[2]; // 10 micrometres
        // The longitude as a distance along its parallel [km].
        EXPECT_NEAR((lon - l[0] * rad_par_degre) * std::hypot(l[3], l[4]), 0, 1e-8) << l[1] << ' ' << l[2];
    }
}

TEST(terre, geodetic_coordinates_on_axis_and_equator) {
    const surveillance watch;
    double lon, lat, alt;
    cart_vers_geodesique({0, 0, 7000}, lon, lat, alt);
    EXPECT_EQ(lon, -demi_pi);
    EXPECT_EQ(lat, demi_pi);
    EXPECT_EQ(alt, 7000 - 6356.752);
    cart_vers_geodesique({0, 0, -7000}, lon, lat, alt);
    EXPECT_EQ(lat, -demi_pi);
    EXPECT_EQ(alt, 7000 - 6356.752);
    lat = alt = 77;
    cart_vers_geodesique({0, 0, 0}, lon, lat, alt);
    EXPECT_EQ(lat + alt, 154) << "at the centre neither is written";
    cart_vers_geodesique({-3000, 4000, 0}, lon, lat, alt);
    EXPECT_EQ(lat, 0);
    EXPECT_EQ(alt, 5000 - 6378.137);
    EXPECT_NEAR(lon, std::atan2(4000, -3000), 1e-14);
    cart_vers_geodesique({-7000, 0, 1}, lon, lat, alt);
    EXPECT_EQ(lon, pi);
    cart_vers_geodesique({0.002, 0.001, 6900}, lon, lat,
                         alt); // metres from the axis: ends, close to the pole
    EXPECT_NEAR(alt, 6900 - 6356.752314, 1e-6);
    EXPECT_FALSE(watch.faute());
}
