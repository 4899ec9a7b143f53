#include "attitude/windows/att_conf_actionneurs.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "widgets/style.h"

namespace {

bool non_nul(const vec3& v) { return v[0] != 0 || v[1] != 0 || v[2] != 0; }

QStringList trois(const QString& base) { return {base + "1", base + "2", base + "3"}; }

} // namespace

att_conf_actionneurs::att_conf_actionneurs(attitude_record& a, QWidget* parent) : page_att(a, parent) {
    auto* v = new QVBoxLayout(this);
    v->setSpacing(style::espace(2));
    auto* magneto = new QGroupBox("Magnétocoupleurs");
    QGridLayout* g = grille(magneto);
    tetes(g, 0, {"X", "Y", "Z"});
    ligne_axes(g, 1, "&Dipôle", {"dip_x_act", "dip_y_act", "dip_z_act"}, "A m²");
    v->addWidget(magneto);

    auto* tuyeres = new QGroupBox("Tuyères");
    g = grille(tuyeres);
    tetes(g, 0, {"X", "Y", "Z"});
    ligne_axes(g, 1, "&Couple", {"txt_jets_x", "txt_jets_y", "txt_jets_z"}, "N m");
    v->addWidget(tuyeres);
    v->addWidget(cadre_roues());
    v->addWidget(cadre_amortisseurs());
    v->addStretch();
}

QWidget* att_conf_actionneurs::cadre_roues() {
    auto* cadre = new QGroupBox("Roues d'inertie");
    QGridLayout* g = grille(cadre);
    chk_roue_ = new QCheckBox("&Roues présentes");
    chk_roue_->setObjectName("chk_roue");
    chk_roue_->setToolTip("Décochée, la case met à zéro les inerties et les vitesses des roues");
    g->addWidget(chk_roue_, 0, 0);
    g->addWidget(unite("(Stabilisation gyroscopique) -> active et passive"), 0, 1, 1, 5);
    tetes(g, 1, {"X", "Y", "Z"});
    ligne_axes(g, 2, "Inertie", trois("txt_JR"), "kg m²");
    ligne_axes(g, 3, "Vitesse", trois("txt_OM"), "deg/s");
    roues_ = cadre->findChildren<boite_att*>();
    connect(chk_roue_, &QCheckBox::toggled, this, &att_conf_actionneurs::roue);
    return cadre;
}

QWidget* att_conf_actionneurs::cadre_amortisseurs() {
    auto* cadre = new QGroupBox("Amortisseurs");
    QGridLayout* g = grille(cadre);
    chk_damp_ = new QCheckBox("&Amortisseurs présents");
    chk_damp_->setObjectName("chk_damp");
    chk_damp_->setToolTip("Décochée, la case met à zéro masses, bras, viscosités et raideurs");
    g->addWidget(chk_damp_, 0, 0);
    tetes(g, 1, {"X", "Y", "Z"});
    ligne_axes(g, 2, "Masse", trois("txt_md"), "kg");
    ligne_axes(g, 3, "Bras de levier", trois("txt_ld"), "m");
    ligne_axes(g, 4, "Viscosité", trois("txt_c"), "N.s/m");
    ligne_axes(g, 5, "Raideur", trois("txt_k"), "N/m");
    amortisseurs_ = cadre->findChildren<boite_att*>();
    connect(chk_damp_, &QCheckBox::toggled, this, &att_conf_actionneurs::damp);
    return cadre;
}

void att_conf_actionneurs::form_load() {
    montre_boites();
    const bool avec_roues = non_nul(a_.JR) || non_nul(a_.OM_init);
    const bool avec_amortisseurs = non_nul(a_.md) || non_nul(a_.ld) || non_nul(a_.c) || non_nul(a_.k);
    const QSignalBlocker muet_roue(chk_roue_), muet_damp(chk_damp_);
    chk_roue_->setChecked(avec_roues);
    chk_damp_->setChecked(avec_amortisseurs);
    for (boite_att* b : roues_) b->setEnabled(avec_roues);
    for (boite_att* b : amortisseurs_) b->setEnabled(avec_amortisseurs);
}

void att_conf_actionneurs::roue(bool coche) {
    valide();
    for (boite_att* b : roues_) b->setEnabled(coche);
    if (!coche) {
        a_.JR = {};
        a_.OM_init = {};
        for (boite_att* b : roues_) b->montre();
    }
    emit change();
}

void att_conf_actionneurs::damp(bool coche) {
    valide();
    for (boite_att* b : amortisseurs_) b->setEnabled(coche);
    if (!coche) {
        a_.md = {};
        a_.ld = {};
        a_.c = {};
        a_.k = {};
        for (boite_att* b : amortisseurs_) b->montre();
    }
    emit change();
}
