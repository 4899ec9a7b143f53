/// The period and step of a simulation.
#pragma once

#include <cstdint>

/// The period and step of a simulation, and the date of the step in progress.
struct simulation_period {
    double j_debut = 0;    ///< [days] start
    double j_fin = 0;      ///< [days] end
    double j_courant = 0;  ///< [days] step in progress
    int32_t pas_sim = 120; ///< [s] step
};
