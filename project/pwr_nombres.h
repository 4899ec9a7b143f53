/// Numbers in the text of a `.pwr` file: how they are written, and what a token may hold.
#pragma once

#include <string>
#include <string_view>

#include "power/power_champs.h"

/// At most `chiffres` significant digits (7 for singles, 15 for doubles): fixed notation where
/// 0.01 <= |x| < 10^7 (10^15) after rounding, without a digit before the point below 1; else exponent
/// notation. A blank or "-" in front, a blank behind.
std::string ecrit_reel(double x, int chiffres);

/// Decimal digits with the same blanks.
std::string ecrit_entier(long x);

/// The picture "0.0000E+00", without blanks.
std::string ecrit_puissance_sun(double x);

/// Reads a number of the field's type from a token; false with the reason when the text is no number or is
/// outside of the type's range. Integers round half to even.
bool lit_jeton(std::string_view jeton, type_champ type, double& x, std::string& raison);
