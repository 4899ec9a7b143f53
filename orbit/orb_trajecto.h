/// Keplerian propagation: the satellite, the Sun and the shadow at a date.
///
/// The six mean elements are fixed; only the mean anomaly advances, linearly with time (no J2, no drag, no
/// third body). Every call computes from the epoch, so calls may come in any order and no drift builds up.
/// The shadow is a cone from a point Sun past an Earth of 6428 km: no penumbra. Valid for 0 <= e < 1 and
/// distances above 6428 km; outside, a numerical fault is raised.
#pragma once

#include "orbit/orbite.h"

inline constexpr double mu_terre = 398601.3;    ///< [km3/s2] gravitational parameter of the Earth
inline constexpr double rayon_ombre = 6428.0;   ///< [km] radius of the Earth's shadow
inline constexpr double rayon_terre = 6378.137; ///< [km] equatorial radius

/// Sets every output of `o` for the date j (days since 1950) from its elements.
void orb_position(double j, orbit_state& o);

/// Position, velocity and mean anomaly alone.
void orb_satellite(double j, orbit_state& o);

/// Position and velocity from the elements at the epoch day `d` (from 0) of the year `an`: a in km, the four
/// angles in degrees.
void orb_kepler(double j, double a, double e, double i, double w, double om, double m0, double d, int an,
                orbit_state& o);

/// Position and velocity for a mean anomaly m; all angles in radians. Returns the eccentric anomaly.
double orb_cartesien(double a, double e, double i, double w, double om, double m, orbit_state& o);

/// Node referred to the equinox of 1950 [deg]: a fixed precession from the epoch.
double noeud_1950(const record_orbite& o);

/// Kepler's equation with the limits of the attitude kinematics: E for a mean anomaly m [rad]. It returns m
/// itself where sin m < 1e-11, thus for every m from pi to 2 pi: that is meant.
double kepler_inverse(double m, double e);
/// Eccentric anomaly of any mean anomaly m, both in radians, from -pi to pi; e from 0, below 1.
double anomalie_excentrique(double m, double e);

/// Heights over the equatorial radius [km].
double altitude_perigee(const record_orbite& o);
double altitude_apogee(const record_orbite& o);

/// Mean motion [rev/day] of a semi-major axis [km], and back.
double moy_mvt_de_demi(double demi);
double demi_de_moy_mvt(double moy_mvt);
