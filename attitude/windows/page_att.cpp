#include "attitude/windows/page_att.h"

#include <QLabel>

#include "attitude/att_champs.h"
#include "project/etude_champs.h"
#include "widgets/acces.h"
#include "widgets/style.h"

void page_att::valide() {
    for (boite_att* b : findChildren<boite_att*>()) b->valide();
}

boite_att* page_att::boite(const QString& nom) {
    auto* b = new boite_att(nom, this);
    const champ_att* c = nullptr;
    int element = 0;
    if (!champ_att_du_controle(nom.toStdString(), c, element)) qFatal("no field for %s", qPrintable(nom));
    b->limites(c->min, c->max);
    if (c->degres) b->en_degres();
    b->setToolTip(QString::fromStdString(infobulle(*c, element)));
    b->relie(reel(a_, *c, element));
    lie_champ(b, element_de(*c, element));
    connect(b, &boite_att::change, this, &page_att::change);
    return b;
}

void page_att::montre_boites() {
    for (boite_att* b : findChildren<boite_att*>()) b->montre();
}

QGridLayout* page_att::grille(QWidget* cadre) {
    auto* g = new QGridLayout(cadre);
    g->setHorizontalSpacing(style::espace(2));
    g->setVerticalSpacing(style::espace(1));
    return g;
}

QLabel* page_att::libelle(const QString& texte, QWidget* compagnon) {
    auto* l = new QLabel(texte);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (compagnon) l->setBuddy(compagnon);
    return l;
}

QLabel* page_att::unite(const QString& texte) {
    auto* l = new QLabel(texte);
    l->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return l;
}

void page_att::ligne_axes(QGridLayout* g, int ligne, const QString& texte, const QStringList& noms,
                          const QString& nom_unite) {
    for (int i = 0; i < noms.size(); ++i) {
        boite_att* b = boite(noms[i]);
        if (i == 0) g->addWidget(libelle(texte, b), ligne, 0);
        g->addWidget(b, ligne, 1 + i);
    }
    g->addWidget(unite(nom_unite), ligne, 1 + int(noms.size()));
    if (noms.size() == 3)
        for (int c = 1; c <= 3; ++c) g->setColumnStretch(c, 1);
}

void page_att::tetes(QGridLayout* g, int ligne, const QStringList& noms) {
    for (int i = 0; i < noms.size(); ++i) {
        auto* l = new QLabel(noms[i]);
        l->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        g->addWidget(l, ligne, 1 + i);
    }
}
