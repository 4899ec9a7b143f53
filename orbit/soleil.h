/// The Sun's position, in closed series.
///
/// Low-precision theory of the Sun's longitude (mean elements of Newcomb as polynomials of the date, equation
/// of the centre to second order), turned back from the equinox of date to that of 1950. Good to about 0.01
/// degree in direction from 1950 to 2050; nutation and aberration are left out.
#pragma once

#include "orbit/math.h"

/// Vector from the Earth's centre to the Sun [km], inertial frame of 1950, at the date j (days since 1950).
vec3 soleil_position(double j);
