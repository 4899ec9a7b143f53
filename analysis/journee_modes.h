/// A day of the consumption modes, for its picture.
#pragma once

#include <stop_token>
#include <utility>
#include <vector>

#include "project/etude.h"

/// For each mode the parts of a day, from 0 to 1, in which it is in force.
using journee_de_modes = std::vector<std::vector<std::pair<double, double>>>;
/// The first day of the étude's period, by the steps of its own run; up to where it was stopped.
journee_de_modes premiere_journee(etude e, const std::stop_token& arret);
