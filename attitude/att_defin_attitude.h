/// Start of an attitude run, and the side operations of the attitude definition.
#pragma once

#include "attitude/att_global.h"
#include "orbit/orbite.h"

/// Brings the state to the initial conditions: rates and wheel speeds of the record, Euler angles of the
/// pointing.
void attitude_init(attitude_record& a, const pointage_record& p);

/// Relative speed of the wheels and its derivative, from the body's. Element 2 of `omd` is left as it was,
/// element 1 takes the derivative of z: meant.
void suit_roues(attitude_record& a);

/// Quaternion of the attitude from `yd`, whose radians are converted from degrees once more: meant, nothing
/// may depend on it.
void quat_refresh(attitude_record& a);

/// Pointing the chosen face at the Sun at the date: sets `yd` to 0 and the Sun's position, then ends in a
/// numerical fault (the flag of an invalid operation is raised), because the direction that it turns is a
/// vector that no step fills: meant. The caller reports the fault.
void pointage_soleil(double date, attitude_record& a, orbit_state& o);
