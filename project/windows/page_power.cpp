#include "project/windows/page_power.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>

#include "project/windows/place_cellules.h"

void page_power::relit() {
    for (champ_saisie* c : champs_) c->montre();
    montre_place();
}

void page_power::montre_place() {
    if (place_) place_->montre(p_);
}

champ_saisie* page_power::boite(const QString& nom, const char* champ, int element) {
    auto* c = new champ_saisie(p_, champ, element, this);
    c->setObjectName(nom);
    connect(c, &champ_saisie::change, this, [this] {
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

QLayout* page_power::boutons_composants(const QString& debut) {
    auto* choisir = new QPushButton("C&hoisir un composant…");
    choisir->setObjectName(debut + "_cmd_composant");
    choisir->setToolTip("Prendre les valeurs d'une liste de composants, avec leur source");
    auto* garder = new QPushButton("A&jouter à mes composants…");
    garder->setObjectName(debut + "_cmd_garder");
    garder->setToolTip("Garder les valeurs en place sous un nom, pour d'autres études");
    auto* ligne = new QHBoxLayout;
    for (QPushButton* b : {choisir, garder}) {
        b->setAutoDefault(false);
        ligne->addWidget(b);
    }
    ligne->addStretch();
    connect(choisir, &QPushButton::clicked, this, &page_power::demande_composant);
    connect(garder, &QPushButton::clicked, this, &page_power::garde_composant);
    return ligne;
}
