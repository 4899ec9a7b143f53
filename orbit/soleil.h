/// The Sun's position, in closed series.
///
/// Low-precision theory of the Sun's longitude (mean elements of Newcomb as polynomials of the date, equation
/// of the centre to second order), turned back from the equinox of date to that of 1950. Good to 0.011 degree
/// and 1.2e-4 in distance from 1950 to 2055, measured on the mean equator and equinox of date; the planets,
/// nutation and aberration are left out. The turn back to 1950 is about the pole alone, like that of the
/// sidereal angle: the two agree with each other, but against the true mean equator of 1950 the direction is
/// off by up to 0.3 degree in 2001 (the pole's own motion).
#pragma once

#include "orbit/math.h"

/// Vector from the Earth's centre to the Sun [km], inertial frame of 1950, at the date j (days since 1950).
vec3 soleil_position(double j);
