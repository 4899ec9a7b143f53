#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

#include <algorithm>
#include <cmath>

#include "power/catalogues.h"
#include "power/power_bat.h"
#include "project/etude_champs.h"
#include "project/windows/power_conf_pages.h"
#include "widgets/acces.h"
#include "widgets/graphe.h"
#include "widgets/rangee_souple.h"
#include "widgets/style.h"

namespace {

constexpr double courants[] = {.2, .5, 1, 2};            ///< [C]
constexpr double temperatures[] = {-50, -25, 0, 25, 50}; ///< [degC]
constexpr double t_reference = 25;                       ///< [degC] of the curves by current
constexpr int points_courbe = 101;
constexpr double presque_vide = 1e-9;

/// The curves of a chart: by current at 25 degC, or by temperature at the nominal current.
struct serie {
    QString nom;
    double courant, temperature;
};

QList<serie> series(bool par_courant) {
    QList<serie> r;
    if (par_courant)
        for (double i : courants) r << serie{QString("%1C").arg(i), i, t_reference};
    else
        for (double t : temperatures) r << serie{QString("%1°C").arg(t), 1, t};
    return r;
}

QString titre_de(const QString& sens, bool par_courant) {
    return QString("Caractéristiques de %1 à %2").arg(sens, par_courant ? "25°C" : "Cnom");
}

} // namespace

page_batteries::page_batteries(power_record& p)
    : page_power(p), genre_charge_(new QButtonGroup(this)), genre_decharge_(new QButtonGroup(this)),
      charge_(new graphe), decharge_(new graphe) {
    auto* haut = new rangee_souple;
    haut->ajoute(groupe_accu());
    haut->ajoute(groupe_influences(), 1);
    auto* courbes = new rangee_souple;
    courbes->ajoute(groupe_charge(), 1);
    courbes->ajoute(groupe_decharge(), 1);
    auto* pile = new QVBoxLayout(this);
    pile->addWidget(haut);
    pile->addWidget(courbes, 1);
    connect(genre_charge_, &QButtonGroup::idToggled, this, [this](int, bool choisi) {
        if (choisi) trace_charge();
    });
    connect(genre_decharge_, &QButtonGroup::idToggled, this, [this](int, bool choisi) {
        if (choisi) trace_decharge();
    });
}

champ_saisie* page_batteries::generique(const QString& nom, const char* champ, int element) {
    generiques_ << boite(nom, champ, element);
    return generiques_.last();
}

QWidget* page_batteries::groupe_accu() {
    auto* g = new QGroupBox("Accumulateurs");
    auto* grille = new QGridLayout(g);
    type_ = new QComboBox;
    type_->setObjectName("bat_cmb_type");
    type_->addItems({"Nickel-Cadmium", "Nickel-Hydrogène", "Lithium-Ion", "Générique"});
    type_->setToolTip(
        "Type d'accumulateur : le choix remplace les courbes et les influences ; « Générique » les "
        "laisse telles quelles et permet de les modifier");
    auto* lab_type = new QLabel("T&ype");
    lab_type->setBuddy(type_);
    grille->addWidget(lab_type, 0, 0, Qt::AlignRight);
    grille->addWidget(type_, 0, 1, 1, 2);
    grille->setColumnStretch(3, 1);
    pose_champ(grille, 1, 0, "Nombre en série", boite("bat_txt_ns", "bat_ns"));
    pose_champ(grille, 2, 0, "Nombre en parallèle", boite("bat_txt_np", "bat_np"));
    auto* capacite = boite("bat_txt_c", "bat_c");
    capacite->image("#0.00");
    pose_champ(grille, 3, 0, "Capacité nominale", capacite);
    lie_champ(type_, element_nomme("bat_type"));
    connect(type_, &QComboBox::activated, this, &page_batteries::choisit);
    return g;
}

