#include "power/windows/lancement.h"

#include "shell/windows/verifications.h"

bool verifie_date_cellules(QWidget* parent, const session& s) {
    if (s.periode.j_debut > s.power.date_cell) return true;
    message(parent, gravite::avertissement, message_date_cellules);
    return false;
}
