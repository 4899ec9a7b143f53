/// The one table of the attitude record's fields.
///
/// Its entries stand in the order of the `.att` file and say of each field its place in the file and in the
/// record, its type, the control that edits each of its elements, its unit, its limits at the keyboard and
/// its meaning. The file's writer and reader, the settings window and its tooltips are driven by it. Elements
/// are numbered in the order of the file.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "attitude/att_global.h"

enum class type_att : uint8_t { f64, i16 };

struct champ_att {
    const char* nom;      ///< field name, as "dip_res"
    std::size_t decalage; ///< offset in the file
    type_att type;
    int nombre;                             ///< elements
    std::size_t place;                      ///< offset in the record
    const int8_t* ordre;                    ///< place in the record of each element; null: as in the file
    const char* unite;                      ///< for people: "kg m²"
    const char* sens;                       ///< meaning, in French
    std::array<const char*, 9> controles{}; ///< control that edits each element; null for none
    const char* const* elements = nullptr;  ///< name of each element ("x", "+x", "xy"); null for a single one
    double min = -std::numeric_limits<double>::infinity(); ///< as shown in the window
    double max = std::numeric_limits<double>::infinity();
    bool demi_dim = false; ///< limits are minus and plus half the dimension on the element's axis
    bool degres = false;   ///< stored in radians, shown in degrees

    std::size_t taille() const { return nombre * (type == type_att::f64 ? 8 : 2); }
};

inline constexpr std::size_t taille_att = 820; ///< [bytes] of the file

std::span<const champ_att> att_champs();

/// The field and the element that a control edits; false for a control that edits none.
bool champ_att_du_controle(std::string_view controle, const champ_att*& champ, int& element);

/// An element as it is stored, and back. Integer fields round half to even; no limit is checked.
double valeur(const attitude_record& a, const champ_att& c, int element = 0);
void change(attitude_record& a, const champ_att& c, double x, int element = 0);
/// An element of a field of reals, in place.
double& reel(attitude_record& a, const champ_att& c, int element = 0);

/// "Dipôle résiduel x (A m²), de -10 à 10."
std::string infobulle(const champ_att& c, int element = 0);
