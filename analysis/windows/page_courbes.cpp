#include "analysis/windows/page_courbes.h"

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "analysis/windows/calcul_passages.h"
#include "analysis/windows/calculs_gardes.h"
#include "analysis/windows/choix_variables.h"
#include "analysis/windows/lecture_courbes.h"
#include "widgets/disposition_flux.h"
#include "widgets/export_traces.h"
#include "widgets/fichiers.h"
#include "widgets/marque_modele.h"
#include "widgets/style.h"
#include "widgets/traces.h"

namespace {

constexpr int battement = 100; // [ms] of the progress bar

template <class F>
QToolButton* outil(QWidget* page, const char* nom, const QString& texte, const QString& bulle, F&& fait) {
    auto* b = new QToolButton;
    b->setObjectName(nom);
    b->setText(texte);
    b->setToolTip(bulle);
    b->setAccessibleName(bulle);
    QObject::connect(b, &QToolButton::clicked, page, std::forward<F>(fait));
    return b;
}

} // namespace

page_courbes::page_courbes(session& s, QWidget* parent)
    : page("page_courbes", parent), s_(s), tache_(this, [this](resultat_courbes r) { pret(std::move(r)); }),
      tache_gardes_(this, [this](resultat_courbes r) { garde_pret(std::move(r)); }),
      passages_(new calcul_passages(this)), traces_(new traces), lecture_(new lecture_courbes),
      gardes_(new calculs_gardes), variables_(new choix_variables), arbre_(new QTreeWidget),
      lab_etat_(new QLabel), lab_modele_(marque_modele("lab_modele_courbes")), barre_(new QProgressBar),
      cmd_garde_(new QPushButton("&Garder ce calcul")), cmd_calcule_(new QPushButton("&Calculer")),
      cmd_arrete_(new QPushButton("Arrê&ter")), cbo_ecart_(new QComboBox), cmd_retour_(nullptr) {
    construit();
    relie_choix();
    relie_gardes();
    connect(&minuterie_, &QTimer::timeout, this, &page_courbes::montre_etat);
    minuterie_.setInterval(battement);
    connect(traces_, &traces::curseur_change, this, [this] { lecture_->lit(traces_->dessin(), false); });
    connect(traces_, &traces::marques_changees, this, [this] { lecture_->lit(traces_->dessin(), true); });
    connect(traces_, &traces::date_choisie, this, &page::date_montree);
    connect(traces_, &traces::vue_changee, this, [this] { cmd_retour_->setEnabled(traces_->a_retour()); });
    connect(traces_, &traces::depose, this, &page_courbes::ajoute);
    connect(traces_, &traces::menu_demande, this, &page_courbes::menu_graphique);
    connect(passages_, &calcul_passages::pret, this, &page_courbes::montre_evenements);
    connect(cmd_calcule_, &QPushButton::clicked, this, &page_courbes::lance);
    connect(cmd_arrete_, &QPushButton::clicked, this, &page_courbes::arrete);
    connect(cbo_ecart_, &QComboBox::activated, this, &page_courbes::montre_courbes);
}

/// What the lists of variables and of ready-made sets ask for.
void page_courbes::relie_choix() {
    connect(variables_, &choix_variables::choisie, this, [this](const QString& nom) {
        QTreeWidgetItem* i = arbre_->currentItem();
        while (i && i->parent()) i = i->parent();
        ajoute(nom, i ? arbre_->indexOfTopLevelItem(i) : int(choix_.size()) - 1);
    });
    connect(variables_, &choix_variables::jeu_choisi, this, [this](int k) {
        const jeu_courbes jeu = jeux_courbes(s_)[std::size_t(k)];
        graphiques g;
        for (const auto& noms : jeu.graphiques) {
            g << QStringList();
            for (const std::string& n : noms) g.last() << QString::fromStdString(n);
        }
        change_choix(g, QString("Courbes : %1").arg(QString::fromUtf8(jeu.titre).toLower()));
    });
}

