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

/// Which dates of a period a run takes, from the start on.
enum class regle_fin {
    tolerante, ///< those that have not passed the end by more than 0.1 s: energy, orbit, torques
    exacte,    ///< those not later than the end: attitude
    sans,      ///< all: the caller ends the run
};
inline bool dans_la_periode(double j, const simulation_period& p, regle_fin r) {
    switch (r) {
    case regle_fin::tolerante: return j <= p.j_fin + 0.1 / 86400;
    case regle_fin::exacte: return j <= p.j_fin;
    default: return true;
    }
}
