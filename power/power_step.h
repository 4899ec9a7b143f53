/// One time step of the whole power system, and its start.
///
/// Order of a step: environment, panel target and drive (external panels only), generator with the
/// temperatures of the last step, power management, and the thermal model last with the fresh heat. The
/// caller advances the date and brackets each step with a `surveillance`.
#pragma once

#include "power/power.h"

/// Working state at the start of a run, from the settings. `t_bat` (where it is finite),
/// `t_charge` and `t_discharge` are not among the fields written: the caller zeroes the two times.
void power_state_init(power_record& p);

/// Place of a date's month in the monthly tables, from 0; a date outside of the calendar is a numerical
/// fault.
int rang_du_mois(double date);
/// Sun, Earth and fluxes at a date [days]; sets the pointing angles in force too (yaw turned by the spin
/// since `periode.j_debut`).
void environment_update(double date, power_record& p, orbit_state& o, const simulation_period& periode);

/// The step at `periode.j_courant`, of `periode.pas_sim` seconds; leaves every working field valid for it.
void power_step(power_record& p, orbit_state& o, const simulation_period& periode);

/// The rest of that step once `environment_update`, or another source of the same fields, has set the
/// environment of the date: of the orbit state it reads `sat_pos` alone. `demande` [W]: demand of the step.
void power_step_suite(power_record& p, const orbit_state& o, const simulation_period& periode,
                      double demande);

/// Solar flux [W/m2] at a distance d [km] from a Sun of `sun_power` watts, not rounded.
double flux_solaire(double sun_power, double d);
