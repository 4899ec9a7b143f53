/// Words of CSV.
#pragma once

#include <string>
#include <string_view>

/// A text as a word of CSV: between quotes where it holds a comma, a quote or a line end.
std::string mot_csv(std::string_view texte);
