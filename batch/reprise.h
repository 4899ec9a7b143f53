/// Where the rows of a sweep begin: at the heading, or behind the last whole row of an earlier output.
#pragma once

#include "analysis/balayage.h"
#include "batch/csv.h"
#include "batch/options.h"

/// Ending of the rows of a sweep that is under way or was killed, beside the place of its output.
inline constexpr const char* suffixe_partiel = ".partiel";

/// Writes the heading and, with `--reprise`, the whole rows that the earlier file holds; `depuis` becomes the
/// first variant that is still to be run. A file of another sweep is refused.
statut commence_lignes(const options& o, const balayage& b, csv& sortie, long& depuis);