QWidget* page_batteries::groupe_influences() {
    auto* g = new QGroupBox("Influences sur la capacité et autodécharge");
    auto* grille = new QGridLayout(g);
    auto* cmax = generique("bat_txt_cmax", "bat_cmax");
    auto* c10 = generique("bat_txt_c10", "bat_c10");
    auto* cmin = generique("bat_txt_cmin", "bat_cmin_pct");
    for (champ_saisie* c : {cmax, c10, cmin}) c->image("#0.00");
    pose_champ(grille, 0, 0, "Cmax/Cnom", cmax);
    pose_champ(grille, 1, 0, "C10/Cnom à 10C", c10);
    auto* tmin = generique("bat_txt_tmin", "bat_tmin");
    auto* t99 = generique("bat_txt_t99", "bat_t999");
    tmin->bornes_mobiles([=] { return limites{.max = t99->stocke(), .max_inclus = false}; },
                         "Inférieure à la température 99.9%");
    t99->bornes_mobiles([=] { return limites{.min = tmin->stocke(), .min_inclus = false}; },
                        "Supérieure à la température minimale");
    pose_champ(grille, 2, 0, "Température min", tmin);
    pose_champ(grille, 3, 0, "Cmin à Temp. min", cmin);
    pose_champ(grille, 0, 4, "Température 99.9%", t99);
    auto* tc0 = generique("bat_txt_tc0", "bat_tau0");
    auto* tc50 = generique("bat_txt_tc50", "bat_tau50");
    tc0->bornes_mobiles([=] { return limites{.min = tc50->stocke(), .min_inclus = false}; },
                        "Supérieure à la constante à 50 °C");
    tc50->bornes_mobiles([=] { return limites{.max = tc0->stocke(), .max_inclus = false}; },
                         "Inférieure à la constante à 0 °C");
    pose_champ(grille, 1, 4, "Autodécharge : constante de temps à 0°", tc0);
    pose_champ(grille, 2, 4, "Autodécharge : constante de temps à 50°", tc50);
    grille->addLayout(boutons_composants("bat"), 3, 4, 1, 4);
    grille->setColumnMinimumWidth(3, style::espace(6));
    grille->setColumnStretch(7, 1);
    return g;
}

QWidget* page_batteries::groupe_points(const QString& titre, const QString& abscisse,
                                       const QString& coefficients, const QStringList& noms,
                                       const QString& libelle_fin, QWidget* cote) {
    auto* g = new QGroupBox(titre);
    auto* grille = new QGridLayout;
    for (int point = 0; point < 4; ++point) {
        auto* lab = new QLabel(point < 3 ? QString("Point %1").arg(point) : libelle_fin);
        grille->addWidget(lab, point + 1, 0, Qt::AlignRight);
        for (int c = 0; c < 6; ++c) {
            const QByteArray champ = QString("%1_%2").arg(coefficients).arg(c).toLatin1();
            auto* b = generique(QString("bat_txt_%1_%2").arg(noms[point]).arg(c), champ, point);
            style::boite_nombre(b, 6);
            grille->addWidget(b, point + 1, c + 1);
            if (point == 0) {
                const QString debut = c == 0 ? abscisse + ' ' : c == 3 ? QString("Tension ") : QString();
                auto* entete = new QLabel(debut + b->unite());
                entete->setToolTip(b->toolTip());
                grille->addWidget(entete, 0, c + 1, Qt::AlignCenter);
            }
            if (c == 0) lab->setBuddy(b);
        }
    }
    grille->setColumnStretch(7, 1);
    auto* pile = new QVBoxLayout(g);
    pile->addLayout(grille);
    pile->addWidget(cote, 1);
    return g;
}

