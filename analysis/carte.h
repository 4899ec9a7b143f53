/// What a map of the Earth shows of an orbit: ground track, Sun, caps of the sphere. Angles in degrees.
#pragma once

#include <vector>

#include "orbit/orbite.h"
#include "orbit/station.h"
#include "physics/options_modele.h"

struct point_sol {
    double lon = 0; ///< [deg] -180 to 180
    double lat = 0; ///< [deg] geodetic
};

/// A point of the ground track.
struct point_trace : point_sol {
    double j = 0; ///< [days]
    bool eclipse = false;
};

/// Where the satellite stands over the ground at a date.
struct place_satellite : point_trace {
    double alt = 0;      ///< [km] over the ellipsoid
    double distance = 0; ///< [km] to the Earth's centre
};
place_satellite place_au_sol(const record_orbite& o, const options_modele& modele, double j);

/// The ground track of an orbit around a date, in points that stand `par_tour` to the turn at fixed dates:
/// what was computed for one date serves for the next.
class trace_glissante {
public:
    explicit trace_glissante(int par_tour = 360) : par_tour_(par_tour) {}

    /// The track from `avant` turns before the date j to `apres` turns behind it, its ends and the date
    /// itself among its points. A point that is not finite ends it.
    const std::vector<point_trace>& autour(const record_orbite& o, const options_modele& modele, double j,
                                           double avant, double apres);
    /// The place of the date in the last track.
    std::size_t present() const { return present_; }

private:
    int par_tour_;
    record_orbite orbite_;
    options_modele modele_;
    long premier_ = 0;                ///< grid number of the first kept point
    std::vector<point_trace> grille_; ///< points at the epoch + number * turn / par_tour
    std::vector<point_trace> trace_;
    std::size_t present_ = 0;
};

/// The point of the ground that has the Sun at its zenith.
point_sol point_subsolaire(const options_modele& modele, double j);

/// True solar time at a longitude, in hours from 0 to 24, the Sun standing over `lon_soleil`.
double heure_solaire(double lon, double lon_soleil);

/// The rim of a cap of the sphere, `rayon` from its middle (up to 90 degrees): a closed line whose longitudes
/// run on beyond 180, led around by the pole where the cap covers it.
std::vector<point_sol> bord_calotte(const point_sol& milieu, double rayon);

/// Radius of the cap in which a satellite at `distance` [km] from the Earth's centre stands at least
/// `elevation` over the horizon of a ground at `rayon_sol` [km]; 0 where it never does.
double rayon_visibilite(double distance, double elevation, double rayon_sol);

/// The rim of the region over which a satellite at `distance` [km] from the Earth's centre is above the mask
/// of a station, to half a degree of elevation.
std::vector<point_sol> cercle_station(const station& s, double distance);