/// The kept runs: shown, run again, opened.
void page_courbes::relie_gardes() {
    connect(gardes_, &calculs_gardes::change, this, [this] {
        montre_ecarts();
        complete_gardes();
        montre_courbes();
    });
    connect(gardes_, &calculs_gardes::demande_calcul, this, [this](int k) {
        a_completer_.push_back(gardes_->calculs()[std::size_t(k)].numero);
        complete_gardes();
    });
    connect(gardes_, &calculs_gardes::demande_ouverture, this, [this](int k) {
        const calcul_garde& c = gardes_->calculs()[std::size_t(k)];
        const std::string courbes = s_.courbes;
        copie_reglages(c.reglages, s_);
        s_.courbes = courbes; // the charts on the screen are not what has been asked back
        emit configuration_changee(QString("Étude du calcul « %1 »").arg(c.libelle));
        rafraichit();
    });
    connect(cmd_garde_, &QPushButton::clicked, this, [this] {
        if (!resultat_) return;
        const std::string& chemin = s_.chemin_etude.empty() ? s_.chemin_energie : s_.chemin_etude;
        const QString projet = chemin.empty() ? "sans nom" : QString::fromStdString(chemin).section('/', -1);
        gardes_->garde(calculee_, resultat_, projet);
    });
}

page_courbes::~page_courbes() {
    if (suivi_) suivi_->arret = true;
}

void page_courbes::construit() {
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(1));
    pile->setSpacing(style::espace(1));
    pile->addWidget(cree_tete());
    pile->addWidget(lab_etat_);
    auto* large = new QSplitter(Qt::Horizontal);
    large->setObjectName("partage_courbes");
    large->addWidget(cree_gauche());
    auto* haut = new QSplitter(Qt::Vertical);
    traces_->setObjectName("traces");
    traces_->setAccessibleName("Graphiques");
    haut->addWidget(traces_);
    haut->addWidget(lecture_);
    haut->setStretchFactor(0, 4);
    haut->setStretchFactor(1, 1);
    haut->setSizes({style::espace(110), style::espace(28)});
    lecture_->setMinimumHeight(style::espace(12));
    large->addWidget(haut);
    large->setStretchFactor(1, 1);
    large->setSizes({style::espace(56), style::espace(220)});
    pile->addWidget(large, 1);
}

QWidget* page_courbes::cree_tete() {
    auto* w = new QWidget;
    auto* rangee = new disposition_flux(w);
    rangee->setSpacing(style::espace(1));
    cmd_garde_->setObjectName("cmd_garde");
    cmd_garde_->setToolTip("Garder ce calcul avec ses réglages, pour le comparer aux suivants");
    cmd_calcule_->setObjectName("cmd_calcule_courbes");
    cmd_arrete_->setObjectName("cmd_arrete_courbes");
    cmd_arrete_->setToolTip("Arrêter : ce qui est calculé reste");
    lab_etat_->setObjectName("lab_etat_courbes");
    lab_etat_->setWordWrap(true); // a warning or a fault makes it long
    lab_etat_->setMinimumWidth(1);
    barre_->setObjectName("barre_courbes");
    barre_->setAccessibleName("Avancement du calcul");
    barre_->setRange(0, 1000);
    barre_->setMaximumWidth(style::espace(30));
    cbo_ecart_->setObjectName("cbo_ecart");
    cbo_ecart_->setAccessibleName("Valeurs, ou écart à un calcul gardé");
    cbo_ecart_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    cbo_ecart_->setToolTip("Montrer les valeurs, ou leur écart à un calcul gardé");
    auto* exporte = new QToolButton;
    cree_export(exporte);
    const QList<QWidget*> tete = QList<QWidget*>{cmd_garde_, cmd_calcule_, cmd_arrete_, cbo_ecart_} +
                                 cree_outils() + QList<QWidget*>{exporte, barre_, lab_modele_};
    for (QWidget* x : tete) rangee->addWidget(x);
    return w;
}

