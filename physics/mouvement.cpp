#include "physics/mouvement.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "attitude/att_integrateur.h"
#include "physics/couples_physiques.h"

namespace {

/// Symmetric 3x3 matrix.
struct sym3 {
    double xx, yy, zz, xy, xz, yz;
    vec3 fois(const vec3& v) const {
        return {xx * v[0] + xy * v[1] + xz * v[2], xy * v[0] + yy * v[1] + yz * v[2],
                xz * v[0] + yz * v[1] + zz * v[2]};
    }
    /// Solution of M x = b by cofactors; a division by zero for a singular matrix.
    vec3 resout(const vec3& b) const {
        const double a = yy * zz - yz * yz, d = xz * yz - xy * zz, f = xy * yz - xz * yy;
        const double g = 1 / (xx * a + xy * d + xz * f);
        const double e = xx * zz - xz * xz, i = xy * xz - xx * yz, k = xx * yy - xy * xy;
        return {g * (a * b[0] + d * b[1] + f * b[2]), g * (d * b[0] + e * b[1] + i * b[2]),
                g * (f * b[0] + i * b[1] + k * b[2])};
    }
    double& hors_diagonale(int i, int j) { return i + j == 1 ? xy : i + j == 2 ? xz : yz; }
    double& diagonale(int i) { return i == 0 ? xx : i == 1 ? yy : zz; }
};

sym3 symetrique(const mat3& m) { return {m(0, 0), m(1, 1), m(2, 2), m(0, 1), m(0, 2), m(1, 2)}; }

/// Inertia and coupling to the dampers: momenta of rotation J w + sum g z', of a damper g.w + mu z'.
struct couplage {
    sym3 J;
    std::array<vec3, 3> g;
};

/// The vector e_i x e_j for two different axes, times s, added to v.
void ajoute_croix(vec3& v, int i, int j, double s) { v[3 - i - j] += (i + 1) % 3 == j ? s : -s; }

couplage couplage_de(const corps_mobile& corps, const vec3& z) {
    couplage s{symetrique(corps.J0), {}};
    vec3 recul{}; // sum of m z e_b
    for (int i = 0; i < corps.nb_ressorts; ++i)
        recul[corps.ressorts[i].glissiere] = corps.ressorts[i].m * z[i];
    for (int i = 0; i < corps.nb_ressorts; ++i) {
        const amortisseur& d = corps.ressorts[i];
        const double q = (d.m - d.recul) * z[i] * z[i];
        s.J.diagonale(d.levier) += q;
        s.J.diagonale(3 - d.levier - d.glissiere) += q;
        s.J.hors_diagonale(d.levier, d.glissiere) -= d.m * d.l * z[i];
        ajoute_croix(s.g[i], d.levier, d.glissiere, d.m * d.l);
        for (int k = 0; k < 3; ++k)
            if (k != d.glissiere) ajoute_croix(s.g[i], k, d.glissiere, -d.m * recul[k] / corps.Mt);
    }
    if (corps.nb_ressorts > 1) { // the recoil of two dampers together
        s.J.xy += recul[0] * recul[1] / corps.Mt;
        s.J.xz += recul[0] * recul[2] / corps.Mt;
        s.J.yz += recul[1] * recul[2] / corps.Mt;
    }
    return s;
}

/// Time derivative of J and g while the dampers move.
couplage derive_couplage(const corps_mobile& corps, const vec3& z, const vec3& zp) {
    // J and g are at most of second degree in z: the centred difference is exact.
    const auto a = couplage_de(corps, {z[0] + zp[0], z[1] + zp[1], z[2] + zp[2]});
    const auto b = couplage_de(corps, {z[0] - zp[0], z[1] - zp[1], z[2] - zp[2]});
    couplage d;
    const auto moitie = [](double x, double y) { return (x - y) / 2; };
    d.J = {moitie(a.J.xx, b.J.xx), moitie(a.J.yy, b.J.yy), moitie(a.J.zz, b.J.zz),
           moitie(a.J.xy, b.J.xy), moitie(a.J.xz, b.J.xz), moitie(a.J.yz, b.J.yz)};
    for (int i = 0; i < 3; ++i) d.g[i] = vec_echelle(.5, vec_difference(a.g[i], b.g[i]));
    return d;
}

/// Solves the system of `couplage` for the two momenta.
vitesses_corps resout(const corps_mobile& corps, const couplage& s, const vec3& h, const vec3& p) {
    sym3 J = s.J;
    vec3 b = h;
    vitesses_corps v;
    for (int i = 0; i < corps.nb_ressorts; ++i) {
        const vec3& g = s.g[i];
        const double u = 1 / corps.ressorts[i].masse_libre, w = p[i] * u;
        J.xx -= u * g[0] * g[0], J.yy -= u * g[1] * g[1], J.zz -= u * g[2] * g[2];
        J.xy -= u * g[0] * g[1], J.xz -= u * g[0] * g[2], J.yz -= u * g[1] * g[2];
        for (int k = 0; k < 3; ++k) b[k] -= w * g[k];
    }
    v.omega = J.resout(b);
    for (int i = 0; i < corps.nb_ressorts; ++i)
        v.zp[i] = (p[i] - vec_scalaire(s.g[i], v.omega)) / corps.ressorts[i].masse_libre;
    return v;
}

/// Smallest eigenvalue of a symmetric matrix, by the cosine of a third of an angle.
double petite_inertie(const sym3& s) {
    const double q = (s.xx + s.yy + s.zz) / 3;
    const double x = s.xx - q, y = s.yy - q, z = s.zz - q;
    const double p = std::sqrt((x * x + y * y + z * z + 2 * (s.xy * s.xy + s.xz * s.xz + s.yz * s.yz)) / 6);
    if (!(p > 1e-9 * q)) return q;
    const double det =
        x * (y * z - s.yz * s.yz) - s.xy * (s.xy * z - s.yz * s.xz) + s.xz * (s.xy * s.yz - y * s.xz);
    const double r = std::clamp(det / (2 * p * p * p), -1.0, 1.0);
    return q + 2 * p * std::cos((std::acos(r) + 2 * std::numbers::pi) / 3);
}

} // namespace

