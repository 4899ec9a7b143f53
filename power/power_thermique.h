/// Three lumped thermal models, integrated by the explicit Euler rule: external panels (nine nodes), cylinder
/// (39 nodes), four or six faces (up to eleven nodes).
///
/// Fluxes, absorptivities, `p_heat` and `pan_power` are those of the step, held through its passes. A surface
/// balance is in W/m2 over mass per area times specific heat; the internal node is in watts and kilograms.
/// The rule diverges, unguarded, where a node's time constant falls below half a pass; the overflow that
/// follows is a numerical fault.
#pragma once

#include "power/power.h"

/// Absorptivity at the date t [days] of a coating new at `date_cell`: from a0 towards alim, 99 % of the way
/// to alim covered in t99 hours. The date is single precision: that is meant. a0 equal to alim gives alim;
/// a0 above alim, or t99 of 0, is a numerical fault.
double alpha(const power_record& p, float t, double a0, double alim, double t99);

/// A step of `pas` passes of one second. Leaves t_bat at the internal node's temperature.
void thermal_ext_panels(power_record& p, const orbit_state& o, double date, int32_t pas);

/// One-second passes up to 599 s; from 600 s on passes of pas / 300 whole seconds, the rest of the division
/// being dropped. Leaves t_bat at the internal node's temperature.
void thermal_cylinder(power_record& p, const orbit_state& o, double date, int32_t pas);

/// A step of `pas` passes of one second. t_bat is 20.0 in this configuration whatever the internal node does.
void thermal_faces(power_record& p, const orbit_state& o, double date, int32_t pas);
