/// What the windows check and say alike before and while they run the models.
#pragma once

#include "power/power_champs.h"
#include "shell/session.h"

/// A step below 1 s (it can come from a file) is refused before a run starts: tell `message_pas` then.
inline bool pas_valide(const session& s) { return s.periode.pas_sim >= 1; }
inline constexpr const char* message_pas =
    "Le pas de simulation doit être d'au moins 1 s : choisissez-en un dans « Contrôle simulation ».";

/// An energy run starts after the date of its new coatings: tell `message_date_cellules` otherwise.
inline bool cellules_posees(const session& s) { return s.periode.j_debut > s.power.date_cell; }
inline constexpr const char* message_date_cellules =
    "Attention, la date initiale des panneaux (données thermiques) est postérieure à la date courante";

/// A regulated bus needs its voltage (0 by default): tell `message_tension_regulee` otherwise.
inline bool tension_regulee_posee(const session& s) {
    if (s.power.gst_regulated == 0) return true;
    const limites& l = champ_de("gst_vregul").bornes;
    return s.power.gst_vregul >= l.min && s.power.gst_vregul <= l.max;
}
inline constexpr const char* message_tension_regulee =
    "Le bus est régulé, mais sa tension n'est pas donnée : indiquez la tension régulée "
    "(Configuration, page « Gestion »).";

/// A period from a file may end before it starts: tell `message_periode` then.
inline bool periode_ordonnee(const session& s) { return s.periode.j_fin >= s.periode.j_debut; }
inline constexpr const char* message_periode =
    "La fin de la période précède son début : corrigez les dates dans « Contrôle simulation ».";

/// Pages of the window "power_conf" where a charge curve that fails and the bus voltage are mended.
inline constexpr int page_batteries = 3, page_gestion = 4;
