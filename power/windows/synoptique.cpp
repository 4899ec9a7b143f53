#include "power/windows/synoptique.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "power/windows/icone_batterie.h"
#include "power/windows/synoptique_pieces.h"
#include "widgets/textes.h"

using style::role;

namespace {

/// An element of the drawing: a rounded frame with a title, edged in its colour.
class bloc : public QFrame {
public:
    bloc(const QString& titre, role r, QWidget* parent) : QFrame(parent), role_(r) {
        corps = new QVBoxLayout(this);
        const int m = style::espace(2);
        corps->setContentsMargins(m, m, m, m);
        corps->setSpacing(style::espace());
        auto* t = new QLabel(titre, this);
        QFont f = t->font();
        f.setBold(true);
        t->setFont(f);
        t->setAlignment(Qt::AlignCenter);
        corps->addWidget(t);
    }
    QVBoxLayout* corps;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(QPen(style::couleur(role_), 2));
        p.setBrush(palette().color(QPalette::Base));
        p.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), style::espace(2), style::espace(2));
    }

private:
    role role_;
};

/// A value that stands on an arrow or on the bus: number and unit on a plate.
class plaque : public QFrame {
public:
    explicit plaque(QLabel* nombre, QWidget* parent) : QFrame(parent) {
        auto* l = new QHBoxLayout(this);
        l->setContentsMargins(style::espace(), 1, style::espace(), 1);
        l->setSpacing(0);
        l->addWidget(nombre);
        l->addWidget(new QLabel(QStringLiteral("W"), this));
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        QColor fond = palette().color(QPalette::Window);
        fond.setAlpha(235);
        p.setPen(style::couleur(role::discret));
        p.setBrush(fond);
        p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
};

QLabel* etiquette(const char* nom, const QString& sens, bool grande) {
    auto* l = new QLabel(QStringLiteral("0.00 "));
    l->setObjectName(QLatin1String(nom));
    l->setToolTip(sens + QStringLiteral(" [W]"));
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont f = style::police_nombres(l);
    f.setBold(grande);
    l->setFont(f);
    return l;
}

/// "Name: value W" in a block; the name's full wording is the value's tooltip.
QLayout* ligne_perte(const QString& nom, QLabel* valeur, QWidget* parent) {
    auto* l = new QHBoxLayout;
    l->setSpacing(0);
    auto* n = new QLabel(nom, parent);
    n->setToolTip(valeur->toolTip());
    l->addWidget(n);
    l->addSpacing(style::espace());
    l->addStretch();
    l->addWidget(valeur);
    l->addWidget(new QLabel(QStringLiteral("W"), parent));
    return l;
}

void montre_watts(QLabel* l, double x) {
    if (std::fabs(x) < 0.005) x = 0; // no "-0.00"
    l->setText(texte_image(x, "0.00 "));
}

} // namespace

QString mot_alimentation(const power_record& p) {
    const float demande = p.p_demand[p.eclipse == vrai ? 1 : 0];
    if (!(demande > 0) || !(p.p_excess < -0.005)) return {}; // less than what the displays show
    return p.p_payload < 0.005 ? QStringLiteral("non alimentée") : QStringLiteral("alimentée en partie");
}

