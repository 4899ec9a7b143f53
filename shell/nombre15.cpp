#include "shell/nombre15.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace {

__extension__ using u128 = unsigned __int128;

constexpr int chiffres = 15;
constexpr uint64_t dix_14 = 100'000'000'000'000, dix_15 = 10 * dix_14;
constexpr int k_max = 27; // 5^27 fits in 63 bits

constexpr std::array<uint64_t, k_max + 1> cinq = [] {
    std::array<uint64_t, k_max + 1> t{};
    t[0] = 1;
    for (int k = 1; k <= k_max; ++k) t[size_t(k)] = 5 * t[size_t(k) - 1];
    return t;
}();

constexpr std::array<char, 200> paires = [] {
    std::array<char, 200> t{};
    for (int i = 0; i < 100; ++i) {
        t[size_t(2 * i)] = char('0' + i / 10);
        t[size_t(2 * i + 1)] = char('0' + i % 10);
    }
    return t;
}();

/// m 2^e2 10^k to the nearest integer, ties to even: exact, since 10^k = 5^k 2^k and m 5^k has 116 bits.
uint64_t entier(uint64_t m, int e2, int k) {
    const u128 produit = u128(m) * cinq[size_t(k)];
    const int decalage = -(e2 + k);
    if (decalage <= 0) return uint64_t(produit << -decalage);
    if (decalage >= 128) return 0;
    const uint64_t n = uint64_t(produit >> decalage);
    const u128 reste = produit & ((u128(1) << decalage) - 1), moitie = u128(1) << (decalage - 1);
    return n + (reste > moitie || (reste == moitie && (n & 1)));
}

char* lent(char* p, double x) {
    const auto r = std::to_chars(p, p + taille_15, x, std::chars_format::general, chiffres);
    for (char* c = p; c != r.ptr; ++c)
        if (*c == 'e') *c = 'E';
    return r.ptr;
}

/// The 15 digits of n, in two halves of 32 bits.
void ecrit_chiffres(char* d, uint64_t n) {
    auto bas = uint32_t(n % 100'000'000), haut = uint32_t(n / 100'000'000);
    for (int i = 13; i > 6; i -= 2, bas /= 100) std::memcpy(d + i, &paires[2 * size_t(bas % 100)], 2);
    for (int i = 5; i > 0; i -= 2, haut /= 100) std::memcpy(d + i, &paires[2 * size_t(haut % 100)], 2);
    d[0] = char('0' + haut);
}

} // namespace

char* ecrit_15(char* p, double x) {
    if (x == 0) {
        *p++ = '0';
        return p;
    }
    const uint64_t bits = std::bit_cast<uint64_t>(x);
    const int exposant = int(bits >> 52 & 0x7ff);
    // Decimal exponent of 2^(exposant - 1023), that of x or one below it.
    int e10 = ((exposant - 1023) * 1233) >> 12;
    if (e10 < chiffres - 1 - k_max || e10 > chiffres - 2 || exposant == 0) return lent(p, x);
    const uint64_t m = (bits & 0xf'ffff'ffff'ffff) | 0x10'0000'0000'0000;
    uint64_t n = entier(m, exposant - 1075, chiffres - 1 - e10);
    if (n >= dix_15) n = entier(m, exposant - 1075, chiffres - 1 - ++e10);
    if (n < dix_14 || n >= dix_15) return lent(p, x);

    if (bits >> 63) *p++ = '-';
    char d[chiffres + 1];
    ecrit_chiffres(d, n);
    int fin = chiffres;
    while (d[fin - 1] == '0') --fin;
    if (e10 < -4 || e10 >= chiffres) {
        *p++ = d[0];
        if (fin > 1) {
            *p++ = '.';
            p = static_cast<char*>(std::memcpy(p, d + 1, size_t(fin - 1))) + fin - 1;
        }
        const int e = e10 < 0 ? -e10 : e10;
        *p++ = 'E';
        *p++ = e10 < 0 ? '-' : '+';
        *p++ = char('0' + e / 10);
        *p++ = char('0' + e % 10);
        return p;
    }
    const int entiers = e10 + 1; // digits before the point
    if (entiers <= 0) {
        std::memcpy(p, "0.0000", 6);
        p += 2 - entiers;
        std::memcpy(p, d, size_t(fin));
        return p + fin;
    }
    std::memcpy(p, d, size_t(entiers));
    p += entiers;
    if (fin > entiers) {
        *p++ = '.';
        std::memcpy(p, d + entiers, size_t(fin - entiers));
        p += fin - entiers;
    }
    return p;
}
