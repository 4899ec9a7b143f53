#include "project/windows/power_exp_data.h"

#include "power/diagnostic.h"
#include "shell/lancement.h"

power_exp_data::power_exp_data(session& s, QWidget* parent)
    : exp_data(s, "power_exp_data", "pan", "Panneau :", parent) {
    form_load();
}

int power_exp_data::variables_communes() const { return nb_variables_communes; }

QStringList power_exp_data::positions() const {
    if (s_.power.nb_faces == 6) return {"1", "2", "3", "4", "5", "6"};
    return {"1 (+X)", "2 (+Y)", "3 (-X)", "4 (-Y)"};
}

bool power_exp_data::verifie_dates() {
    return exige(cellules_posees(s_), message_date_cellules) &&
           exige(tension_regulee_posee(s_), message_tension_regulee, "power_conf", page_gestion);
}

QString power_exp_data::conseil() const {
    return QString::fromStdString(cause_de_faute(s_.power, s_.orbit, s_.periode));
}

void power_exp_data::apres_pas(calcul& c) {
    if (c.charge_a_signaler()) renvoie(message_charge_incompatible, "power_conf", page_batteries);
}
