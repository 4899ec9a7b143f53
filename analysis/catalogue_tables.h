/// The tables that make the catalogue, a file for each subject.
#pragma once

#include "analysis/variables.h"

std::span<const variable> variables_orbite();
std::span<const variable> variables_puissance();
std::span<const variable> variables_attitude();
std::span<const variable> variables_physique();
