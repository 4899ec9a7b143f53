/// Keplerian propagation. Expected values: the two-body integrals in closed form (vis-viva, angular
/// momentum, eccentricity vector, period), the length of the shadow of a circular orbit in closed form.
#include "orbit/orb_trajecto.h"

#include <gtest/gtest.h>

#include "shell/surveillance.h"
#include "shell/utilitaires.h"
#include "tests/releve.h"

namespace {

orbit_state orbite(double a, double e, double i = 51.6, double noeud = 80, double w = 40) {
    orbit_state o;
    o.orbite.orb_demi = a;
    o.orbite.orb_excentricite = e;
    o.orbite.orb_inclinaison = i;
    o.orbite.orb_ascension = noeud;
    o.orbite.orb_argument = w;
    return o;
}

double periode_s(double a) { return 2 * pi * std::sqrt(a * a * a / mu_terre); }

double epoque(const record_orbite& o) { return date_epoque(o.orb_an, o.orb_jour - 1.0); }

} // namespace

TEST(orb_trajecto, two_body_integrals) {
    for (const auto& [a, e] : {std::pair{7000.0, 0.001}, {26554.0, 0.74}, {42164.0, 0.3}}) {
        orbit_state o = orbite(a, e);
        const double j0 = epoque(o.orbite), T = periode_s(a) / 86400, i = 51.6 * rad_par_degre;
        const double om = noeud_1950(o.orbite) * rad_par_degre, w = 40 * rad_par_degre;
        const double h = std::sqrt(mu_terre * a * (1 - e * e));
        double r_min = 1e99, r_max = 0;
        for (int k = 0; k < 200; ++k) {
            orb_position(j0 + T * k / 200, o);
            const double r = vec_norme(o.sat_pos), v = vec_norme(o.sat_vit);
            r_min = std::min(r_min, r), r_max = std::max(r_max, r);
            RELEVE("orbite.vis_viva", mu_terre * (2 / r - 1 / a) / (v * v), 1, 1e-12);
            const vec3 H = vec_vectoriel(o.sat_pos, o.sat_vit);
            RELEVE("orbite.moment", H[0] / h, std::sin(i) * std::sin(om), 1e-11);
            RELEVE("orbite.moment", H[1] / h, -std::sin(i) * std::cos(om), 1e-11);
            RELEVE("orbite.moment", H[2] / h, std::cos(i), 1e-11);
            // Eccentricity vector: towards the perigee, of length e.
            const vec3 vh = vec_vectoriel(o.sat_vit, H);
            EXPECT_NEAR(vh[2] / mu_terre - o.sat_pos[2] / r, e * std::sin(i) * std::sin(w), 1e-12);
        }
        RELEVE("orbite.apsides", r_min / a, 1 - e, 1e-9);
        RELEVE("orbite.apsides", r_max / a, 1 + e, 1e-9);
        orb_position(j0, o);
        const vec3 depart = o.sat_pos;
        orb_position(j0 + 15 * T, o);
        for (int k = 0; k < 3; ++k)
            RELEVE("orbite.periode", o.sat_pos[k] * 7000 / a, depart[k] * 7000 / a, 1e-5);
    }
}

TEST(orb_trajecto, velocity_is_the_derivative_of_position) {
    orbit_state o = orbite(12000, 0.4), avant = o, apres = o;
    const double j = epoque(o.orbite) + 0.037, dt = 2.0 / 86400;
    orb_position(j, o);
    orb_position(j - dt, avant);
    orb_position(j + dt, apres);
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR((apres.sat_pos[k] - avant.sat_pos[k]) / 4, o.sat_vit[k], 1e-5)
            << "km/s, central difference";
}

