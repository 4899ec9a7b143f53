/// The frame of the physical model, and the Earth's turn in it.
///
/// True equator and equinox of date: the axes move by 50 arcseconds a year, which a run leaves out. The Earth
/// turns by Greenwich mean sidereal time (IAU 1982; S. Aoki et al., Astron. Astrophys. 105, 359, 1982), UT1
/// taken as UTC (within 0.9 s, 0.004 degree). Good from 1950 to 2100. Left out: the equation of the equinoxes
/// (17 arcseconds), polar motion (0.5 arcsecond).
#pragma once

#include "orbit/math.h"

/// Days since 1950 of the epoch 2000 January 1, 12 h.
inline constexpr double jour_j2000 = 18262.5;

/// Greenwich mean sidereal time [rad], in [0, 2 pi), at the date j (days since 1950).
double temps_sideral_1982(double j);

/// Inertial axes to Earth-fixed axes, and back, for one date.
struct tour_terre {
    sinus_cosinus t;
    explicit tour_terre(double j) : t(sincos_de(temps_sideral_1982(j))) {}
    vec3 vers_terrestre(const vec3& v) const {
        return {t.c * v[0] + t.s * v[1], -t.s * v[0] + t.c * v[1], v[2]};
    }
    vec3 vers_inertiel(const vec3& v) const {
        return {t.c * v[0] - t.s * v[1], t.s * v[0] + t.c * v[1], v[2]};
    }
};
