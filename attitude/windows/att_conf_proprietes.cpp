#include "attitude/windows/att_conf_proprietes.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/style.h"

att_conf_proprietes::att_conf_proprietes(attitude_record& a, QWidget* parent) : page_att(a, parent) {
    auto* v = new QVBoxLayout(this);
    v->setSpacing(style::espace(2));
    const auto paire = [&](const QString& titre, QGroupBox* gauche, QGroupBox* droite) {
        auto* cadre = new QGroupBox(titre);
        auto* h = new QHBoxLayout(cadre);
        h->setSpacing(style::espace(2));
        h->addWidget(gauche);
        h->addWidget(droite);
        h->addStretch();
        v->addWidget(cadre);
    };
    auto* normal = cadre_coefficients("cp_aero_norm", "Aéro-normal", "s", "");
    auto* tangentiel = cadre_coefficients("cp_aero_tang", "Aéro-tangentielle", "s", "t");
    paire("Coefficients de pression", normal, tangentiel);
    auto* reflexion = cadre_coefficients("coeff_refl_lum", "Réflexion lumière", "cr", "");
    auto* diffusion = cadre_coefficients("coeff_diff_lum", "Diffusion lumière", "cd", "");
    paire("Perturbation due aux radiations solaires", reflexion, diffusion);

    auto* cadre = new QGroupBox("Propriétes magnétiques");
    QGridLayout* g = grille(cadre);
    chk_magn_ = new QCheckBox("Dipôle &résiduel présent");
    chk_magn_->setObjectName("chk_magn");
    chk_magn_->setToolTip("Décochée, la case met le dipôle résiduel à zéro");
    g->addWidget(chk_magn_, 0, 0, 1, 5);
    tetes(g, 1, {"X", "Y", "Z"});
    ligne_axes(g, 2, "Dipole résiduel (A.m²)", {"dip_x", "dip_y", "dip_z"}, "A m²");
    const char* noms[] = {"dip_x", "dip_y", "dip_z"};
    for (int i = 0; i < 3; ++i) dip_[i] = cadre->findChild<boite_att*>(noms[i]);
    connect(chk_magn_, &QCheckBox::toggled, this, &att_conf_proprietes::magn);
    v->addWidget(cadre);
    v->addStretch();
}

QGroupBox* att_conf_proprietes::cadre_coefficients(const QString& nom, const QString& titre,
                                                   const QString& avant, const QString& apres) {
    auto* cadre = new QGroupBox(titre);
    cadre->setObjectName(nom);
    QGridLayout* g = grille(cadre);
    tetes(g, 0, {"face +", "face -"});
    for (int i = 0; i < 3; ++i) {
        const QString base = avant + QString("xyz")[i] + apres;
        ligne_axes(g, 1 + i, QString("XYZ")[i], {base + "_pos", base + "_neg"}, "");
    }
    return cadre;
}

void att_conf_proprietes::form_load() {
    montre_boites();
    const bool magnetique =
        std::any_of(a_.dip_res.begin(), a_.dip_res.end(), [](double x) { return x != 0; });
    const QSignalBlocker muet(chk_magn_);
    chk_magn_->setChecked(magnetique);
    for (boite_att* b : dip_) b->setEnabled(magnetique);
}

void att_conf_proprietes::magn(bool coche) {
    valide();
    for (boite_att* b : dip_) b->setEnabled(coche);
    if (!coche) {
        a_.dip_res = {};
        for (boite_att* b : dip_) b->montre();
    }
    emit change();
}
