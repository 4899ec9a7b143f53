/// Cells and generator: efficiency from temperature and bus voltage (one-exponential model), and the power of
/// each panel.
#pragma once

#include "power/power_panneaux.h"

/// Conversion efficiency (of 1368 W/m2) at a temperature [K]. Needs Isc above Imp and Voc above Vmp.
double cell_efficiency(const power_record& p, double t_kelvin);

void generator_ext_panels(power_record& p);
void generator_cylinder(power_record& p);
void generator_faces(power_record& p);
/// The same with the incidences of the date, which the thermal model of the step reads too.
void generator_ext_panels(power_record& p, const incidence& panneau);
void generator_cylinder(power_record& p, const incidences_corps& vues);
void generator_faces(power_record& p, const incidences_corps& vues);

/// Current [A] of one cell at a voltage [V], for the settings window's chart; the same model.
double cell_current(const power_record& p, double t_celsius, double v);
/// Nominal efficiency [%] by the maximum power point, with the end-of-life ratios when they are in force.
double rendement_nominal(const power_record& p);
