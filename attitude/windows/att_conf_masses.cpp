#include "attitude/windows/att_conf_masses.h"

#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>
#include <cmath>

#include "project/etude_champs.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/acces.h"
#include "widgets/style.h"

namespace {

const QStringList axes_grad = {"+X", "-X", "+Y", "-Y", "+Z", "-Z"}; // captions of scroll_axe_grad

constexpr const char* sens = "sens"; ///< property: what a computed value means

QLabel* calcule(const QString& nom, const QString& aide) {
    auto* l = new QLabel;
    l->setObjectName(nom);
    l->setProperty(sens, aide);
    style::montre_calcule(l);
    return l;
}

} // namespace

att_conf_masses::att_conf_masses(attitude_record& a, QWidget* parent) : page_att(a, parent) {
    auto* v = new QVBoxLayout(this);
    v->setSpacing(style::espace(2));
    v->addWidget(cadre_corps());
    v->addWidget(cadre_externe());
    v->addWidget(cadre_bilan());
    v->addStretch();
}

QWidget* att_conf_masses::cadre_corps() {
    auto* cadre = new QGroupBox("Configuration du corps central");
    QGridLayout* g = grille(cadre);
    boite_att* masse = boite("Masse");
    g->addWidget(libelle("&Masse (kg)", masse), 0, 0);
    g->addWidget(masse, 0, 1);
    tetes(g, 1, {"X", "Y", "Z"});
    ligne_axes(g, 2, "Position &CdG", {"cmx", "cmy", "cmz"}, "m");
    ligne_axes(g, 3, "&Dimensions (m)", {"dimens1", "dimens2", "dimens3"}, "m");
    tetes(g, 4, {"Ixx", "Iyy", "Izz"});
    ligne_axes(g, 5, "&Inerties", {"I_xx", "I_yy", "I_zz"}, "kg m²");
    tetes(g, 6, {"Ixy", "Ixz", "Iyz"});
    ligne_axes(g, 7, "&Produits", {"I_xy", "I_xz", "I_yz"}, "kg m²");

    const char* noms[] = {"cmx", "cmy", "cmz"};
    const char* dimensions[] = {"dimens1", "dimens2", "dimens3"};
    for (int i = 0; i < 3; ++i) {
        cm_[i] = cadre->findChild<boite_att*>(noms[i]);
        // Before the change is told: whoever hears of it sees the centre within its new limits.
        auto* d = cadre->findChild<boite_att*>(dimensions[i]);
        d->disconnect(this);
        connect(d, &boite_att::change, this, &att_conf_masses::dimension_changee);
    }
    return cadre;
}

QWidget* att_conf_masses::cadre_externe() {
    auto* cadre = new QGroupBox("Masses externes");
    QGridLayout* g = grille(cadre);
    g->addWidget(unite("(Stabilisation par gradient de gravité)"), 0, 0, 1, 6);
    const auto boite_externe = [&](const QString& nom, double max, double& valeur, const QString& aide) {
        auto* b = new boite_att(nom, this);
        b->limites(0, max);
        b->image("#0.00");
        b->setToolTip(aide);
        b->relie(valeur);
        connect(b, &boite_att::change, this, &att_conf_masses::place_masse_externe);
        return b;
    };
    masse_grad_ = boite_externe("txt_masse_grad", 100, masse_, "Masse externe, en kg ; de 0 à 100");
    dist_grad_ = boite_externe("txt_dist_grad", 500, distance_,
                               "Distance de la masse externe au centre du corps, en m ; de 0 à 500");
    g->addWidget(libelle("Mass&e", masse_grad_), 1, 0);
    g->addWidget(masse_grad_, 1, 1);
    g->addWidget(unite("kg"), 1, 2);
    g->addWidget(libelle("Di&stance", dist_grad_), 2, 0);
    g->addWidget(dist_grad_, 2, 1);
    g->addWidget(unite("m"), 2, 2);

    scroll_axe_ = new QScrollBar(Qt::Horizontal);
    scroll_axe_->setObjectName("scroll_axe_grad");
    scroll_axe_->setRange(0, 5);
    scroll_axe_->setPageStep(1);
    scroll_axe_->setFocusPolicy(Qt::StrongFocus);
    scroll_axe_->setInvertedControls(false); // the right arrow goes forward
    scroll_axe_->setToolTip("Axe et sens du mât : +X, -X, +Y, -Y, +Z, -Z ; une seule masse à la fois");
    lab_axe_ = new QLabel(axes_grad[0]);
    lab_axe_->setObjectName("lab_axe_grad");
    g->addWidget(libelle("A&xe", scroll_axe_), 1, 3);
    g->addWidget(scroll_axe_, 1, 4);
    g->addWidget(lab_axe_, 1, 5);
    g->setColumnMinimumWidth(4, style::espace(30));
    g->setColumnStretch(5, 1);
    connect(scroll_axe_, &QScrollBar::valueChanged, this, [this](int v) {
        valide(); // an entry in progress belongs to the axis that is left
        lab_axe_->setText(axes_grad[v]);
        place_masse_externe();
        lie_externe();
    });
    lie_externe();
    return cadre;
}