synoptique::synoptique(QWidget* parent) : QWidget(parent) {
    lab_pgs_ = etiquette("lab_pgs", QStringLiteral("Puissance fournie par les panneaux"), true);
    lab_pbat_ = etiquette("lab_pbat", QStringLiteral("Puissance fournie par la batterie"), true);
    lab_pava_ = etiquette("lab_pava", QStringLiteral("Puissance disponible"), true);
    lab_puse_ = etiquette("lab_puse", QStringLiteral("Puissance utile"), true);
    lab_exc_ = etiquette("lab_exc", QStringLiteral("Excès de puissance dissipée"), true);
    lab_pgs_diss_ = etiquette("lab_pgs_diss", QStringLiteral("Dissipation au transfert GS/CU"), false);
    lab_pbat_diss_ = etiquette("lab_pbat_diss", QStringLiteral("Dissipation au transfert BAT/CU"), false);
    lab_diss_charge_ =
        etiquette("lab_diss_charge", QStringLiteral("Dissipation de recharge batterie"), false);
    lab_disscu_ = etiquette("lab_disscu", QStringLiteral("Dissipation charge utile"), false);

    auto* grille = new QGridLayout(this);
    grille->setContentsMargins(0, 0, 0, 0);
    grille->setHorizontalSpacing(style::espace());
    grille->setVerticalSpacing(style::espace(4));
    place_energie(grille);
    place_consommation(grille);
    grille->setColumnStretch(1, 1);
    grille->setColumnStretch(3, 1);
    grille->setRowStretch(0, 1);
    grille->setRowStretch(1, 1);
}

void synoptique::place_energie(QGridLayout* grille) {
    auto* panneaux = new bloc(tr("Panneaux solaires"), role::generateur, this);
    img_pan_eclipse_ = new image_eclipse(panneaux);
    lab_eclairement_ = new QLabel(panneaux);
    lab_eclairement_->setObjectName(QStringLiteral("lab_eclairement"));
    lab_eclairement_->setAlignment(Qt::AlignCenter);
    auto* images = new QHBoxLayout;
    images->addWidget(img_pan_eclipse_, 1);
    images->addWidget(new pictogramme(pictogramme::sujet::panneau, panneaux), 1);
    panneaux->corps->addLayout(images, 1);
    panneaux->corps->addWidget(lab_eclairement_);
    panneaux->corps->addLayout(ligne_perte(tr("Perte GS/CU :"), lab_pgs_diss_, panneaux));
    grille->addWidget(panneaux, 0, 0);

    auto* batterie = new bloc(tr("Batterie"), role::batterie, this);
    batterie_ = new icone_batterie(batterie);
    batterie_->setObjectName(QStringLiteral("pict_batterie"));
    batterie->corps->addWidget(batterie_, 1);
    batterie->corps->addLayout(ligne_perte(tr("Perte recharge :"), lab_diss_charge_, batterie));
    batterie->corps->addLayout(ligne_perte(tr("Perte BAT/CU :"), lab_pbat_diss_, batterie));
    grille->addWidget(batterie, 1, 0);

    fl_gs_ = new fleche(QStringLiteral("fl_gs"), role::generateur, fleche::sens::vers_droite, this);
    grille->addWidget(fl_gs_, 0, 1);
    grille->addWidget(new plaque(lab_pgs_, this), 0, 1, Qt::AlignCenter);

    // Charge and discharge share a place: one of them shows at a time.
    fl_charge_ = new fleche(QStringLiteral("fl_charge"), role::batterie, fleche::sens::vers_gauche, this);
    fl_decharge_ = new fleche(QStringLiteral("fl_decharge"), role::batterie, fleche::sens::vers_droite, this);
    grille->addWidget(fl_charge_, 1, 1);
    grille->addWidget(fl_decharge_, 1, 1);
    grille->addWidget(new plaque(lab_pbat_, this), 1, 1, Qt::AlignCenter);
}

