/// The attitude project file `.att`: one binary record of 820 bytes, little-endian, laid out by `att_champs`.
#pragma once

#include <string>

#include "attitude/att_global.h"

/// Writes the record over the first 820 bytes of the file; a longer old file keeps its tail. False with the
/// system's own error description.
bool sauve_attitude(const std::string& chemin, const attitude_record& a, std::string& raison);

/// Reads the record and recomputes the face table; the other derived fields and the transient ones come as
/// they were stored. The missing bytes of a short file are zero: an empty file is an all-zero configuration.
/// False with the system's description when the file cannot be opened or read; the record is then untouched.
bool charge_attitude(const std::string& chemin, attitude_record& a, std::string& raison);
