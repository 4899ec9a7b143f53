/// The one table of the power record's fields.
///
/// Its entries stand in the order of the `.pwr` file, decorative comment lines among them, and say of each
/// field its name, type, place, file label, unit, limits at the keyboard and meaning. The file's writer and
/// reader, the settings window, the tooltips and the batch program's messages are driven by it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "power/power.h"

enum class type_champ : uint8_t {
    commentaire, ///< a line that the reader consumes and nothing stores
    i16,
    i32,
    u8,
    f32,
    f64,
    booleen,       ///< flag -1/0, written as 255 or 0
    puissance_sun, ///< double written with the picture "0.0000E+00"
    date_debut,
    date_fin,
    pas, ///< the period, which the record does not hold
};

/// Limits of an entry at the keyboard.
struct limites {
    double min = -std::numeric_limits<double>::infinity();
    double max = std::numeric_limits<double>::infinity();
    bool min_inclus = true, max_inclus = true;
};

struct champ {
    type_champ type = type_champ::commentaire;
    const char* texte = ""; ///< comment text, or the label that stands behind the value in the file
    const char* nom = "";   ///< field name, as "cel_isc"; array elements share it
    std::size_t place = 0;  ///< offset in the record
    int nombre = 1;         ///< elements, one a line
    std::size_t pas = 0;    ///< bytes from one element to the next
    const char* unite = ""; ///< for people: "A", "°C", "W/m²"
    limites bornes{};
    const char* sens = ""; ///< meaning, in French, for tooltips and guide
};

/// The table, in file order; its lines (comments and elements counted) are the 279 lines of the file.
std::span<const champ> power_champs();

/// The entry of a field name; the program's own error (std::abort) for a name that is not in the table.
const champ& champ_de(std::string_view nom);

/// The one setting that the file does not hold: cells at the beginning or the end of their life.
const champ& champ_beol();

/// A field's element as a number, and back. Integer fields round half to even; no limit is checked.
double valeur(const power_record& p, const champ& c, int element = 0);
void change(power_record& p, const champ& c, double x, int element = 0);
