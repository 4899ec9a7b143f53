#include "analysis/windows/page_carte.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

#include "analysis/windows/calcul_passages.h"
#include "analysis/windows/carte_terre.h"
#include "analysis/windows/dessin_polaire.h"
#include "analysis/windows/modele_passages.h"
#include "analysis/windows/table_stations.h"
#include "widgets/barre_temps.h"
#include "widgets/marque_modele.h"
#include "widgets/style.h"

page_carte::page_carte(session& s, QWidget* parent)
    : page("page_carte", parent), s_(s), calcul_(new calcul_passages(this)),
      modele_(new modele_passages(this)), ordre_(new QSortFilterProxyModel(this)), date_(s.periode.j_debut),
      debut_vu_(s.periode.j_debut) {
    std::string raison;
    charge_stations(s.dossier_depart + "/stations.txt", du_programme_, raison);
    ordre_->setSourceModel(modele_);
    ordre_->setSortRole(modele_passages::role_tri);

    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    pile->addLayout(cree_tete());
    auto* partage = new QSplitter(Qt::Horizontal);
    partage->setObjectName("partage_carte");
    partage->setChildrenCollapsible(false);
    partage->addWidget(cree_gauche());
    partage->addWidget(cree_droite());
    partage->setStretchFactor(0, 1);
    partage->setSizes({640, 360}); // in these proportions
    pile->addWidget(partage, 1);

    connect(calcul_, &calcul_passages::pret, this, &page_carte::passages_prets);
    connect(carte_, &carte_terre::pointe, this, &page_carte::montre_pointeur);
    connect(carte_, &carte_terre::quitte, this, [this] { pointeur_->hide(); });
    connect(carte_, &carte_terre::station_choisie, this, [this](int i) {
        onglets_->setCurrentWidget(table_stations_);
        table_stations_->choisit(i);
    });
    connect(carte_, &carte_terre::demande_station, this, [this](double lon, double lat) {
        onglets_->setCurrentWidget(table_stations_);
        table_stations_->ajoute(lon, lat);
    });
    connect(temps_, &barre_temps::date_changee, this, [this](double j) {
        date_changee(j);
        emit date_montree(j);
    });
}

page_carte::~page_carte() = default;

/// The answer in a sentence, and what the map shows.
QHBoxLayout* page_carte::cree_tete() {
    auto* rangee = new QHBoxLayout;
    reponse_ = new QLabel;
    reponse_->setObjectName("lab_passage_prochain");
    QFont f = reponse_->font();
    f.setPointSizeF(f.pointSizeF() * 1.2);
    f.setBold(true);
    reponse_->setFont(f);
    reponse_->setWordWrap(true);
    rangee->addWidget(reponse_, 1);
    modele_physique_ = marque_modele("lab_modele");
    rangee->addWidget(modele_physique_);
    vues_ = new QHBoxLayout;
    vues_->setSpacing(0);
    rangee->addLayout(vues_);
    const auto tours = [&](const char* nom, const QString& titre, const QString& aide, int n) {
        auto* l = new QLabel(titre);
        auto* b = new QSpinBox;
        b->setObjectName(nom);
        b->setRange(0, 15);
        b->setValue(n);
        b->setToolTip(aide);
        l->setBuddy(b);
        rangee->addWidget(l);
        rangee->addWidget(b);
        connect(b, &QSpinBox::valueChanged, this, &page_carte::redessine);
        return b;
    };
    avant_ = tours("num_tours_avant", "&Tours avant", "Tours de la trace avant la date montrée", 0);
    apres_ = tours("num_tours_apres", "a&près", "Tours de la trace après la date montrée", 1);
    return rangee;
}

/// The map with the time below.
QWidget* page_carte::cree_gauche() {
    auto* w = new QWidget;
    auto* pile = new QVBoxLayout(w);
    pile->setContentsMargins(0, 0, 0, 0);
    milieu_ = new QStackedWidget;
    carte_ = new carte_terre;
    milieu_->addWidget(carte_);
    pile->addWidget(milieu_, 1);
    temps_ = new barre_temps;
    pile->addWidget(temps_);
    auto* bas = new QHBoxLayout;
    satellite_ = new QLabel;
    satellite_->setObjectName("lab_satellite");
    pointeur_ = new QLabel;
    pointeur_->setObjectName("lab_pointeur");
    pointeur_->setAlignment(Qt::AlignRight);
    pointeur_->hide();
    for (QLabel* l : {satellite_, pointeur_}) {
        l->setFont(style::police_nombres(this));
        // Its changing words never push the map's edge.
        l->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        bas->addWidget(l, 1);
    }
    pile->addLayout(bas);
    return w;
}

