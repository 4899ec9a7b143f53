/// The Sun in the physical model: position and light.
///
/// Low-precision formulae of the Astronomical Almanac (section C): direction within 0.01 degree from 1950 to
/// 2050, distance within 0.0003 au. Mean equator and equinox of date, aberration within the constants. Left
/// out: nutation (0.005 degree), the Moon's and planets' pull. Light: 1361 W/m2 at 1 au (G. Kopp and J. L.
/// Lean, Geophys. Res. Lett. 38, L01706, 2011); the solar cycle (0.1 %) is left out.
#pragma once

#include "orbit/math.h"

inline constexpr double unite_astronomique = 149597870.7; ///< [km]
inline constexpr double constante_solaire = 1361;         ///< [W/m2] at 1 au
inline constexpr double vitesse_lumiere = 299792458;      ///< [m/s]

/// Vector from the Earth's centre to the Sun [km] at the date j (days since 1950).
vec3 soleil_almanach(double j);

/// Sunlight [W/m2] at a distance [km].
inline double lumiere_soleil(double distance) {
    return constante_solaire * carre(unite_astronomique / distance);
}
