/// What the attitude of the physical model tells of a row.
#include <limits>

#include "analysis/catalogue_tables.h"
#include "physics/attitude_physique.h"

namespace {

using E = etat_calcul;
using L = ligne_attitude;
constexpr unsigned ph = besoin::physique;

/// Without such a run there is nothing to tell.
double lu(const E& e, double (*valeur)(const L&, int), int i) {
    return e.physique ? valeur(*e.physique, i) : std::numeric_limits<double>::quiet_NaN();
}
template <double L::*champ>
double reel(const E& e, int) {
    return lu(
        e, [](const L& l, int) { return l.*champ; }, 0);
}
template <vec3 L::*champ>
double composante(const E& e, int i) {
    return lu(
        e, [](const L& l, int k) { return (l.*champ)[static_cast<std::size_t>(k)]; }, i);
}
template <std::size_t k>
double quaternion_lu(const E& e, int) {
    return lu(
        e, [](const L& l, int) { return l.q[k]; }, 0);
}

constexpr const char* du_quaternion = "du repère inertiel aux axes satellite, le scalaire d'abord";
constexpr const char* a_l_axe = "avec les axes x, y et z du satellite";

constexpr variable table[] = {
    {"roulis", "Roulis", "°", 2, "par rapport au repère orbital local", ph, reel<&L::roulis>},
    {"tangage", "Tangage", "°", 2, "par rapport au repère orbital local", ph, reel<&L::tangage>},
    {"lacet", "Lacet", "°", 2, "par rapport au repère orbital local", ph, reel<&L::lacet>},
    {"omega", "Vitesse de rotation", "°/s", 4, "en axes satellite", ph, composante<&L::omega>, 3},
    {"q0", "Quaternion 0", "", 6, du_quaternion, ph, quaternion_lu<0>},
    {"q1", "Quaternion 1", "", 6, du_quaternion, ph, quaternion_lu<1>},
    {"q2", "Quaternion 2", "", 6, du_quaternion, ph, quaternion_lu<2>},
    {"q3", "Quaternion 3", "", 6, du_quaternion, ph, quaternion_lu<3>},
    {"h", "Moment cinétique", "N·m·s", 6, "repère inertiel, roues et amortisseurs compris", ph,
     composante<&L::h>, 3},
    {"h_norme", "Moment cinétique, norme", "N·m·s", 6, "roues et amortisseurs compris", ph,
     reel<&L::h_norme>},
    {"energie", "Énergie de rotation", "J", 6, "du corps et des roues, avec les amortisseurs", ph,
     reel<&L::energie>},
    {"angle_h", "Angle du moment cinétique", "°", 2, a_l_axe, ph, composante<&L::angle_h>, 3},
    {"angle_nadir", "Angle du nadir", "°", 2, a_l_axe, ph, composante<&L::angle_nadir>, 3},
    {"angle_soleil", "Angle du Soleil", "°", 2, a_l_axe, ph, composante<&L::angle_soleil>, 3},
    {"angle_champ", "Angle du champ magnétique", "°", 2, a_l_axe, ph, composante<&L::angle_champ>, 3},
    {"champ", "Champ magnétique", "nT", 0, "repère inertiel", ph, composante<&L::champ>, 3},
    {"commande", "Couple des magnétocoupleurs", "N·m", 9, "du contrôle, en axes satellite", ph,
     composante<&L::commande>, 3},
    {"couple_roue", "Couple moteur de la roue", "N·m", 9, "du contrôle", ph, composante<&L::couple_roues>, 3},
    {"vitesse_roue", "Vitesse de la roue", "°/s", 2, "par rapport au satellite", ph, composante<&L::roues>,
     3},
    {"saturation", "Saturation du contrôle", "", 0,
     "par axe : 1, 2, 4 dipôle, 8, 16, 32 couple de roue, 64, 128, 256 vitesse de roue, en somme", ph,
     reel<&L::sature>, 1, false, true},
};

} // namespace

std::span<const variable> variables_physique() { return table; }
