/// The Earth's magnetic field: a spherical-harmonic model cut at degree 6.
///
/// International Geomagnetic Reference Field, coefficients of 1995 with their secular variation (IAGA, 1996),
/// without the degrees 7 to 10: about 100 nT rms are left out at the ground, less with height. Internal field
/// only. The secular variation was published for 1995 to 2000; beyond, the model is carried on linearly.
///
/// Method: the sums run over polynomials in the cosine of the colatitude (the associated functions freed of
/// their sines), so that nothing is divided by the sine near the poles; the Schmidt normalisation is folded
/// into the coefficients.
#pragma once

#include <array>

#include "orbit/math.h"

inline constexpr double rayon_igrf = 6371.2; ///< [km] reference radius
inline constexpr int degre_igrf = 6;
inline constexpr int nb_igrf = 28; ///< pairs (n, m), n from 0 to 6; the place of (n, m) is n (n + 1) / 2 + m

/// A pair of coefficients g, h.
using paire_gh = double __attribute__((vector_size(16)));

/// The coefficients at a date, ready for several syntheses.
struct champ_igrf {
    std::array<paire_gh, nb_igrf> gh; ///< [nT] Gauss-normalised

    /// Coefficients at the date (days since 1950); the years are counted as 365 days.
    explicit champ_igrf(double date);

    /// Field [nT]: B0 radial outward, B1 southward, B2 eastward, at r [km] from the Earth's centre, for the
    /// sine and cosine of colatitude and longitude. Where the sine of the colatitude is 0 the eastward sum is
    /// divided by 1e-10 instead, which gives 0.
    vec3 synthese(double r, sinus_cosinus colatitude, sinus_cosinus longitude) const;
};
