/// What the windows that run the energy system check and say alike.
#pragma once

#include "shell/session.h"

class QWidget;
class fenetre;

inline constexpr const char* message_date_cellules =
    "Attention, la date initiale des panneaux (données thermiques) est postérieure à la date courante";

/// True when the period starts after the date of the new coatings; otherwise the message is shown.
bool verifie_date_cellules(QWidget* parent, const session& s);

/// Once for a run, tells that the charge curve fails and asks for the battery page of the settings; `dite`
/// keeps whether that has been done.
void signale_courbe_charge(fenetre& f, const power_record& p, bool& dite);
