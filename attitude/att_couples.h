/// Disturbance torques on the satellite, a box of six faces: gravity gradient, aerodynamic, solar radiation
/// pressure, magnetic. All in body axes, N m.
///
/// The torques are those of the nominal pointing: the vectors are turned into body axes with the three
/// pointing angles in force (`pointage_record`), not with the attitude that the integrator has reached. That
/// is meant. Each routine needs the orbit state at its date (`orb_position`, `sous_point`).
///
/// Idealisations: no shadowing between faces, external masses without surface, point Sun, free molecular flow
/// with constant accommodation. A zero relative speed or a satellite at the Earth's centre is a numerical
/// fault.
#pragma once

#include "attitude/att_atmosphere.h"
#include "attitude/att_global.h"
#include "orbit/matrices.h"

/// Gravity gradient: 3 mu / r^3 n x (J n).
vec3 couple_gradient(const attitude_record& a, const orbit_state& o, const tour_inertiel_corps& tour);

/// Aerodynamic: the atmosphere turns with the Earth, faster at heights where winds prevail. Components of
/// 1e-10 N m and less are cut.
vec3 couple_aero(const attitude_record& a, const orbit_state& o, const tour_inertiel_corps& tour, double date,
                 atmosphere& air);

/// Solar radiation pressure; exactly 0 in eclipse.
vec3 couple_solaire(const attitude_record& a, const orbit_state& o, const tour_inertiel_corps& tour);

/// Magnetic: residual and commanded dipole in the Earth's field.
vec3 couple_magnetique(const attitude_record& a, orbit_state& o, const tour_inertiel_corps& tour,
                       double date);

/// The Earth's rotation [deg/s], and the factor of the atmosphere's at an altitude [km].
inline constexpr double rotation_terre = 0.004178079012116429;
double facteur_vent(double alt);

/// The four torques and their sum `ctot` into the record, for the orbit state at `date`.
void total_torque(attitude_record& a, orbit_state& o, double date, atmosphere& air);

/// The same without a run, the sum in another order, with the fault of a NaN raised: for the orbit state and
/// the pointing angles at `date`.
void couples_sur_place(attitude_record& a, orbit_state& o, double date, atmosphere& air);

/// The same at any date, without a run: brings the orbit state to the date and the pointing angles to where
/// the spin has turned them since `j_debut`.
void couples_a_la_date(attitude_record& a, orbit_state& o, double date, double j_debut, atmosphere& air);
