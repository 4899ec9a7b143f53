/// Turns between the reference frames, and the Euler angles that go with them.
///
/// | frame | axes |
/// |---|---|
/// | inertial | mean equator and equinox of 1950 |
/// | plane | x to the ascending node, y in the orbit plane 90 degrees ahead, z along the orbit normal |
/// | local orbital, form A | x along track, y along the orbit normal, z radial outward |
/// | local orbital, form B | x along the orbit normal, y radial outward, z along the transverse direction |
/// | body | from form A by yaw, pitch, roll |
///
/// Each turn exists as a small object that holds the sines and cosines of its angles, so that several vectors
/// share them.
#pragma once

#include <array>
#include <cstddef>

#include "orbit/orbite.h"

/// Inertial frame to orbit plane and back; the node is referred to the equinox of 1950.
struct tour_plan {
    sinus_cosinus om, i;
    tour_plan(sinus_cosinus om_, sinus_cosinus i_) : om(om_), i(i_) {}
    explicit tour_plan(const record_orbite& o);
    vec3 vers_plan(const vec3& v) const {
        const auto [x, y, z] = v;
        return {om.c * x + om.s * y, -i.c * om.s * x + i.c * om.c * y + i.s * z,
                i.s * om.s * x - i.s * om.c * y + i.c * z};
    }
    vec3 depuis_plan(const vec3& v) const;
};

/// Orbit plane to local orbital form A and back, for a satellite at `p` of the plane frame.
struct tour_local {
    sinus_cosinus u; ///< angle from the node to the satellite
    explicit tour_local(const vec3& p);
    explicit tour_local(sinus_cosinus u_) : u(u_) {}
    vec3 plan_vers_local(const vec3& v) const {
        const auto [a, b, c] = v;
        return {-u.s * a + u.c * b, c, u.c * a + u.s * b};
    }
    vec3 local_vers_plan(const vec3& v) const;
};

/// Local orbital form A to body and back: yaw psi, then pitch theta, then roll phi, in degrees.
struct tour_corps {
    sinus_cosinus psi, theta, phi;
    tour_corps(double psi_deg, double theta_deg, double phi_deg);
    tour_corps(sinus_cosinus psi_, sinus_cosinus theta_, sinus_cosinus phi_)
        : psi(psi_), theta(theta_), phi(phi_) {}
    vec3 vers_corps(const vec3& v) const {
        const auto [x, y, z] = v;
        return {theta.c * psi.c * x + theta.c * psi.s * y - theta.s * z,
                (phi.s * theta.s * psi.c - phi.c * psi.s) * x +
                    (phi.s * theta.s * psi.s + phi.c * psi.c) * y + phi.s * theta.c * z,
                (phi.c * theta.s * psi.c + phi.s * psi.s) * x +
                    (phi.c * theta.s * psi.s - phi.s * psi.c) * y + phi.c * theta.c * z};
    }
    vec3 depuis_corps(const vec3& v) const;
};

/// Inertial frame to body axes with the pointing angles in force. The yaw stands in the place of the roll
/// too: that asymmetry is meant, so a roll set by the user has no effect in this direction.
struct tour_inertiel_corps {
    std::array<vec3, 3> lignes; ///< rows of the whole turn

    explicit tour_inertiel_corps(const orbit_state& o);
    /// The same, quicker in a run: the turns of fixed angles are kept in the state, and the satellite's own
    /// direction gives the sine and cosine of its angle.
    explicit tour_inertiel_corps(orbit_state& o);
    vec3 inertiel_vers_corps(const vec3& v) const {
        return {vec_scalaire(lignes[0], v), vec_scalaire(lignes[1], v), vec_scalaire(lignes[2], v)};
    }
};
vec3 inertiel_vers_corps(const orbit_state& o, const vec3& v);

/// Body axes to inertial frame, with the three pointing angles in their proper places.
vec3 corps_vers_inertiel(const orbit_state& o, const vec3& v);

/// Inertial frame to orbit plane with the uncorrected node (no reference to 1950).
vec3 vers_orbital_i(const orbit_state& o, const vec3& v);
/// Orbit plane to local orbital form B.
vec3 vers_orbital_u(const orbit_state& o, const vec3& v);

/// The two equivalent inertial Euler triples b and c (roll, pitch, yaw) of the orbital angles a [rad], which
/// are guarded in place.
void euler_vers_inertiel(orbit_state& o, vec3& a, vec3& b, vec3& c);
/// The same with the sines and cosines of a(0) and a(1) that `euler_taux` has kept.
using sinus_euler = std::array<sincos_garde, 2>;
void euler_vers_inertiel(orbit_state& o, vec3& a, vec3& b, vec3& c, sinus_euler& sinus);

/// The turn that `euler_vers_inertiel` puts behind that of the angles a: b is read from R1(a0) R2(a1) R3(a2)
/// times this.
mat3 tour_euler(const orbit_state& o);

/// Keeps x away from the exact multiples of pi, where the Euler rates divide by zero.
double angle_garde(double x);

/// Euler rates: y(0..2) angles (guarded in place), w(0..2) body rates, y(3..5) receives the rates.
void euler_taux(const std::array<double, 6>& w, std::array<double, 6>& y);
void euler_taux(const std::array<double, 6>& w, std::array<double, 6>& y, sinus_euler& sinus);
