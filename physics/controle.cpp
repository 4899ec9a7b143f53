#include "physics/controle.h"

#include <algorithm>

vec3 dipole_b_dot(const controle_attitude& c, const vec3& champ_point, saturations& s) {
    vec3 m;
    for (int i = 0; i < 3; ++i) {
        const double voulu = -c.gain * champ_point[i];
        m[i] = std::clamp(voulu, -c.dipole_max, c.dipole_max);
        if (m[i] != voulu) s |= bit_sature(dipole_sature, i);
    }
    return m;
}

ecart_attitude ecart_au_repere(const rotation& A, const rotation& cible, const vec3& taux_cible,
                               const vec3& omega) {
    // The quaternion with a scalar that is not negative: the shorter way round.
    const quaternion q = quaternion_de(compose(A, inverse(cible)));
    return {{2 * q[1], 2 * q[2], 2 * q[3]}, vec_difference(omega, A.vers_corps(taux_cible))};
}

ecart_attitude ecart_a_la_direction(const rotation& A, int face, const vec3& direction, const vec3& omega) {
    vec3 normale{};
    normale[face % 3] = face < 3 ? 1 : -1;
    const vec3 s = A.vers_corps(direction);
    const double cosinus = vec_scalaire(normale, s);
    if (1 + cosinus < 1e-9) { // straight away from it: any axis will do
        vec3 axe{};
        axe[(face + 1) % 3] = 2;
        return {axe, omega};
    }
    return {vec_echelle(-std::sqrt(2 / (1 + cosinus)), vec_vectoriel(normale, s)), omega};
}

vec3 couple_pd(const controle_attitude& c, const corps_mobile& corps, const ecart_attitude& ecart,
               const vec3& omega, const vec3& H_corps, const vec3& hw, saturations& s) {
    const double k = carre(c.frequence), d = 2 * c.amortissement * c.frequence;
    const vec3 rappel = vec_somme(vec_echelle(k, ecart.angle), vec_echelle(d, ecart.taux));
    const vec3 voulu = vec_difference(mat_vecteur(corps.J0, rappel), vec_vectoriel(omega, H_corps));
    vec3 couple{};
    for (int i = 0; i < 3; ++i) {
        if (corps.JR[i] == 0) continue;
        couple[i] = std::clamp(voulu[i], -c.couple_max, c.couple_max);
        if (couple[i] != voulu[i]) s |= bit_sature(couple_roue_sature, i);
        if (std::fabs(hw[i] / corps.JR[i]) >= c.vitesse_max && couple[i] * hw[i] > 0) {
            couple[i] = 0;
            s |= bit_sature(vitesse_roue_saturee, i);
        }
    }
    return couple;
}
