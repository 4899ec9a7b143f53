#include "orbit/pointage.h"

#include <cstring>

#include "orbit/matrices.h"

namespace {

void angles_en_vigueur(pointage_record& p) {
    p.psi = p.lacet;
    p.theta = p.tangage;
    p.phi = p.roulis;
}

} // namespace

void pointage_orbital(orbit_state& o, double roulis, double tangage, double lacet) {
    pointage_record& p = o.pointage;
    p.roulis = roulis;
    p.tangage = tangage;
    p.lacet = lacet;
    p.yd_init[0] = degres_vers_radians(roulis);
    p.yd_init[1] = degres_vers_radians(lacet);
    p.yd_init[2] = degres_vers_radians(tangage);
    vec3 a = {p.yd_init[0], p.yd_init[2], p.yd_init[1]};
    vec3 premiere, seconde;
    euler_vers_inertiel(o, a, premiere, seconde);
    for (int i = 0; i < 3; ++i) p.yi_init[i] = premiere[i];
    angles_en_vigueur(p);
}

void pointage_inertiel(orbit_state& o) {
    pointage_record& p = o.pointage;
    for (int i = 0; i < 3; ++i) p.yi_init[i] = p.inertiel[i];
    vec3 a = p.inertiel;
    vec3 premiere, seconde;
    euler_vers_inertiel(o, a, premiere, seconde);
    p.yd_init[0] = premiere[0];
    p.yd_init[2] = premiere[1];
    p.yd_init[1] = premiere[2];
    p.roulis = radians_vers_degres(p.yd_init[0]);
    p.tangage = radians_vers_degres(p.yd_init[2]);
    p.lacet = radians_vers_degres(p.yd_init[1]);
    angles_en_vigueur(p);
}

void choisit_face(pointage_record& p, const char* texte) {
    const auto est = [texte](const char* face) { return std::strcmp(texte, face) == 0; };
    if (est("+X")) p.mode_pointage = 1;
    if (est("+Y")) p.mode_pointage = 2;
    if (est("+Z")) p.mode_pointage = 3;
    if (est("-X")) p.mode_pointage = 4;
    if (est("-Z")) p.mode_pointage = 5;
}

void pointage_du_spin(double date, double j_debut, pointage_record& p) {
    const double vitesse = p.spin ? p.vspin : 0;
    double angle = ((date - j_debut) * vitesse * 360.0 * 1440.0) + p.lacet;
    if (angle >= 360.0) angle -= 360.0;
    if (angle < 0) angle += 360.0;
    p.psi = angle;
    p.theta = p.tangage;
    p.phi = p.roulis;
}
