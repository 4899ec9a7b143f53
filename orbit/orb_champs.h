/// The one table of the fields of orbit and pointing.
///
/// Its entries say of each field its name, type, place in the record and in the `.orb` file, the control that
/// edits each of its elements, caption, unit, limits at the keyboard, number picture and meaning. The file's
/// reader and writer, the orbit window and the étude are driven by it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "orbit/orbite.h"

enum class type_orb : uint8_t { texte, f64, i16, drapeau };

struct champ_orb {
    bool pointage = false; ///< of the pointing, else of the orbit
    const char* nom = "";  ///< field name, as "orb_demi"
    type_orb type = type_orb::f64;
    int nombre = 1;         ///< elements
    std::size_t place = 0;  ///< offset in its record
    int decalage = -1;      ///< offset in the `.orb` file; -1 for none
    const char* titre = ""; ///< caption in the window
    const char* unite = "";
    double min = -std::numeric_limits<double>::infinity(); ///< as shown in the window, both allowed
    double max = std::numeric_limits<double>::infinity();
    const char* image = ""; ///< number picture of its box
    const char* sens = "";  ///< meaning, in French
    std::array<const char*, 3> controles{};
    bool degres = false; ///< stored in radians, shown in degrees

    std::size_t taille() const; ///< [bytes] in the record and in the file
};

std::span<const champ_orb> orb_champs();

/// The entry of a field name; the program's own error (std::abort) for a name that is not in the table.
const champ_orb& champ_orb_de(std::string_view nom);

/// A field's element as a number as it is stored, and back; 0 for a text. Integers round half to even; no
/// limit is checked.
double valeur(const orbit_state& o, const champ_orb& c, int element = 0);
void change(orbit_state& o, const champ_orb& c, double x, int element = 0);

/// "Angle du nœud ascendant au périgée (de 0 à 360 deg)".
std::string infobulle(const champ_orb& c);
