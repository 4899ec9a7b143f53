/// A whole call of the batch program.
#pragma once

#include <memory>

#include "batch/cmd_balayage.h"
#include "batch/commandes.h"

/// Reads the command line, prepares the session, runs the command and puts its output in place; the exit
/// status. `balaye` runs a sweep's variants in the place of the program's own threads.
int execute(int argc, char** argv, execution_balayage balaye = {});

/// The sweep that a command line describes, without its output; null where there is none.
std::unique_ptr<balayage> balayage_de(int argc, char** argv);
