/// The Earth's magnetic field: a spherical-harmonic model cut at degree 6.
///
/// International Geomagnetic Reference Field, coefficients of 1995 with their secular variation (IAGA, 1996),
/// without the degrees 7 to 10: about 100 nT rms are left out at the ground, less with height. Internal field
/// only. The secular variation was published for 1995 to 2000; beyond, the model is carried on linearly.
#pragma once

#include "orbit/harmoniques.h"

inline constexpr double rayon_igrf = 6371.2; ///< [km] reference radius
inline constexpr int degre_igrf = 6;

/// The coefficients at a date, ready for several syntheses.
struct champ_igrf {
    harmoniques::coefficients<degre_igrf> gh; ///< [nT] Gauss-normalised

    /// Coefficients at the date (days since 1950); the years are counted as 365 days.
    explicit champ_igrf(double date);

    /// Field [nT]: B0 radial outward, B1 southward, B2 eastward, at r [km] from the Earth's centre, for the
    /// sine and cosine of colatitude and longitude. Where the sine of the colatitude is 0 the eastward sum is
    /// divided by 1e-10 instead, which gives 0.
    vec3 synthese(double r, sinus_cosinus colatitude, sinus_cosinus longitude) const;
};
