/// When a quantity falls below a level, and the attitude between two rows.
#include "analysis/banc_attitude.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

resultat_courbes calcul_de(const std::vector<std::pair<std::string, std::vector<double>>>& colonnes) {
    resultat_courbes r;
    std::vector<double> dates;
    for (std::size_t i = 0; i < colonnes[0].second.size(); ++i) dates.push_back(100 + double(i));
    const auto partagees = std::make_shared<const std::vector<double>>(dates);
    for (const auto& [nom, valeurs] : colonnes) r.courbes.push_back({{nom}, serie(partagees, valeurs)});
    return r;
}

const grandeur_banc& grandeur(std::string_view nom) {
    for (const grandeur_banc& g : grandeurs_banc())
        if (nom == g.nom) return g;
    throw std::runtime_error("no such quantity");
}

} // namespace

TEST(banc_attitude, tells_the_first_time_below_a_level_and_the_last) {
    const resultat_courbes r = calcul_de({{"energie", {8, 4, 2, 6, 3, 1}}});
    const auto p = passe_sous(r, grandeur("energie"), 5);
    EXPECT_NEAR(*p.premier, 100.75, 1e-12);
    EXPECT_NEAR(*p.definitif, 103 + 1 / 3., 1e-12);
    EXPECT_FALSE(passe_sous(r, grandeur("energie"), 1).premier);
    EXPECT_EQ(*passe_sous(r, grandeur("energie"), 9).definitif, 100);
    const auto remonte = passe_sous(calcul_de({{"energie", {8, 2, 6}}}), grandeur("energie"), 5);
    EXPECT_TRUE(remonte.premier);
    EXPECT_FALSE(remonte.definitif);
    // A negative angle counts by its size, three angles as the one turn that they make.
    EXPECT_NEAR(*passe_sous(calcul_de({{"roulis", {-9, -3}}}), grandeur("roulis"), 6).premier, 100.5, 1e-12);
    const auto tour = calcul_de({{"roulis", {180, 0}}, {"tangage", {0, 0}}, {"lacet", {180, 170}}});
    EXPECT_NEAR(*passe_sous(tour, grandeur("ecart"), 175).premier, 100.5, 1e-9);
}

TEST(banc_attitude, the_attitude_between_two_rows_goes_the_shorter_way) {
    const double c = std::sqrt(.5);
    // A quarter turn about z, its second quaternion written with the other sign.
    const auto r = calcul_de({{"q0", {1, -c}}, {"q1", {0, 0}}, {"q2", {0, 0}}, {"q3", {0, -c}}});
    const auto q = attitude_a(r, 100.5);
    ASSERT_TRUE(q);
    EXPECT_NEAR((*q)[0], std::cos(M_PI / 8), 1e-12);
    EXPECT_NEAR((*q)[3], std::sin(M_PI / 8), 1e-12);
    EXPECT_FALSE(attitude_a(r, 101.5));
}
