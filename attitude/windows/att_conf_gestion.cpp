#include "attitude/windows/att_conf_gestion.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "widgets/style.h"

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

    v->addWidget(cadre_par_axe(
        "Paramètres de contrôle", {"cmb_axes", "&Axe", "Axe dont les paramètres sont montrés"},
        {{"gain", "Gain", "Gain de la boucle de l'axe choisi, sans unité", "", gain_},
         {"t_const", "Constante de &temps", "Constante de temps de l'axe choisi, en s", "s", t_const_}}));
    v->addWidget(
        cadre_par_axe("Roue cinetique", {"cmb_axe_roue", "A&xe", "Roue dont les valeurs sont montrées"},
                      {{"vs_r", "&Vitesse de saturation",
                        "Vitesse de saturation de la roue choisie, en rpm (tours par minute)", "rpm", vs_r_},
                       {"in_roue", "&Inertie", "Inertie de la roue choisie, en kg m²", "kg m²", in_roue_}}));

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

QWidget* att_conf_gestion::cadre_par_axe(const QString& titre, const choix_axe& choix,
                                         std::initializer_list<valeur_par_axe> valeurs) {
    auto* cadre = new QGroupBox(titre);
    QGridLayout* g = grille(cadre);
    auto* axe = new QComboBox;
    axe->setObjectName(choix.nom);
    axe->addItems({"X", "Y", "Z"});
    axe->setToolTip(choix.aide);
    axe->setAccessibleName(choix.aide); // two lists of axes
    g->addWidget(libelle(choix.titre, axe), 0, 0);
    g->addWidget(axe, 0, 1);
    connect(axe, &QComboBox::currentIndexChanged, this, [this] { valide(); });
    for (const valeur_par_axe& x : valeurs) {
        boite_att* b = note(x.nom, x.valeurs[0], x.aide);
        const int ligne = g->rowCount();
        g->addWidget(libelle(x.titre, b), ligne, 0);
        g->addWidget(b, ligne, 1);
        g->addWidget(unite(x.unite), ligne, 2);
        connect(axe, &QComboBox::currentIndexChanged, b, [b, &v = x.valeurs](int i) { b->relie(v[i]); });
    }
    g->setColumnStretch(3, 1);
    return cadre;
}