TEST(orb_trajecto, epoch_and_calls_in_any_order) {
    for (const auto& [an, jour, t0] : {std::tuple{1950, 1.0, 0.0}, {1951, 1.0, 365.0}, {1952, 1.0, 730.0}}) {
        orbit_state o = orbite(8000, 0.1);
        o.orbite.orb_an = static_cast<int16_t>(an);
        o.orbite.orb_jour = jour;
        o.orbite.orb_anomalie = 123.4;
        EXPECT_EQ(epoque(o.orbite), t0);
        orb_position(t0, o);
        EXPECT_EQ(o.anomalie_moy, 123.4 * rad_par_degre) << "to the last bit";
    }
    orbit_state o = orbite(8000, 0.1);
    const double j = epoque(o.orbite);
    orb_position(j + 1, o);
    const orbit_state une = o;
    orb_position(j - 300.7, o);
    EXPECT_GE(o.anomalie_moy, 0);
    EXPECT_LT(o.anomalie_moy, deux_pi);
    o.orbite.orb_moy_mvt = 3; // shown, not used
    o.orbite.orb_argument = 90;
    orb_position(j + 1, o);
    EXPECT_NE(o.sat_pos, une.sat_pos) << "a changed element counts at once";
    o.orbite.orb_argument = une.orbite.orb_argument;
    orb_position(j + 1, o);
    EXPECT_EQ(o.sat_pos, une.sat_pos);
    EXPECT_EQ(o.sat_vit, une.sat_vit);
    EXPECT_EQ(o.soleil_pos, une.soleil_pos);
    o.orbite.orb_inclinaison += 10; // and alone, as it only turns the axes
    orb_position(j + 1, o);
    EXPECT_NE(o.sat_pos[2], une.sat_pos[2]);
    EXPECT_NEAR(vec_norme(o.sat_pos), vec_norme(une.sat_pos), 1e-9);
}

TEST(orb_trajecto, ends_of_the_range) {
    const surveillance watch;
    orbit_state o = orbite(7174, 0, 0, 0, 0);
    orb_position(18707, o);
    EXPECT_NEAR(vec_norme(o.sat_pos), 7174, 1e-3) << "circular and equatorial";
    EXPECT_FALSE(watch.faute());
    for (orbit_state faux : {orbite(0, 0.1), orbite(7174, 1.0), orbite(6400, 0.001)}) {
        const surveillance encore;
        orb_position(epoque(faux.orbite), faux);
        EXPECT_TRUE(encore.faute()) << faux.orbite.orb_demi;
    }
    EXPECT_NEAR(demi_de_moy_mvt(15), 6945, 1);
    for (double n : {1.0, 2.0, 15.0}) EXPECT_NEAR(moy_mvt_de_demi(demi_de_moy_mvt(n)), n, 1e-12);
}

/// The share of a circular orbit in shadow, for parallel light at the angle beta from the orbit plane:
/// arccos(sqrt(1 - (R/r)^2) / cos beta) / pi.
TEST(orb_trajecto, shadow_of_a_circular_orbit) {
    for (double noeud : {0.0, 35.0, 60.0}) {
        orbit_state o = orbite(7200, 0, 55, noeud, 0);
        const double j0 = epoque(o.orbite), T = periode_s(7200);
        orb_position(j0, o);
        const vec3 normale = vec_vectoriel(o.sat_pos, o.sat_vit);
        const double sinus =
            vec_scalaire(normale, o.soleil_pos) / vec_norme(normale) / vec_norme(o.soleil_pos);
        const double rapport = std::sqrt(1 - carre(rayon_ombre / 7200)) / std::sqrt(1 - sinus * sinus);
        ASSERT_LT(rapport, 1);
        const int n = 20000;
        int ombre = 0;
        for (int k = 0; k < n; ++k) {
            orb_position(j0 + T * k / n / 86400, o);
            if (o.eclipse == vrai) {
                ++ombre;
                EXPECT_LT(vec_scalaire(o.sat_pos, o.soleil_pos), 0) << "never on the Sun's side";
            }
        }
        // The Sun moves by 0.001 rad in an orbit and stands at a finite distance.
        RELEVE("orbite.ombre", double(ombre) / n, std::acos(rapport) / pi, 4e-4) << noeud;
    }
}