QWidget* att_conf_masses::cadre_bilan() {
    auto* cadre = new QGroupBox("Bilan masses/inerties");
    QGridLayout* g = grille(cadre);
    mt_ = calcule("lbl_mass_all", "Masse totale, en kg (calculée)");
    g->addWidget(libelle("Masse totale"), 0, 0);
    g->addWidget(mt_, 0, 1);
    g->addWidget(unite("kg"), 0, 2);
    const char* axes[] = {"xx", "yy", "zz", "xy", "xz", "yz"};
    for (int i = 0; i < 6; ++i) {
        bilan_[i] = calcule(
            QString("lbl_I%1_all").arg(axes[i]),
            QString("%1 d'inertie total I%2, en kg m² (calculé)").arg(i < 3 ? "Moment" : "Produit", axes[i]));
        const int ligne = 1 + i / 3, colonne = (i % 3) * 2;
        g->addWidget(libelle(QString("I%1").arg(axes[i])), ligne, colonne);
        g->addWidget(bilan_[i], ligne, colonne + 1);
    }
    g->addWidget(unite("kg m²"), 1, 6);
    g->addWidget(unite("kg m²"), 2, 6);
    for (int c : {1, 3, 5}) g->setColumnMinimumWidth(c, style::espace(22));
    g->setColumnStretch(7, 1);
    return cadre;
}

void att_conf_masses::form_load() {
    borne_centre();
    montre_boites();
    lit_masse_externe();
    montre_bilan();
}

void att_conf_masses::montre_bilan() {
    const auto montre = [](QLabel* l, double x) {
        // Four decimals; of small satellites five digits.
        constexpr double petit = 0.1;
        l->setText(x != 0 && std::abs(x) < petit ? QString::number(x, 'g', 5)
                                                 : QString::fromStdString(format_image(x, "0.0000")));
        l->setToolTip(l->property(sens).toString() + "\nValeur : " + QString::number(x, 'g', 15));
    };
    montre(mt_, a_.Mt);
    const int ligne[] = {0, 1, 2, 0, 0, 1}, colonne[] = {0, 1, 2, 1, 2, 2};
    for (int i = 0; i < 6; ++i) montre(bilan_[i], a_.I(ligne[i], colonne[i]));
}

void att_conf_masses::borne_centre() {
    for (int i = 0; i < 3; ++i) {
        const double demi = std::abs(a_.dim[i]) / 2;
        cm_[i]->limites(-demi, demi);
    }
}

void att_conf_masses::dimension_changee() {
    borne_centre();
    for (int i = 0; i < 3; ++i) {
        a_.cm[i] = borne(a_.cm[i], cm_[i]->minimum(), cm_[i]->maximum());
        cm_[i]->montre();
    }
    emit change();
}

void att_conf_masses::lit_masse_externe() {
    int axe = -1;
    for (int i = 2; i >= 0; --i)
        if (a_.mext[i] != 0 || (a_.dext[i] != 0 && axe < 0)) axe = i;
    masse_ = axe < 0 ? 0 : a_.mext[axe];
    distance_ = axe < 0 ? 0 : std::abs(a_.dext[axe]);
    if (axe >= 0) {
        const QSignalBlocker muet(scroll_axe_);
        scroll_axe_->setValue(2 * axe + (std::signbit(a_.dext[axe]) ? 1 : 0));
        lab_axe_->setText(axes_grad[scroll_axe_->value()]);
        lie_externe();
    }
    masse_grad_->montre();
    dist_grad_->montre();
}

/// The boxes edit the external mass of the axis that is chosen.
void att_conf_masses::lie_externe() {
    const std::string axe = "[" + std::to_string(scroll_axe_->value() / 2) + "]";
    lie_champ(masse_grad_, element_nomme("mext" + axe));
    lie_champ(dist_grad_, element_nomme("dext" + axe));
}

/// By the caption: while an entry in progress is taken in, the bar stands on the next axis already.
void att_conf_masses::place_masse_externe() {
    const int choix = int(axes_grad.indexOf(lab_axe_->text()));
    a_.mext = {};
    a_.dext = {};
    a_.mext[choix / 2] = masse_;
    a_.dext[choix / 2] = choix % 2 ? -distance_ : distance_;
    emit change();
}
