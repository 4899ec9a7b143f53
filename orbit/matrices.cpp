#include "orbit/matrices.h"

#include <utility>

#include "orbit/orb_trajecto.h"
#include "shell/surveillance.h"

tour_plan::tour_plan(const record_orbite& o)
    : om(sincos_de(degres_vers_radians(noeud_1950(o)))),
      i(sincos_de(degres_vers_radians(o.orb_inclinaison))) {}

vec3 tour_plan::depuis_plan(const vec3& v) const {
    const auto [X, Y, Z] = v;
    return {om.c * X - i.c * om.s * Y + i.s * om.s * Z, om.s * X + i.c * om.c * Y - i.s * om.c * Z,
            i.s * Y + i.c * Z};
}

tour_local::tour_local(const vec3& p) {
    const double r = std::sqrt(p[0] * p[0] + p[1] * p[1]);
    u = sincos_de(atan_quad(p[1] / r, p[0] / r));
}

vec3 tour_local::local_vers_plan(const vec3& v) const {
    const auto [a, b, c] = v;
    return {u.c * c - u.s * a, u.s * c + u.c * a, b};
}

tour_corps::tour_corps(double psi_deg, double theta_deg, double phi_deg)
    : psi(sincos_de(psi_deg * rad_par_degre)), theta(sincos_de(theta_deg * rad_par_degre)),
      phi(sincos_de(phi_deg * rad_par_degre)) {}

vec3 tour_corps::depuis_corps(const vec3& v) const {
    const auto [x, y, z] = v;
    return {theta.c * psi.c * x + (phi.s * theta.s * psi.c - phi.c * psi.s) * y +
                (phi.c * theta.s * psi.c + phi.s * psi.s) * z,
            theta.c * psi.s * x + (phi.s * theta.s * psi.s + phi.c * psi.c) * y +
                (phi.c * theta.s * psi.s - phi.s * psi.c) * z,
            -theta.s * x + phi.s * theta.c * y + phi.c * theta.c * z};
}

namespace {

/// The three turns in one, column by column.
std::array<vec3, 3> compose(const tour_plan& plan, const tour_local& local, const tour_corps& corps) {
    std::array<vec3, 3> lignes;
    const auto [om, i] = plan;
    const vec3 colonnes[3] = {
        {om.c, -i.c * om.s, i.s * om.s}, {om.s, i.c * om.c, -i.s * om.c}, {0, i.s, i.c}};
    for (int j = 0; j < 3; ++j) {
        const vec3 v = corps.vers_corps(local.plan_vers_local(colonnes[j]));
        for (int k = 0; k < 3; ++k) lignes[k][j] = v[k];
    }
    return lignes;
}

tour_local tour_du_satellite(const tour_plan& plan, const vec3& sat_pos) {
    const vec3 p = plan.vers_plan(sat_pos);
    const double r = std::sqrt(p[0] * p[0] + p[1] * p[1]);
    return tour_local(sinus_cosinus{p[1] / r, p[0] / r});
}

} // namespace

tour_inertiel_corps::tour_inertiel_corps(const orbit_state& o) {
    const tour_plan plan(o.orbite);
    const pointage_record& p = o.pointage;
    lignes = compose(plan, tour_local(plan.vers_plan(o.sat_pos)), tour_corps(p.psi, p.theta, p.psi));
}