/// The tools of the view, of the marks and of the events, in order.
QList<QWidget*> page_courbes::cree_outils() {
    cmd_retour_ = outil(this, "cmd_retour", "Retour", "Revenir à la vue d'avant (Retour arrière)",
                        [this] { traces_->retour(); });
    cmd_retour_->setEnabled(false);
    cmd_lectures_ =
        outil(this, "cmd_lectures", "Tableau",
              "Le tableau des lectures ; sur un écran bas, à la place des graphiques", [this] { partage(); });
    cmd_lectures_->setCheckable(true);
    return {
        outil(this, "cmd_tout", "Tout", "Montrer tout le calcul (Début)", [this] { traces_->montre_tout(); }),
        cmd_retour_,
        outil(this, "cmd_ajuste", "Ajuster",
              "Ajuster les ordonnées à ce qui est en vue ; un double clic sur un axe les rend",
              [this] { traces_->ajuste_ordonnees(true); }),
        outil(this, "cmd_marque_a", "A", "Placer la marque A au curseur (A)",
              [this] { traces_->pose_marques(traces_->curseur(), traces_->dessin().b); }),
        outil(this, "cmd_marque_b", "B", "Placer la marque B au curseur (B)",
              [this] { traces_->pose_marques(traces_->dessin().a, traces_->curseur()); }),
        outil(this, "cmd_sans_marques", "✕", "Retirer les marques",
              [this] { traces_->pose_marques({}, {}); }),
        cmd_lectures_,
        outil(this, "cmd_evt_avant", "◂ Événement", "Événement d'avant (Page préc.)",
              [this] { traces_->va_evenement(-1); }),
        outil(this, "cmd_evt_apres", "Événement ▸", "Événement d'après (Page suiv.)",
              [this] { traces_->va_evenement(1); })};
}

QWidget* page_courbes::cree_gauche() {
    auto* onglets = new QTabWidget;
    onglets->setObjectName("onglets_courbes");
    auto* p = new QSplitter(Qt::Vertical);
    p->addWidget(variables_);
    p->addWidget(cree_graphiques());
    p->setStretchFactor(0, 3);
    p->setStretchFactor(1, 2);
    onglets->addTab(p, "&Variables");
    onglets->addTab(gardes_, "Ca&lculs gardés");
    onglets->setMinimumWidth(style::espace(44));
    return onglets;
}

/// The charts and their curves, in order.
QWidget* page_courbes::cree_graphiques() {
    auto* w = new QWidget;
    auto* pile = new QVBoxLayout(w);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->setSpacing(style::espace(1));
    arbre_->setObjectName("arbre_graphiques");
    arbre_->setAccessibleName("Graphiques et leurs courbes");
    arbre_->setHeaderHidden(true);
    arbre_->setToolTip("La courbe choisie dans la liste va au graphique marqué ici");
    pile->addWidget(arbre_, 1);
    auto* rangee = new QHBoxLayout;
    rangee->setSpacing(style::espace(1));
    rangee->addWidget(
        outil(this, "cmd_monte", "▴", "Monter le graphique ou la courbe", [this] { deplace(-1); }));
    rangee->addWidget(
        outil(this, "cmd_descend", "▾", "Descendre le graphique ou la courbe", [this] { deplace(1); }));
    rangee->addWidget(outil(this, "cmd_nouveau_graphique", "+", "Nouveau graphique", [this] {
        graphiques g = choix_;
        g << QStringList();
        change_choix(g, "Courbes : nouveau graphique");
        arbre_->setCurrentItem(arbre_->topLevelItem(arbre_->topLevelItemCount() - 1));
    }));
    rangee->addWidget(outil(this, "cmd_retire", "−", "Retirer la courbe ou le graphique (Suppr)", [this] {
        QTreeWidgetItem* i = arbre_->currentItem();
        if (!i) return;
        if (i->parent())
            retire(arbre_->indexOfTopLevelItem(i->parent()), i->data(0, Qt::UserRole).toString());
        else
            retire(arbre_->indexOfTopLevelItem(i), {});
    }));
    rangee->addStretch(1);
    pile->addLayout(rangee);
    return w;
}

