#include "shell/serie.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

serie faite(int n, double (*f)(int), double tour = 0) {
    auto dates = std::make_shared<std::vector<double>>();
    std::vector<double> v;
    for (int i = 0; i < n; ++i) {
        dates->push_back(100 + i * 60 / 86400.0);
        v.push_back(f(i));
    }
    return {dates, v, tour};
}

} // namespace

TEST(serie, columns_hold_the_extremes_of_every_step_whatever_the_zoom) {
    const serie s = faite(5000, [](int i) { return std::sin(i * .37) * (i % 997 == 5 ? 40 : 1); });
    for (const int colonnes : {1, 7, 300}) {
        for (const double part : {0., .113, .5}) {
            const double debut = s.date(0) + part * 2, fin = s.date(4999) - part;
            std::vector<morceau_serie> m;
            s.reduit(debut, fin, colonnes, m);
            ASSERT_EQ(m.size(), std::size_t(colonnes));
            double bas = 1e9, haut = -1e9, vrai_bas = 1e9, vrai_haut = -1e9;
            for (const morceau_serie& x : m) bas = std::min(bas, x.min), haut = std::max(haut, x.max);
            // One step more on each side leads the curve in and out.
            const std::size_t i0 = s.depuis(debut), i1 = std::min(s.depuis(fin) + 1, s.taille());
            for (std::size_t i = i0 ? i0 - 1 : 0; i < i1; ++i)
                vrai_bas = std::min(vrai_bas, s.valeur(i)), vrai_haut = std::max(vrai_haut, s.valeur(i));
            EXPECT_EQ(m.front().premier, s.valeur(i0 ? i0 - 1 : 0));
            EXPECT_EQ(bas, vrai_bas) << colonnes;
            EXPECT_EQ(haut, vrai_haut) << colonnes;
        }
    }
}

TEST(serie, a_jump_and_a_missing_value_part_the_curve_however_dense_it_is) {
    const serie angle = faite(
        2000, [](int i) { return std::remainder(i * 1., 360.); }, 360);
    std::vector<morceau_serie> m;
    angle.reduit(angle.date(0), angle.date(1999), 40, m);
    int ruptures = 0;
    for (const morceau_serie& x : m) {
        EXPECT_LT(x.max - x.min, 60); // no column joins +180 to -180
        ruptures += !x.joint;
    }
    EXPECT_EQ(ruptures, 1 + 6); // the start, and a jump each turn from step 180 on

    const serie trouee = faite(2000, [](int i) { return i >= 900 && i < 1100 ? NAN : 5.; });
    trouee.reduit(trouee.date(0), trouee.date(1999), 20, m);
    for (const morceau_serie& x : m) EXPECT_EQ(x.min, 5) << x.colonne;
    EXPECT_EQ(std::count_if(m.begin(), m.end(), [](const auto& x) { return !x.joint; }), 2);
    EXPECT_TRUE(std::isnan(trouee.en(trouee.date(1000))));
}

TEST(serie, readings_between_marks_hold_each_step_until_the_next) {
    const serie s = faite(120, [](int i) { return i < 60 ? 30. : 90.; });
    const double heure = 1 / 24.;
    const lecture_serie tout = s.lit(s.date(0), s.date(0) + 2 * heure);
    EXPECT_NEAR(tout.integrale, 30 + 90, 1e-6);
    EXPECT_NEAR(tout.moyenne, 60, 1e-6);
    EXPECT_EQ(tout.min, 30);
    EXPECT_EQ(tout.max, 90);
    EXPECT_EQ(s.lit(s.date(0), s.date(60)).max, 30) << "the step at the end belongs to what follows";
    EXPECT_NEAR(s.lit(s.date(0) + heure / 2, s.date(0) + 1.5 * heure).integrale, 15 + 45, 1e-6);
    EXPECT_TRUE(std::isnan(s.lit(s.date(0) - 2, s.date(0) - 1).integrale));

    // Differences go by date, and by the shorter way of an angle.
    const serie tard = faite(240, [](int i) { return i < 60 ? 25. : 80.; });
    EXPECT_EQ(s.ecart(tard).valeur(10), 5);
    EXPECT_EQ(s.ecart(tard).valeur(119), 10);
    const serie un = faite(
                    3, [](int) { return 179.; }, 360),
                autre = faite(
                    3, [](int) { return -179.; }, 360);
    EXPECT_NEAR(un.ecart(autre).valeur(1), -2, 1e-12);
}
