/// The session: the records that the whole program shares, the period, the marks and the paths.
///
/// One instance is created in `main` and handed by reference to every window. The period of the power record
/// and of the attitude run is this one: no copies are kept in step.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "attitude/att_global.h"
#include "orbit/orbite.h"
#include "power/power.h"
#include "shell/marques.h"

struct session : marques {
    orbit_state orbit;
    power_record power;
    attitude_record attitude;
    simulation_period periode;   ///< j_debut, j_fin, j_courant, pas_sim
    bool temps_reel = false;     ///< real-time mode
    std::string chemin_energie;  ///< path of the energy project, empty for a new one
    std::string chemin_attitude; ///< path of the attitude project, empty for a new one
    std::string nom_orbite = "sans_nom";
    std::string dossier_depart; ///< the program's folder, without a trailing separator
};

/// The records with their defaults, the period of the default orbit, and the derived tables.
void session_init(session& s);

/// The program's folder: that of the executable when it can be written to, otherwise a per-user data folder
/// made on first use. Either is filled with the data files of the first of `sources` that exists (a newer
/// copy of the user's own is kept). Without a trailing separator; empty when no folder can be written to.
std::string trouve_dossier_depart(const std::string& dossier_executable,
                                  const std::string& dossier_utilisateur,
                                  const std::vector<std::string>& sources);
