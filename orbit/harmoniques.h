/// A field of spherical harmonics of internal sources, as those of the Earth's magnetism: one synthesis for
/// every degree.
///
/// The sums run over polynomials in the cosine of the colatitude (the associated functions freed of their
/// sines), so that nothing is divided by the sine near the poles; the Schmidt normalisation is folded into
/// the coefficients (R. A. Langel, in Geomagnetism, ed. J. A. Jacobs, vol. 1, 1987, chapter 4).
#pragma once

#include <array>

#include "orbit/math.h"

namespace harmoniques {

/// The place of (n, m) among the coefficients.
constexpr int place(int n, int m) { return n * (n + 1) / 2 + m; }

/// A pair of coefficients g, h.
using paire = double __attribute__((vector_size(16)));

/// Gauss-normalised, n from 0 to `degre`.
template <int degre>
using coefficients = std::array<paire, place(degre, degre) + 1>;

/// Factors that turn Schmidt-normalised coefficients into Gauss-normalised ones.
template <int degre>
std::array<double, place(degre, degre) + 1> facteurs_schmidt() {
    std::array<double, place(degre, degre) + 1> S{1};
    for (int n = 1; n <= degre; ++n) {
        S[place(n, 0)] = S[place(n - 1, 0)] * (2 * n - 1) / n;
        S[place(n, 1)] = S[place(n, 0)] * std::sqrt(n * 2.0 / (n + 1));
        for (int m = 2; m <= n; ++m) S[place(n, m)] = S[place(n, m - 1)] * std::sqrt((n - m + 1.0) / (n + m));
    }
    return S;
}

/// Recurrence factor of the Gauss-normalised functions, n from 2 on.
constexpr double facteur_k(int n, int m) {
    return ((n - 1.0) * (n - 1.0) - m * m) / ((2.0 * n - 1) * (2.0 * n - 3));
}

/// Field radial outward, southward, eastward, in the unit of the coefficients, for `rho` (reference radius
/// over distance) and the sine and cosine of colatitude and longitude.
template <int degre>
vec3 synthese(const coefficients<degre>& gh, double rho, sinus_cosinus colatitude, sinus_cosinus longitude) {
    static_assert(degre <= 16, "the loops are unrolled whole");
    const auto [s, c] = colatitude;

    // Q(n,m): the Gauss-normalised function P(n,m) less its factor s^m, a polynomial in c. Its derivative in
    // c is (n - m) Q(n,m+1).
    double Q[place(degre, degre) + 1];
#pragma GCC unroll 16
    for (int m = 0; m <= degre; ++m) {
        Q[place(m, m)] = 1;
        if (m < degre) Q[place(m + 1, m)] = c;
#pragma GCC unroll 16
        for (int n = m + 2; n <= degre; ++n)
            Q[place(n, m)] = c * Q[place(n - 1, m)] - facteur_k(n, m) * Q[place(n - 2, m)];
    }

    double puissance[degre + 1]; // rho^(n+2)
    puissance[0] = rho * rho;
#pragma GCC unroll 16
    for (int n = 1; n <= degre; ++n) puissance[n] = puissance[n - 1] * rho;

    // For each order m, the sums over n of g and h: of the potential, of its radial derivative and of the
    // derivative of Q. Then the sums over m with s^(m-1) cos(m lon) and s^(m-1) sin(m lon).
    double B0 = 0, B1 = 0, B2 = 0;
    double C = longitude.c, S = longitude.s;
    const double X = s * longitude.c, Y = s * longitude.s;
#pragma GCC unroll 16
    for (int m = 0; m <= degre; ++m) {
        paire potentiel{}, radial{}, derive{};
#pragma GCC unroll 16
        for (int n = m == 0 ? 1 : m; n <= degre; ++n) {
            const paire v = gh[place(n, m)] * puissance[n];
            const paire vQ = v * Q[place(n, m)];
            potentiel += vQ;
            radial += (n + 1.0) * vQ;
            if (m < n) derive += v * ((n - m) * Q[place(n, m + 1)]);
        }
        if (m == 0) {
            B0 = radial[0];
            B1 = s * derive[0];
            continue;
        }
        B0 += s * (C * radial[0] + S * radial[1]);
        B1 += s * s * (C * derive[0] + S * derive[1]) - m * c * (C * potentiel[0] + S * potentiel[1]);
        B2 += m * (S * potentiel[0] - C * potentiel[1]);
        const double suivant = X * C - Y * S;
        S = X * S + Y * C;
        C = suivant;
    }
    return {B0, B1, B2};
}

} // namespace harmoniques
