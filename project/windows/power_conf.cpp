#include "project/windows/power_conf.h"

#include <QButtonGroup>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "project/windows/power_conf_pages.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

constexpr int onglet_thermique = 2, onglet_batteries = 3;

} // namespace

void page_power::relit() {
    for (champ_saisie* c : champs_) c->relit();
}

champ_saisie* page_power::boite(const QString& nom, const char* champ, int element) {
    auto* c = new champ_saisie(p_, champ, element, this);
    c->setObjectName(nom);
    connect(c, &champ_saisie::valeur_stockee, this, [this] {
        relit();
        emit edite();
    });
    champs_ << c;
    return c;
}

QRadioButton* page_power::option(QButtonGroup* groupe, const QString& nom, int indice, const QString& texte) {
    auto* b = new QRadioButton(texte);
    b->setObjectName(QString("%1_%2").arg(nom).arg(indice));
    groupe->addButton(b, indice);
    return b;
}

power_conf::power_conf(session& s, QWidget* parent)
    : fenetre(s, "power_conf", "Définition système énergie", parent), onglets_(new QTabWidget),
      panneaux_(new page_panneaux(s.power)), cellules_(new page_cellules(s.power)),
      thermique_(new page_thermique(s.power)), batteries_(new page_batteries(s.power)),
      gestion_(new page_gestion(s.power)) {
    onglets_->setObjectName("Onglet_power");
    onglets_->addTab(panneaux_, "&Panneaux");
    onglets_->addTab(cellules_, "&Cellules");
    onglets_->addTab(thermique_, "&Thermique");
    onglets_->addTab(batteries_, "&Batteries");
    onglets_->addTab(gestion_, "&Gestion");
    auto* quitter = new QPushButton("&Quitter");
    quitter->setObjectName("cmd_quit");
    quitter->setToolTip("Ferme la fenêtre ; les réglages sont déjà pris en compte");
    quitter->setAutoDefault(false);

    auto* bas = new QHBoxLayout;
    bas->addStretch();
    bas->addWidget(quitter);
    auto* pile = new QVBoxLayout(contenu());
    pile->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    pile->addWidget(onglets_, 1);
    pile->addLayout(bas);
    resize(style::espace(310), style::espace(176));

    connect(quitter, &QPushButton::clicked, this, &QWidget::close);
    connect(onglets_, &QTabWidget::currentChanged, this, [this](int page) {
        if (page == onglet_thermique) thermique_->choisit_modele();
    });
    for (page_power* page : {static_cast<page_power*>(panneaux_), static_cast<page_power*>(cellules_),
                             static_cast<page_power*>(thermique_), static_cast<page_power*>(batteries_),
                             static_cast<page_power*>(gestion_)})
        connect(page, &page_power::edite, this, [this] { marque_changement(); });
    connect(panneaux_, &page_power::edite, gestion_, &page_power::relit); // its drawing names the panels
    connect(batteries_, &page_batteries::catalogue_choisi, gestion_, &page_power::relit);
    connect(batteries_, &page_batteries::etat_courbes, this, [this](bool tracees) {
        montre_bandeau(tracees ? QString() : QString::fromUtf8(message_charge_incompatible));
    });
    connect(batteries_, &page_batteries::courbe_incompatible, this, &power_conf::dit_courbe_incompatible);
    update_powerconf();
}

void power_conf::montre_page(int page) { onglets_->setCurrentIndex(page); }

void power_conf::update_powerconf() {
    panneaux_->relit();
    cellules_->relit();
    thermique_->relit();
    gestion_->relit();
    batteries_->relit();
}

void power_conf::dit_courbe_incompatible() {
    montre_page(onglet_batteries);
    message(this, gravite::arret, QString::fromUtf8(message_charge_incompatible));
}
