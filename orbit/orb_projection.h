/// Earth rotation and ground point.
///
/// The Earth turns with the Greenwich sidereal angle (no nutation, no polar motion); longitude, latitude and
/// altitude stand on the ellipsoid 6378.137 km / 6356.752 km.
#pragma once

#include "orbit/orbite.h"

/// Greenwich sidereal angle [rad], in [0, 2 pi), at the date j (days since 1950), counted from the equinox of
/// 1950: within 3 arcseconds, from 1950 to 2055, of the mean sidereal time of the IAU (1982) less the
/// precession of 6.11902e-07 rad a day.
double temps_sideral(double j);
/// Its rate [rad/s].
inline constexpr double taux_sideral = (0.017202179573701 + deux_pi) / 86400.0;

/// Inertial to Earth-fixed axes, and back.
vec3 vers_terrestre(double j, const vec3& v);
vec3 vers_inertiel(double j, const vec3& v);

/// Geodetic coordinates: lon, lat [rad], alt [km] of an Earth-fixed position [km]. On the polar axis at Z = 0
/// neither lat nor alt is written. Some points within 20 m of the polar axis swing between two values that
/// differ by nothing that matters; the iteration ends after 100 passes with the last.
void cart_vers_geodesique(const vec3& P, double& lon, double& lat, double& alt);

/// Earth-fixed position [km] of geodetic coordinates: lon, lat [rad], alt [km] over the ellipsoid.
vec3 geodesique_vers_cart(double lon, double lat, double alt);

/// Ground point of an inertial position [km] at the date j.
void sous_point(double j, const vec3& pos, double& lon, double& lat, double& alt);

/// Ground point of the satellite, into the state.
void sous_point(double j, orbit_state& o);

/// Earth-fixed to inertial axes; the Earth's turn at the date of the ground point is kept in the state.
vec3 vers_inertiel(double j, orbit_state& o, const vec3& v);
