/// The power model's environment in the physical model: what `environment_update` sets, from the physical
/// surroundings and the attitude that the panels really have.
///
/// Light of 1361 W/m2 at 1 au instead of the record's `sun_power`, times the visible share of the Sun;
/// `eclipse` only where that is 0. Albedo and infrared of the Earth as in the reference model (monthly
/// tables, a law of the Sun's height below the satellite).
#pragma once

#include "physics/milieu.h"
#include "power/power.h"

/// Sets the fields of the power record for the surroundings `m` and the attitude `A`.
void environnement_energie(const milieu& m, const rotation& A, power_record& p);
