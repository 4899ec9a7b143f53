#include "orbit/matrices.h"

#include <utility>

#include "orbit/orb_trajecto.h"
#include "shell/surveillance.h"

tour_plan::tour_plan(const record_orbite& o)
    : om(sincos_de(degres_vers_radians(noeud_1950(o)))),
      i(sincos_de(degres_vers_radians(o.orb_inclinaison))) {}

vec3 tour_plan::vers_plan(const vec3& v) const {
    const auto [x, y, z] = v;
    return {om.c * x + om.s * y, -i.c * om.s * x + i.c * om.c * y + i.s * z,
            i.s * om.s * x - i.s * om.c * y + i.c * z};
}

vec3 tour_plan::depuis_plan(const vec3& v) const {
    const auto [X, Y, Z] = v;
    return {om.c * X - i.c * om.s * Y + i.s * om.s * Z, om.s * X + i.c * om.c * Y - i.s * om.c * Z,
            i.s * Y + i.c * Z};
}

tour_local::tour_local(const vec3& p) {
    const double r = std::sqrt(p[0] * p[0] + p[1] * p[1]);
    u = sincos_de(atan_quad(p[1] / r, p[0] / r));
}

vec3 tour_local::plan_vers_local(const vec3& v) const {
    const auto [a, b, c] = v;
    return {-u.s * a + u.c * b, c, u.c * a + u.s * b};
}

vec3 tour_local::local_vers_plan(const vec3& v) const {
    const auto [a, b, c] = v;
    return {u.c * c - u.s * a, u.s * c + u.c * a, b};
}

tour_corps::tour_corps(double psi_deg, double theta_deg, double phi_deg)
    : psi(sincos_de(psi_deg * rad_par_degre)), theta(sincos_de(theta_deg * rad_par_degre)),
      phi(sincos_de(phi_deg * rad_par_degre)) {}

vec3 tour_corps::vers_corps(const vec3& v) const {
    const auto [x, y, z] = v;
    return {theta.c * psi.c * x + theta.c * psi.s * y - theta.s * z,
            (phi.s * theta.s * psi.c - phi.c * psi.s) * x + (phi.s * theta.s * psi.s + phi.c * psi.c) * y +
                phi.s * theta.c * z,
            (phi.c * theta.s * psi.c + phi.s * psi.s) * x + (phi.c * theta.s * psi.s - phi.s * psi.c) * y +
                phi.c * theta.c * z};
}

vec3 tour_corps::depuis_corps(const vec3& v) const {
    const auto [x, y, z] = v;
    return {theta.c * psi.c * x + (phi.s * theta.s * psi.c - phi.c * psi.s) * y +
                (phi.c * theta.s * psi.c + phi.s * psi.s) * z,
            theta.c * psi.s * x + (phi.s * theta.s * psi.s + phi.c * psi.c) * y +
                (phi.c * theta.s * psi.s - phi.s * psi.c) * z,
            -theta.s * x + phi.s * theta.c * y + phi.c * theta.c * z};
}

tour_inertiel_corps::tour_inertiel_corps(const orbit_state& o)
    : plan(o.orbite), local(plan.vers_plan(o.sat_pos)),
      corps(o.pointage.psi, o.pointage.theta, o.pointage.psi) {}

vec3 tour_inertiel_corps::inertiel_vers_corps(const vec3& v) const {
    return corps.vers_corps(local.plan_vers_local(plan.vers_plan(v)));
}

vec3 inertiel_vers_corps(const orbit_state& o, const vec3& v) {
    return tour_inertiel_corps(o).inertiel_vers_corps(v);
}

vec3 corps_vers_inertiel(const orbit_state& o, const vec3& v) {
    const tour_corps corps(o.pointage.psi, o.pointage.theta, o.pointage.phi);
    const tour_plan plan(o.orbite);
    const tour_local local(plan.vers_plan(o.sat_pos));
    return plan.depuis_plan(local.local_vers_plan(corps.depuis_corps(v)));
}

double argument_latitude(const orbit_state& o) {
    const double e = o.orbite.orb_excentricite;
    const double E = kepler_inverse(o.anomalie_moy * rad_par_degre, e);
    const double nu = modulo(2 * std::atan(std::sqrt((1 + e) / (1 - e)) * std::tan(E / 2)), deux_pi);
    return o.orbite.orb_argument * rad_par_degre + nu;
}

namespace {

/// R1(i) R3(om).
mat3 matrice_orbital_i(double om, double i) {
    const auto [so, co] = sincos_de(om);
    const auto [si, ci] = sincos_de(i);
    mat3 m;
    m(0, 0) = co, m(0, 1) = so, m(0, 2) = 0;
    m(1, 0) = -ci * so, m(1, 1) = ci * co, m(1, 2) = si;
    m(2, 0) = si * so, m(2, 1) = -si * co, m(2, 2) = ci;
    return m;
}

mat3 matrice_orbital_u(double u) {
    const auto [s, c] = sincos_de(u);
    mat3 m;
    m(0, 0) = 0, m(0, 1) = 0, m(0, 2) = 1;
    m(1, 0) = c, m(1, 1) = s, m(1, 2) = 0;
    m(2, 0) = -s, m(2, 1) = c, m(2, 2) = 0;
    return m;
}

} // namespace

