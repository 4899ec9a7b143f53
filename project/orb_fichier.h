/// The orbit file `.orb`: one binary record of 114 bytes in a slot of 128, little-endian.
#pragma once

#include <string>

#include "orbit/orbite.h"

/// Writes the record (128 bytes, the last 14 zero); false with the system's own error description.
bool sauve_orbite(const std::string& chemin, const record_orbite& o, std::string& raison);

/// Reads the first 114 bytes in place; bytes past the end of a short file are zero. False with the system's
/// description when the file cannot be opened or read.
bool charge_orbite(const std::string& chemin, record_orbite& o, std::string& raison);

/// True when the path exists and is not a directory.
bool fichier_existe(const std::string& chemin);

/// The name alone, without folders and without its last extension; empty for blanks.
std::string extrait_nom_fichier(const std::string& chemin);
