/// Entry of the nominal pointing, in the local orbital frame or in the inertial one.
///
/// Either entry sets everything that follows from it: the angles shown (roll, pitch, yaw in degrees), the
/// initial attitude of the integrator in both frames, and the three pointing angles in force. The conversion
/// uses the orbit state as it stands: the caller has called `orb_position` at the epoch.
#pragma once

#include "orbit/orbite.h"

/// Pointing in the local orbital frame; angles in degrees.
void pointage_orbital(orbit_state& o, double roulis, double tangage, double lacet);

/// Pointing by the three angles of `o.pointage.inertiel` (radians).
void pointage_inertiel(orbit_state& o);

/// Face that points, from the text of its choice ("+X" ... "-Z"); "-Y" matches no test and leaves the value
/// as it was, and -Z gives 5: both are meant.
void choisit_face(pointage_record& p, const char* texte);

/// The three pointing angles in force at a date: the yaw turns with the spin from its initial value at
/// `j_debut`. The angle is brought back by a single turn at most, so it may stay outside [0, 360): that is
/// meant.
void pointage_du_spin(double date, double j_debut, pointage_record& p);