void page_courbes::cree_export(QToolButton* b) {
    b->setObjectName("cmd_exporte");
    b->setText("Exporter");
    b->setToolTip("Ce qui est en vue : nombres ou image");
    b->setPopupMode(QToolButton::InstantPopup);
    auto* m = new QMenu(b);
    m->setObjectName("menu_export");
    const auto entree = [&](const char* nom, const QString& texte, auto fait) {
        m->addAction(texte, this, fait)->setObjectName(nom);
    };
    const QString csv = "Valeurs séparées (*.csv)";
    entree("exp_csv", "CSV, &virgules…", [this, csv] { demande_export(csv, "courbes.csv", 0); });
    entree("exp_csv_fr", "CSV, &points-virgules et virgule décimale…",
           [this, csv] { demande_export(csv, "courbes.csv", 1); });
    m->addSeparator();
    entree("exp_png", "Image P&NG…", [this] { demande_export("Image PNG (*.png)", "courbes.png", 0); });
    entree("exp_svg", "Dessin &SVG…", [this] { demande_export("Dessin SVG (*.svg)", "courbes.svg", 0); });
    entree("exp_pdf", "Document P&DF…", [this] { demande_export("Document PDF (*.pdf)", "courbes.pdf", 0); });
    m->addSeparator();
    entree("exp_copie_image", "Copier l'&image", [this] { copie_image_traces(*traces_); });
    entree("exp_copie_valeurs", "Copier les &valeurs en vue", [this] { copie_donnees_traces(*traces_); });
    entree("exp_copie_table", "Copier la &table des lectures", [this] { lecture_->copie(); });
    b->setMenu(m);
}

void page_courbes::demande_export(const QString& filtre, const QString& nom, int forme) {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString chemin = demande_nom(this, "Exporter les courbes", dossier + "/" + nom, filtre);
    if (chemin.isEmpty()) return;
    if (enregistre_traces(this, *traces_, chemin, forme ? forme_csv::point_virgule : forme_csv::virgule))
        lab_etat_->setText("Enregistré dans " + chemin);
}

void page_courbes::menu_graphique(const QPoint& ou, int g) {
    QMenu m(this);
    m.addAction("Placer &A ici", this,
                [this] { traces_->pose_marques(traces_->curseur(), traces_->dessin().b); });
    m.addAction("Placer &B ici", this,
                [this] { traces_->pose_marques(traces_->dessin().a, traces_->curseur()); });
    m.addSeparator();
    if (g >= 0 && g < choix_.size())
        for (const trace_courbe& c : traces_->dessin().graphiques[g].courbes)
            if (c.calcul.isEmpty())
                m.addAction("Retirer « " + c.titre + " »", this, [this, g, nom = c.nom] { retire(g, nom); });
    m.addSeparator();
    m.addActions(findChild<QMenu*>("menu_export")->actions());
    m.exec(ou);
}

void page_courbes::changeEvent(QEvent* e) {
    if (e->type() == QEvent::PaletteChange) {
        gardes_->suit(s_);
        montre_evenements();
        montre_courbes();
    }
    page::changeEvent(e);
}

/// In a low window the charts come first: the legends tell the values too.
void page_courbes::resizeEvent(QResizeEvent* e) {
    const bool haute = height() > style::espace(100);
    if (haute != haute_) {
        haute_ = haute;
        cmd_lectures_->setChecked(haute);
    }
    partage();
    page::resizeEvent(e);
}

/// The table of readings stands below the charts, or in their place where there is no room for both.
void page_courbes::partage() {
    const bool tableau = cmd_lectures_->isChecked();
    lecture_->setVisible(tableau);
    traces_->setVisible(haute_ || !tableau);
}

void page_courbes::montre_date(double j) { traces_->pose_curseur(j); }
