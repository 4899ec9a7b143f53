#include "project/windows/att_exp_data.h"

att_exp_data::att_exp_data(session& s, QWidget* parent)
    : exp_data(s, "att_exp_data", "axe", "Axe :", parent) {
    form_load();
}

QString att_exp_data::sous_titre(const QString& position) const {
    return position == "Total" ? position : "Axe " + position;
}
