/// The session: the étude that the whole program shares, the marks and the paths.
///
/// One instance is created in `main` and handed by reference to every window. The period of the power record
/// and of the attitude run is this one: no copies are kept in step.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "project/etude.h"
#include "shell/marques.h"

struct session : etude, marques {
    bool temps_reel = false;     ///< real-time mode
    std::string chemin_energie;  ///< path of the energy project, empty for a new one
    std::string chemin_attitude; ///< path of the attitude project, empty for a new one
    std::string chemin_etude;    ///< path of the étude, empty for none
    std::string dossier_depart;  ///< the program's folder, without a trailing separator
};

/// The records with their defaults, the period of the default orbit, and the derived tables.
void session_init(session& s);

/// The program's folder: that of the executable when it can be written to, otherwise a per-user data folder
/// made on first use. Either is filled with the data files of the first of `sources` that exists (a newer
/// copy of the user's own is kept). Without a trailing separator; empty when no folder can be written to.
std::string trouve_dossier_depart(const std::string& dossier_executable,
                                  const std::string& dossier_utilisateur,
                                  const std::vector<std::string>& sources);