QWidget* page_batteries::cote_graphe(graphe* courbe, QButtonGroup* genre, const QString& prefixe) {
    auto* w = new QWidget;
    auto* par_courant = new QRadioButton("Courants");
    par_courant->setObjectName(prefixe + "_opt_courant");
    par_courant->setToolTip("Une courbe par courant, à 25 °C");
    auto* par_temperature = new QRadioButton("Températures");
    par_temperature->setObjectName(prefixe + "_opt_temp");
    par_temperature->setToolTip("Une courbe par température, au courant nominal");
    genre->addButton(par_courant, 0);
    genre->addButton(par_temperature, 1);
    par_courant->setChecked(true);
    courbe->setObjectName(prefixe + "_graph");
    courbe->setMinimumHeight(style::espace(50));
    auto* options = new QHBoxLayout;
    options->addWidget(par_courant);
    options->addWidget(par_temperature);
    options->addStretch();
    auto* pile = new QVBoxLayout(w);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->addLayout(options);
    pile->addWidget(courbe, 1);
    return w;
}

QWidget* page_batteries::groupe_charge() {
    return groupe_points("Charge", "État", "ch_pt", {"0", "1", "2", "och"}, "Surcharge",
                         cote_graphe(charge_, genre_charge_, "bat_ch"));
}

QWidget* page_batteries::groupe_decharge() {
    return groupe_points("Décharge", "Profondeur", "de_pt", {"d0", "d1", "d2", "d100"}, "100 %",
                         cote_graphe(decharge_, genre_decharge_, "bat_dch"));
}

void page_batteries::choisit(int type) {
    choisit_batterie(p_, type);
    relit();
    emit catalogue_choisi();
    emit edite();
}

void page_batteries::relit() {
    page_power::relit();
    type_->setCurrentIndex(p_.bat_type);
    const bool generique = p_.bat_type == batterie_generique;
    for (champ_saisie* c : generiques_) c->setEnabled(generique);
    trace_decharge();
    trace_charge();
}

void page_batteries::trace_charge() {
    const bool par_courant = genre_charge_->checkedId() == 0;
    charge_->efface();
    charge_->titre(titre_de("charge", par_courant));
    charge_->axes("État de charge (%)", "Tension (V)");
    charge_->legende(true);
    charge_->limites_x(0, 100);
    // The mark belongs to the runs: the chart looks at its own failures only.
    const bool avant = p_.courbe_charge_incompatible;
    p_.courbe_charge_incompatible = false;
    int n = 0;
    for (const serie& s : series(par_courant)) {
        QVector<double> x, y;
        for (int i = 0; i < points_courbe; ++i) {
            const double soc = i / (points_courbe - 1.0), v = bat_v_charge(p_, s.courant, s.temperature, soc);
            if (v != 0) x << 100 * soc, y << v; // a point that fails is 0
        }
        charge_->donnees(charge_->courbe(s.nom, style::couleur_courbe(n++)), x, y);
    }
    charge_->retrace();
    const bool echec = p_.courbe_charge_incompatible;
    p_.courbe_charge_incompatible = avant;

    emit etat_courbes(!echec);
    if (!echec) {
        points_dits_ = {};
    } else if (points_dits_ != p_.ch_pt) {
        points_dits_ = p_.ch_pt;
        emit courbe_incompatible();
    }
}

void page_batteries::trace_decharge() {
    const bool par_courant = genre_decharge_->checkedId() == 0;
    decharge_->efface();
    decharge_->titre(titre_de("décharge", par_courant));
    decharge_->axes("Profondeur de décharge (%)", "Tension (V)");
    decharge_->legende(true);
    decharge_->limites_x(0, 100);
    int n = 0;
    for (const serie& s : series(par_courant)) {
        QVector<double> x, y;
        for (int i = 0; i < points_courbe; ++i) {
            const double depth = i / (points_courbe - 1.0);
            // An empty battery has no voltage: the curve ends a hair before.
            const double v = bat_v_discharge(p_, s.courant, s.temperature, std::max(1 - depth, presque_vide));
            if (std::isfinite(v)) x << 100 * depth, y << v;
        }
        decharge_->donnees(decharge_->courbe(s.nom, style::couleur_courbe(n++)), x, y);
    }
    decharge_->retrace();
}
