/// The sweep that the options of `balayage` describe, for the batch program and its MPI twin.
#pragma once

#include "analysis/balayage.h"
#include "batch/options.h"

/// The plan, or the exit status of what is wrong with it, told on standard error.
statut lit_plan(const options& o, const session& s, plan_balayage& plan);
