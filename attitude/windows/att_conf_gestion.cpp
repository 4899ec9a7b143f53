#include "attitude/windows/att_conf_gestion.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "shell/windows/style.h"

att_conf_gestion::att_conf_gestion(attitude_record& a, QWidget* parent) : page_att(a, parent) {
    auto* v = new QVBoxLayout(this);
    v->setSpacing(style::espace(2));
    auto* consignes = new QGroupBox("Consignes d'attitude");
    QGridLayout* g = grille(consignes);
    const QStringList noms = {"Roulis", "Tangage", "Lacet"};
    for (int i = 0; i < 3; ++i) {
        boite_att* b =
            note(QString("a_con_%1").arg(i), a_con_[i], "Consigne de " + noms[i].toLower() + ", en deg");
        g->addWidget(libelle(noms[i], b), i, 0);
        g->addWidget(b, i, 1);
        g->addWidget(unite("deg"), i, 2);
    }
    g->setColumnStretch(3, 1);
    v->addWidget(consignes);

    auto* controle = new QGroupBox("Paramètres de contrôle");
    g = grille(controle);
    QComboBox* axes = choix_axe("cmb_axes", "Axe dont les paramètres sont montrés");
    boite_att* gain = note("gain", gain_[0], "Gain de la boucle de l'axe choisi, sans unité");
    boite_att* constante = note("t_const", t_const_[0], "Constante de temps de l'axe choisi, en s");
    g->addWidget(libelle("&Axe", axes), 0, 0);
    g->addWidget(axes, 0, 1);
    g->addWidget(libelle("&Gain", gain), 1, 0);
    g->addWidget(gain, 1, 1);
    g->addWidget(libelle("Constante de &temps", constante), 2, 0);
    g->addWidget(constante, 2, 1);
    g->addWidget(unite("s"), 2, 2);
    g->setColumnStretch(3, 1);
    connect(axes, &QComboBox::currentIndexChanged, this, [=, this](int axe) {
        valide();
        gain->relie(gain_[axe]);
        constante->relie(t_const_[axe]);
    });
    v->addWidget(controle);

    auto* roue = new QGroupBox("Roue cinetique");
    g = grille(roue);
    QComboBox* axe_roue = choix_axe("cmb_axe_roue", "Roue dont les valeurs sont montrées");
    boite_att* vitesse =
        note("vs_r", vs_r_[0], "Vitesse de saturation de la roue choisie, en rpm (tours par minute)");
    boite_att* inertie = note("in_roue", in_roue_[0], "Inertie de la roue choisie, en kg m²");
    g->addWidget(libelle("A&xe", axe_roue), 0, 0);
    g->addWidget(axe_roue, 0, 1);
    g->addWidget(libelle("&Vitesse de saturation", vitesse), 1, 0);
    g->addWidget(vitesse, 1, 1);
    g->addWidget(unite("rpm"), 1, 2);
    g->addWidget(libelle("&Inertie", inertie), 2, 0);
    g->addWidget(inertie, 2, 1);
    g->addWidget(unite("kg m²"), 2, 2);
    g->setColumnStretch(3, 1);
    connect(axe_roue, &QComboBox::currentIndexChanged, this, [=, this](int axe) {
        valide();
        vitesse->relie(vs_r_[axe]);
        inertie->relie(in_roue_[axe]);
    });
    v->addWidget(roue);

    auto* avis =
        new QLabel("Le contrôle d'attitude simulé est passif : ces valeurs sont un aide-mémoire, aucune "
                   "simulation ne les lit et aucun fichier ne les conserve.");
    avis->setWordWrap(true);
    v->addWidget(avis);
    v->addStretch();
}

void att_conf_gestion::form_load() { montre_boites(); }

boite_att* att_conf_gestion::note(const QString& nom, double& valeur, const QString& aide) {
    auto* b = new boite_att(nom, this);
    b->setToolTip(aide);
    b->relie(valeur);
    return b;
}

QComboBox* att_conf_gestion::choix_axe(const QString& nom, const QString& aide) {
    auto* c = new QComboBox;
    c->setObjectName(nom);
    c->addItems({"X", "Y", "Z"});
    c->setToolTip(aide);
    return c;
}
