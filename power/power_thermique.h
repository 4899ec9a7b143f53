/// Three lumped thermal models, integrated by the explicit Euler rule: external panels (nine nodes), cylinder
/// (39 nodes), four or six faces (up to eleven nodes).
///
/// Fluxes, absorptivities, `p_heat` and `pan_power` are those of the step, held through its passes. A surface
/// balance is in W/m2 over mass per area times specific heat; the internal node is in watts and kilograms.
/// The rule diverges, unguarded, where a node's time constant falls below half a pass; the overflow that
/// follows is a numerical fault.
#pragma once

#include "power/power_panneaux.h"

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

/// Azimuths of the lateral faces of a body between external panels: 0, 90, 180 and 270 degrees.
struct azimuts_lateraux {
    explicit azimuts_lateraux(const power_record& p);
    std::array<azimut, 4> quarts;
    const azimut& panneaux() const { return quarts[2]; }
};

/// The same steps with what generator and drive have computed before them: the view factor of the date, and
/// the incidences of the panel's front or of the body.
void thermal_ext_panels(power_record& p, const vue_terre& vue, const azimuts_lateraux& az,
                        const incidence& panneau, double date, int32_t pas);
void thermal_cylinder(power_record& p, const vue_terre& vue, const incidences_corps& vues, double date,
                      int32_t pas);
void thermal_faces(power_record& p, const vue_terre& vue, const incidences_corps& vues, double date,
                   int32_t pas);
