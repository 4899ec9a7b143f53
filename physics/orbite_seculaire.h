/// The orbit of the physical model: mean elements that drift under the Earth's flattening.
///
/// Node, perigee and mean anomaly advance uniformly with the secular rates of J2 (W. M. Kaula, Theory of
/// Satellite Geodesy, 1966, 3.6); semi-major axis, eccentricity and inclination stay. For 0 <= e < 1 outside
/// the Earth. Left out: the periodic terms of J2 (up to 10 km), J3 and beyond, Moon and Sun (0.01 degree a
/// day and less below 2000 km), drag: a low orbit loses height that the model does not show.
#pragma once

#include "orbit/orb_trajecto.h"

inline constexpr double mu_physique = 398600.4418; ///< [km3/s2]
inline constexpr double j2_terre = 1.08262668e-3;

struct orbite_seculaire {
    double a, e, epoque;                   ///< [km], [-], [days since 1950]
    double noeud, perigee, anomalie;       ///< [rad] at the epoch
    double taux_noeud, taux_perigee;       ///< [rad/s]
    double moyen_mouvement, taux_anomalie; ///< [rad/s] sqrt(mu/a^3), and with the drift of J2
    sinus_cosinus inclinaison;

    orbite_seculaire(const record_orbite& o, bool sans_j2);

    struct point {
        vec3 r, v;           ///< [km], [km/s] of the ellipse of the date: the drift adds nothing to v
        double anomalie_moy; ///< [rad] in [0, 2 pi)
    };
    /// At the date j (days since 1950).
    point a_la_date(double j) const;
};

/// Eccentric anomaly by Newton's rule, as its sine and cosine, for a mean anomaly in [0, 2 pi] and 0 <= e
/// < 1.
sinus_cosinus kepler(double m, double e);
