/// Checks that the validation page tells (docs/validation.sh): a test notes what it has measured and allows,
/// under the name that the page knows it by.
#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

namespace releve {

/// One line more in the file named by KESTREL_RELEVES, at once, so that tests may run side by side.
inline void ecrit(const std::string& ligne) {
    const char* chemin = std::getenv("KESTREL_RELEVES");
    if (!chemin) return;
    if (std::FILE* f = std::fopen(chemin, "a")) {
        std::fputs(ligne.c_str(), f);
        std::fclose(f);
    }
}

inline std::string nombre(double x) {
    char t[40]; // in no locale: some tests run in French
    return {t, std::to_chars(t, t + sizeof t, x, std::chars_format::general, 9).ptr};
}

/// Notes a difference and what is allowed, the largest of a name so far; gives its size.
inline double note(const std::string& nom, double ecart, double tolerance) {
    static std::map<std::string, double> plus_grands;
    ecart = std::fabs(ecart);
    const auto [place, premier] = plus_grands.try_emplace(nom, ecart);
    if (!premier && ecart <= place->second) return ecart;
    place->second = ecart;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    ecrit("ecart\t" + nom + '\t' + nombre(ecart) + '\t' + nombre(tolerance) + '\t' + test->test_suite_name() +
          '.' + test->name() + '\n');
    return ecart;
}

/// A point of a curve that the page draws.
inline void point(const std::string& figure, const char* courbe, double x, double y) {
    ecrit("point\t" + figure + '\t' + courbe + '\t' + nombre(x) + '\t' + nombre(y) + '\n');
}

} // namespace releve

/// As EXPECT_NEAR, and noted.
#define RELEVE(nom, mesure, attendu, tolerance)                                                              \
    EXPECT_LE(releve::note(nom, (mesure) - (attendu), tolerance), tolerance)                                 \
        << #mesure " = " << (mesure) << ", expected " << (attendu)
