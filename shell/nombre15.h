/// Numbers with 15 significant digits, fast: the text form of long results files.
#pragma once

/// Room that `ecrit_15` needs; it may write beyond the end that it returns.
inline constexpr int taille_15 = 48;

/// Writes x as "%.15G" does in the C locale (at most 15 significant digits, no trailing zeros, a point, an
/// exponent of two digits at least below 1E-04 and from 1E+15), without sign for zero; returns the end of the
/// text. The rounding is exact, ties to even.
char* ecrit_15(char* tampon, double x);
