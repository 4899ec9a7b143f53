/// Numbers as text, without Qt: the number pictures of labels and tables, and the shortest round-trip form.
#pragma once

#include <string>
#include <string_view>

/// A number in a picture such as "0.00", "#0.0000000000", "0.0000E+00", "00": the digits after the point are
/// always written, the "0" before it are the least digits of the whole part, and "E+00" asks for an exponent
/// form with a sign ("e+00" in lower case). A trailing text after the picture ("0.00C", "0.00 ") is kept.
std::string format_image(double x, std::string_view image);

/// x in the picture "0.", "0.0", "0.00" ... of so many decimals: `format_image` for the hundred thousands of
/// texts of a table.
std::string texte_fixe(double x, int decimales);

/// "hh:mm:ss" of a number of seconds (hours beyond 99 take the digits they need).
std::string format_duree(long secondes);

/// At most so many significant digits, without zeros behind them ("1.5", "2e+10").
std::string format_general(double x, int chiffres);

/// The shortest decimal text that reads back to the same value.
std::string format_court(double x);
std::string format_court(float x);

/// Reads a number with a point or a comma; false for any other text, NaN or infinity.
bool lit_nombre(std::string_view texte, double& x);
