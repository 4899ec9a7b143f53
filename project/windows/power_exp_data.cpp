#include "project/windows/power_exp_data.h"

#include "power/power_step.h"
#include "project/exp_variables.h"
#include "shell/lancement.h"

power_exp_data::power_exp_data(session& s, QWidget* parent)
    : exp_data(s, "power_exp_data", "pan", "Panneau :", parent) {
    form_load();
}

std::vector<exp_data::variable> power_exp_data::variables() const {
    std::vector<variable> liste;
    for (const variable_energie& v : variables_energie(montage_de(s_.power)))
        liste.push_back({v.nom, v.sens, v.par_panneau});
    return liste;
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

void power_exp_data::initialise() {
    demarre_energie(s_.power);
    courbe_signalee_ = false;
}

void power_exp_data::pas() { power_step(s_.power, s_.orbit, s_.periode); }

std::string power_exp_data::texte(int variable, int position) {
    const variable_energie& v =
        variables_energie(montage_de(s_.power))[static_cast<std::size_t>(variable - 1)];
    return texte_fixe(v.valeur(s_.power, s_.orbit, position), v.decimales);
}

void power_exp_data::apres_pas() {
    if (s_.power.courbe_charge_incompatible)
        signale_une_fois(courbe_signalee_, message_charge_incompatible, "power_conf", page_batteries);
}
