/// The options that concern the étude as a whole: its file, single fields, stations, notes.
#pragma once

#include "batch/options.h"

/// The étude that everything else goes over.
statut lit_etude(const options& o, session& s);

/// Stations, notes and single fields, over the files; without an étude or an energy project the period
/// follows the orbit.
statut applique_etude(const options& o, session& s);
