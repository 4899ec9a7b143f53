/// The shortest decimal text of a number that reads back to it, for output by the million.
#pragma once

#include <cstddef>

/// Longest text: "-2.2250738585072014e-308".
inline constexpr std::size_t longueur_nombre_court = 24;

/// Writes x as `std::to_chars` does, to the byte, and returns the end. It writes beyond the end too, within
/// `place_nombre_court`.
inline constexpr std::size_t place_nombre_court = 64;
char* ecrit_nombre_court(char* place, double x);