void synoptique::place_consommation(QGridLayout* grille) {
    auto* bus = new bloc(tr("Bus"), role::trait, this);
    auto* disponible = new QLabel(tr("Disponible"), bus);
    disponible->setAlignment(Qt::AlignCenter);
    bus->corps->addStretch();
    bus->corps->addWidget(disponible);
    bus->corps->addWidget(new plaque(lab_pava_, bus), 0, Qt::AlignCenter);
    bus->corps->addStretch();
    grille->addWidget(bus, 0, 2, 2, 1);

    auto* utile = new bloc(tr("Charge utile"), role::charge_utile, this);
    utile->corps->addWidget(new pictogramme(pictogramme::sujet::charge_utile, utile), 1);
    lab_alimentation_ = new QLabel(utile);
    lab_alimentation_->setObjectName(QStringLiteral("lab_alimentation"));
    lab_alimentation_->setAlignment(Qt::AlignCenter);
    utile->corps->addWidget(lab_alimentation_);
    utile->corps->addLayout(ligne_perte(tr("Dissipée :"), lab_disscu_, utile));
    grille->addWidget(utile, 0, 4);

    auto* shunt = new bloc(tr("Shunt"), role::perte, this);
    shunt->corps->addWidget(new pictogramme(pictogramme::sujet::shunt, shunt), 1);
    auto* sens = new QLabel(tr("Excès dissipé"), shunt);
    sens->setAlignment(Qt::AlignCenter);
    shunt->corps->addWidget(sens);
    grille->addWidget(shunt, 1, 4);

    fl_utile_ = new fleche(QStringLiteral("fl_utile"), role::charge_utile, fleche::sens::vers_droite, this);
    grille->addWidget(fl_utile_, 0, 3);
    grille->addWidget(new plaque(lab_puse_, this), 0, 3, Qt::AlignCenter);
    fl_shunt_ = new fleche(QStringLiteral("fl_shunt"), role::perte, fleche::sens::vers_droite, this);
    grille->addWidget(fl_shunt_, 1, 3);
    grille->addWidget(new plaque(lab_exc_, this), 1, 3, Qt::AlignCenter);
}

void synoptique::reinitialise(const power_record& p) {
    reference_ = std::max({1.0, static_cast<double>(p.p_demand[0]), static_cast<double>(p.p_demand[1])});
}

void synoptique::affiche(const power_record& p) {
    const double exces = std::max(p.p_excess, 0.0);
    montre_watts(lab_pgs_, p.gen_power);
    montre_watts(lab_pbat_, p.bat_p);
    // What the bus has to give once the battery has taken or brought its share.
    montre_watts(lab_pava_, p.p_payload + exces);
    montre_watts(lab_puse_, p.p_payload);
    montre_watts(lab_exc_, exces);
    montre_watts(lab_pgs_diss_, p.p_loss_gs);
    montre_watts(lab_pbat_diss_, p.p_loss_de);
    montre_watts(lab_diss_charge_, p.p_loss_ch);
    montre_watts(lab_disscu_, p.p_loss_pl);

    for (const double x : {p.gen_power, std::fabs(p.bat_p), p.p_payload, exces})
        if (std::isfinite(x)) reference_ = std::max(reference_, x);
    const auto flux = [this](fleche* f, double x) {
        f->epaisseur(x / reference_);
        f->setVisible(x > 0);
    };
    flux(fl_gs_, p.gen_power);
    flux(fl_charge_, -p.bat_p);
    flux(fl_decharge_, p.bat_p);
    flux(fl_utile_, p.p_payload);
    flux(fl_shunt_, p.p_excess);

    img_pan_eclipse_->montre(p.eclipse == vrai);
    lab_eclairement_->setText(p.eclipse == vrai ? tr("Éclipse") : tr("Plein Soleil"));
    const QString manque = mot_alimentation(p);
    lab_alimentation_->setText(manque.isEmpty() ? tr("Alimentée")
                                                : QStringLiteral("<b style='color:%1'>%2</b>")
                                                      .arg(style::couleur(role::alerte).name(),
                                                           manque.left(1).toUpper() + manque.mid(1)));
    batterie_->montre(p.bat_soc, etat_batterie(p.bat_p, p.bat_soc));
}

void synoptique::avance(double pas) {
    phase_ = std::fmod(phase_ + pas, 1.0);
    for (fleche* f : {fl_gs_, fl_charge_, fl_decharge_, fl_utile_, fl_shunt_}) f->avance(phase_);
}

void synoptique::avance_batterie() { batterie_->avance(); }
