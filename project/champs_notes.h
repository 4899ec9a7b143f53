/// What the tables of fields do not say: symbol, formula in which a number acts, and where that comes from.
/// Kept apart for the fields where it matters; the help shows it beside their limits.
#pragma once

#include <string_view>

struct note_champ {
    const char* nom;     ///< of the field, as in the étude: "bat_c"
    const char* symbole; ///< may be empty
    const char* formule; ///< in words and signs that a line of text can hold
    const char* source;  ///< of the formula or of the default; may be empty
};

/// nullptr for a field without a note.
const note_champ* note_de(std::string_view nom);
