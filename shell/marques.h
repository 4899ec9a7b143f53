/// What the windows know of each other's work: changed settings, outdated results, a run in progress.
#pragma once

#include <cstdint>

/// Run state of the complete simulation; any other value is paused.
inline constexpr int16_t sim_arretee = 1;
inline constexpr int16_t sim_lancee = 2;
inline constexpr int16_t sim_en_pause = 3;

struct marques {
    int16_t config_modifiee = 0; ///< 1 once the configuration has changed: simulations must restart
    int16_t sim_state = sim_arretee;
    double pas_par_seconde = 1;   ///< pace of the complete simulation: as chosen, or as measured where slower
    uint32_t calculs = 0;         ///< studies and result tables begun: each leaves its own working state
    bool calcul_en_cours = false; ///< a study or a result table is running: no second one may start
    uint32_t version_config = 1;  ///< goes up with every change of the configuration
    uint32_t version_resultats = 0; ///< the configuration of the last results, 0 without results
};

/// Results have been computed with the configuration as it stands: call it when a run ends or stops.
inline void note_resultats(marques& m) { m.version_resultats = m.version_config; }
/// True when there are results and the configuration has changed since.
inline bool resultats_perimes(const marques& m) {
    return m.version_resultats != 0 && m.version_resultats != m.version_config;
}
