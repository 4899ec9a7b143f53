#include "orbit/windows/page_environnement.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "power/environnement.h"
#include "project/etude_champs.h"
#include "widgets/acces.h"
#include "widgets/conduite.h"
#include "widgets/graphe.h"
#include "widgets/style.h"
#include "widgets/textes.h"
#include "widgets/verifications.h"

namespace {

const QStringList& mois() {
    static const QStringList noms = {"Janvier", "Février", "Mars",      "Avril",   "Mai",      "Juin",
                                     "Juillet", "Août",    "Septembre", "Octobre", "Novembre", "Décembre"};
    return noms;
}

QString texte(double x) { return texte_image(x, "0.00"); }

QLineEdit* cree_boite(const char* nom, const QString& aide) {
    auto* b = new QLineEdit;
    b->setObjectName(nom);
    b->setToolTip(aide);
    style::boite_nombre(b, 8);
    return b;
}

QListWidget* cree_liste(const char* nom, const QString& aide) {
    auto* l = new QListWidget;
    l->setObjectName(nom);
    l->addItems(mois());
    l->setCurrentRow(0);
    l->setToolTip(aide);
    l->setMinimumHeight(style::espace(24));
    l->setMaximumWidth(style::espace(40));
    return l;
}

} // namespace

page_environnement::page_environnement(session& s, QWidget* parent) : QWidget(parent), s_(s) {
    auto* grille = new QGridLayout(this);
    grille->setSpacing(style::espace(3));
    grille->addWidget(cree_flux(), 0, 0);
    grille->addWidget(cree_tables(), 1, 0);
    graphe_ = new graphe;
    graphe_->setObjectName("env_graph1");
    graphe_->titre("Environnement au cours de l'année");
    graphe_->axes("", "W/m²");
    graphe_->axe_droit("albédo");
    graphe_->abscisses_nommees([] {
        QStringList courts;
        for (const QString& m : mois())
            courts << m.left(m == "Juin" || m == "Juillet" || m == "Août" ? 4 : 3);
        return courts;
    }());
    graphe_->limites_y(0, 1500);
    graphe_->limites_y(0, 1, true);
    courbes_[0] = graphe_->courbe("Flux solaire", style::couleur(style::role::soleil));
    courbes_[1] = graphe_->courbe("Infrarouge terrestre", style::couleur(style::role::perte), Qt::DashLine);
    courbes_[2] = graphe_->courbe("Albédo", style::couleur(style::role::terre), Qt::DashDotLine, true);
    graphe_->legende(true);
    grille->addWidget(graphe_, 0, 1, 2, 1);
    grille->setColumnStretch(1, 1);
    grille->setRowStretch(1, 1);
}

QWidget* page_environnement::cree_flux() {
    auto* cadre = new QGroupBox("Constante solaire (W/m²)");
    auto* grille = new QGridLayout(cadre);
    grille->addWidget(new QLabel("Valeurs au cours d'une année"), 0, 0, 1, 4);
    const char* const etiquettes[] = {"Minimum", "Maximum"};
    const char* const aides[] = {"Flux à la plus grande distance du Soleil (W/m²) ; au plus le maximum",
                                 "Flux à la plus petite distance du Soleil (W/m²) ; au moins le minimum"};
    for (int i = 0; i < 2; ++i) {
        flux_[i] = cree_boite(i == 0 ? "env_txt_flux_0" : "env_txt_flux_1", aides[i]);
        const element_etude soleil = element_nomme("sun_power");
        lie_champ(flux_[i], chemin_element(soleil), i == 0 ? "Flux solaire minimal" : "Flux solaire maximal");
        grille->addWidget(new QLabel(etiquettes[i]), 1, 2 * i, Qt::AlignRight);
        grille->addWidget(flux_[i], 1, 2 * i + 1);
        connect(flux_[i], &QLineEdit::editingFinished, this, [this, i] { saisie_flux(i); });
    }
    grille->setColumnStretch(4, 1);
    return cadre;
}

QWidget* page_environnement::cree_tables() {
    auto* rangee = new QWidget;
    auto* ligne = new QHBoxLayout(rangee);
    ligne->setContentsMargins(0, 0, 0, 0);

    auto* cadre_albedo = new QGroupBox("Albédo");
    auto* ga = new QGridLayout(cadre_albedo);
    mois_albedo_ = cree_liste("env_list_months_alb", "Mois dont l'albédo est montré");
    albedo_ = cree_boite("env_txt_albedo", "Albédo de la Terre du mois choisi (de 0 à 1)");
    amplitude_ =
        cree_boite("env_txt_var", "Amplitude de la fonction sinusoïdale (la courbe reste entre 0 et 1)");
    amplitude_->setText(amplitude_acceptee_);
    auto* cmd_sin = style::bouton("env_cmd_sin", "&Sin(x)",
                                  "Fonction sinusoïdal avec une variation autour le mois choisi");
    ga->addWidget(mois_albedo_, 0, 0, 1, 2);
    ga->addWidget(new QLabel("Valeur"), 1, 0, Qt::AlignRight);
    ga->addWidget(albedo_, 1, 1);
    ga->addWidget(new QLabel("Variation"), 2, 0, Qt::AlignRight);
    ga->addWidget(amplitude_, 2, 1);
    ga->addWidget(cmd_sin, 3, 0, 1, 2);
    ga->setRowStretch(0, 1);

    auto* cadre_ir = new QGroupBox("Radiation IR (W/m²)");
    auto* gi = new QGridLayout(cadre_ir);
    mois_ir_ = cree_liste("env_list_months_ir", "Mois dont l'infrarouge est montré");
    ir_ = cree_boite("env_txt_ir", "Rayonnement infrarouge de la Terre du mois choisi (W/m², positif)");
    auto* cmd_iso =
        style::bouton("env_cmd_isoterre", "Modèle &ISO", "Utilise le modèle simplifié de Terre isotherme");
    gi->addWidget(mois_ir_, 0, 0, 1, 2);
    gi->addWidget(new QLabel("Valeur"), 1, 0, Qt::AlignRight);
    gi->addWidget(ir_, 1, 1);
    gi->addWidget(cmd_iso, 3, 0, 1, 2);
    auto* place = new QWidget; // level with the albedo's rows
    place->setMinimumHeight(amplitude_->sizeHint().height());
    gi->addWidget(place, 2, 0);
    gi->setRowStretch(0, 1);

    ligne->addWidget(cadre_albedo);
    ligne->addWidget(cadre_ir);
    connect(mois_albedo_, &QListWidget::currentRowChanged, this, &page_environnement::rafraichit);
    connect(mois_ir_, &QListWidget::currentRowChanged, this, &page_environnement::rafraichit);
    connect(albedo_, &QLineEdit::editingFinished, this, &page_environnement::saisie_albedo);
    connect(ir_, &QLineEdit::editingFinished, this, &page_environnement::saisie_ir);
    connect(cmd_sin, &QPushButton::clicked, this, &page_environnement::sinus);
    connect(cmd_iso, &QPushButton::clicked, this, [this] {
        modele_isoterre(s_.power);
        change();
    });
    return rangee;
}

