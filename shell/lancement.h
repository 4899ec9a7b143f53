/// What the windows check and say alike before and while they run the models.
#pragma once

#include "shell/session.h"

/// A step below 1 s (it can come from a file) is refused before a run starts: tell `message_pas` then.
inline bool pas_valide(const session& s) { return s.periode.pas_sim >= 1; }
inline constexpr const char* message_pas =
    "Le pas de simulation doit être d'au moins 1 s : choisissez-en un dans « Contrôle simulation ».";

/// An energy run starts after the date of its new coatings: tell `message_date_cellules` otherwise.
inline bool cellules_posees(const session& s) { return s.periode.j_debut > s.power.date_cell; }
inline constexpr const char* message_date_cellules =
    "Attention, la date initiale des panneaux (données thermiques) est postérieure à la date courante";

/// Page of the window "power_conf" where a charge curve that fails is mended.
inline constexpr int page_batteries = 3;
