/// A step to propose after a run that diverged.
#pragma once

#include "attitude/att_run.h"

/// The satellite turns by no more than this in a step of the proposed length [rad].
inline constexpr double tour_par_pas_conseille = 0.1;

/// The largest step [s] of the program's list, below that of the period, with which the satellite stays under
/// `tour_par_pas_conseille`, else the smallest where it stays under `tour_par_pas_max`; 0 when it does not.
/// Each step is tried on copies of the records, over the period or its first 20,000 steps.
int pas_conseille(const attitude_record& a, const orbit_state& o, const simulation_period& periode,
                  const atmosphere& air);
