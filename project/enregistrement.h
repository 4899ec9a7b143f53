/// Fixed binary records in little-endian files: read with missing bytes as zero, written at the file's start.
#pragma once

#include <cstddef>
#include <string>

/// Reads up to `taille` bytes into a buffer that the caller has zeroed: a short file is no failure. False
/// with the system's reason when the file cannot be opened or read.
bool lit_enregistrement(const std::string& chemin, char* tampon, std::size_t taille, std::string& raison);

/// Writes `taille` bytes as the file, or with `garde_suite` as its start: the bytes of a longer old file stay
/// behind the record. The old or the new content is there whole, whatever happens.
bool ecrit_enregistrement(const std::string& chemin, const char* tampon, std::size_t taille, bool garde_suite,
                          std::string& raison);
