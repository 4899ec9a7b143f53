#include "attitude/att_igrf.h"

namespace {

using harmoniques::place;

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
    harmoniques::coefficients<degre_igrf> gh0{}, gh_an{};
    double h54 = 0;

    table_igrf() {
        const auto S = harmoniques::facteurs_schmidt<degre_igrf>();
        for (const terme& t : termes) {
            const int k = place(t.n, t.m);
            gh0[k] = harmoniques::paire{t.g, t.h} * S[k];
            gh_an[k] = harmoniques::paire{t.g_an, t.h_an} * S[k];
        }
        h54 = h54_carre * S[place(5, 4)];
    }
};

const table_igrf table;

} // namespace

champ_igrf::champ_igrf(double date) {
    const double t = date / 365 - 45;
    for (std::size_t k = 0; k < gh.size(); ++k) gh[k] = table.gh0[k] + table.gh_an[k] * t;
    gh[place(5, 4)][1] += table.h54 * t * t;
}

vec3 champ_igrf::synthese(double r, sinus_cosinus colatitude, sinus_cosinus longitude) const {
    const vec3 B = harmoniques::synthese<degre_igrf>(gh, rayon_igrf / r, colatitude, longitude);
    return {B[0], B[1], colatitude.s == 0 ? 0 : B[2]};
}
