/// The étude: everything that the user sets, in one record of a few kilobytes.
///
/// It is plain and copyable: an undo step, a variant of a sweep or a thread is a copy of it. The records of
/// orbit, power and attitude carry their working state along; `copie_reglages` copies the settings alone.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "attitude/att_global.h"
#include "orbit/orbite.h"
#include "orbit/station.h"
#include "physics/options_modele.h"
#include "power/power.h"

/// When a consumption mode is in force.
enum class genre_quand : uint8_t { toujours, jour, nuit, latitude, station, periode, une_orbite_sur };

struct quand_mode {
    genre_quand genre = genre_quand::toujours;
    double latitude_min = -90, latitude_max = 90; ///< [deg] latitude
    std::string station = {};                     ///< station: its name
    double periode = 86400;                       ///< [s] periode: from the start of the period,
    double debut = 0, duree = 600;                ///< [s] from `debut` of each one, for `duree`
    int une_orbite_sur = 2;                       ///< une_orbite_sur: one turn in so many, the first one on

    friend bool operator==(const quand_mode&, const quand_mode&) = default;
};

/// A consumption that adds to the reference demand while it is in force.
struct mode_conso {
    std::string nom;
    double puissance = 0; ///< [W]
    quand_mode quand = {};
    std::string inconnus = {}; ///< JSON object of the keys that this version does not know; empty for none

    friend bool operator==(const mode_conso&, const mode_conso&) = default;
};

/// The limits that a power budget must keep; what is not set is the usual value of the battery's technology.
struct criteres_etude {
    std::optional<double> dod_max;              ///< [%] depth of discharge
    std::optional<double> t_bat_min, t_bat_max; ///< [degC]
    std::optional<double> marge_min;            ///< [%]

    friend bool operator==(const criteres_etude&, const criteres_etude&) = default;
};

/// Criteria with every value.
struct criteres_valeurs {
    double dod_max, t_bat_min, t_bat_max, marge_min;
};
/// A criterion, with the limits of an entry (both allowed).
struct champ_critere {
    const char* nom; ///< "dod_max"
    std::optional<double> criteres_etude::*place;
    double criteres_valeurs::*valeur;
    double min, max;
    const char *unite, *sens; ///< meaning in French
};
std::span<const champ_critere> champs_criteres();

/// The usual criteria of a battery technology (`bat_type`).
criteres_valeurs criteres_usuels(int bat_type);

struct etude {
    orbit_state orbit;
    power_record power;
    attitude_record attitude;
    simulation_period periode; ///< j_debut, j_fin, pas_sim set by the user; j_courant the step in progress
    options_modele modele;
    std::vector<mode_conso> modes;
    std::vector<station> stations;
    criteres_etude criteres;
    std::string courbes = "[]"; ///< saved charts, JSON text
    std::string notes;          ///< free text
    std::string nom_orbite = "sans_nom";
    std::string inconnus; ///< JSON object of the keys that this version does not know, by section
};

/// The criteria in force: as set, else as usual for the battery.
criteres_valeurs criteres_en_vigueur(const etude& e);

/// The derived tables of the records, and the period of the orbit.
void etude_init(etude& e);

/// A fresh étude, and the one that gives the defaults.
const etude& etude_par_defaut();

/// What follows from the settings: face tables, totals of mass and inertia, dipole in force, initial pointing
/// (converted with the orbit at its epoch; no entry of angles leaves it at zero).
void recalcule(etude& e);

/// What follows from an entry of the three angles of one of the frames, the orbit standing at its epoch.
void saisie_orbitale(orbit_state& o);
void saisie_inertielle(orbit_state& o);

/// Copies the settings of one étude into another, whose working state stays.
void copie_reglages(const etude& de, etude& vers);
