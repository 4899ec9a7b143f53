#include "attitude/att_igrf.h"

namespace {

constexpr int place(int n, int m) { return n * (n + 1) / 2 + m; }

struct terme {
    int n, m;
    double g, g_an; // [nT], [nT/year]
    double h, h_an;
};

constexpr terme termes[] = {
    {1, 0, -29682, 17.6, 0, 0},       //
    {1, 1, -1789, 13.0, 5318, -18.3}, //
    {2, 0, -2197, -13.2, 0, 0},       //
    {2, 1, 3074, 3.7, -2356, -15.0},  //
    {2, 2, 1685, -0.8, -425, -8.8},   //
    {3, 0, 1329, 1.5, 0, 0},          //
    {3, 1, -2268, -6.4, -263, 4.1},   //
    {3, 2, 1249, -0.2, 302, 2.2},     //
    {3, 3, 769, -8.1, -406, -12.1},   //
    {4, 0, 941, 0.8, 0, 0},           //
    {4, 1, 782, 0.9, 262, 1.8},       //
    {4, 2, 291, -6.9, -232, 1.2},     //
    {4, 3, -421, 0.5, 98, 2.7},       //
    {4, 4, 116, -4.6, -301, -1},      //
    {5, 0, -210, 0.8, 0, 0},          //
    {5, 1, 352, 0.1, 44, 0.2},        //
    {5, 2, 237, -1.5, 157, 1.2},      //
    {5, 3, -122, -2, -151.7, 0},      // fixed h: meant
    {5, 4, -167, -0.1, -64, 0},       // h grows with the square of t, below: meant
    {5, 5, -26, 2.3, 99, 0.9},        //
    {6, 0, 66, 0.5, 0, 0},            //
    {6, 1, 64, -0.4, -16, 0.3},       //
    {6, 2, 65, 0.6, 77, -1.6},        //
    {6, 3, -172, 1.9, 67, -0.2},      //
    {6, 4, 2, -0.2, -57, -0.9},       //
    {6, 5, 17, -0.2, 4, 1},           //
    {6, 6, -94, 0, 28, 2.2},          //
};
constexpr double h54_carre = 1.8; // [nT/year2]

/// Constants of the synthesis, with the Schmidt factors S(n, m) folded in.
struct table_igrf {
    std::array<paire_gh, nb_igrf> gh0{}, gh_an{};
    double h54 = 0;

    table_igrf() {
        double S[nb_igrf] = {1};
        for (int n = 1; n <= degre_igrf; ++n) {
            S[place(n, 0)] = S[place(n - 1, 0)] * (2 * n - 1) / n;
            S[place(n, 1)] = S[place(n, 0)] * std::sqrt(n * 2.0 / (n + 1));
            for (int m = 2; m <= n; ++m)
                S[place(n, m)] = S[place(n, m - 1)] * std::sqrt((n - m + 1.0) / (n + m));
        }
        for (const terme& t : termes) {
            const int k = place(t.n, t.m);
            gh0[k] = paire_gh{t.g, t.h} * S[k];
            gh_an[k] = paire_gh{t.g_an, t.h_an} * S[k];
        }
        h54 = h54_carre * S[place(5, 4)];
    }
};

const table_igrf table;

/// Recurrence factor of the Gauss-normalised functions.
constexpr double facteur_k(int n, int m) {
    return n < 2 ? 0 : ((n - 1.0) * (n - 1.0) - m * m) / ((2.0 * n - 1) * (2.0 * n - 3));
}

} // namespace

champ_igrf::champ_igrf(double date) {
    const double t = date / 365 - 45;
    for (int k = 0; k < nb_igrf; ++k) gh[k] = table.gh0[k] + table.gh_an[k] * t;
    gh[place(5, 4)][1] += table.h54 * t * t;
}

vec3 champ_igrf::synthese(double r, sinus_cosinus colatitude, sinus_cosinus longitude) const {
    const auto [s, c] = colatitude;

    // Q(n,m): the Gauss-normalised function P(n,m) less its factor s^m, a polynomial in c. Its derivative in
    // c is (n - m) Q(n,m+1).
    double Q[nb_igrf];
#pragma GCC unroll 8
    for (int m = 0; m <= degre_igrf; ++m) {
        Q[place(m, m)] = 1;
        if (m < degre_igrf) Q[place(m + 1, m)] = c;
#pragma GCC unroll 8
        for (int n = m + 2; n <= degre_igrf; ++n)
            Q[place(n, m)] = c * Q[place(n - 1, m)] - facteur_k(n, m) * Q[place(n - 2, m)];
    }

    // (a/r)^(n+2)
    const double rho = rayon_igrf / r;
    double puissance[degre_igrf + 1];
    puissance[0] = rho * rho;
#pragma GCC unroll 8
    for (int n = 1; n <= degre_igrf; ++n) puissance[n] = puissance[n - 1] * rho;

    // For each order m, the sums over n of g and h: of the potential, of its radial derivative and of the
    // derivative of Q. Then the sums over m with s^(m-1) cos(m lon) and s^(m-1) sin(m lon).
    double B0 = 0, B1 = 0, B2 = 0;
    double C = longitude.c, S = longitude.s;
    const double X = s * longitude.c, Y = s * longitude.s;
#pragma GCC unroll 8
    for (int m = 0; m <= degre_igrf; ++m) {
        paire_gh potentiel{}, radial{}, derive{};
#pragma GCC unroll 8
        for (int n = m == 0 ? 1 : m; n <= degre_igrf; ++n) {
            const paire_gh v = gh[place(n, m)] * puissance[n];
            const paire_gh vQ = v * Q[place(n, m)];
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
    return {B0, B1, s == 0 ? 0 : B2};
}
