/// Shadow of the Earth with its penumbra.
///
/// Visible share of the Sun's disc from the overlap of two discs on the sky (O. Montenbruck and E. Gill,
/// Satellite Orbits, 2000, 3.4.2): Sun of 696,000 km, spherical Earth of 6378.137 km. Good at any height
/// above the ground. Left out: the Earth's flattening (up to 21 km of shadow edge, some 3 s of a low orbit),
/// the refraction and the dust of the atmosphere, the darkening of the Sun's limb, the Moon.
#pragma once

#include "orbit/math.h"

inline constexpr double rayon_soleil = 696000; ///< [km]

/// Share that stays visible of a disc of angular radius `a` behind a disc of radius `b` whose centre stands
/// at the angle `c` [rad]: exactly 1 clear of it, exactly 0 when covered, 1 - (b/a)^2 when annular.
double part_visible(double a, double b, double c);

/// Share of the Sun that the satellite sees; both positions from the Earth's centre [km]. Below the ground a
/// numerical fault.
double part_du_soleil(const vec3& satellite, const vec3& soleil);
