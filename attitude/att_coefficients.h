/// Coefficients of the coupled equations of motion: rigid body, three wheels at constant speed, three
/// spring-mass dampers.
///
/// The unknowns are the body's angular acceleration (columns 0 to 2) and the accelerations of dampers 0, 1
/// and 2 along their slides (columns 3 to 5). Rows 0 to 2 are the moment equations about x, y, z; the force
/// equations stand in row 5 for damper 0, row 3 for damper 1 and row 4 for damper 2.
///
/// Geometry: damper 0 slides along z at (ld0, 0, z0), damper 1 along x at (z1, ld1, 0), damper 2 along y at
/// (0, z2, ld2). Products of inertia are positive as stored and enter with a minus sign.
///
/// The tables are set down as they were given. Some of their terms are not those of a symmetric derivation
/// (marked in the source): they are meant.
#pragma once

#include "attitude/att_global.h"

/// M x = T - B zd - JR omd - L, with the torques T and the wheel term in rows 0 to 2 alone.
struct systeme_attitude {
    double M[6][6]{}; ///< mass matrix; entries that are not listed are zero
    double B[6][3];   ///< velocity coefficients, the factors of zd0, zd1, zd2
    double L[6];      ///< free terms
};

/// Fills the system from the state. A zero total mass is a numerical fault.
void coefficients_attitude(const attitude_record& a, systeme_attitude& s);
