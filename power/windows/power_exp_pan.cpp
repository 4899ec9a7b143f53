#include "power/windows/power_exp_pan.h"

#include <QAction>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTableView>

#include "power/windows/image_panneaux.h"
#include "shell/echelle.h"
#include "widgets/pied_calcul.h"
#include "widgets/style.h"
#include "widgets/table_resultats.h"
#include "widgets/trace_graph.h"

using std::size_t;

namespace {

constexpr const char* titres_grandeurs[] = {"Température (°C)", "Puissance (W)", "Flux (W/m²)", "Angles (°)"};
constexpr const char* unites[] = {"°C", "W", "W/m²", "°"};

/// Curves are told apart by their colour, their number and their line.
struct allure {
    int couleur;
    Qt::PenStyle trait;
};
constexpr allure allures[] = {{0, Qt::SolidLine}, {1, Qt::DashLine},       {2, Qt::DashDotLine},
                              {3, Qt::DotLine},   {4, Qt::DashDotDotLine}, {6, Qt::DashLine}};

} // namespace

power_exp_pan::power_exp_pan(session& s, QWidget* parent)
    : fenetre(s, "power_exp_pan", "Simulation panneaux solaires", parent), s_(s) {
    for (auto& t : tables_) t = new table_resultats(this);
    auto* tout = new QVBoxLayout(contenu());
    tout->setContentsMargins(style::espace(3), style::espace(3), style::espace(3), style::espace(3));
    tout->setSpacing(style::espace(2));
    auto* haut = new QHBoxLayout;
    haut->setSpacing(style::espace(3));
    haut->addWidget(construit_choix());
    haut->addWidget(construit_resultats(), 1);
    tout->addLayout(haut, 1);
    construit_bas(tout);
    construit_actions();
    opt_view_[0]->setChecked(true);
    form_load();
    montage_ = montage_de(s_.power);
    recommence();
    etat_boutons(false);
    resize(style::espace(290), style::espace(125));
}

QWidget* power_exp_pan::construit_choix() {
    auto* cadre = new QGroupBox("Grandeur", this);
    auto* v = new QVBoxLayout(cadre);
    v->setSpacing(style::espace(2));
    const char* noms[] = {"cmd_temperature", "cmd_puissance", "cmd_flux", "cmd_angles"};
    const char* textes[] = {"&Température", "&Puissance", "&Flux", "An&gles"};
    const char* aides[] = {"Température de chaque panneau, °C", "Puissance électrique de chaque panneau, W",
                           "Flux reçu par chaque panneau, W/m²",
                           "Incidences et meilleur angle des panneaux externes, degrés"};
    auto* groupe = new QButtonGroup(this);
    for (size_t i = 0; i < nombre_grandeurs; ++i) {
        cmd_[i] = new QPushButton(textes[i], this);
        cmd_[i]->setObjectName(noms[i]);
        cmd_[i]->setToolTip(aides[i]);
        cmd_[i]->setCheckable(true);
        cmd_[i]->setAutoDefault(false);
        groupe->addButton(cmd_[i]);
        v->addWidget(cmd_[i]);
        connect(cmd_[i], &QPushButton::clicked, this, [this, i] { montre(static_cast<grandeur>(i)); });
        connect(cmd_[i], &QPushButton::toggled, this, [b = cmd_[i]](bool choisi) {
            QFont f = b->font(); // the sunken edge alone hardly shows on a dark desktop
            f.setBold(choisi);
            b->setFont(f);
        });
    }
    cmd_[0]->setChecked(true);
    v->addStretch(1);
    images_ = {new image_panneaux(1, "img_pan_ext", this), new image_panneaux(4, "img_pan4", this),
               new image_panneaux(6, "img_pan6", this), new image_panneaux(36, "img_cylindre", this)};
    for (QWidget* i : images_) v->addWidget(i);
    return cadre;
}

QWidget* power_exp_pan::construit_resultats() {
    cadre_ = new QGroupBox(this);
    auto* v = new QVBoxLayout(cadre_);
    v->setSpacing(style::espace());
    auto* ligne = new QHBoxLayout;
    const char* titres[] = {"Grap&hique", "Ta&bleau"};
    for (size_t i = 0; i < 2; ++i) {
        opt_view_[i] = new QRadioButton(titres[i], this);
        opt_view_[i]->setObjectName(QString("opt_view_%1").arg(i));
        ligne->addWidget(opt_view_[i]);
        ligne->addSpacing(style::espace(3));
        connect(opt_view_[i], &QRadioButton::toggled, this, [this](bool actif) {
            if (actif) montre(grandeur_);
        });
    }
    opt_view_[0]->setToolTip("Courbes ; les bandes grises sont des éclipses");
    opt_view_[1]->setToolTip("Une ligne par pas ; les lignes grises sont en éclipse");
    ligne->addStretch(1);
    v->addLayout(ligne);

    pict_graph_ = new trace_graph(this);
    grid_ = new QTableView(this);
    grid_->setObjectName("grid");
    prepare_vue(grid_, tables_[0]);
    vues_ = new QStackedWidget(this);
    vues_->addWidget(pict_graph_);
    vues_->addWidget(grid_);
    v->addWidget(vues_, 1);
    return cadre_;
}

