/// Scalar and vector functions shared by all models: angle functions that keep their quadrant, a modulo for
/// reals, three-component vectors. Angles are radians unless a line says degrees.
#pragma once

#include <array>
#include <cmath>
#include <limits>

#include "shell/utilitaires.h"

inline constexpr double pi = 3.14159265358979;
inline constexpr double deux_pi = 6.28318530717958;
inline constexpr double demi_pi = 1.570796326794895;
/// Degrees to radians. Some routines convert by `degres_vers_radians` instead; the two differ in the last
/// bit.
inline constexpr double rad_par_degre = 0.017453292519943278;
inline constexpr double degres_vers_radians(double x) { return x * 3.14159265358979 / 180.0; }
inline constexpr double radians_vers_degres(double x) { return x * 180.0 / 3.14159265358979; }

using vec3 = std::array<double, 3>;

/// 3x3 matrix; m(i, j) is row i, column j, the first index running fastest in memory.
struct mat3 {
    std::array<double, 9> e{};
    double& operator()(int i, int j) { return e[i + 3 * j]; }
    double operator()(int i, int j) const { return e[i + 3 * j]; }
};

/// Sine and cosine of one angle, computed once and used for several vectors.
struct sinus_cosinus {
    double s, c;
};
inline sinus_cosinus sincos_de(double angle) { return {std::sin(angle), std::cos(angle)}; }

/// Sine and cosine of an angle that seldom changes, kept with it.
struct sincos_garde {
    double angle = std::numeric_limits<double>::quiet_NaN();
    sinus_cosinus valeur{};
    const sinus_cosinus& de(double x) {
        if (x != angle) {
            valeur = sincos_de(x);
            angle = x;
        }
        return valeur;
    }
};

inline double carre(double x) { return x * x; }
/// -1, 0 or 1.
inline double signe(double x) { return x > 0 ? 1.0 : x < 0 ? -1.0 : 0.0; }

/// Arctangent of y / x in (-pi/2, 3 pi/2); for x = 0: 3 pi/2 when y <= 0, pi/2 when y > 0.
double atan_quad(double y, double x);

/// Arctangent of y / x in (-pi, pi); for |x| <= 1e-10 it is pi/2 whatever the sign of y.
double atan2_v(double y, double x);

/// Arccosine without a guard: a division by zero at |x| = 1.
double arccos_p(double x);

/// Arccosine, exact at -1 and 1, real just outside of them.
double arccos_v(double x);

/// Arcsine, exact at -1 and 1.
double arcsin_v(double x);

/// Real modulo: in [0, m) for x > 0, in (0, m] for x < 0, and 0 for 0.
inline double modulo(double x, double m) {
    if (x > 0) return x - std::floor(std::fabs(x) / m) * m;
    if (x < 0) return x + std::floor(std::fabs(x) / m) * m + m;
    return 0;
}

inline double vec_scalaire(const vec3& a, const vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline vec3 vec_vectoriel(const vec3& a, const vec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double vec_norme(const vec3& v) { return std::sqrt(vec_scalaire(v, v)); }
inline vec3 vec_echelle(double s, const vec3& v) { return {s * v[0], s * v[1], s * v[2]}; }
inline vec3 vec_somme(const vec3& a, const vec3& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
inline vec3 vec_difference(const vec3& a, const vec3& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

/// A x B.
mat3 mat_produit(const mat3& a, const mat3& b);
/// M v.
vec3 mat_vecteur(const mat3& m, const vec3& v);
mat3 mat_transposee(const mat3& m);
