/// Power management: shares generator, battery and payload once per step, advances the state of charge, and
/// sums the heat that goes to the internal node.
///
/// The state of charge always integrates the current that the last step left. `t_bat` is that of the last
/// step too.
#pragma once

#include "power/power.h"

/// A step of `dt` seconds with the generator power and the eclipse flag of the date. A discharge curve
/// without a solution is a numerical fault; a charge curve that fails sets `courbe_charge_incompatible`.
/// `demande` [W] is the power that the payload asks for.
void power_management(power_record& p, int32_t dt, double demande);

/// The demand that the settings give for day or night, by the eclipse flag [W].
inline double demande_reference(const power_record& p) { return p.p_demand[p.eclipse == vrai ? 1 : 0]; }
inline void power_management(power_record& p, int32_t dt) { power_management(p, dt, demande_reference(p)); }
