/// Two-line elements: the text form in which orbits are published (NORAD's, columns and checksum as described
/// by Hoots and Roehrich, Spacetrack Report 3, 1980).
///
/// Inclination, node, eccentricity, argument of perigee, mean anomaly and epoch are taken as they stand, and
/// the semi-major axis from the mean motion by the model's own relation. They are mean elements of another
/// theory: at the epoch the position errs by some ten kilometres, and later by the perturbations that the
/// model leaves out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/orbite.h"

/// [bytes] of a file: more than all satellites ever listed.
inline constexpr std::size_t tle_taille_max = 20'000'000;

struct elements_tle {
    std::string nom; ///< of the line before, or the satellite's number
    record_orbite orbite;
};

/// All sets of elements of a text: two lines each, with or without a line of name before. False, with line
/// and reason in `raison`, when a line is no such line, its checksum is wrong or a value is out of its range,
/// and when the text holds no elements at all.
bool lit_tle(std::string_view texte, std::vector<elements_tle>& lus, std::string& raison);

/// The same from a file of at most `tle_taille_max`.
bool charge_tle(const std::string& chemin, std::vector<elements_tle>& lus, std::string& raison);
