/// What an étude asks of a run: the environment of its model and the demand of its consumption modes. Every
/// consumer that runs an étude takes its settings of the run from here.
#pragma once

#include "analysis/calcul.h"
#include "project/etude.h"

/// `r` completed by the étude's model and modes; without modes and with the reference model nothing is added.
/// What is returned keeps no reference to the étude.
reglages_calcul reglages_de(const etude& e, reglages_calcul r = {});

/// The records of an étude, for a run that works on them.
inline modeles modeles_de(etude& e) { return {e.periode, e.orbit, e.power, e.attitude}; }

/// Satellite and Sun at a date [days] by the étude's model, into `o`.
void place_orbite(const etude& e, double date, orbit_state& o);