tour_inertiel_corps::tour_inertiel_corps(orbit_state& o) {
    const tour_plan plan(o.tours.noeud.de(degres_vers_radians(noeud_1950(o.orbite))),
                         o.tours.inclinaison.de(degres_vers_radians(o.orbite.orb_inclinaison)));
    const sinus_cosinus psi = o.tours.psi.de(o.pointage.psi * rad_par_degre);
    lignes = compose(plan, tour_du_satellite(plan, o.sat_pos),
                     tour_corps(psi, o.tours.theta.de(o.pointage.theta * rad_par_degre), psi));
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

namespace {

/// Argument of latitude [rad] of the form-B turns. The mean anomaly, already in radians, is converted from
/// degrees once more: that is meant.
double argument_latitude(const orbit_state& o) {
    const double e = o.orbite.orb_excentricite;
    const double E = kepler_inverse(o.anomalie_moy * rad_par_degre, e);
    const double nu = modulo(2 * std::atan(std::sqrt((1 + e) / (1 - e)) * std::tan(E / 2)), deux_pi);
    return o.orbite.orb_argument * rad_par_degre + nu;
}

/// R1(i) R3(om): inertial frame to orbit plane.
mat3 matrice_orbital_i(double om, double i) {
    const auto [so, co] = sincos_de(om);
    const auto [si, ci] = sincos_de(i);
    mat3 m;
    m(0, 0) = co, m(0, 1) = so, m(0, 2) = 0;
    m(1, 0) = -ci * so, m(1, 1) = ci * co, m(1, 2) = si;
    m(2, 0) = si * so, m(2, 1) = -si * co, m(2, 2) = ci;
    return m;
}

/// Orbit plane to local orbital form B.
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

mat3 tour_euler(const orbit_state& o) {
    const mat3 plan =
        matrice_orbital_i(-o.orbite.orb_ascension * rad_par_degre, -o.orbite.orb_inclinaison * rad_par_degre);
    return mat_produit(mat_transposee(plan), mat_transposee(matrice_orbital_u(-argument_latitude(o))));
}

void euler_vers_inertiel(orbit_state& o, vec3& a, vec3& b, vec3& c) {
    sinus_euler sinus;
    euler_vers_inertiel(o, a, b, c, sinus);
}

void euler_vers_inertiel(orbit_state& o, vec3& a, vec3& b, vec3& c, sinus_euler& sinus) {
    for (double& angle : a) angle = angle_garde(angle);
    const auto [s0, c0] = sinus[0].de(a[0]);
    const auto [s1, c1] = sinus[1].de(a[1]);
    const auto [s2, c2] = sincos_de(a[2]);
    const vec3 A0 = {c1 * c2, c1 * s2, -s1}; // rows of R1(a0) R2(a1) R3(a2)
    const vec3 A1 = {s0 * s1 * c2 - c0 * s2, s0 * s1 * s2 + c0 * c2, s0 * c1};
    const vec3 A2 = {c0 * s1 * c2 + s0 * s2, c0 * s1 * s2 - s0 * c2, c0 * c1};

    // Columns of T1, the transpose of the turn to the orbit plane at the negated angles: rows of that turn.
    const auto [so, co] = o.tours.ascension_neg.de(-o.orbite.orb_ascension * rad_par_degre);
    const auto [si, ci] = o.tours.inclinaison_neg.de(-o.orbite.orb_inclinaison * rad_par_degre);
    const vec3 T0 = {co, so, 0}, T1 = {-ci * so, ci * co, si}, T2 = {si * so, -si * co, ci};

    // R = (A T1) T2; the second factor is the transpose of rows (0, 0, 1), (cu, su, 0), (-su, cu, 0). Only
    // five elements are needed.
    const auto [su, cu] = sincos_de(-argument_latitude(o));
    const double m00 = vec_scalaire(A0, T0), m01 = vec_scalaire(A0, T1), m02 = vec_scalaire(A0, T2);
    const double R00 = m02, R01 = m00 * cu + m01 * su;
    double R02 = -m00 * su + m01 * cu;
    const double R12 = -vec_scalaire(A1, T0) * su + vec_scalaire(A1, T1) * cu;
    const double R22 = -vec_scalaire(A2, T0) * su + vec_scalaire(A2, T1) * cu;

    if (std::fabs(R02) > 1.0) R02 = signe(R02) * 0.999999999999999;
    b[1] = -arcsin_v(R02);
    b[0] = atan2_v(R12, R22);
    b[2] = atan2_v(R01, R00);
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
    sinus_euler sinus;
    euler_taux(w, y, sinus);
}

void euler_taux(const std::array<double, 6>& w, std::array<double, 6>& y, sinus_euler& sinus) {
    for (int i = 0; i < 3; ++i) y[i] = angle_garde(y[i]);
    const auto [s0, c0] = sinus[0].de(y[0]);
    const auto [s1, c1] = sinus[1].de(y[1]);
    y[4] = c0 * w[1] - s0 * w[2];
    y[5] = (s0 * w[1] + c0 * w[2]) / c1;
    y[3] = w[0] + y[5] * s1; // the tangent of y(1) times the transverse rate
}