corps_mobile::corps_mobile(const attitude_record& a, const options_modele& o)
    : J0(tenseur_inertie(a)), Mt(a.Mt) {
    inertie_min = petite_inertie(symetrique(J0));
    if (!o.sans_roues) JR = a.JR;
    if (o.sans_amortisseurs) return;
    for (int i = 0; i < 3; ++i) {
        if (!(a.md[i] > masse_amortisseur_nulle)) continue;
        const double m = a.md[i], recul = m * m / a.Mt, libre = m - recul;
        ressorts[nb_ressorts++] = {i, (i + 2) % 3, m, a.ld[i], a.c[i], a.k[i], libre, recul};
        // The mass that the spring moves when the body swings with it.
        const double m_jointe = std::max(libre - carre(m * a.ld[i]) / inertie_min, libre / 20);
        const double periode = a.k[i] > 0 ? 2 * std::numbers::pi * std::sqrt(m_jointe / a.k[i]) : INFINITY;
        taux_ressorts = std::max({taux_ressorts, 40 / periode, a.c[i] / m_jointe});
    }
}

vitesses_corps vitesses_de(const corps_mobile& corps, const etat_mouvement& e, const rotation& A) {
    const vec3 h = vec_difference(A.vers_corps(e.H), e.hw);
    if (corps.nb_ressorts == 0) return {symetrique(corps.J0).resout(h), {}};
    return resout(corps, couplage_de(corps, e.z), h, e.p);
}

vec3 forces_ressorts(const corps_mobile& corps, const etat_mouvement& e, const vitesses_corps& v) {
    vec3 z{}, zp{}; // m z and m z' along the three slides
    for (int i = 0; i < corps.nb_ressorts; ++i) {
        const amortisseur& d = corps.ressorts[i];
        z[d.glissiere] = d.m * e.z[i];
        zp[d.glissiere] = d.m * v.zp[i];
    }
    const vec3 recul = vec_echelle(1 / corps.Mt, vec_somme(vec_vectoriel(v.omega, z), zp));
    vec3 force{};
    for (int i = 0; i < corps.nb_ressorts; ++i) {
        const amortisseur& d = corps.ressorts[i];
        vec3 r{}, axe{};
        r[d.levier] = d.l;
        r[d.glissiere] = e.z[i];
        axe[d.glissiere] = 1;
        // d T / d z = m (velocity of the mass less the recoil) . (w x e_b)
        const vec3 vitesse = vec_difference(vec_vectoriel(v.omega, r), recul);
        force[i] = d.m * vec_scalaire(vitesse, vec_vectoriel(v.omega, axe)) - d.k * e.z[i] - d.c * v.zp[i];
    }
    return force;
}

vec3 acceleration_de(const corps_mobile& corps, const etat_mouvement& e, const rotation& A,
                     const vitesses_corps& v, const actions& u) {
    const vec3 H = A.vers_corps(e.H);
    vec3 h = vec_difference(vec_difference(u.couple, vec_vectoriel(v.omega, H)), u.roues);
    if (corps.nb_ressorts == 0) return symetrique(corps.J0).resout(h);
    const couplage d = derive_couplage(corps, e.z, v.zp);
    vec3 p = forces_ressorts(corps, e, v);
    h = vec_difference(h, d.J.fois(v.omega));
    for (int i = 0; i < corps.nb_ressorts; ++i) {
        h = vec_difference(h, vec_echelle(v.zp[i], d.g[i]));
        p[i] -= vec_scalaire(d.g[i], v.omega);
    }
    return resout(corps, couplage_de(corps, e.z), h, p).omega;
}

void lance_mouvement(const corps_mobile& corps, etat_mouvement& e, const vec3& w) {
    const couplage s = couplage_de(corps, e.z);
    e.H = rotation_de(e.q).depuis_corps(vec_somme(s.J.fois(w), e.hw));
    for (int i = 0; i < corps.nb_ressorts; ++i) e.p[i] = vec_scalaire(s.g[i], w);
}

double energie_de(const corps_mobile& corps, const etat_mouvement& e) {
    const rotation A = rotation_de(e.q);
    const vitesses_corps v = vitesses_de(corps, e, A);
    double E = vec_scalaire(v.omega, vec_difference(A.vers_corps(e.H), e.hw));
    for (int i = 0; i < corps.nb_ressorts; ++i) E += e.p[i] * v.zp[i] + corps.ressorts[i].k * carre(e.z[i]);
    for (int i = 0; i < 3; ++i)
        if (corps.JR[i] != 0) E += carre(e.hw[i]) / corps.JR[i];
    return E / 2;
}

double pas_du_mouvement(const corps_mobile& corps, const vec3& w, const vec3& hw, const vec3& couple) {
    constexpr double tour = 0.02;      // [rad]
    constexpr double immobile = 1e-12; // [1/s]
    const double taux2 = vec_scalaire(w, w) + vec_scalaire(hw, hw) / carre(corps.inertie_min) +
                         vec_norme(couple) / corps.inertie_min;
    const double taux = std::max(std::sqrt(taux2) / tour, corps.taux_ressorts);
    return taux < immobile ? INFINITY : 1 / taux;
}
