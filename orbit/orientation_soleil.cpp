#include "orbit/orientation_soleil.h"

#include <algorithm>

#include "orbit/matrices.h"
#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "shell/utilitaires.h"

namespace {

struct angles {
    double roulis, tangage, lacet; ///< [rad]
};

/// Yaw, pitch and roll, the roll equal to the yaw, that bring the axis of the body (0 to 2) to the direction
/// t of the local frame: row `axe` of R1(yaw) R2(pitch) R3(yaw) is t. The pitch stays within a quarter of a
/// turn.
angles angles_de(int axe, const vec3& t) {
    const auto [x, y, z] = t;
    if (axe == 0) {
        const double psi = std::atan2(y, x);
        return {psi, -std::asin(std::clamp(z, -1.0, 1.0)), psi};
    }
    // With q = 1 - sin(pitch): axis Y is (-s c q, 1 - s^2 q, s cos(pitch)), axis Z (1 - c^2 q, -s c q,
    // c cos(pitch)), s and c of the yaw; the sign of z chooses between the two yaws.
    const double manque = axe == 1 ? 1 - y : 1 - x;
    if (manque < 1e-12) return axe == 1 ? angles{0, 0, 0} : angles{demi_pi, 0, demi_pi};
    double psi = axe == 1 ? std::atan2(manque, -x) : std::atan2(-y, manque);
    if (z < 0) psi += psi > 0 ? -pi : pi;
    const double facteur = axe == 1 ? carre(std::sin(psi)) : carre(std::cos(psi));
    return {psi, std::asin(std::clamp(1 - manque / facteur, -1.0, 1.0)), psi};
}

/// R1(roll) R2(pitch) R3(yaw), row by row.
mat3 matrice(const angles& a) {
    const tour_corps tour(sincos_de(a.lacet), sincos_de(a.tangage), sincos_de(a.roulis));
    mat3 m;
    for (int j = 0; j < 3; ++j) {
        vec3 e{};
        e[j] = 1;
        const vec3 colonne = tour.vers_corps(e);
        for (int i = 0; i < 3; ++i) m(i, j) = colonne[i];
    }
    return m;
}

/// Smallest cosine between the face and the Sun by the two turns of the pointing in force.
double cosinus_face(orbit_state o, int face, double j) {
    orb_position(j, o);
    vec3 n{};
    n[face % 3] = face < 3 ? 1 : -1;
    return std::min(vec_scalaire(inertiel_vers_corps(o, o.vec_soleil), n),
                    vec_scalaire(corps_vers_inertiel(o, n), o.vec_soleil));
}

} // namespace

bool oriente_vers_soleil(orbit_state& o, int face, double j) {
    orbit_state e = o;
    orb_position(j, e);
    const tour_plan plan(e.orbite);
    const tour_local local(plan.vers_plan(e.sat_pos));
    vec3 soleil = local.plan_vers_local(plan.vers_plan(e.vec_soleil));
    if (!std::isfinite(vec_norme(soleil))) return false;
    if (face >= 3) soleil = vec_echelle(-1, soleil);

    orb_position(date_epoque(o.orbite.orb_an, o.orbite.orb_jour - 1.0), e);
    const mat3 conversion = mat_transposee(tour_euler(e));
    // The entered angles lose a quarter turn of the pitch or of the roll: a direction beside it, a hundredth
    // of a degree off, then serves.
    const vec3 ecarts[] = {{0, 0, 0}, {2e-4, 1e-4, 2e-4}, {-2e-4, 2e-4, -1e-4}, {1e-4, -2e-4, 2e-4}};
    for (const vec3& ecart : ecarts) {
        vec3 t = vec_somme(soleil, ecart);
        t = vec_echelle(1 / vec_norme(t), t);
        const mat3 a = mat_produit(matrice(angles_de(face % 3, t)), conversion);
        orbit_state essai = e;
        essai.pointage.orbital = faux;
        essai.pointage.inertiel = {std::atan2(a(1, 2), a(2, 2)), -std::asin(std::clamp(a(0, 2), -1.0, 1.0)),
                                   std::atan2(a(0, 1), a(0, 0))};
        pointage_inertiel(essai);
        if (cosinus_face(essai, face, j) < std::cos(0.02 * rad_par_degre)) continue;
        choisit_face(essai.pointage, noms_faces[face]);
        o = essai;
        return true;
    }
    return false;
}