QString page_environnement::texte_flux(int element) const {
    return texte(flux_solaire_page(s_.power, element == 0 ? distance_soleil_max : distance_soleil_min));
}

void page_environnement::form_load() {
    const QSignalBlocker b1(mois_albedo_), b2(mois_ir_);
    // January at first; then the month in view stays.
    for (QListWidget* mois : {mois_albedo_, mois_ir_})
        if (mois->currentRow() < 0) mois->setCurrentRow(0);
    rafraichit();
}

void page_environnement::rafraichit() {
    const auto lie = [](QWidget* w, const char* champ, const QListWidget* mois) {
        lie_champ(w, element_nomme(champ + ("[" + std::to_string(mois->currentRow()) + "]")));
    };
    lie(albedo_, "albedo", mois_albedo_);
    lie(ir_, "earth_ir", mois_ir_);
    for (int i = 0; i < 2; ++i) flux_[i]->setText(texte_flux(i));
    albedo_->setText(texte(s_.power.albedo[mois_albedo_->currentRow()]));
    ir_->setText(texte(s_.power.earth_ir[mois_ir_->currentRow()]));
    trace();
}

void page_environnement::trace() {
    QVector<double> x(12), flux(12), ir(12), albedo(12);
    for (int m = 0; m < 12; ++m) {
        x[m] = m;
        flux[m] = flux_solaire_page(s_.power, distance_mois[m]);
        ir[m] = s_.power.earth_ir[m];
        albedo[m] = s_.power.albedo[m];
    }
    graphe_->donnees(courbes_[0], x, flux);
    graphe_->donnees(courbes_[1], x, ir);
    graphe_->donnees(courbes_[2], x, albedo);
    graphe_->retrace();
}

void page_environnement::change() {
    rafraichit();
    emit modifiee();
}

void page_environnement::saisie_flux(int element) {
    QLineEdit* b = flux_[element];
    const QString ancien = texte_flux(element);
    if (!touchee(b)) return;
    float x = 0;
    if (!verif_simple(b, b->text(), ancien, x)) return;
    // The minimum stays under the maximum in force, and the other way round; a flux is not negative.
    const bool permis =
        element == 0 ? verif_max(b, x, flux_solaire_page(s_.power, distance_soleil_min), true, ancien) &&
                           verif_min(b, x, 0, true, ancien)
                     : verif_min(b, x, flux_solaire_page(s_.power, distance_soleil_max), true, ancien);
    if (!permis) return;
    s_.power.sun_power = puissance_de_flux(x, element == 0 ? distance_soleil_max : distance_soleil_min);
    change();
}

void page_environnement::saisie_albedo() {
    float& valeur = s_.power.albedo[mois_albedo_->currentRow()];
    const QString ancien = texte(valeur);
    if (!touchee(albedo_)) return;
    float x = 0;
    if (!verif_simple(albedo_, albedo_->text(), ancien, x)) return;
    if (!verif_bornes(albedo_, x, 0, 1, true, true, ancien)) return;
    valeur = x;
    change();
}

void page_environnement::saisie_ir() {
    float& valeur = s_.power.earth_ir[mois_ir_->currentRow()];
    const QString ancien = texte(valeur);
    if (!touchee(ir_)) return;
    float x = 0;
    if (!verif_simple(ir_, ir_->text(), ancien, x)) return;
    if (!verif_min(ir_, x, 0, true, ancien)) return;
    valeur = x;
    change();
}

void page_environnement::sinus() {
    double base = 0;
    lit_nombre(albedo_->text().toStdString(), base);
    float v = 0;
    if (!verif_simple(amplitude_, amplitude_->text(), amplitude_acceptee_, v)) return;
    // The curve stays between 0 and 1. The base has two digits: compare in single precision.
    const double limite = base > 0.5 ? static_cast<float>(1 - base) : static_cast<float>(base);
    if (!verif_max(amplitude_, v, limite, true, amplitude_acceptee_) ||
        !verif_min(amplitude_, v, -limite, true, amplitude_acceptee_))
        return;
    amplitude_acceptee_ = amplitude_->text();
    modele_sinus(s_.power, base, v, mois_albedo_->currentRow());
    change();
}
