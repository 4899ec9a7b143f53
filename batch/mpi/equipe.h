/// The ranks of an MPI run of a sweep: rank 0 hands out blocks of variants as ranks become free, gathers
/// their rows and writes them in order; it computes too, in a thread of its own. Every rank has read the same
/// command line and builds the same sweep, so that a block is told by its first variant alone.
#pragma once

#include <functional>
#include <string>

#include "analysis/balayage.h"

/// On rank 0: runs the variants from `depuis` on with all ranks.
void dirige(const balayage& b, long depuis, int rangs, const std::function<void(const std::string&)>& ecrit);
/// On the other ranks: computes blocks until rank 0 has none left.
void sert(const balayage& b);
