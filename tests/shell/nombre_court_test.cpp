/// The shortest texts against those of the standard library, to the byte.
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <random>
#include <string>

#include "shell/nombre_court.h"

TEST(nombre_court, is_that_of_the_standard_library) {
    const auto compare = [](double x) {
        char attendu[longueur_nombre_court], obtenu[place_nombre_court];
        const std::string a(attendu, std::to_chars(attendu, attendu + sizeof attendu, x).ptr);
        const std::string b(obtenu, ecrit_nombre_court(obtenu, x));
        return a == b;
    };
    for (int e = -1074; e < 1024; ++e)
        for (const double x :
             {std::ldexp(1.0, e), std::nextafter(std::ldexp(1.0, e), 0.0), -std::ldexp(3.0, e)})
            ASSERT_TRUE(compare(x)) << x;
    for (const double x : {0.0, -0.0, double{INFINITY}, -double{INFINITY}, double{NAN}})
        EXPECT_TRUE(compare(x));
    std::mt19937_64 hasard(2025);
    for (int n = 0; n < 300'000; ++n) {
        const auto bits = hasard();
        const double fin = static_cast<double>(static_cast<int64_t>(bits) >> 11) * 0x1p-45;
        const double x[] = {std::bit_cast<double>(bits),
                            fin,
                            std::round(fin * 1e3) / 1e3,
                            std::round(fin * 1e6),
                            static_cast<double>(static_cast<float>(fin)),
                            std::ldexp(fin, n % 120 - 60)};
        for (const double y : x) ASSERT_TRUE(compare(y)) << y;
    }
}
