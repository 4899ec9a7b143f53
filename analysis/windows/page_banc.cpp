#include "analysis/windows/page_banc.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

#include "analysis/windows/reglages_banc.h"
#include "widgets/barre_temps.h"
#include "widgets/disposition_flux.h"
#include "widgets/fenetre.h"
#include "widgets/marque_modele.h"
#include "widgets/style.h"
#include "widgets/traces.h"

namespace {

constexpr int battement = 100; // [ms] of the progress bar
constexpr const char* cle_groupes = "banc/courbes";

} // namespace

page_banc::page_banc(session& s, QWidget* parent)
    : page("page_banc", parent), s_(s), loi_vue_(s.modele.controle.loi),
      tache_(this, [this](resultat_courbes r) { pret(std::move(r)); }), date_(s.periode.j_debut),
      reglages_(new reglages_banc(s)), traces_(new traces), temps_(new barre_temps),
      milieu_(new QSplitter(Qt::Horizontal)), lab_reponse_(new QLabel), lab_etat_(new QLabel),
      lab_modele_(marque_modele("lab_banc_physique")), lab_unite_(new QLabel), cbo_grandeur_(new QComboBox),
      txt_seuil_(new QLineEdit), barre_(new QProgressBar), cmd_calcule_(new QPushButton("&Calculer")),
      cmd_arrete_(new QPushButton("Arrê&ter")), cmd_vue_(new QToolButton) {
    groupes_ = QSettings().value(cle_groupes).toStringList();
    groupes_choisis_ = !groupes_.isEmpty();
    for (const grandeur_banc& g : grandeurs_banc()) seuils_.push_back(g.seuil);

    auto* rangee = new QHBoxLayout(this);
    rangee->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(1));
    rangee->setSpacing(style::espace(2));
    QScrollArea* gauche = defilee(reglages_);
    gauche->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    gauche->setFixedWidth(reglages_->minimumSizeHint().width() + style::espace(6));
    rangee->addWidget(gauche);
    auto* droite = new QVBoxLayout;
    droite->setSpacing(style::espace(1));
    droite->addLayout(cree_reponse());
    droite->addLayout(cree_commandes());
    droite->addWidget(lab_etat_);
    droite->addWidget(cree_milieu(), 1);
    temps_->setObjectName("temps_banc");
    droite->addWidget(temps_);
    rangee->addLayout(droite, 1);

    minuterie_.setInterval(battement);
    connect(&minuterie_, &QTimer::timeout, this, &page_banc::montre_etat);
    connect(reglages_, &reglages_banc::change, this, [this](const QString& l) {
        emit configuration_changee(l);
        rafraichit();
    });
    connect(reglages_, &reglages_banc::demande_fenetre, this, &page::demande_fenetre);
    connect(cmd_calcule_, &QPushButton::clicked, this, &page_banc::lance);
    connect(cmd_arrete_, &QPushButton::clicked, this, [this] {
        if (suivi_) suivi_->arret = true;
    });
    connect(traces_, &traces::date_choisie, this, [this](double j) {
        temps_->pose(j);
        date_ = j;
        montre_attitude();
        emit date_montree(j);
    });
    connect(temps_, &barre_temps::date_changee, this, [this](double j) {
        traces_->pose_curseur(j);
        date_ = j;
        montre_attitude();
        emit date_montree(j);
    });
}

page_banc::~page_banc() {
    if (suivi_) suivi_->arret = true;
}

/// The answer in a sentence, and the level that it is about.
QLayout* page_banc::cree_reponse() {
    auto* pile = new QVBoxLayout;
    pile->setSpacing(style::espace(1));
    lab_reponse_->setObjectName("lab_banc_reponse");
    lab_reponse_->setWordWrap(true);
    QFont f = lab_reponse_->font();
    f.setPointSizeF(f.pointSizeF() * 1.15);
    f.setBold(true);
    lab_reponse_->setFont(f);
    pile->addWidget(lab_reponse_);
    return pile;
}

QLayout* page_banc::cree_commandes() {
    auto* w = new disposition_flux;
    w->setSpacing(style::espace(1));
    cmd_calcule_->setObjectName("cmd_banc_calcule");
    cmd_calcule_->setToolTip("Calculer la période avec les réglages du banc");
    cmd_arrete_->setObjectName("cmd_banc_arrete");
    cmd_arrete_->setToolTip("Arrêter : ce qui est calculé reste");
    barre_->setObjectName("barre_banc");
    barre_->setAccessibleName("Avancement du calcul");
    barre_->setRange(0, 1000);
    barre_->setMaximumWidth(style::espace(25));
    auto* courbes = new QToolButton;
    cree_choix(courbes);
    cmd_vue_->setObjectName("cmd_banc_vue");
    cmd_vue_->setText("Vue 3D");
    cmd_vue_->setToolTip("Montrer le satellite à la date du curseur");
    cmd_vue_->setCheckable(true);
    cmd_vue_->hide(); // until there is a view
    connect(cmd_vue_, &QToolButton::toggled, this, &page_banc::montre_vue);
    lab_etat_->setObjectName("lab_banc_etat");
    lab_etat_->setWordWrap(true); // limits reached, or a fault, make it long
    lab_etat_->setMinimumWidth(1);
    prepare_seuil();
    for (QWidget* x : std::initializer_list<QWidget*>{
             cbo_grandeur_, new QLabel("sous"), txt_seuil_, lab_unite_, cmd_calcule_, cmd_arrete_, courbes,
             cmd_vue_, saut("cmd_banc_evt_avant", "◂", "Événement d'avant (Page préc.)", -1),
             saut("cmd_banc_evt_apres", "▸", "Événement d'après (Page suiv.)", 1), barre_, lab_modele_})
        w->addWidget(x);
    montre_d_office();
    return w;
}

