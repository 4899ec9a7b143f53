/// JSON as the program's files hold it: read with every defect told, written the same way each time.
#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

/// Keys keep the order of the text.
using json = nlohmann::ordered_json;

/// What a text may hold at most; more is refused before it takes memory or stack.
inline constexpr std::size_t json_taille_max = 4u << 20; ///< [bytes]
inline constexpr std::size_t json_profondeur_max = 32;
inline constexpr std::size_t json_cles_max = 1000; ///< of one object

/// Reads a text; false with the reason in French: no JSON (with its line), a number that no double holds, a
/// key that stands twice in an object, too deep, too long.
bool lit_json(std::string_view texte, json& j, std::string& raison);

/// Two-space indent, lists of numbers on one line, numbers in the shortest form that reads back, a line end
/// at the end. Bytes that are no UTF-8 become U+FFFD.
std::string ecrit_json(const json& j);
/// The same without line breaks.
std::string ecrit_json_court(const json& j);

/// A number as it is written: whole ones without a point.
json nombre_json(double x);
