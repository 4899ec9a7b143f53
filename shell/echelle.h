/// Scale of a result graph: the limits that take in every value of a table, rounded to 2, 5 or 10 times a
/// power of ten.
#pragma once

#include <cmath>
#include <string>
#include <string_view>

struct echelle {
    double min = 0, max = 0; ///< both start at 0, so that the graph always takes in 0

    /// Takes in a value; one that is not finite has no place on a graph.
    void etend(double x) {
        if (!std::isfinite(x)) return;
        if (x > max) max = x;
        if (x < min) min = x;
    }
    /// To be called once all values are in: limits of opposite signs become symmetrical, then each is rounded
    /// away from 0.
    void arrondit();
};

/// A limit rounded away from 0 to 2, 5 or 10 times a power of ten, judged on its three first digits; 0 stays.
double limite_arrondie(double x);

/// A limit in the picture `image`, or in "0.0E+00" where `image` would show it as another number (0.5 in the
/// picture "0"): a graph between two zeros shows nothing.
std::string texte_limite(double x, std::string_view image);
