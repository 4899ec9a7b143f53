/// What the map shows, against known dates of the Sun, the stations' own looks and a track computed afresh.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "analysis/carte.h"
#include "orbit/orb_projection.h"
#include "shell/utilitaires.h"
#include "tests/releve.h"

TEST(carte, the_sun_stands_where_the_almanac_says) {
    // Equinox of 20 March 2001 at 13:31 UT, solstice of 21 June 2001 at 07:38 UT (Meeus, Astronomical
    // Algorithms); the model's frame leaves 0.3 degree of the pole's motion.
    const point_sol equinoxe =
        point_subsolaire({}, date_vers_jour({.an = 2001, .mois = 3, .jour = 20, .heure = 13, .minute = 31}));
    RELEVE("carte.equinoxe", equinoxe.lat, 0, 0.3);
    EXPECT_NEAR(equinoxe.lon, -22.75 + 1.86,
                0.4); // 13:31 is 22.75 degrees past noon; the Sun is 7.4 min late
    EXPECT_NEAR(heure_solaire(0, equinoxe.lon), 13.517 - 7.45 / 60, 0.03);
    const point_sol solstice =
        point_subsolaire({}, date_vers_jour({.an = 2001, .mois = 6, .jour = 21, .heure = 7, .minute = 38}));
    RELEVE("carte.solstice", solstice.lat, 23.44, 0.02);
    EXPECT_NEAR(heure_solaire(solstice.lon + 180, solstice.lon), 0, 1e-9);
    EXPECT_NEAR(heure_solaire(solstice.lon - 90, solstice.lon), 6, 1e-9);
}

TEST(carte, a_satellite_over_the_rim_of_a_circle_stands_at_the_mask) {
    for (const station& s : {station{"Nord", 78.2, 15.4, 0.5, 5}, station{"Équateur", 0, -170, 0, 0},
                             station{"Sud", -35.8, -69.4, 1.5, 20}, station{"Pôle", -90, 0, 2.8, 10}})
        for (const double distance : {6778.0, 7174.0, 26000.0}) {
            const repere_station r(s);
            int points = 0;
            for (const point_sol& b : cercle_station(s, distance)) {
                if (std::fabs(b.lat) == 90) continue; // the way around the pole
                // Up the normal from the ground point to the satellite's distance.
                double alt = distance - 6378;
                vec3 p{};
                for (int i = 0; i < 5; ++i) {
                    p = geodesique_vers_cart(b.lon * rad_par_degre, b.lat * rad_par_degre, alt);
                    alt += distance - vec_norme(p);
                }
                RELEVE("carte.cercle", r.vers(p).elevation, s.masque, 0.5)
                    << s.nom << ' ' << b.lon << ' ' << b.lat;
                ++points;
            }
            EXPECT_GE(points, 179) << s.nom;
        }
    EXPECT_TRUE(cercle_station({"Haut", 0, 0, 0, 90}, 7000).empty());
    EXPECT_TRUE(cercle_station({"Sous terre", 0, 0, 0, 0}, 6000).empty());
}

TEST(carte, the_night_covers_the_winter_pole_alone) {
    const auto nuit = bord_calotte({30, -20}, 90); // the Sun at 20 degrees north
    EXPECT_EQ(std::count_if(nuit.begin(), nuit.end(), [](const point_sol& p) { return p.lat == -90; }), 2);
    for (const point_sol& p : nuit) EXPECT_LE(p.lat, 70 + 1e-9);
    EXPECT_NEAR(std::fabs(nuit[180].lon - nuit[0].lon), 360, 1e-9);
    const auto cercle = bord_calotte({170, 10}, 30);
    EXPECT_NEAR(cercle.front().lon, cercle.back().lon, 1e-9);
    EXPECT_NEAR(cercle.front().lat, 40, 1e-9);
}

TEST(carte, a_track_that_moves_on_is_the_track_computed_afresh) {
    record_orbite o;
    o.orb_inclinaison = 63.4;
    o.orb_excentricite = 0.1;
    o.orb_demi = 8000;
    trace_glissante suite;
    for (const double j : {18707.5, 18707.51, 18707.513, 18709.0, 18708.99}) {
        const auto trace = suite.autour(o, {}, j, 0.5, 1.25);
        const std::size_t present = suite.present();
        trace_glissante neuve;
        const auto fraiche = neuve.autour(o, {}, j, 0.5, 1.25);
        ASSERT_EQ(trace.size(), fraiche.size()) << j;
        ASSERT_GT(trace.size(), 600u);
        EXPECT_EQ(trace[present].j, j);
        for (std::size_t i = 0; i < trace.size(); ++i) {
            EXPECT_EQ(trace[i].lon, fraiche[i].lon);
            EXPECT_EQ(trace[i].eclipse, fraiche[i].eclipse);
            EXPECT_GE(trace[i].j, trace[i > 0 ? i - 1 : 0].j);
        }
    }
    o.orb_argument += 30; // another orbit, another track
    const auto suivie = suite.autour(o, {}, 18709.0, 0.5, 1);
    const std::size_t milieu = suivie.size() / 2;
    EXPECT_EQ(suivie[milieu].lon, trace_glissante().autour(o, {}, 18709.0, 0.5, 1)[milieu].lon);
    o.orb_inclinaison = 10;
    for (const point_trace& p : suite.autour(o, {}, 18709.0, 1, 1)) EXPECT_LT(std::fabs(p.lat), 10.2);
    for (const double demi : {0.0, 1e-7}) { // no period, and one too short to count
        o.orb_demi = demi;
        EXPECT_TRUE(suite.autour(o, {}, 18709.0, 1, 1).empty());
    }
}
