#include "project/windows/att_exp_data.h"

#include "attitude/att_couples.h"
#include "project/exp_variables.h"

att_exp_data::att_exp_data(session& s, QWidget* parent)
    : exp_data(s, "att_exp_data", "axe", "Axe :", parent) {
    form_load();
}

std::vector<exp_data::variable> att_exp_data::variables() const {
    std::vector<variable> liste;
    for (const variable_couple& v : variables_couples()) liste.push_back({v.nom, v.sens, true});
    return liste;
}

QString att_exp_data::sous_titre(const QString& position) const {
    return position == "Total" ? position : "Axe " + position;
}

void att_exp_data::initialise() { air_.emplace(s_.dossier_depart); }

void att_exp_data::pas() {
    couples_a_la_date(s_.attitude, s_.orbit, s_.periode.j_courant, s_.periode.j_debut, *air_);
}

std::string att_exp_data::texte(int variable, int position) {
    const variable_couple& v = variables_couples()[static_cast<std::size_t>(variable - 1)];
    return texte_couple(s_.attitude.*v.couple, position);
}

QString att_exp_data::raison_faute() const {
    return air_ && !air_->faute().empty() ? QString::fromStdString(air_->faute()) : exp_data::raison_faute();
}
