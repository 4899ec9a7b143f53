/// Attitude control: damping by coils (B-dot), pointing by wheels (PD).
///
/// B-dot: the dipole -gain dB/dt, B in body axes, each axis limited (A. C. Stickler and K. T. Alfriend,
/// J. Spacecraft 13, 282, 1976): it brakes any rotation but the one about the field, down to about twice the
/// orbit's rate. PD: the wheels turn the body as a spring of the natural frequency and damping asked for, the
/// gyroscopic torque made up for (B. Wie, Space Vehicle Dynamics and Control, 1998, 7.3). Ideal sensors and
/// actuators without delay; the Sun's direction is known in eclipse too. Left out: estimation, noise, the
/// unloading of the wheels, the lag of the coils.
#pragma once

#include <cstdint>

#include "physics/milieu.h"
#include "physics/mouvement.h"

/// What is at its limit, by axis, a bit each.
enum saturation : uint16_t { dipole_sature = 1, couple_roue_sature = 8, vitesse_roue_saturee = 64 };
using saturations = uint16_t;
constexpr saturations bit_sature(saturation s, int axe) { return static_cast<saturations>(s << axe); }

/// Dipole of the coils [A m2] for the rate of change of the field in body axes [T/s].
vec3 dipole_b_dot(const controle_attitude& c, const vec3& champ_point, saturations& s);

/// Departure from the aim: the small turn that leads from the aim to the body [rad] (twice the sine of half
/// the angle for a large one), and the rate to bring to 0 [rad/s]; body axes.
struct ecart_attitude {
    vec3 angle{}, taux{};
};
/// From a whole attitude and its rate (inertial axes).
ecart_attitude ecart_au_repere(const rotation& A, const rotation& cible, const vec3& taux_cible,
                               const vec3& omega);
/// From a direction (unit, inertial axes) that the face 0 to 5 must look to; the turn about it is only
/// braked.
ecart_attitude ecart_a_la_direction(const rotation& A, int face, const vec3& direction, const vec3& omega);

/// Torque of the motors on the wheels [N m]. An axis whose wheel has no inertia has no torque.
vec3 couple_pd(const controle_attitude& c, const corps_mobile& corps, const ecart_attitude& ecart,
               const vec3& omega, const vec3& H_corps, const vec3& hw, saturations& s);
