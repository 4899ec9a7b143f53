#include "attitude/windows/att_conf.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

#include "attitude/windows/att_conf_actionneurs.h"
#include "attitude/windows/att_conf_gestion.h"
#include "attitude/windows/att_conf_masses.h"
#include "attitude/windows/att_conf_proprietes.h"
#include "attitude/windows/dessin_configuration.h"
#include "widgets/conduite.h"
#include "widgets/style.h"

att_conf::att_conf(session& s, QWidget* parent) : fenetre(s, "att_conf", "Configuration SCA", parent), s_(s) {
    onglets_ = new QTabWidget;
    onglets_->setObjectName("Onglet_att");
    masses_ = new att_conf_masses(s_.attitude);
    const auto ajoute = [&](page_att* page, const QString& titre) {
        onglets_->addTab(defilee(page), titre);
        pages_ << page;
        connect(page, &page_att::change, this, &att_conf::enregistrement_change);
    };
    ajoute(masses_, "Masses/Dime&nsions");
    ajoute(new att_conf_proprietes(s_.attitude), "Propriétés sate&llites");
    ajoute(new att_conf_actionneurs(s_.attitude), "Actionne&urs");
    ajoute(new att_conf_gestion(s_.attitude), "&Gestion SCA");
    dessin_ = new dessin_configuration(s_.attitude);

    auto* ok = new QPushButton("&OK");
    ok->setObjectName("cmd_ok");
    ok->setToolTip("Fermer la fenêtre ; chaque valeur est déjà prise en compte");
    connect(ok, &QPushButton::clicked, this, &QWidget::close);

    auto* v = new QVBoxLayout(contenu());
    auto* h = new QHBoxLayout;
    h->setSpacing(style::espace(3));
    h->addWidget(onglets_, 3);
    h->addWidget(dessin_, 2);
    v->addLayout(h, 1);
    pose_quitter(ok);
    entree_avance(this);
    form_load();

    // First size: the tallest page whole and all digits in the boxes; a smaller screen scrolls it.
    int hauteur = 0;
    for (page_att* page : pages_) hauteur = std::max(hauteur, page->sizeHint().height());
    resize(sizeHint().width() * 6 / 5,
           hauteur + onglets_->tabBar()->sizeHint().height() + ok->sizeHint().height() + style::espace(16));
}

void att_conf::form_load() {
    bilan_masses(s_.attitude);
    for (page_att* page : pages_) page->form_load();
    montre_config();
}

void att_conf::montre_page(int page) { onglets_->setCurrentIndex(page); }

void att_conf::enregistrement_change() {
    bilan_masses(s_.attitude);
    masses_->montre_bilan();
    montre_config();
    marque_changement();
}

void att_conf::montre_config() {
    const auto coche = [&](const char* nom) { return findChild<QCheckBox*>(nom)->isChecked(); };
    dessin_->montre_config(coche("chk_magn"), coche("chk_roue"), coche("chk_damp"));
}

void att_conf::closeEvent(QCloseEvent* e) {
    for (page_att* page : pages_) page->valide();
    fenetre::closeEvent(e);
}
