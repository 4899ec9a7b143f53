/// The command `balayage`, its variants run by whoever has the cores for them.
#pragma once

#include <functional>
#include <string>

#include "analysis/balayage.h"
#include "batch/csv.h"
#include "batch/options.h"

/// Runs the variants of a sweep from `depuis` on and hands their rows to `ecrit`, whole lines in the order of
/// the variants.
using execution_balayage = std::function<void(const balayage& b, long depuis,
                                              const std::function<void(const std::string& lignes)>& ecrit)>;

/// The plan, or the exit status of what is wrong with it, told on standard error.
statut lit_plan(const options& o, const session& s, plan_balayage& plan);

statut cmd_balayage_par(const options& o, const session& s, csv& sortie, const execution_balayage& balaye);
