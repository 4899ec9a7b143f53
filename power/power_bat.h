/// One accumulator: voltage from current, temperature and charge, capacity corrections, and the inverse
/// problems. Currents in multiples of the nominal capacity (C units), voltages per accumulator.
#pragma once

#include "power/power.h"

double bat_cap_current(const power_record& p, double i);                       ///< capacity ratio
double bat_cap_temp(const power_record& p, double T);                          ///< capacity ratio, T [degC]
double bat_v_discharge(const power_record& p, double i, double T, double soc); ///< [V]
/// [V]; a numerical failure of the curve is trapped: 0, with `courbe_charge_incompatible` set.
double bat_v_charge(power_record& p, double i, double T, double soc);

/// Currents [C units] for a voltage, or for a power per accumulator over bat_c [V/h], by secant from i0.
double bat_i_from_v_charge(power_record& p, double soc, double v, double i0, double T);
double bat_i_from_p_charge(power_record& p, double soc, double puissance, double i0, double T);
double bat_i_from_p_discharge(const power_record& p, double soc, double puissance, double i0, double T);
