#include "power/power_thermique_noyau.h"

#include <cstring>

namespace {

using v4 = double __attribute__((vector_size(32)));

} // namespace

// The choice is made before a sanitizer has started.
#if defined(__x86_64__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define KESTREL_LARGE __attribute__((target_clones("avx2", "default")))
#else
#define KESTREL_LARGE
#endif

KESTREL_LARGE
void integre_surfaces(modele_surfaces& m, int32_t passes) {
    v4 T0, T1, Q0, Q1, E0, E1, C0, C1, R0, R1, W0, W1, I0, I1;
    const auto lit = [](v4 & bas, v4 & haut, const std::array<double, 8>& a) __attribute__((always_inline)) {
        std::memcpy(&bas, a.data(), sizeof bas);
        std::memcpy(&haut, a.data() + 4, sizeof haut);
    };
    lit(T0, T1, m.T);
    lit(Q0, Q1, m.Q);
    lit(E0, E1, m.E);
    lit(C0, C1, m.C);
    lit(R0, R1, m.R);
    lit(W0, W1, m.W);
    lit(I0, I1, m.inv);
    double T_int = m.T_int;
    const double chaleur = m.chaleur, inv_int = m.inv_int;

    for (int32_t passe = 0; passe < passes; ++passe) {
        const double T2 = T_int * T_int, T4 = T2 * T2;
        const v4 c0 = T0 * T0, c1 = T1 * T1;
        const v4 q0 = c0 * c0, q1 = c1 * c1;
        const v4 f0 = C0 * (T_int - T0) + R0 * (T4 - q0);
        const v4 f1 = C1 * (T_int - T1) + R1 * (T4 - q1);
        const v4 s = W0 * f0 + W1 * f1;
        T0 += (Q0 - E0 * q0 + f0) * I0;
        T1 += (Q1 - E1 * q1 + f1) * I1;
        T_int += (chaleur - ((s[0] + s[2]) + (s[1] + s[3]))) * inv_int;
    }

    std::memcpy(m.T.data(), &T0, sizeof T0);
    std::memcpy(m.T.data() + 4, &T1, sizeof T1);
    m.T_int = T_int;
}

/// Strip i stands in lane i / 9 of vector i % 9, so that its neighbours stand in the same lane of the
/// neighbouring vectors, and only the two ends need their lanes rotated.
KESTREL_LARGE
void integre_cylindre(modele_cylindre& m, int32_t passes) {
    constexpr int n = nb_bandes / 4;
    v4 T[n], Q[n];
    for (int i = 0; i < nb_bandes; ++i) {
        T[i % n][i / n] = m.T[i];
        Q[i % n][i / n] = m.Q[i];
    }
    const double E = m.E, C = m.C, R = m.R, W = m.W, inv = m.inv, tour = m.tour;
    disque_cylindre haut = m.disques[0], bas = m.disques[1];
    double T_int = m.T_int;
    const double chaleur = m.chaleur, inv_int = m.inv_int;

    for (int32_t passe = 0; passe < passes; ++passe) {
        const double T2 = T_int * T_int, T4 = T2 * T2;
        const v4 premier = T[0], dernier = T[n - 1];
        const v4 apres = {premier[1], premier[2], premier[3], premier[0]};
        v4 gauche = {dernier[3], dernier[0], dernier[1], dernier[2]};
        v4 somme = {0, 0, 0, 0};
        for (int j = 0; j < n; ++j) {
            const v4 t = T[j], droite = j + 1 < n ? T[j + 1] : apres;
            const v4 c = t * t, q = c * c;
            const v4 f = C * (T_int - t) + R * (T4 - q);
            somme += f;
            T[j] = t + (Q[j] - E * q + f - (2 * t - gauche - droite) * tour) * inv;
            gauche = t;
        }
        double vers_parois = ((somme[0] + somme[2]) + (somme[1] + somme[3])) * W;
        for (disque_cylindre* d : {&haut, &bas}) {
            const double c = d->T * d->T, q = c * c;
            const double f = d->C * (T_int - d->T) + d->R * (T4 - q);
            vers_parois += d->W * f;
            d->T += (d->Q - d->E * q + f) * d->inv;
        }
        T_int += (chaleur - vers_parois) * inv_int;
    }

    for (int i = 0; i < nb_bandes; ++i) m.T[i] = T[i % n][i / n];
    m.disques = {haut, bas};
    m.T_int = T_int;
}
