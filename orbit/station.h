/// Ground stations: where they stand, how a satellite is seen from them, and how they are written.
///
/// A station stands on the ellipsoid of `orb_projection.h`; its horizon is the plane normal to the
/// ellipsoid's normal there. Neither refraction nor the light's time is taken into account.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/math.h"

struct station {
    std::string nom;
    double latitude = 0;  ///< [deg] geodetic, north positive, -90 to 90
    double longitude = 0; ///< [deg] east positive, -180 to 360
    double altitude = 0;  ///< [km] over the ellipsoid, -0.5 to 100
    double masque = 5;    ///< [deg] least elevation of a pass, -30 to 90

    friend bool operator==(const station&, const station&) = default;
};

/// A number of a station, with its limits (both allowed).
struct champ_station {
    const char* nom; ///< "latitude"
    double station::*valeur;
    double min, max;
    const char *unite, *sens; ///< meaning in French
};
/// In the order of a station's text.
std::span<const champ_station> champs_station();

/// What is wrong with a station, in the user's language ("latitude 95 : de -90 à 90"); empty when nothing is.
std::string defaut_station(const station& s);

/// A station from "NAME,LAT,LON[,ALT_KM[,MASK_DEG]]"; false with the reason.
bool lit_station(std::string_view texte, station& s, std::string& raison);
/// The same form, altitude and mask included.
std::string station_vers_texte(const station& s);

/// The stations of a text, one a line; '#' begins a comment line. False with line and reason.
bool lit_stations(std::string_view texte, std::vector<station>& stations, std::string& raison);
/// The same from a file.
bool charge_stations(const std::string& chemin, std::vector<station>& stations, std::string& raison);

/// A direction and a distance from a station.
struct visee {
    double elevation = 0; ///< [deg] over the horizon plane
    double azimut = 0;    ///< [deg] from north, clockwise, in [0, 360)
    double distance = 0;  ///< [km]
};

/// A station's place and axes in the Earth-fixed frame, computed once for many looks.
struct repere_station {
    vec3 pos; ///< [km]
    vec3 est, nord, zenith;

    explicit repere_station(const station& s);
    /// The look at an Earth-fixed position [km]. The azimuth at the zenith itself is 0.
    visee vers(const vec3& p) const;
};
