/// The session: the étude that the whole program shares, the marks and the paths.
///
/// One instance is created in `main` and handed by reference to every window. The period of the power record
/// and of the attitude run is this one: no copies are kept in step.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "project/etude_champs.h"
#include "shell/marques.h"

/// Where the étude in hand comes from.
struct provenance {
    std::string chemin_energie;  ///< path of the energy project, empty for a new one
    std::string chemin_attitude; ///< path of the attitude project, empty for a new one
    std::string chemin_etude;    ///< path of the étude, empty for none
    std::string modele_energie;  ///< name of the sample or file that a project without a path was copied from
    std::string modele_attitude; ///< the same of the attitude
    std::string modele_etude;    ///< name of the example that the étude was copied from; empty for none
};

struct session : etude, marques, provenance {
    bool temps_reel = false;    ///< real-time mode
    std::string libelle_etape;  ///< name of the edit in progress in the history; empty: found by comparing
    etude gardee;               ///< the settings as files hold them, section by section
    std::string dossier_depart; ///< the program's folder, without a trailing separator
};

/// A new session: the records with their defaults, the period of the default orbit, the derived tables. The
/// marks and the program's folder stay.
void session_init(session& s);

/// Notes that a file holds a section as it stands: call it after opening or saving. The period goes with the
/// energy.
void note_gardee(session& s, rubrique r);
/// True when a section has changed since then.
bool modifiee(const session& s, rubrique r);

/// The program's folder: that of the executable when it can be written to, otherwise a per-user data folder
/// made on first use. Either is filled with the data files of the first of `sources` that holds the examples
/// (a newer copy of the user's own is kept). Without a trailing separator; empty when no folder can be
/// written to.
std::string trouve_dossier_depart(const std::string& dossier_executable,
                                  const std::string& dossier_utilisateur,
                                  const std::vector<std::string>& sources);
