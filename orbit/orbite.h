/// The orbit's record and state: what the user defines, and where satellite and Sun stand at a date.
#pragma once

#include <array>
#include <cstdint>
#include <limits>

#include "orbit/math.h"
#include "shell/periode.h"

/// 16-bit flag: -1 true, 0 false; tested exactly.
using drapeau = int16_t;
inline constexpr drapeau vrai = -1;
inline constexpr drapeau faux = 0;

/// Mean elements at the epoch, held fixed.
struct record_orbite {
    std::array<char, 24> orb_nom = {' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ',
                                    ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
    double orb_inclinaison = 0;      ///< [deg] inclination
    double orb_ascension = 0;        ///< [deg] right ascension of the node, equinox of the epoch
    double orb_excentricite = 0;     ///< [-] eccentricity
    double orb_argument = 0;         ///< [deg] argument of perigee
    double orb_anomalie = 0;         ///< [deg] mean anomaly at the epoch
    double orb_moy_mvt = 15;         ///< [rev/day] mean motion; shown, not used by the propagation
    int16_t orb_an = 2001;           ///< epoch year
    double orb_jour = 80.55001;      ///< [days] epoch day of the year, 1.0 being 1 January 00:00
    double orb_demi = 7174;          ///< [km] semi-major axis
    std::array<double, 3> reserve{}; ///< stored in the file as it stands

    friend bool operator==(const record_orbite&, const record_orbite&) = default;
};

/// How the satellite is meant to point: the settings, and the three angles in force.
struct pointage_record {
    drapeau orbital = vrai;           ///< pointing given in the local orbital frame (else inertial)
    double roulis = 0;                ///< [deg] initial roll
    double tangage = 0;               ///< [deg] initial pitch
    double lacet = 0;                 ///< [deg] initial yaw, the start of the spin angle
    std::array<double, 3> inertiel{}; ///< [rad] angles as entered in the inertial frame
    std::array<double, 6> yi_init{};  ///< [rad] initial inertial Euler angles
    std::array<double, 6> yd_init{};  ///< [rad] initial roll (0), yaw (1), pitch (2)
    drapeau spin = faux;              ///< spin on
    double vspin = 0;                 ///< [turns/min] spin rate
    int16_t axe_spin = 2;             ///< 0 X, 1 Y, 2 Z; stored: the model turns about the yaw alone
    int16_t mode_pointage = 3;        ///< face that points, 1 to 6
    double psi = 0;                   ///< [deg] yaw in force, spin included
    double theta = 0;                 ///< [deg] pitch in force
    double phi = 0;                   ///< [deg] roll in force
};

/// Perifocal unit vectors, kept with the three angles [rad] that they come from.
struct axes_orbite {
    double w = std::numeric_limits<double>::quiet_NaN(), om = 0, i = 0;
    vec3 P{}; ///< towards the perigee
    vec3 Q{}; ///< 90 degrees ahead in the orbit plane
};

/// Fixed angles of the frame turns, so that a run computes their sines and cosines once.
struct tours_gardes {
    sincos_garde noeud, inclinaison;                             ///< referred to 1950
    sincos_garde ascension_neg, inclinaison_neg;                 ///< of the Euler conversion
    double j_sideral = std::numeric_limits<double>::quiet_NaN(); ///< date of the Earth's turn
    sinus_cosinus sideral{};
    sincos_garde psi, theta; ///< pointing
};

/// Elements, pointing, and the outputs of `orb_position` and `sous_point`, each call overwriting the last.
struct orbit_state {
    record_orbite orbite;
    pointage_record pointage;

    axes_orbite axes;   ///< of the last call of `orb_cartesien`
    tours_gardes tours; ///< of the last turns

    vec3 sat_pos{};          ///< [km] satellite, inertial frame of 1950
    vec3 sat_vit{};          ///< [km/s]
    vec3 soleil_pos{};       ///< [km] Earth's centre to Sun
    vec3 vec_nadir{};        ///< unit vector, satellite to Earth's centre
    vec3 vec_soleil{};       ///< unit vector, satellite to Sun
    double anomalie_moy = 0; ///< [rad] mean anomaly in [0, 2 pi)
    drapeau eclipse = faux;  ///< in the shadow of an Earth of 6428 km
    double sat_lon = 0;      ///< [rad] ground point: longitude
    double sat_lat = 0;      ///< [rad] ground point: geodetic latitude
    double sat_alt = 0;      ///< [km] altitude over the ellipsoid
};

/// The default period of an orbit: one turn of its mean motion from its epoch.
simulation_period periode_par_defaut(const record_orbite& o);
