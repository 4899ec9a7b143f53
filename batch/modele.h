/// The options that choose the model: which one, what it leaves out, its attitude control.
#pragma once

#include "batch/options.h"

/// Sets `m` by the options; without `--modele` it stays what it was. False, with a line on standard error,
/// for a value that is none or for options of the physical model beside the reference one.
bool regle_modele(const options& o, options_modele& m);