QWidget* page_carte::cree_droite() {
    onglets_ = new QTabWidget;
    onglets_->setObjectName("onglets_carte");
    onglets_->addTab(cree_passages(), "Passages");
    table_stations_ = new table_stations;
    onglets_->addTab(table_stations_, "Stations");
    connect(table_stations_, &table_stations::modifiees, this, &page_carte::change_stations);
    connect(table_stations_, &table_stations::demande_defaut, this,
            [this] { change_stations({}, "Stations du programme"); });
    return onglets_;
}

QWidget* page_carte::cree_passages() {
    auto* w = new QWidget;
    auto* pile = new QVBoxLayout(w);
    pile->setContentsMargins(0, style::espace(2), 0, 0);
    pile->addLayout(cree_recherche());
    auto* partage = new QSplitter(Qt::Vertical);
    partage->setChildrenCollapsible(false);
    partage->addWidget(cree_table());
    partage->addWidget(cree_detail());
    partage->setStretchFactor(0, 1);
    partage->setStretchFactor(1, 1);
    pile->addWidget(partage, 1);
    return w;
}

/// How far the passes are searched, and their file.
QLayout* page_carte::cree_recherche() {
    etendue_ = new QComboBox;
    etendue_->setObjectName("cmb_etendue");
    etendue_->setAccessibleName("Étendue de la recherche");
    etendue_->setToolTip("Durée de la recherche, depuis le début de la période");
    for (const double jours : etendues)
        etendue_->addItem(jours == 0   ? "Période de simulation"
                          : jours == 1 ? "1 jour"
                                       : QString("%1 jours").arg(jours));
    etendue_->setCurrentIndex(1);
    enregistre_ = new QPushButton("&Enregistrer…");
    enregistre_->setObjectName("cmd_passages_csv");
    enregistre_->setToolTip("Enregistrer les passages (CSV)");
    enregistre_->setAutoDefault(false);
    connect(etendue_, &QComboBox::currentIndexChanged, this, &page_carte::recherche);
    connect(enregistre_, &QPushButton::clicked, this, &page_carte::enregistre);
    auto* rangee = new QHBoxLayout;
    rangee->addWidget(etendue_);
    rangee->addStretch();
    rangee->addWidget(enregistre_);
    return rangee;
}

QWidget* page_carte::cree_table() {
    vue_ = new QTableView;
    vue_->setObjectName("grid_passages");
    vue_->setAccessibleName("Passages");
    vue_->setModel(ordre_);
    vue_->setFont(style::police_nombres(this));
    vue_->verticalHeader()->hide();
    vue_->verticalHeader()->setDefaultSectionSize(vue_->fontMetrics().height() + style::espace());
    vue_->setSelectionBehavior(QAbstractItemView::SelectRows);
    vue_->setSelectionMode(QAbstractItemView::SingleSelection);
    vue_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vue_->setAlternatingRowColors(true);
    vue_->setSortingEnabled(true);
    vue_->sortByColumn(modele_passages::delai, Qt::AscendingOrder);
    vue_->horizontalHeader()->setHighlightSections(false);
    connect(vue_, &QTableView::clicked, this, &page_carte::passage_clique);
    connect(vue_, &QTableView::activated, this, &page_carte::passage_clique);
    return vue_;
}

/// The chosen pass in the station's sky, and in words.
QWidget* page_carte::cree_detail() {
    auto* w = new QWidget;
    auto* pile = new QVBoxLayout(w);
    pile->setContentsMargins(0, 0, 0, 0);
    polaire_ = new dessin_polaire;
    detail_ = new QLabel;
    detail_->setObjectName("lab_passage");
    detail_->setWordWrap(true);
    detail_->setAlignment(Qt::AlignHCenter);
    pile->addWidget(polaire_, 1);
    pile->addWidget(detail_);
    return w;
}

void page_carte::ajoute_vue(const QString& titre, std::function<QWidget*()> fabrique) {
    const auto bouton = [&](const QString& texte, const char* nom) {
        auto* b = new QToolButton;
        b->setObjectName(nom);
        b->setText(texte);
        b->setCheckable(true);
        b->setAutoExclusive(true);
        vues_->addWidget(b);
        return b;
    };
    auto* carte = bouton("Carte", "cmd_vue_carte");
    carte->setChecked(true);
    connect(carte, &QToolButton::clicked, this, [this] {
        milieu_->setCurrentWidget(carte_);
        for (QSpinBox* tours : {avant_, apres_}) tours->setEnabled(true);
    });
    connect(bouton(titre, "cmd_vue_autre"), &QToolButton::clicked, this,
            [this, fabrique = std::move(fabrique)] {
                if (!autre_vue_) {
                    autre_vue_ = fabrique();
                    milieu_->addWidget(autre_vue_);
                }
                milieu_->setCurrentWidget(autre_vue_);
                redessine();
            });
}
