/// Numbers of the results files: reference is the C library's "%.15G".
#include "shell/nombre15.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>

namespace {

std::string ecrit(double x) {
    char tampon[taille_15];
    return {tampon, ecrit_15(tampon, x)};
}

std::string reference(double x) {
    char tampon[64];
    std::snprintf(tampon, sizeof tampon, "%.15G", x);
    std::replace(tampon, tampon + sizeof tampon, ',', '.'); // the locale's
    return tampon;
}

TEST(nombre15, agrees_with_the_c_library_over_all_magnitudes) {
    std::mt19937_64 hasard(15);
    std::uniform_real_distribution<double> mantisse(-1, 1), exposant(-46, 22);
    for (int i = 0; i < 100'000; ++i) {
        const double x = mantisse(hasard) * std::pow(10, exposant(hasard));
        ASSERT_EQ(ecrit(x), reference(x));
        const auto y = std::bit_cast<double>(hasard());
        if (std::isfinite(y)) {
            ASSERT_EQ(ecrit(y), reference(y));
        }
    }
}

TEST(nombre15, is_exact_at_ties_and_at_powers_of_ten) {
    for (long i = 1; i < 20'000; ++i) {
        const double pres_de_1e15 = 1e15 - i / 8., pres_de_1e14 = 1e14 + i / 16.; // ties of the 16th digit
        for (double x : {i / 8., i / 1048576., pres_de_1e15, pres_de_1e14}) ASSERT_EQ(ecrit(x), reference(x));
    }
    for (int e = -30; e <= 30; ++e)
        for (double f : {1.0, 0.9999999999999995, 0.99999999999999944, 1.0000000000000002})
            ASSERT_EQ(ecrit(f * std::pow(10, e)), reference(f * std::pow(10, e)));
    EXPECT_EQ(ecrit(0), "0");
    EXPECT_EQ(ecrit(-0.0), "0");
    EXPECT_EQ(ecrit(18707.55001), "18707.55001");
    EXPECT_EQ(ecrit(-5.52865e-23), "-5.52865E-23");
}

} // namespace
