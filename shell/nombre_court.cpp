#include "shell/nombre_court.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

// The digits come from Dragonbox (Jeon 2020) where the library is at hand, twice as fast as those of the
// standard library and the same: both are the shortest, and of those the nearest.
#if __has_include(<fmt/format.h>)
#define FMT_HEADER_ONLY
#define FMT_USE_FULL_CACHE_DRAGONBOX 1
#include <fmt/format.h>
#endif

namespace {

char* par_la_bibliotheque(char* place, double x) {
    return std::to_chars(place, place + longueur_nombre_court, x).ptr;
}

#ifdef FMT_HEADER_ONLY

/// Eight digits at `p`.
void huit_chiffres(char* p, uint32_t n) {
    const uint32_t haut = n / 10000, bas = n % 10000;
    std::memcpy(p, fmt::detail::digits2(haut / 100), 2);
    std::memcpy(p + 2, fmt::detail::digits2(haut % 100), 2);
    std::memcpy(p + 4, fmt::detail::digits2(bas / 100), 2);
    std::memcpy(p + 6, fmt::detail::digits2(bas % 100), 2);
}

/// The digits of n, in front of zeros and at the end of 24 places; how many there are.
int chiffres(uint64_t n, char* places) {
    constexpr uint64_t e8 = 100'000'000;
    huit_chiffres(places, static_cast<uint32_t>(n / e8 / e8));
    huit_chiffres(places + 8, static_cast<uint32_t>(n / e8 % e8));
    huit_chiffres(places + 16, static_cast<uint32_t>(n % e8));
    int premier = n >= e8 * e8 ? 7 : n >= e8 ? 8 : 16;
    while (places[premier] == '0') ++premier;
    return 24 - premier;
}

/// A copy of fixed length: what is over is written over or left out by the caller.
char* copie(char* place, const char* t, int n) {
    std::memcpy(place, t, longueur_nombre_court);
    return place + n;
}

char* exposant(char* place, int e) {
    *place++ = 'e';
    *place++ = e < 0 ? '-' : '+';
    const int a = e < 0 ? -e : e;
    if (a >= 100) *place++ = static_cast<char>('0' + a / 100);
    std::memcpy(place, fmt::detail::digits2(static_cast<std::size_t>(a % 100)), 2);
    return place + 2;
}

#endif

} // namespace

#ifdef FMT_HEADER_ONLY

char* ecrit_nombre_court(char* place, double x) {
    if (x == 0 || !std::isfinite(x)) return par_la_bibliotheque(place, x);
    const auto d = fmt::detail::dragonbox::to_decimal(std::fabs(x));
    char tampon[2 * longueur_nombre_court] = {};
    const int n = chiffres(d.significand, tampon);
    const char* c = tampon + longueur_nombre_court - n;
    // Fixed where it is not longer than the form with an exponent.
    const int bas = n == 1 ? -(n + 2) : -(n + 3), haut = n == 1 ? 4 : 5;
    const bool fixe = d.exponent >= bas && d.exponent <= haut;
    if (fixe && d.exponent >= 0 && n + d.exponent > 15) // whole, with digits beyond the shortest ones
        return par_la_bibliotheque(place, x);

    if (x < 0) *place++ = '-';
    if (!fixe) {
        *place++ = *c;
        if (n > 1) {
            *place++ = '.';
            place = copie(place, c + 1, n - 1);
        }
        return exposant(place, d.exponent + n - 1);
    }
    if (d.exponent >= 0) {
        std::memcpy(copie(place, c, n), "00000", 5);
        return place + n + d.exponent;
    }
    const int entiers = n + d.exponent;
    if (entiers > 0) {
        place = copie(place, c, entiers);
        *place++ = '.';
        return copie(place, c + entiers, n - entiers);
    }
    std::memcpy(place, "0.00000000000000000000", 22); // at most n + 3 places behind the point
    return copie(place + 2 - entiers, c, n);
}

#else

char* ecrit_nombre_court(char* place, double x) { return par_la_bibliotheque(place, x); }

#endif