void power_exp_pan::construit_bas(QBoxLayout* pile) {
    pied_ = new pied_calcul("Simule les panneaux sur la période de simulation",
                            "Enregistre le tableau de la grandeur affichée (Ctrl+S)", this);
    pile->addWidget(pied_);
    connect(pied_, &pied_calcul::calculer, this, &power_exp_pan::cmd_saisir_clic);
    connect(pied_, &pied_calcul::interrompre, this, [this] { stop_ = true; });
    connect(pied_, &pied_calcul::enregistrer, this, &power_exp_pan::demande_et_enregistre);
    connect(pied_, &pied_calcul::quitter, this, &QWidget::close);
}

void power_exp_pan::construit_actions() {
    const auto action = [this](const QString& texte, const QString& nom, auto&& fait, QKeySequence touche) {
        auto* a = new QAction(texte, this);
        a->setObjectName(nom);
        a->setShortcut(touche);
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(a, &QAction::triggered, this, fait);
        for (QWidget* w : std::initializer_list<QWidget*>{grid_, pict_graph_}) {
            w->addAction(a);
            w->setContextMenuPolicy(Qt::ActionsContextMenu);
        }
        addAction(a);
    };
    action(
        "&Copier le tableau", "mn_copier", [this] { copie_table(); }, QKeySequence::Copy);
    action(
        "&Enregistrer le tableau…", "mn_table", [this] { demande_et_enregistre(); }, QKeySequence::Save);
}

void power_exp_pan::form_load() {
    const montage m = montage_de(s_.power);
    images_[0]->setVisible(m == montage::externes);
    images_[1]->setVisible(m == montage::faces && s_.power.nb_faces != 6);
    images_[2]->setVisible(m == montage::faces && s_.power.nb_faces == 6);
    images_[3]->setVisible(m == montage::cylindre);
    // Angles exist for external panels alone, of the results or of the next run.
    cmd_[angles]->setVisible(m == montage::externes || (panneaux_ > 0 && montage_ == montage::externes));
    if (en_cours_ && m != montage_) stop_ = true;
}

QStringList power_exp_pan::titres(grandeur g) const {
    QStringList t;
    for (const variable_liste& v : colonnes_[g])
        t << (*v.texte ? v.texte : QString("Panneau %1").arg(v.element + 1));
    return t;
}

void power_exp_pan::montre(grandeur g) {
    grandeur_ = g;
    cmd_[g]->setChecked(true);
    cadre_->setTitle(titres_grandeurs[g]);
    vues_->setCurrentIndex(opt_view_[1]->isChecked() ? 1 : 0);
    if (grid_->model() != tables_[g]) grid_->setModel(tables_[g]);
    const int date = grid_->fontMetrics().horizontalAdvance("00/00/0000 00:00:00") + style::espace(5);
    for (int c = 0; c < tables_[g]->columnCount(); ++c)
        grid_->setColumnWidth(
            c, c == 0 ? date : std::max(style::espace(22), grid_->horizontalHeader()->sectionSizeHint(c)));
    retrace();
}

/// Columns of the chart: all of a prism's panels; of the cylinder the extremes and a strip every quarter.
std::vector<int> power_exp_pan::colonnes_tracees() const {
    const int n = tables_[grandeur_]->colonnes();
    if (montage_ != montage::cylindre) {
        std::vector<int> c;
        const int sans_extremes = grandeur_ == temperature ? panneaux_ : n;
        for (int i = 0; i < sans_extremes; ++i) c.push_back(i);
        return c;
    }
    std::vector<int> c = {0, 9, 18, 27};
    if (grandeur_ == temperature) c.insert(c.end(), {nb_bandes, nb_bandes + 1});
    return c;
}

void power_exp_pan::retrace() {
    if (en_cours_ || !opt_view_[0]->isChecked()) return;
    const table_resultats& table = *tables_[grandeur_];
    if (table.lignes() == 0) {
        pict_graph_->efface();
        return;
    }
    QVector<trace_graph::courbe> courbes;
    echelle e;
    const QStringList noms = titres(grandeur_);
    for (const int c : colonnes_tracees()) {
        const int rang = static_cast<int>(courbes.size());
        const QColor couleur = style::couleur_courbe(allures[rang].couleur);
        courbes.push_back({c,
                           style::accorde(couleur, false),
                           style::accorde(couleur, true),
                           noms[c],
                           {},
                           unites[grandeur_],
                           rang + 1,
                           allures[rang].trait});
        const auto [min, max] = table.extremes(c, 0, table.lignes());
        e.etend(min);
        e.etend(max);
    }
    e.arrondit();
    pict_graph_->trace(table, courbes, debut_, fin_, e.min, e.max);
}

void power_exp_pan::closeEvent(QCloseEvent* e) {
    stop_ = true;
    fenetre::closeEvent(e);
}

/// The body may have changed in the settings window meanwhile.
void power_exp_pan::changeEvent(QEvent* e) {
    if (e->type() == QEvent::ActivationChange && isActiveWindow() && !en_cours_) form_load();
    fenetre::changeEvent(e);
}
