#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>

#include <cmath>

#include "power/catalogues.h"
#include "power/power_cellules.h"
#include "power/reparations.h"
#include "project/etude_champs.h"
#include "project/windows/place_cellules.h"
#include "project/windows/power_conf_pages.h"
#include "widgets/acces.h"
#include "widgets/graphe.h"
#include "widgets/style.h"
#include "widgets/textes.h"

namespace {

constexpr double temperatures[] = {-50, 0, 50, 100}; ///< [degC] drawn beside the reference temperature
constexpr int points_courbe = 121;

/// Open-circuit voltage at a temperature: where the curve ends.
double tension_ouverte(const power_record& p, double t) {
    const double v = (t - p.cel_tref) * p.cel_dvoc + p.cel_voc;
    return p.cel_opt_beol != 0 ? v * p.cel_radvoc : v;
}

QLabel* entete(const QString& texte) {
    auto* l = new QLabel(texte);
    l->setAlignment(Qt::AlignCenter);
    l->setWordWrap(true);
    return l;
}

} // namespace

page_cellules::page_cellules(power_record& p)
    : page_power(p), vie_(new QButtonGroup(this)), genre_(new QButtonGroup(this)) {
    auto* gauche = new QVBoxLayout;
    gauche->addWidget(groupe_caracteristiques());
    gauche->addWidget(groupe_assemblage());
    gauche->addStretch();
    auto* pile = new QHBoxLayout(this);
    pile->addLayout(gauche);
    pile->addWidget(groupe_courbe(), 1);
}

/// Isc, Imp, Voc or Vmp: value, slope and end-of-life ratio on one row.
void page_cellules::pose_grandeur(QGridLayout* grille, int ligne, const char* libelle, const QString& suffixe,
                                  void (*repare)(power_record&), void (*repare_rapport)(power_record&)) {
    auto nom = [&](const char* debut) { return QString(debut) + suffixe; };
    champ_saisie* valeur = boite(nom("cel_txt_"), nom("cel_").toLatin1());
    champ_saisie* pente = boite(nom("cel_txt_d"), nom("cel_d").toLatin1());
    champ_saisie* rapport = boite(nom("cel_txt_rad"), nom("cel_rad").toLatin1());
    valeur->apres([this, repare] { repare(p_); });
    rapport->apres([this, repare_rapport] { repare_rapport(p_); });
    pose_champ(grille, ligne, 0, libelle, valeur);
    grille->addWidget(pente, ligne, 3);
    grille->addWidget(new QLabel(pente->unite()), ligne, 4);
    grille->addWidget(rapport, ligne, 5);
    for (champ_saisie* c : {valeur, pente, rapport}) c->setMinimumWidth(style::espace(18));
    rapports_ << rapport;
}

QWidget* page_cellules::groupe_caracteristiques() {
    auto* g = new QGroupBox("Caractéristiques d'une cellule");
    auto* grille = new QGridLayout(g);
    type_ = new QComboBox;
    type_->setObjectName("cel_cmb_type");
    type_->addItems({"AsGa", "Silicium"});
    type_->setToolTip(
        "Type de cellule : le choix remplace les courants, les tensions, leurs dérives et la surface");
    auto* lab_type = new QLabel("T&ype");
    lab_type->setBuddy(type_);
    grille->addWidget(lab_type, 0, 0, Qt::AlignRight);
    grille->addWidget(type_, 0, 1, 1, 3);

    grille->addWidget(entete("À Tréf"), 1, 1);
    grille->addWidget(entete("Dérive en température"), 1, 3, 1, 2);
    grille->addWidget(entete("Fin de vie / début"), 1, 5);
    pose_grandeur(grille, 2, "Isc", "isc", repare_isc, repare_radisc);
    pose_grandeur(grille, 3, "Imp", "imp", repare_imp, repare_radimp);
    pose_grandeur(grille, 4, "Voc", "voc", repare_voc, repare_radvoc);
    pose_grandeur(grille, 5, "Vmp", "vmp", repare_vmp, repare_radvmp);

    auto* ligne_vie = new QHBoxLayout;
    auto* bol = option(vie_, "cel_opt_beol", 0, "BOL");
    bol->setToolTip("Début de vie : les rapports de fin de vie ne comptent pas");
    auto* eol = option(vie_, "cel_opt_beol", 1, "EOL");
    eol->setToolTip("Fin de vie : les quatre valeurs sont multipliées par leurs rapports");
    rendement_ = new QLabel;
    rendement_->setObjectName("lbl_eff");
    rendement_->setToolTip("Rendement au point de puissance maximale, pour 1368 W/m² (%)");
    rendement_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    rendement_->setMinimumWidth(style::espace(14));
    style::montre_calcule(rendement_);
    ligne_vie->addWidget(bol);
    ligne_vie->addWidget(eol);
    ligne_vie->addStretch();
    ligne_vie->addWidget(new QLabel("Rendement"));
    ligne_vie->addWidget(rendement_);
    ligne_vie->addWidget(new QLabel("%"));
    grille->addLayout(ligne_vie, 6, 0, 1, 6);
    grille->addLayout(boutons_composants("cel"), 7, 0, 1, 6);

    lie_champ(type_, element_nomme("cel_type"));
    for (QWidget* o : {bol, eol}) lie_champ(o, element_nomme("cel_opt_beol"));
    connect(type_, &QComboBox::activated, this, [this](int type) {
        choisit_cellule(p_, type);
        relit();
        emit edite();
    });
    connect(vie_, &QButtonGroup::idToggled, this, [this](int indice, bool choisi) {
        if (choisi) choisit_vie(indice);
    });
    return g;
}

