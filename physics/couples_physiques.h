/// Disturbance torques at the attitude of the satellite, a box of six faces.
///
/// Body axes, N m, about the centre of mass. Sources: gravity gradient, P. C. Hughes, Spacecraft Attitude
/// Dynamics (1986), 8.1; drag in free molecular flow and radiation pressure on flat faces, ibid. 8.2 and 8.3,
/// and J. R. Wertz, Spacecraft Attitude Determination and Control (1978), 17.2. Good for convex bodies
/// between 100 and 2500 km (drag: beyond, no air). Left out: one face shadowing another, the surface of
/// external masses and panels, albedo and infrared pressure, eddy currents.
#pragma once

#include "attitude/att_global.h"
#include "physics/milieu.h"
#include "physics/options_modele.h"

struct couples_corps {
    vec3 gradient{}, aero{}, solaire{}, magnetique{};
};

/// 3 mu / r^3 n x J n for the outward direction n (body axes) and the inertia tensor J [kg m2].
vec3 couple_gradient_physique(const mat3& J, double rayon_km, const vec3& n);
/// Of the air of density [kg/m3] that the satellite meets with the velocity v [m/s] (body axes). Not for v =
/// 0.
vec3 couple_aero_physique(const attitude_record& a, double densite, const vec3& v);
/// Of the light of pressure p [N/m2] that comes from the direction s (unit, body axes).
vec3 couple_solaire_physique(const attitude_record& a, double p, const vec3& s);

/// Pressure of the sunlight that falls on the satellite [N/m2], shadow counted.
double pression_lumiere(const milieu& m);

/// The four torques, those that the options leave out zero; J is the tensor of `a`.
couples_corps couples_physiques(const attitude_record& a, const mat3& J, const options_modele& o,
                                const milieu& m, const rotation& A);

/// The inertia tensor of the record, whose products are stored positive.
mat3 tenseur_inertie(const attitude_record& a);
