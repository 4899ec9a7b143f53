/// One step of the attitude: a rigid body with three wheels held at constant speed and three spring-mass
/// dampers, under the disturbance torques and a constant jet torque.
///
/// Method: the coupled linear system of `att_coefficients.h` is rebuilt and solved at each step, the state
/// pushed forward by an explicit first-order rule. The step is good while |rate| x step stays well below one
/// radian; a large step diverges (the default satellite overflows after some 40 steps of 120 s). There is no
/// closed loop.
#pragma once

#include "attitude/att_atmosphere.h"
#include "attitude/att_global.h"
#include "orbit/orbite.h"

/// A damper of this mass [kg] or less does not exist.
inline constexpr double masse_amortisseur_nulle = 1e-21;

/// Advances the state by dt [s] from `date` (days since 1950). The caller has brought the orbit state to
/// `date`; the step leaves it at dt / 86400 + date. With a singular system nothing moves, the orbit state
/// stays at `date` and the result is false. A zero total mass or step is a numerical fault.
bool attitude_step(attitude_record& a, orbit_state& o, double dt, double date, atmosphere& air);

/// The same but the quaternion, which nothing in a run reads: `quat_refresh` brings it to the angles reached.
bool avance_attitude(attitude_record& a, orbit_state& o, double dt, double date, atmosphere& air);
