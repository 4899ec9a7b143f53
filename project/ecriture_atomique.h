/// A file replaced whole or not at all.
#pragma once

#include <string>
#include <string_view>

/// Writes the text to a temporary file of the same folder, flushes it to the disk and renames it over
/// `chemin`: whatever happens meanwhile, the old or the new content stands there whole. A symbolic link
/// stays, its target is replaced; permissions stay; a write-protected file is not replaced. False with the
/// system's description, the old content then being in place.
bool ecrit_atomique(const std::string& chemin, std::string_view texte, std::string& raison);
