/// Fixed binary records in little-endian files: read with missing bytes as zero, written at the file's start.
#pragma once

#include <cstddef>
#include <string>

/// Reads up to `taille` bytes into a buffer that the caller has zeroed: a short file is no failure. False
/// with the system's own description when the file cannot be opened or read.
bool lit_enregistrement(const std::string& chemin, char* tampon, std::size_t taille, std::string& raison);

/// Writes `taille` bytes at the start of the file, made when missing. `garde_suite` keeps the bytes of a
/// longer old file behind the record.
bool ecrit_enregistrement(const std::string& chemin, const char* tampon, std::size_t taille, bool garde_suite,
                          std::string& raison);
