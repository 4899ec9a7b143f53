/// Where the satellite is and what surrounds it at a date, in the physical model.
///
/// Everything stands in the true equator and equinox of date (`repere.h`). Air: the density of the reference
/// model (L. G. Jacchia's tables, `att_atmosphere.h`), with the geographic longitude as there, its turn with
/// the Earth and its winds; within a factor of two, since the model knows months only.
#pragma once

#include "attitude/att_atmosphere.h"
#include "orbit/orbite.h"
#include "physics/champ_geomagnetique.h"
#include "physics/options_modele.h"
#include "physics/orbite_seculaire.h"
#include "physics/rotation.h"

struct milieu {
    double j = 0; ///< [days since 1950]
    vec3 r{}, v{};
    double anomalie_moy = 0;          ///< [rad]
    double rayon = 0;                 ///< [km]
    vec3 soleil_pos{};                ///< [km] from the Earth's centre
    vec3 vers_soleil{};               ///< unit vector from the satellite
    double distance_soleil = 0;       ///< [km] from the satellite
    double part_soleil = 1;           ///< visible share of the Sun
    double lon = 0, lat = 0, alt = 0; ///< ground point [rad], geodetic; [km]
    vec3 champ{};                     ///< [T] inertial axes
    vec3 vent{};                      ///< [m/s] velocity relative to the air, inertial axes
    double densite = 0;               ///< [kg/m3]
};

/// What a caller needs of the surroundings; the rest stays as it was.
struct besoins_milieu {
    bool champ = false, air = false;
    bool sol = false; ///< ground point alone; `air` brings it too
};

class environnement_physique {
public:
    /// `air` and `champ` may be null where they are never asked for; they outlive the object.
    environnement_physique(const record_orbite& o, bool sans_j2, atmosphere* air, champ_geomagnetique* champ)
        : orbite_(o, sans_j2), air_(air), champ_(champ) {}

    /// At the date j.
    void place(double j, besoins_milieu b, milieu& m) const;

    const orbite_seculaire& orbite() const { return orbite_; }

private:
    orbite_seculaire orbite_;
    atmosphere* air_;
    champ_geomagnetique* champ_;
};

/// The local frame of the nominal pointing: x along track, y along the orbit normal, z radial outward.
rotation repere_local(const milieu& m);
/// Rate of that frame [rad/s], inertial axes, without the slow drift of the plane.
vec3 taux_local(const milieu& m);
/// The attitude that the nominal pointing asks for, its yaw turned by the spin since `j_debut`.
rotation attitude_nominale(const milieu& m, const pointage_record& p, double j_debut);

/// The outputs of the surroundings in the place of those of the reference model. Latitude and longitude are
/// those of the last ground point asked for.
void vers_etat_orbite(const milieu& m, orbit_state& o);

/// Node and perigee of the date in the place of those of the epoch, as the turns of the reference model's
/// frames expect them: what is drawn by these turns stands where the physical orbit is. Nothing in the
/// reference model.
void elements_de_la_date(double j, const options_modele& modele, record_orbite& o);

/// Satellite and Sun at the date by the model asked for, in the place of `orb_position`.
void place_orbite(double j, const options_modele& modele, orbit_state& o);
