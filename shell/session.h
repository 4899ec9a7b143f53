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

/// Run state of the complete simulation; any other value is paused.
inline constexpr int16_t sim_arretee = 1;
inline constexpr int16_t sim_lancee = 2;
inline constexpr int16_t sim_en_pause = 3;

struct session {
    orbit_state orbit;
    power_record power;
    attitude_record attitude;
    simulation_period periode;   ///< j_debut, j_fin, j_courant, pas_sim
    bool temps_reel = false;     ///< real-time mode
    int16_t config_modifiee = 0; ///< 1 once the configuration has changed: simulations must restart
    int16_t sim_state = sim_arretee;
    uint32_t calculs = 0;           ///< studies and result tables begun: each leaves its own working state
    bool calcul_en_cours = false;   ///< a study or a result table is running: no second one may start
    uint32_t version_config = 1;    ///< goes up with every change of the configuration
    uint32_t version_resultats = 0; ///< the configuration of the last results, 0 without results
    std::string chemin_energie;     ///< path of the energy project, empty for a new one
    std::string chemin_attitude;    ///< path of the attitude project, empty for a new one
    std::string nom_orbite = "sans_nom";
    std::string dossier_depart; ///< the program's folder, without a trailing separator
};

/// The records with their defaults, the period of the default orbit, and the derived tables.
void session_init(session& s);

/// A step below 1 s (it can come from a file) is refused before a run starts: tell `message_pas` then.
inline bool pas_valide(const session& s) { return s.periode.pas_sim >= 1; }
inline constexpr const char* message_pas =
    "Le pas de simulation doit être d'au moins 1 s : choisissez-en un dans « Contrôle simulation ».";

/// Results have been computed with the configuration as it stands: call it when a run ends or stops.
inline void note_resultats(session& s) { s.version_resultats = s.version_config; }
/// True when there are results and the configuration has changed since.
inline bool resultats_perimes(const session& s) {
    return s.version_resultats != 0 && s.version_resultats != s.version_config;
}

/// The program's folder: that of the executable when it can be written to, otherwise a per-user data folder
/// made on first use. Either is filled with the data files of the first of `sources` that exists (a newer
/// copy of the user's own is kept). Without a trailing separator; empty when no folder can be written to.
std::string trouve_dossier_depart(const std::string& dossier_executable,
                                  const std::string& dossier_utilisateur,
                                  const std::vector<std::string>& sources);
