/// Scale of the result graphs and texts of the result tables. Expected numbers by hand.
#include <gtest/gtest.h>

#include "shell/echelle.h"
#include "shell/formats.h"

namespace {

echelle arrondie(double min, double max) {
    echelle e;
    e.etend(min);
    e.etend(max);
    e.arrondit();
    return e;
}

} // namespace

TEST(echelle, limits_become_2_5_or_10_times_a_power_of_ten) {
    EXPECT_EQ(limite_arrondie(3.2e4), 5e4);
    EXPECT_EQ(limite_arrondie(2e4), 2e4);
    EXPECT_EQ(limite_arrondie(7e-2), 1e-1);
    EXPECT_EQ(limite_arrondie(5e-7), 5e-7);
    EXPECT_EQ(limite_arrondie(1), 2);
    EXPECT_EQ(limite_arrondie(-5.01), -10);
    EXPECT_EQ(limite_arrondie(0), 0);
    // Judged on three digits: 2.001 is 2.00, and 9.999 is 1.00 of the next power.
    EXPECT_EQ(limite_arrondie(2.001), 2);
    EXPECT_EQ(limite_arrondie(9.999e3), 2e4);
    EXPECT_EQ(limite_arrondie(3e-120), 5e-120);
}

TEST(echelle, scale_takes_in_zero_and_is_symmetrical_across_it) {
    const echelle positive = arrondie(12, 1361.5);
    EXPECT_EQ(positive.min, 0);
    EXPECT_EQ(positive.max, 2000);
    const echelle mixte = arrondie(-37, 4);
    EXPECT_EQ(mixte.min, -50);
    EXPECT_EQ(mixte.max, 50);
    const echelle negative = arrondie(-1.2e-6, -3e-7); // from 0, thus symmetrical
    EXPECT_EQ(negative.min, -2e-6);
    EXPECT_EQ(negative.max, 2e-6);
    EXPECT_EQ(arrondie(12, INFINITY).max, 20); // what is no number has no place on it
    const echelle nulle = arrondie(0, 0);
    EXPECT_EQ(nulle.min, nulle.max);
}

TEST(echelle, limits_shown_read_back_to_themselves) {
    EXPECT_EQ(texte_limite(2000, "0"), "2000");
    EXPECT_EQ(texte_limite(-50, "0"), "-50");
    EXPECT_EQ(texte_limite(0.5, "0"), "5.0E-01"); // "0" would leave nothing to draw
    EXPECT_EQ(texte_limite(2e-6, "0.0E+00"), "2.0E-06");
}

TEST(formats, value_texts_are_those_of_the_number_pictures) {
    const char* images[] = {"0", "0.0", "0.00", "0.000"};
    for (const double x : {0.0, -0.0, -0.004, 0.005, 0.015, 1.005, -17.2955, 1361.515, 1e12, 999.9995, -0.5})
        for (int n = 0; n < 4; ++n) EXPECT_EQ(texte_fixe(x, n), format_image(x, images[n])) << x;
}
