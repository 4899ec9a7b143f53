#include "physics/couples_physiques.h"

#include "physics/soleil_almanach.h"

namespace {

double aire(const attitude_record& a, int axe) { return a.dim[(axe + 1) % 3] * a.dim[(axe + 2) % 3]; }

/// Sum over the faces that look towards the unit vector u: `force` gives that of a face from the cosine c >
/// 0, the sign of its normal and its axis.
template <class F>
vec3 somme_faces(const attitude_record& a, const vec3& u, const F& force) {
    vec3 couple{};
    for (int axe = 0; axe < 3; ++axe) {
        const double c = std::fabs(u[axe]);
        if (!(c > 0)) continue;
        const int face = u[axe] > 0 ? axe : axe + 3;
        couple = vec_somme(couple, vec_vectoriel(a.face_c[face], force(face, axe, c)));
    }
    return couple;
}

} // namespace

vec3 couple_gradient_physique(const mat3& J, double rayon_km, const vec3& n) {
    const double facteur = 3 * mu_physique / (rayon_km * rayon_km * rayon_km);
    return vec_echelle(facteur, vec_vectoriel(n, mat_vecteur(J, n)));
}

vec3 couple_aero_physique(const attitude_record& a, double densite, const vec3& v) {
    const double v2 = vec_scalaire(v, v);
    const vec3 u = vec_echelle(1 / std::sqrt(v2), v);
    return somme_faces(a, u, [&](int face, int axe, double c) {
        // The tangential unit vector times sqrt(1 - c^2) is the part of u in the face.
        const double k = -densite * v2 * aire(a, axe) * c; // -2 q A c
        vec3 f = vec_echelle(k * a.st[face], u);
        f[axe] = k * (2 - a.sn[face]) * u[axe];
        return f;
    });
}

vec3 couple_solaire_physique(const attitude_record& a, double p, const vec3& s) {
    return somme_faces(a, s, [&](int face, int axe, double c) {
        const double k = -p * aire(a, axe) * c;
        vec3 f = vec_echelle(k * (1 - a.cr[face]), s);
        f[axe] += 2 * k * (a.cr[face] * c + a.cd[face] / 3) * signe(s[axe]);
        return f;
    });
}

double pression_lumiere(const milieu& m) {
    return m.part_soleil * lumiere_soleil(m.distance_soleil) / vitesse_lumiere;
}

couples_corps couples_physiques(const attitude_record& a, const mat3& J, const options_modele& o,
                                const milieu& m, const rotation& A) {
    couples_corps t;
    if (!o.sans_gradient)
        t.gradient = couple_gradient_physique(J, m.rayon, A.vers_corps(vec_echelle(1 / m.rayon, m.r)));
    if (!o.sans_aero && m.densite > 0) t.aero = couple_aero_physique(a, m.densite, A.vers_corps(m.vent));
    if (!o.sans_solaire && m.part_soleil > 0)
        t.solaire = couple_solaire_physique(a, pression_lumiere(m), A.vers_corps(m.vers_soleil));
    if (!o.sans_magnetique) t.magnetique = vec_vectoriel(a.dip_res, A.vers_corps(m.champ));
    return t;
}

mat3 tenseur_inertie(const attitude_record& a) {
    const mat3& I = a.I;
    return {{I(0, 0), -I(0, 1), -I(0, 2), -I(0, 1), I(1, 1), -I(1, 2), -I(0, 2), -I(1, 2), I(2, 2)}};
}