vec3 vers_orbital_i(const orbit_state& o, const vec3& v) {
    return mat_vecteur(
        matrice_orbital_i(o.orbite.orb_ascension * rad_par_degre, o.orbite.orb_inclinaison * rad_par_degre),
        v);
}

vec3 vers_orbital_u(const orbit_state& o, const vec3& v) {
    return mat_vecteur(matrice_orbital_u(argument_latitude(o)), v);
}

void euler_vers_inertiel(const orbit_state& o, vec3& a, vec3& b, vec3& c) {
    for (double& angle : a) angle = angle_garde(angle);
    const auto [s0, c0] = sincos_de(a[0]);
    const auto [s1, c1] = sincos_de(a[1]);
    const auto [s2, c2] = sincos_de(a[2]);
    mat3 A; // R1(a0) R2(a1) R3(a2)
    A(0, 0) = c1 * c2, A(0, 1) = c1 * s2, A(0, 2) = -s1;
    A(1, 0) = s0 * s1 * c2 - c0 * s2, A(1, 1) = s0 * s1 * s2 + c0 * c2, A(1, 2) = s0 * c1;
    A(2, 0) = c0 * s1 * c2 + s0 * s2, A(2, 1) = c0 * s1 * s2 - s0 * c2, A(2, 2) = c0 * c1;

    const mat3 T1 = mat_transposee(matrice_orbital_i(-o.orbite.orb_ascension * rad_par_degre,
                                                     -o.orbite.orb_inclinaison * rad_par_degre));
    const mat3 T2 = mat_transposee(matrice_orbital_u(-argument_latitude(o)));
    mat3 R = mat_produit(mat_produit(A, T1), T2);

    if (std::fabs(R(0, 2)) > 1.0) R(0, 2) = signe(R(0, 2)) * 0.999999999999999;
    b[1] = -arcsin_v(R(0, 2));
    b[0] = atan2_v(R(1, 2), R(2, 2));
    b[2] = atan2_v(R(0, 1), R(0, 0));
    c[1] = pi - b[1];
    c[0] = b[0] + pi;
    c[2] = b[2] + pi;
}

double angle_garde(double x) {
    double r = x;
    for (int passe = 0; r > demi_pi || r < -demi_pi; ++passe) {
        if (!std::isfinite(r) || passe == passes_max) {
            leve_faute();
            return x;
        }
        r += r > demi_pi ? -pi : pi;
    }
    if (std::fabs(r) < 1e-12) x = signe(r == 0 ? x : r) * (std::fabs(x) - 1e-11);
    return x;
}

void euler_taux(const std::array<double, 6>& w, std::array<double, 6>& y) {
    for (int i = 0; i < 3; ++i) y[i] = angle_garde(y[i]);
    const auto [s0, c0] = sincos_de(y[0]);
    const double transverse = s0 * w[1] + c0 * w[2];
    y[3] = w[0] + transverse * std::tan(y[1]);
    y[4] = c0 * w[1] - s0 * w[2];
    y[5] = transverse / std::cos(y[1]);
}

int resout_lineaire(int n, const double* A, int largeur, const double* b, double* x) {
    double lu[6][6], echelle[6], y[6];
    int permutation[6];
    for (int i = 0; i < n; ++i) {
        double s = 0;
        for (int j = 0; j < n; ++j) {
            lu[i][j] = A[i * largeur + j];
            s += lu[i][j] * lu[i][j];
        }
        echelle[i] = s == 0 ? 1.0 : 1 / std::sqrt(s);
        permutation[i] = i;
    }

    double determinant = 1;
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < j; ++i) // upper elements
            for (int k = 0; k < i; ++k) lu[i][j] -= lu[i][k] * lu[k][j];
        int ligne_pivot = j;
        double plus_grand = -1;
        for (int i = j; i < n; ++i) { // lower elements, the pivot among them
            for (int k = 0; k < j; ++k) lu[i][j] -= lu[i][k] * lu[k][j];
            const double grandeur = std::fabs(lu[i][j] * echelle[i]);
            if (grandeur > plus_grand) {
                plus_grand = grandeur;
                ligne_pivot = i;
            }
        }
        if (ligne_pivot != j) {
            std::swap(lu[ligne_pivot], lu[j]);
            std::swap(echelle[ligne_pivot], echelle[j]);
            std::swap(permutation[ligne_pivot], permutation[j]);
            determinant = -determinant;
        }
        const double pivot = lu[j][j];
        determinant *= pivot;
        if (std::fabs(pivot) < 1e-21) break;
        for (int i = j + 1; i < n; ++i) lu[i][j] /= pivot;
    }
    if (std::fabs(determinant) < 1e-21) return -1;

    for (int i = 0; i < n; ++i) { // L y = P b
        y[i] = b[permutation[i]];
        for (int k = 0; k < i; ++k) y[i] -= lu[i][k] * y[k];
    }
    for (int i = n - 1; i >= 0; --i) { // U x = y
        for (int k = i + 1; k < n; ++k) y[i] -= lu[i][k] * y[k];
        y[i] /= lu[i][i];
    }
    for (int i = 0; i < n; ++i) x[i] = y[i];
    return 0;
}