QWidget* page_cellules::groupe_assemblage() {
    auto* g = new QGroupBox("Assemblage et éclairement");
    auto* grille = new QGridLayout(g);
    pose_champ(grille, 0, 0, "Température de référence", boite("cel_txt_tref", "cel_tref"));
    pose_champ(grille, 1, 0, "Surface d'une cellule", boite("cel_txt_surf", "cel_surface"));
    pose_champ(grille, 2, 0, "Nombre en série", boite("cel_txt_ns", "cel_ns"));
    pose_champ(grille, 3, 0, "Nombre en parallèle", boite("cel_txt_np", "cel_np"));
    auto* divergence = boite("cel_txt_tetad", "inc_div");
    auto* maximum = boite("cel_txt_tetam", "inc_max");
    divergence->bornes_mobiles([=] { return limites{.max = maximum->stocke()}; },
                               "Au plus l'incidence maximale");
    maximum->bornes_mobiles([=] { return limites{.min = divergence->stocke()}; },
                            "Au moins l'incidence de divergence");
    pose_champ(grille, 4, 0, "Incidence de divergence", divergence);
    pose_champ(grille, 5, 0, "Incidence maximale", maximum);
    place_ = new place_cellules("cel_lab_place");
    grille->addWidget(place_, 6, 0, 1, 4);
    grille->setColumnStretch(3, 1);
    return g;
}

QWidget* page_cellules::groupe_courbe() {
    auto* g = new QGroupBox("Courbe d'une cellule à 1368 W/m²");
    courbe_ = new graphe;
    courbe_->setObjectName("cel_charac_graph");
    auto* courant = new QRadioButton("Courant");
    courant->setObjectName("cel_opt_cour");
    courant->setToolTip("Trace le courant en fonction de la tension");
    auto* puissance = new QRadioButton("Puissance");
    puissance->setObjectName("cel_opt_puiss");
    puissance->setToolTip("Trace la puissance en fonction de la tension");
    genre_->addButton(courant, 0);
    genre_->addButton(puissance, 1);
    courant->setChecked(true);

    auto* options = new QHBoxLayout;
    options->addWidget(courant);
    options->addWidget(puissance);
    options->addStretch();
    auto* pile = new QVBoxLayout(g);
    pile->addLayout(options);
    pile->addWidget(courbe_, 1);
    connect(genre_, &QButtonGroup::idToggled, this, [this](int, bool choisi) {
        if (choisi) trace();
    });
    return g;
}

void page_cellules::choisit_vie(int indice) {
    p_.cel_opt_beol = static_cast<int16_t>(indice);
    relit();
    emit edite();
}

void page_cellules::relit() {
    page_power::relit();
    const QSignalBlocker b(vie_);
    type_->setCurrentIndex(p_.cel_type);
    const bool fin_de_vie = p_.cel_opt_beol != 0;
    vie_->button(fin_de_vie ? 1 : 0)->setChecked(true);
    for (champ_saisie* r : rapports_) r->setEnabled(fin_de_vie);
    const double rendement = rendement_nominal(p_);
    rendement_->setText(std::isfinite(rendement) ? texte_image(rendement, "0.0") : "-");
    trace();
}

void page_cellules::trace() {
    const bool puissance = genre_->checkedId() == 1;
    courbe_->efface();
    courbe_->axes("Tension (V)", puissance ? "Puissance (W)" : "Courant (A)");
    courbe_->legende(true);
    int n = 0;
    auto ajoute = [&](const QString& nom, double t) {
        QVector<double> x, y;
        const double fin = tension_ouverte(p_, t);
        for (int i = 0; i < points_courbe && fin > 0; ++i) {
            const double v = fin * i / (points_courbe - 1), courant = cell_current(p_, t, v);
            if (!std::isfinite(courant)) continue;
            x << v;
            y << (puissance ? courant * v : courant);
        }
        const int c = courbe_->courbe(nom, style::couleur_courbe(n++));
        courbe_->donnees(c, x, y);
    };
    ajoute("Tréf", p_.cel_tref);
    for (double t : temperatures) ajoute(QString("%1°C").arg(t), t);
    courbe_->retrace();
}
