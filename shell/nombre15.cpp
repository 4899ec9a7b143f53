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
constexpr int k_exact = 27; // 5^27 fits in 63 bits
constexpr int k_max = 55;   // 5^55 fits in 128 bits
constexpr uint64_t ascii_0 = 0x3030'3030'3030'3030;

/// 5^k as p 2^q: exact up to k_exact, beyond with 64 bits, the rest cut off.
struct puissance {
    uint64_t p;
    int q;
};
constexpr std::array<puissance, k_max + 1> cinq = [] {
    std::array<puissance, k_max + 1> t{};
    u128 v = 1;
    for (int k = 0; k <= k_max; ++k, v *= 5) {
        puissance x{0, 0};
        u128 reste = v;
        for (; reste >> 64; reste >>= 1) ++x.q;
        x.p = uint64_t(reste);
        t[size_t(k)] = x;
    }
    return t;
}();

/// m 2^e2 10^k to the nearest integer, ties to even, for m below 2^53: the product m 5^k is exact up to
/// k_exact. Beyond, what was cut off makes it too small by less than m; 0 where that could change the result.
[[gnu::always_inline]] inline uint64_t entier(uint64_t m, int e2, int k) {
    const auto [cinq_k, q] = cinq[size_t(k)];
    const u128 produit = u128(m) * cinq_k;
    const int decalage = -(e2 + k + q);
    if (decalage <= 0) return uint64_t(produit << -decalage);
    if (decalage >= 128) return 0;
    const uint64_t n = uint64_t(produit >> decalage);
    const u128 reste = produit & ((u128(1) << decalage) - 1), moitie = u128(1) << (decalage - 1);
    if (k > k_exact && reste <= moitie && moitie - reste <= m) return 0;
    return n + (reste > moitie || (reste == moitie && (n & 1)));
}

char* lent(char* p, double x) {
    const auto r = std::to_chars(p, p + taille_15, x, std::chars_format::general, chiffres);
    for (char* c = p; c != r.ptr; ++c)
        if (*c == 'e') *c = 'E';
    return r.ptr;
}

/// The eight digits of n, one in each byte, the first in the lowest.
[[gnu::always_inline]] inline uint64_t huit_chiffres(uint64_t n) {
    n = n / 10'000 | n % 10'000 << 32;
    uint64_t t = (n * 10'486 >> 20) & 0x0000'007f'0000'007f; // hundreds of each half
    n = t | (n - t * 100) << 16;
    t = (n * 103 >> 10) & 0x000f'000f'000f'000f; // tens of each quarter
    return t | (n - t * 10) << 8;
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
    if (n < dix_14 || n >= dix_15 || std::endian::native != std::endian::little) return lent(p, x);

    *p = '-';
    p += bits >> 63;
    // Sixteen digits, the last of them 0, in two words; trailing zeros are the high bytes that are empty.
    const uint64_t haut = huit_chiffres(n / 10'000'000), bas = huit_chiffres(n % 10'000'000 * 10);
    const int fin = 16 - (bas ? std::countl_zero(bas) : 64 + std::countl_zero(haut)) / 8;
    const uint64_t texte[2] = {haut | ascii_0, bas | ascii_0};
    const bool exponentielle = e10 < -4;
    const int entiers = exponentielle ? 1 : e10 + 1; // digits before the point
    if (entiers <= 0) {
        std::memcpy(p, "0.0000", 6);
        p += 2 - entiers;
        std::memcpy(p, texte, 16);
        return p + fin;
    }
    std::memcpy(p + 1, texte, 16);
    for (int i = 0; i < entiers; ++i) p[i] = p[i + 1];
    p[entiers] = '.';
    p += fin > entiers ? fin + 1 : entiers;
    if (!exponentielle) return p;
    std::memcpy(p, "E-", 2);
    p[2] = char('0' + -e10 / 10);
    p[3] = char('0' + -e10 % 10);
    return p + 4;
}
