/// Rotation of the satellite: a rigid body with three wheels on its axes and three spring-mass dampers.
///
/// One Lagrangian (P. C. Hughes, Spacecraft Attitude Dynamics, 1986, chapters 3 and 6). With w the body rate,
/// J0 the inertia of the record (wheels locked, damper masses at rest), and for each damper a mass m at the
/// lever l e_a that slides by z along e_b, balanced at rest by an equal fixed mass at -l e_a:
///   T = w.J0 w / 2 + sum m (|w x (l e_a + z e_b) + z' e_b|^2 - |w x l e_a|^2) / 2
///       - |sum m (w x z e_b + z' e_b)|^2 / (2 Mt) + sum JR (W^2 / 2 + w W)
/// with W the wheel speed relative to the body, prescribed or driven; the damper of the axes x, y, z slides
/// along z, x, y. Spring -k z, friction -c z'.
///
/// State: the quaternion, the angular momentum in inertial axes (so that it is constant to the last digits
/// where no torque acts), the wheels' momentum and the dampers with their conjugate momenta; from these the
/// rates follow by one linear system. Fourth-order Runge-Kutta. Left out: flexible parts, fuel, the stops of
/// the dampers; gravity acts on the dampers through the body alone.
#pragma once

#include <algorithm>

#include "attitude/att_global.h"
#include "physics/options_modele.h"
#include "physics/rotation.h"

struct amortisseur {
    int levier, glissiere; ///< axes
    double m, l, c, k;     ///< [kg], [m], [N s/m], [N/m]
    double masse_libre;    ///< [kg] m (1 - m / Mt)
    double recul;          ///< [kg] m^2 / Mt
};

/// What does not change in a run.
struct corps_mobile {
    mat3 J0;                             ///< [kg m2] tensor
    double inertie_min = 0;              ///< [kg m2] smallest principal inertia
    double Mt = 0;                       ///< [kg]
    vec3 JR{};                           ///< [kg m2] wheels
    std::array<amortisseur, 3> ressorts; ///< the first `nb_ressorts`
    int nb_ressorts = 0;
    double taux_ressorts = 0; ///< [1/s] the inverse of the longest step that the dampers allow

    corps_mobile(const attitude_record& a, const options_modele& o);
};

struct etat_mouvement {
    quaternion q = {1, 0, 0, 0};
    vec3 H{};  ///< [N m s] inertial axes, wheels and dampers included
    vec3 hw{}; ///< [N m s] wheels relative to the body
    vec3 z{};  ///< [m] dampers, in the order of `ressorts`
    vec3 p{};  ///< [kg m/s] their conjugate momenta
};

struct vitesses_corps {
    vec3 omega{}; ///< [rad/s] body axes
    vec3 zp{};    ///< [m/s]
};

/// External torque on the satellite and torque of the motors on the wheels [N m], body axes.
struct actions {
    vec3 couple{}, roues{};
};

/// The rates of a state; `A` is the turn of its quaternion.
vitesses_corps vitesses_de(const corps_mobile& corps, const etat_mouvement& e, const rotation& A);
/// Derivatives of the dampers' momenta.
vec3 forces_ressorts(const corps_mobile& corps, const etat_mouvement& e, const vitesses_corps& v);
/// Angular acceleration [rad/s2] under the actions.
vec3 acceleration_de(const corps_mobile& corps, const etat_mouvement& e, const rotation& A,
                     const vitesses_corps& v, const actions& u);

/// The momentum of a state at rest in its dampers that turns with the rate w and has the wheel momenta `hw`.
void lance_mouvement(const corps_mobile& corps, etat_mouvement& e, const vec3& w);

/// [J] rotation of the body, the wheels' own rotation (sum of JR W^2 / 2) and the dampers with their springs.
/// The work of the motors that hold a wheel's speed is not in it, so that it is constant without torque and
/// friction.
double energie_de(const corps_mobile& corps, const etat_mouvement& e);

/// The longest step [s] that follows the motion: 0.02 rad of rotation, of nutation under the wheels, of the
/// swing that a torque gives (of the 0.05 rad that the rule allows: the energy then stays within 1e-7 over
/// 10,000 turns); a fortieth of the fastest damper's period, the time in which its friction stops it.
/// Infinite where nothing moves.
double pas_du_mouvement(const corps_mobile& corps, const vec3& w, const vec3& hw, const vec3& couple);

namespace mouvement {

struct derivee {
    quaternion q;
    vec3 H, hw, z, p;
};

inline etat_mouvement ajoute(const etat_mouvement& e, double h, const derivee& d) {
    etat_mouvement r;
    for (int i = 0; i < 4; ++i) r.q[i] = e.q[i] + h * d.q[i];
    for (int i = 0; i < 3; ++i) {
        r.H[i] = e.H[i] + h * d.H[i];
        r.hw[i] = e.hw[i] + h * d.hw[i];
        r.z[i] = e.z[i] + h * d.z[i];
        r.p[i] = e.p[i] + h * d.p[i];
    }
    return r;
}

template <class F>
derivee derivee_de(const corps_mobile& corps, const etat_mouvement& e, int instant, F& actions_de) {
    const rotation A = rotation_de(e.q);
    const vitesses_corps v = vitesses_de(corps, e, A);
    const actions u = actions_de(instant, A, v, e);
    derivee d;
    const auto& [s, x, y, z] = e.q;
    const auto [a, b, c] = v.omega;
    d.q = {-.5 * (x * a + y * b + z * c), .5 * (s * a + y * c - z * b), .5 * (s * b + z * a - x * c),
           .5 * (s * c + x * b - y * a)};
    d.H = A.depuis_corps(u.couple);
    d.hw = u.roues;
    d.z = v.zp;
    if (corps.nb_ressorts > 0)
        d.p = forces_ressorts(corps, e, v);
    else
        d.p = {};
    return d;
}

} // namespace mouvement

/// One step of h seconds. `actions_de(instant, A, v, e)` gives the actions at the start (0), the middle (1)
/// and the end (2) of the step.
template <class F>
void pas_rk4(const corps_mobile& corps, etat_mouvement& e, double h, F&& actions_de) {
    using namespace mouvement;
    const derivee k1 = derivee_de(corps, e, 0, actions_de);
    const derivee k2 = derivee_de(corps, ajoute(e, h / 2, k1), 1, actions_de);
    const derivee k3 = derivee_de(corps, ajoute(e, h / 2, k2), 1, actions_de);
    const derivee k4 = derivee_de(corps, ajoute(e, h, k3), 2, actions_de);
    const auto avance = [h](double& x, double a, double b, double c, double d) {
        x += h / 6 * (a + 2 * (b + c) + d);
    };
    for (int i = 0; i < 4; ++i) avance(e.q[i], k1.q[i], k2.q[i], k3.q[i], k4.q[i]);
    for (int i = 0; i < 3; ++i) {
        avance(e.H[i], k1.H[i], k2.H[i], k3.H[i], k4.H[i]);
        avance(e.hw[i], k1.hw[i], k2.hw[i], k3.hw[i], k4.hw[i]);
        avance(e.z[i], k1.z[i], k2.z[i], k3.z[i], k4.z[i]);
        avance(e.p[i], k1.p[i], k2.p[i], k3.p[i], k4.p[i]);
    }
    const auto [s, x, y, z] = e.q;
    const double inverse = 1 / std::sqrt(s * s + x * x + y * y + z * z);
    for (double& c : e.q) c *= inverse;
}
