#include "power/windows/lancement.h"

#include "shell/windows/fenetre.h"
#include "shell/windows/verifications.h"

bool verifie_date_cellules(QWidget* parent, const session& s) {
    if (s.periode.j_debut > s.power.date_cell) return true;
    message(parent, gravite::avertissement, message_date_cellules);
    return false;
}

void signale_courbe_charge(fenetre& f, const power_record& p, bool& dite) {
    if (dite || !p.courbe_charge_incompatible) return;
    dite = true;
    message(&f, gravite::arret, message_charge_incompatible);
    constexpr int onglet_batteries = 3;
    emit f.demande_fenetre("power_conf", onglet_batteries);
}