/// The quantity that is watched, and the level that it is to pass under.
void page_banc::prepare_seuil() {
    cbo_grandeur_->setObjectName("cbo_banc_grandeur");
    cbo_grandeur_->setAccessibleName("Grandeur à surveiller");
    cbo_grandeur_->setToolTip("Ce qui doit passer sous le seuil");
    for (const grandeur_banc& g : grandeurs_banc()) cbo_grandeur_->addItem(QString::fromUtf8(g.titre));
    txt_seuil_->setObjectName("txt_banc_seuil");
    txt_seuil_->setAccessibleName("Seuil");
    txt_seuil_->setToolTip("Le seuil : la phrase du haut dit quand la grandeur passe dessous");
    style::boite_nombre(txt_seuil_, 7);
    txt_seuil_->setMaximumWidth(txt_seuil_->minimumWidth());
    connect(cbo_grandeur_, &QComboBox::activated, this, [this] {
        grandeur_choisie_ = true;
        choisit_seuil();
    });
    connect(txt_seuil_, &QLineEdit::editingFinished, this, &page_banc::lit_seuil);
}

/// The button that goes to the event before (-1) or after (1).
QToolButton* page_banc::saut(const char* nom, const QString& texte, const QString& bulle, int sens) {
    auto* b = new QToolButton;
    b->setObjectName(nom);
    b->setText(texte);
    b->setToolTip(bulle);
    b->setAccessibleName(bulle);
    connect(b, &QToolButton::clicked, this, [this, sens] { traces_->va_evenement(sens); });
    return b;
}

/// Which charts are shown.
void page_banc::cree_choix(QToolButton* b) {
    b->setObjectName("cmd_banc_courbes");
    b->setText("Courbes");
    b->setToolTip("Choisir les graphiques montrés");
    b->setPopupMode(QToolButton::InstantPopup);
    auto* m = new QMenu(b);
    m->setObjectName("menu_banc_courbes");
    for (const groupe_banc& g : groupes_banc()) {
        QAction* a = m->addAction(QString::fromUtf8(g.titre));
        a->setObjectName(QString("banc_") + g.nom);
        a->setCheckable(true);
        a->setData(QString(g.nom));
        connect(a, &QAction::triggered, this, [this, nom = QString(g.nom)](bool oui) {
            groupes_.removeAll(nom);
            if (oui) groupes_ << nom;
            groupes_choisis_ = !groupes_.isEmpty();
            QSettings().setValue(cle_groupes, groupes_);
            montre_d_office();
            montre_courbes();
        });
    }
    choix_groupes_ = m;
    b->setMenu(m);
}

/// Charts and quantity follow the control law until somebody chooses others.
void page_banc::montre_d_office() {
    const vue_banc v = vue_d_office(s_.modele.controle.loi);
    if (!groupes_choisis_) {
        groupes_.clear();
        for (const std::string& nom : v.groupes) groupes_ << QString::fromStdString(nom);
    }
    for (QAction* a : choix_groupes_->actions()) a->setChecked(groupes_.contains(a->data().toString()));
    if (!grandeur_choisie_) {
        int k = 0;
        for (const grandeur_banc& g : grandeurs_banc()) {
            if (v.grandeur == g.nom) cbo_grandeur_->setCurrentIndex(k);
            ++k;
        }
    }
    choisit_seuil();
}

QWidget* page_banc::cree_milieu() {
    milieu_->setObjectName("partage_banc");
    milieu_->setChildrenCollapsible(false);
    traces_->setObjectName("traces_banc");
    traces_->setAccessibleName("Courbes du banc");
    milieu_->addWidget(cadre_traces_ = defilee(traces_)); // where they would be too low, they scroll
    milieu_->setStretchFactor(0, 3);
    return milieu_;
}

void page_banc::ajoute_vue(std::function<QWidget*()> fabrique) {
    fabrique_vue_ = std::move(fabrique);
    cmd_vue_->show();
}

void page_banc::montre_vue(bool oui) {
    if (oui && !vue3d_) {
        vue3d_ = fabrique_vue_();
        milieu_->addWidget(vue3d_);
        milieu_->setStretchFactor(1, 2);
        milieu_->setSizes({3 * width(), 2 * width()}); // in these proportions
    }
    partage_milieu();
    montre_attitude();
}

/// Beside the charts where there is room for both, else in their place.
void page_banc::partage_milieu() {
    const bool vue = cmd_vue_->isChecked(), large = milieu_->width() >= style::espace(190);
    if (vue3d_) vue3d_->setVisible(vue);
    cadre_traces_->setVisible(!vue || large);
}

void page_banc::resizeEvent(QResizeEvent* e) {
    page::resizeEvent(e);
    partage_milieu();
}

void page_banc::showEvent(QShowEvent* e) {
    page::showEvent(e);
    partage_milieu();
    montre_attitude();
}

void page_banc::changeEvent(QEvent* e) {
    page::changeEvent(e);
    if (e->type() == QEvent::PaletteChange && resultat_) montre_courbes();
}
