#include "orbit/math.h"

double atan_quad(double y, double x) {
    if (x == 0) return y > 0 ? demi_pi : 9.42477796076937 / 2;
    return x > 0 ? std::atan(y / x) : std::atan(y / x) + pi;
}

double atan2_v(double y, double x) {
    if (!(std::fabs(x) > 1e-10)) return demi_pi;
    if (x >= 0) return std::atan(y / x);
    return y >= 0 ? std::atan(y / x) + pi : std::atan(y / x) - pi;
}

double arccos_p(double x) { return demi_pi + std::atan(-x / std::sqrt(1 - x * x)); }

double arccos_v(double x) {
    if (x == 1) return 0;
    if (x == -1) return pi;
    return demi_pi + std::atan(-x / std::sqrt(1.0000000001 - x * x));
}

double arcsin_v(double x) {
    if (x == -1) return -demi_pi;
    if (x == 1) return demi_pi;
    return std::atan(x / std::sqrt(1 - x * x));
}

mat3 mat_produit(const mat3& a, const mat3& b) {
    mat3 c;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k) c(i, j) += a(i, k) * b(k, j);
    return c;
}

vec3 mat_vecteur(const mat3& m, const vec3& v) {
    vec3 r{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) r[i] += m(i, j) * v[j];
    return r;
}

mat3 mat_transposee(const mat3& m) {
    mat3 t;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) t(i, j) = m(j, i);
    return t;
}
