/// What in the settings makes a run of the energy model end in a numerical fault.
#pragma once

#include <string>

#include "power/power.h"

/// The cause of a fault, found in the state that it has left, and what to do about it: French sentences.
/// Empty where the settings do not explain it.
std::string cause_de_faute(const power_record& p, const orbit_state& o, const simulation_period& periode);

/// Why the battery study cannot run at a temperature [degC]: a French sentence, empty where it can.
std::string refus_etude_batterie(const power_record& p, double temperature);
