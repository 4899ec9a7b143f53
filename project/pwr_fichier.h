/// The energy project file `.pwr`: 279 positional lines of text, code page 1252, CR LF.
#pragma once

#include <string>

#include "orbit/orbite.h"
#include "power/power.h"

/// Why a file could not be read: its name, the line (0 when it could not be opened) and the reason, in
/// French.
struct erreur_fichier {
    std::string chemin;
    int ligne = 0;
    std::string raison;
    /// "chemin : ligne 12 : raison".
    std::string texte() const;
};

/// Writes the project: whole and flushed beside the previous file, which is then deleted and replaced, its
/// mode and a link to it kept. False on any failure, which leaves the previous file (a write-protected one
/// too) or, where the last step fails, the new content beside it.
bool sauve_energie(const std::string& chemin, const power_record& p, const simulation_period& periode);

/// True when a save was stopped between deleting the project and replacing it: its content stands beside,
/// whole.
bool enregistrement_interrompu(const std::string& chemin);
/// Puts that content in its place.
bool acheve_enregistrement(const std::string& chemin);

/// Reads the project in place, line by line, and recomputes the face table. False on the first failure, told
/// in `erreur`; the fields read so far are then already replaced.
bool charge_energie(const std::string& chemin, power_record& p, simulation_period& periode,
                    erreur_fichier& erreur);
