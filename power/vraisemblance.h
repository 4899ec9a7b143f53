/// What no satellite has: the required formulas can give, for some settings and without a fault, a
/// temperature below 0 K, a charge outside 0..1 or a negative efficiency. A run tells it once and goes on.
#pragma once

#include <string>

#include "power/power.h"

/// False once a step has left one of these in the record.
bool vraisemblable(const power_record& p);

/// Which value of the record is out, and the setting that causes it: one line, in French, for a record that
/// is not `vraisemblable` after the step at `date`.
std::string invraisemblance(const power_record& p, double date);
