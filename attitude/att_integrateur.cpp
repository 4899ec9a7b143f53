#include "attitude/att_integrateur.h"

#include <algorithm>

#include "attitude/att_coefficients.h"
#include "attitude/att_couples.h"
#include "attitude/att_defin_attitude.h"
#include "orbit/matrices.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "orbit/systeme_lineaire.h"
#include "shell/utilitaires.h"

namespace {

constexpr int ligne_amortisseur[3] = {5, 3, 4}; // row of each damper's equation; its unknown is column 3 + i
constexpr double saut = 5.2359877;              // [rad] 300 degrees

/// Solves for the accelerations, restricted to the active dampers; false for a singular system.
bool resout_accelerations(attitude_record& a) {
    systeme_attitude s;
    coefficients_attitude(a, s);

    double R[6];
    for (int i = 0; i < 6; ++i) {
        R[i] = i < 3 ? a.ctot[i] - a.jets[i] : 0;
        for (int j = 0; j < 3; ++j) R[i] -= s.B[i][j] * a.zd[j];
        if (i < 3) R[i] -= a.JR[i] * a.omd[i];
        R[i] -= s.L[i];
    }

    // Rows in rising order, columns in the order of the dampers.
    const auto actif = [&](int i) { return a.md[i] > masse_amortisseur_nulle; };
    int lignes[6] = {0, 1, 2}, colonnes[6] = {0, 1, 2}, n = 3, nc = 3;
    for (const int i : {1, 2, 0})
        if (actif(i)) lignes[n++] = ligne_amortisseur[i];
    for (int i = 0; i < 3; ++i)
        if (actif(i)) colonnes[nc++] = 3 + i;

    if (n > 3 && n < 6) { // with none or all of them the system stands as it is
        systeme_attitude tout = s;
        double R_tout[6];
        std::copy_n(R, 6, R_tout);
        for (int i = 0; i < n; ++i) {
            R[i] = R_tout[lignes[i]];
            for (int j = 0; j < n; ++j) s.M[i][j] = tout.M[lignes[i]][colonnes[j]];
        }
    }
    double x[6];
    if (resout_lineaire(n, &s.M[0][0], 6, R, x) != 0) return false;

    for (int i = 0; i < 3; ++i) a.omega[3 + i] = x[i];
    a.zdd = {};
    for (int j = 3; j < n; ++j) a.zdd[colonnes[j] - 3] = x[j];
    return true;
}

/// Explicit first-order rule; each line uses what the line before has written.
void integre_vitesses(attitude_record& a, double dt) {
    for (int i = 0; i < 3; ++i) a.omega[i] += a.omega[3 + i] * dt;
    for (int i = 0; i < 3; ++i) a.zd[i] += a.zdd[i] * dt;
    for (int i = 0; i < 3; ++i) a.z[i] += a.zd[i] * dt + 0.5 * a.zdd[i] * dt * dt;
}

double reduit_tour(double x) {
    const double grandeur = std::fabs(x);
    return grandeur < 6.28 ? x : signe(x) * modulo(grandeur, deux_pi); // nothing to reduce, as a rule
}

/// Into (-pi, pi].
double reduit_yi(double x) {
    x = reduit_tour(x);
    if (x > pi) x -= deux_pi;
    if (x <= -pi) x += deux_pi;
    return x;
}

/// Into [-pi, pi].
double reduit_yd(double x) {
    x = reduit_tour(x);
    if (x > pi) x -= deux_pi;
    if (x < -pi) x += deux_pi;
    return x;
}

/// The angle moved by quarter turns to where it is nearest to its previous value, the largest at equal
/// distance.
double plus_proche(double x, double avant) {
    if (std::fabs(x - avant) < 0.78) return x; // less than half a quarter turn: no other is nearer
    const double candidats[9] = {x + deux_pi, x + pi + demi_pi, x + pi,           x + demi_pi, x,
                                 x - demi_pi, x - pi,           x - pi - demi_pi, x - deux_pi};
    double meilleure = deux_pi, choix = x;
    for (const double c : candidats)
        if (const double d = std::fabs(c - avant); d < meilleure) {
            meilleure = d;
            choix = c;
        }
    return choix;
}

void avance_inertiel(attitude_record& a, double dt, sinus_euler& sinus) {
    for (int i = 0; i < 3; ++i) {
        const double avant = a.yi[i];
        const double x = reduit_yi(avant + a.yi[3 + i] * dt);
        a.yi[i] = reduit_yi(plus_proche(x, avant));
    }
    euler_taux(a.omega, a.yi, sinus);
}

/// Orbital angles from the inertial ones: the solution whose pitch is nearest to the one foreseen.
void choisit_orbital(attitude_record& a, orbit_state& o, double dt, sinus_euler& sinus) {
    vec3 angles = {a.yi[0], a.yi[1], a.yi[2]}, s1, s2; // roll, pitch, yaw
    euler_vers_inertiel(o, angles, s1, s2, sinus);
    for (int i = 0; i < 3; ++i) a.yi[i] = angles[i];
    vec3 s3 = s2;
    s3[1] -= deux_pi;

    // Each test foresees the pitch anew from what the test before may have taken: meant.
    struct ecarts {
        double d1, d2, d3;
    };
    const auto ecarts_prevus = [&] {
        const double p = a.yd[4] * dt + a.yd[2];
        return ecarts{std::fabs(p - s1[1]), std::fabs(p - s2[1]), std::fabs(p - s3[1])};
    };
    const auto prend = [&](const vec3& s) {
        a.yd[0] = s[0];
        a.yd[2] = s[1];
        a.yd[1] = s[2];
    };
    if (const auto [d1, d2, d3] = ecarts_prevus(); d1 <= d2 && d1 <= d3) prend(s1);
    if (const auto [d1, d2, d3] = ecarts_prevus(); d2 <= d1 && d2 <= d3) prend(s2);
    if (const auto [d1, d2, d3] = ecarts_prevus(); d3 <= d1 && d3 <= d2) prend(s3);
}

void avance_orbital(attitude_record& a, orbit_state& o, double dt, sinus_euler& sinus) {
    const vec3 avant = {a.yd[0], a.yd[1], a.yd[2]};
    choisit_orbital(a, o, dt, sinus);
    for (int i = 0; i < 3; ++i) a.yd[i] = reduit_yd(a.yd[i]);

    // Rates by difference, roll, pitch, yaw; a jump of a whole turn is taken out.
    constexpr int ordre[3] = {0, 2, 1};
    for (int k = 0; k < 3; ++k) {
        const double x = a.yd[ordre[k]];
        double q = avant[ordre[k]];
        if (std::fabs(x - q) > saut && signe(x) != signe(q)) q -= 2 * signe(q) * pi;
        a.yd[3 + k] = (x - q) / dt;
    }
}

} // namespace

bool attitude_step(attitude_record& a, orbit_state& o, double dt, double date, atmosphere& air) {
    const bool avance = avance_attitude(a, o, dt, date, air);
    quat_refresh(a); // with a singular system that of the start of the step
    return avance;
}

bool avance_attitude(attitude_record& a, orbit_state& o, double dt, double date, atmosphere& air) {
    total_torque(a, o, date, air);
    for (int i = 0; i < 3; ++i) a.dip_tot[i] = a.dip_cmd[i] * a.dip_act[i] + a.dip_res[i];
    if (!resout_accelerations(a)) return false;
    sinus_euler sinus;
    integre_vitesses(a, dt);
    avance_inertiel(a, dt, sinus);
    suit_roues(a);

    const double suivant = dt / secondes_par_jour + date;
    orb_position(suivant, o);
    sous_point(suivant, o);
    avance_orbital(a, o, dt, sinus);
    return true;
}
