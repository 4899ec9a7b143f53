#include "orbit/systeme_lineaire.h"

#include <cmath>
#include <utility>

namespace {

using paire = double __attribute__((vector_size(16)));

/// A determinant or a pivot below this makes a singular system.
constexpr double singulier = 1e-21;

/// The size is known to the compiler, which lays the short loops out flat. The rows carry their right-hand
/// side behind the n columns.
template <int n>
struct systeme {
    static constexpr int paires = (n + 2) / 2; ///< columns and right-hand side, two by two
    union ligne {
        paire p[paires];
        double e[2 * paires];
    } lu[n];
    double echelle[n]; ///< of each row, the inverse of its norm
};

template <int n>
[[gnu::always_inline]] inline void charge(systeme<n>& s, const double* A, int largeur, const double* b) {
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) {
        auto& l = s.lu[i];
        l.p[systeme<n>::paires - 1] = paire{};
        double somme = 0;
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) {
            l.e[j] = A[i * largeur + j];
            somme += l.e[j] * l.e[j];
        }
        l.e[n] = b[i];
        s.echelle[i] = somme == 0 ? 1.0 : 1 / std::sqrt(somme);
    }
}

/// The row, from j on, whose scaled element of column j is the largest.
template <int n>
[[gnu::always_inline]] inline int ligne_pivot(const systeme<n>& s, int j) {
    int choix = j;
    double plus_grand = -1;
#pragma GCC unroll 6
    for (int i = j; i < n; ++i)
        if (const double grandeur = std::fabs(s.lu[i].e[j] * s.echelle[i]); grandeur > plus_grand) {
            plus_grand = grandeur;
            choix = i;
        }
    return choix;
}

/// Each column's elements are subtracted as soon as its pivot is known, which for every element is the order
/// of Crout's running sums. False for a singular system.
template <int n>
[[gnu::always_inline]] inline bool elimine(systeme<n>& s) {
    double determinant = 1;
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j) {
        if (const int choix = ligne_pivot(s, j); choix != j) {
            std::swap(s.lu[choix], s.lu[j]);
            std::swap(s.echelle[choix], s.echelle[j]);
            determinant = -determinant;
        }
        const double pivot = s.lu[j].e[j];
        determinant *= pivot;
        if (std::fabs(pivot) < singulier) break;
#pragma GCC unroll 6
        for (int i = j + 1; i < n; ++i) {
            const double l = s.lu[i].e[j] / pivot;
#pragma GCC unroll 6
            for (int k = (j + 1) / 2; k < systeme<n>::paires; ++k) s.lu[i].p[k] -= l * s.lu[j].p[k];
        }
    }
    return !(std::fabs(determinant) < singulier);
}

template <int n>
[[gnu::always_inline]] inline void remonte(const systeme<n>& s, double* x) {
    double y[n];
    for (int i = 0; i < n; ++i) y[i] = s.lu[i].e[n];
#pragma GCC unroll 6
    for (int i = n - 1; i >= 0; --i) {
        y[i] /= s.lu[i].e[i];
#pragma GCC unroll 6
        for (int k = 0; k < i; ++k) y[k] -= s.lu[k].e[i] * y[i];
    }
    for (int i = 0; i < n; ++i) x[i] = y[i];
}

template <int n>
int resout(const double* A, int largeur, const double* b, double* x) {
    systeme<n> s;
    charge(s, A, largeur, b);
    if (!elimine(s)) return -1;
    remonte(s, x);
    return 0;
}

} // namespace

int resout_lineaire(int n, const double* A, int largeur, const double* b, double* x) {
    switch (n) {
    case 1: return resout<1>(A, largeur, b, x);
    case 2: return resout<2>(A, largeur, b, x);
    case 3: return resout<3>(A, largeur, b, x);
    case 4: return resout<4>(A, largeur, b, x);
    case 5: return resout<5>(A, largeur, b, x);
    default: return resout<6>(A, largeur, b, x);
    }
}
