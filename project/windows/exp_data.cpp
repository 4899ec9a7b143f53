#include "project/windows/exp_data.h"

#include <QAction>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QStyle>
#include <QTableView>
#include <QToolButton>

#include "shell/formats.h"
#include "widgets/entete_colonne.h"
#include "widgets/pied_calcul.h"
#include "widgets/style.h"
#include "widgets/table_resultats.h"
#include "widgets/textes.h"
#include "widgets/trace_graph.h"
#include "widgets/verifications.h"

using std::size_t;

exp_data::exp_data(session& s, const QString& nom, const QString& selecteur, const QString& titre_selecteur,
                   QWidget* parent)
    : fenetre(s, nom, "Exploitation de données", parent), s_(s), table_(new table_resultats(this)) {
    auto* tout = new QVBoxLayout(contenu());
    tout->setContentsMargins(style::espace(3), style::espace(3), style::espace(3), style::espace(3));
    tout->setSpacing(style::espace(2));
    auto* haut = new QHBoxLayout;
    haut->setSpacing(style::espace(3));
    tout->addLayout(haut, 1);
    construit_gauche(haut, selecteur, titre_selecteur);
    construit_resultats(haut);
    construit_bas(tout);
    construit_actions();
    table_->recommence(std::vector<colonne_table>(nombre_colonnes, {.vide = true}), 0, 1);
    etat_boutons(false);
    active_colonne(0);
    resize(style::espace(310), style::espace(145));
}

void exp_data::construit_gauche(QBoxLayout* pile, const QString& selecteur, const QString& titre) {
    auto* cadre = new QGroupBox("Variables", this);
    cadre->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    auto* v = new QVBoxLayout(cadre);
    v->setSpacing(style::espace(2));

    list_var_ = new QListWidget(this);
    list_var_->setObjectName("list_var");
    list_var_->setMinimumWidth(style::espace(44));
    list_var_->setUniformItemSizes(true);
    auto* lab_var = new QLabel("&Variable :", this);
    lab_var->setObjectName("lab_var");
    lab_var->setBuddy(list_var_);
    auto* aide = new QLabel("Cliquez sur l'en-tête d'une colonne, puis sur une variable.", this);
    aide->setWordWrap(true);
    aide->setForegroundRole(QPalette::PlaceholderText);

    lab_selecteur_ = new QLabel(titre, this);
    lab_selecteur_->setObjectName("lab_" + selecteur);
    txt_selecteur_ = new QLineEdit(this);
    txt_selecteur_->setObjectName("txt_" + selecteur);
    txt_selecteur_->setReadOnly(true);
    txt_selecteur_->setToolTip("Choix en vigueur pour la colonne active");
    txt_selecteur_->setFocusPolicy(Qt::NoFocus);
    txt_selecteur_->setMaximumWidth(style::espace(20));
    scroll_ = new QScrollBar(Qt::Horizontal, this);
    scroll_->setObjectName("scroll_" + selecteur);
    scroll_->setFocusPolicy(Qt::StrongFocus);
    scroll_->setInvertedControls(false); // the right arrow goes up
    scroll_->setToolTip("Choix pour la colonne active");
    auto* ligne = new QHBoxLayout;
    ligne->addWidget(lab_selecteur_);
    ligne->addWidget(txt_selecteur_);
    ligne->addWidget(scroll_, 1);

    v->addWidget(lab_var);
    v->addWidget(list_var_, 1);
    v->addLayout(ligne);
    v->addWidget(aide);
    pile->addWidget(cadre);

    connect(list_var_, &QListWidget::itemClicked, this, [this] { choisit_variable(colonne_active_); });
    connect(list_var_, &QListWidget::itemActivated, this, [this] { choisit_variable(colonne_active_); });
    connect(scroll_, &QScrollBar::valueChanged, this, &exp_data::change_position);
}

void exp_data::construit_resultats(QBoxLayout* pile) {
    auto* cadre = new QGroupBox("Résultats", this);
    auto* v = new QVBoxLayout(cadre);
    v->setSpacing(style::espace());

    auto* choix = new QHBoxLayout;
    auto* groupe = new QButtonGroup(this);
    const char* titres[] = {"&Tableau", "&Graphique"};
    for (size_t i = 0; i < 2; ++i) {
        opt_view_[i] = new QRadioButton(titres[i], this);
        opt_view_[i]->setObjectName(QString("opt_view_%1").arg(i));
        groupe->addButton(opt_view_[i]);
        choix->addWidget(opt_view_[i]);
        choix->addSpacing(style::espace(3));
        connect(opt_view_[i], &QRadioButton::toggled, this, [this](bool actif) {
            if (actif) montre_vue();
        });
    }
    opt_view_[0]->setToolTip("Une ligne par pas ; les lignes grises sont en éclipse");
    opt_view_[1]->setToolTip("Courbes des colonnes ; les bandes grises sont des éclipses");
    choix->addStretch(1);
    construit_limites(choix);
    v->addLayout(choix);

    grid_ = new QTableView(this);
    grid_->setObjectName("grid");
    grid_->setAccessibleName("Tableau des résultats");
    prepare_vue(grid_, table_);
    grid_->horizontalHeader()->hide();

    construit_entetes(v);

    vues_ = new QStackedWidget(this);
    vues_->addWidget(grid_);
    pict_graph_ = new trace_graph(this);
    vues_->addWidget(pict_graph_);
    v->addWidget(vues_, 1);
    pile->addWidget(cadre, 1);
}

/// The headers stand over the grid's columns, without the room of the scroll bar.
void exp_data::construit_entetes(QBoxLayout* pile) {
    const int largeur_date = grid_->fontMetrics().horizontalAdvance("00/00/0000 00:00:00") + style::espace(5);
    auto* entetes = new QGridLayout;
    entetes->setSpacing(0);
    entetes->setContentsMargins(grid_->frameWidth(), 0,
                                grid_->frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent), 0);
    auto* lab_date = new QLabel("Date", this);
    lab_date->setAlignment(Qt::AlignCenter);
    lab_date->setFixedWidth(largeur_date);
    entetes->addWidget(lab_date, 0, 0);
    for (int c = 0; c < nombre_colonnes; ++c) {
        auto*& col = lab_col_[static_cast<size_t>(c)];
        auto*& colp = lab_colp_[static_cast<size_t>(c)];
        col = new entete_colonne(c, this);
        colp = new QLabel(this);
        colp->setObjectName(QString("lab_colp_%1").arg(c));
        colp->setAlignment(Qt::AlignCenter);
        col->installEventFilter(this); // the grid's columns follow its width
        entetes->addWidget(col, 0, c + 1);
        entetes->addWidget(colp, 1, c + 1);
        entetes->setColumnStretch(c + 1, 1);
        connect(col, &entete_colonne::clique, this, [this, c] {
            active_colonne(c);
            // The variable that the column holds is not chosen again: its position and its values stay.
            if (list_var_->currentRow() + 1 != col_variable_[static_cast<size_t>(c)]) choisit_variable(c);
        });
        connect(col, &entete_colonne::vide, this, [this, c] {
            if (!en_cours_) vide_colonne(c);
        });
    }
    pile->addLayout(entetes);
    auto* h = grid_->horizontalHeader();
    h->setMinimumSectionSize(style::espace(4));
    connect(table_, &QAbstractItemModel::modelReset, this, [this, h, largeur_date] {
        h->setSectionResizeMode(QHeaderView::Fixed);
        h->resizeSection(0, largeur_date);
        aligne_colonnes();
    });
}

/// The limits of the graph, shown with it.
void exp_data::construit_limites(QBoxLayout* ligne) {
    echelle_cadre_ = new QWidget(this);
    auto* h = new QHBoxLayout(echelle_cadre_);
    h->setContentsMargins(0, 0, 0, 0);
    h->setSpacing(style::espace(2));
    h->addWidget(new QLabel("Echelle :", this));
    const char* noms[] = {"Min", "Max"};
    const char* aides[] = {"Bas de l'échelle des ordonnées, dans l'unité des variables",
                           "Haut de l'échelle des ordonnées, dans l'unité des variables"};
    for (size_t i = 0; i < 2; ++i) {
        auto* e = new QLineEdit("0", this);
        e->setObjectName(QString("txt_lim_%1").arg(i));
        e->setToolTip(aides[i]);
        style::boite_nombre(e, 8);
        h->addWidget(new QLabel(noms[i], this));
        h->addWidget(e);
        txt_lim_[i] = e;
        connect(e, &QLineEdit::editingFinished, this, [this, i] { change_limite(static_cast<int>(i)); });
    }
    ligne->addWidget(echelle_cadre_);
}

void exp_data::construit_bas(QBoxLayout* pile) {
    pied_ = new pied_calcul("Calcule les colonnes sur la période de simulation",
                            "Enregistre le tableau (texte) ou le graphique (image) affiché (Ctrl+S)", this);
    auto* plus = new QToolButton(this);
    plus->setObjectName("cmd_plus");
    plus->setText("A&utres sorties");
    plus->setToolTip("Copier, enregistrer ou calculer droit dans un fichier");
    plus->setPopupMode(QToolButton::InstantPopup);
    plus->setMenu(new QMenu(plus));
    plus->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    plus->setMinimumHeight(pied_->sizeHint().height());
    pied_->ajoute(plus);
    pile->addWidget(pied_);

    connect(pied_, &pied_calcul::calculer, this, &exp_data::cmd_saisir_clic);
    connect(pied_, &pied_calcul::interrompre, this, [this] { stop_ = true; });
    connect(pied_, &pied_calcul::enregistrer, this, &exp_data::cmd_save_clic);
    connect(pied_, &pied_calcul::quitter, this, &QWidget::close);
}

void exp_data::construit_actions() {
    const auto action = [this](const QString& texte, const QString& nom, auto&& fait,
                               QKeySequence touche = {}) {
        auto* a = new QAction(texte, this);
        a->setObjectName(nom);
        a->setShortcut(touche);
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(a, &QAction::triggered, this, fait);
        return a;
    };
    copier_ = action(
        "&Copier le tableau", "mn_copier", [this] { copie_table(); }, QKeySequence::Copy);
    table_action_ = action("Enregistrer le &tableau…", "mn_table", [this] { demande_et_enregistre_table(); });
    csv_[0] = action("Enregistrer en CSV, &virgules…", "mn_csv",
                     [this] { demande_et_enregistre_csv(forme_csv::virgule); });
    csv_[1] = action("Enregistrer en CSV, &points-virgules et virgule décimale…", "mn_csv_fr",
                     [this] { demande_et_enregistre_csv(forme_csv::point_virgule); });
    image_action_ =
        action("Enregistrer le &graphique…", "mn_image", [this] { demande_et_enregistre_image(); });
    vers_fichier_ = action("Calculer &vers un fichier…", "mn_vers_fichier", [this] { demande_et_calcule(); });
    vers_fichier_->setToolTip("Une ligne par pas, écrite à mesure ; le tableau reste tel qu'il est");
    auto* enregistrer = action("Enregistrer", "mn_enregistrer", [this] { cmd_save_clic(); });
    enregistrer->setShortcuts({QKeySequence::Save, QKeySequence("Ctrl+Shift+S")}); // both ask for a name
    addAction(enregistrer);
    auto* menu = findChild<QToolButton*>("cmd_plus")->menu();
    menu->setToolTipsVisible(true);
    for (QAction* a : {copier_, table_action_, csv_[0], csv_[1], image_action_, vers_fichier_}) {
        menu->addAction(a);
        grid_->addAction(a);
        pict_graph_->addAction(a);
    }
    grid_->setContextMenuPolicy(Qt::ActionsContextMenu);
    pict_graph_->setContextMenuPolicy(Qt::ActionsContextMenu);
    opt_view_[0]->setChecked(true);
}

void exp_data::montre_vue() {
    const bool graphique = opt_view_[1]->isChecked();
    vues_->setCurrentIndex(graphique ? 1 : 0);
    echelle_cadre_->setVisible(graphique);
    if (graphique) retrace();
}

void exp_data::change_limite(int i) {
    QLineEdit* e = txt_lim_[static_cast<size_t>(i)];
    double& limite = limites_[static_cast<size_t>(i)];
    const QString ancien = QString::fromStdString(format_court(limite));
    double x = 0;
    if (!e->isModified()) return;
    e->setModified(false);
    if (!verif_double(e, e->text(), ancien, x)) return;
    limite = x;
    e->setText(QString::fromStdString(format_court(x)));
    retrace();
}

void exp_data::retrace() {
    if (!en_cours_ && opt_view_[1]->isChecked()) dessine_graphe();
}

/// Draws the columns that hold values, whichever view is in sight.
void exp_data::dessine_graphe() {
    QVector<trace_graph::courbe> courbes;
    for (int c = 0; c < nombre_colonnes; ++c) {
        const auto n = static_cast<size_t>(c);
        if (col_variable_[n] == 0 || !table_->a_valeurs(c)) continue;
        const auto [nom, unite] = separe_unite(lab_col_[n]->text());
        courbes.push_back(
            {c, couleur_colonne(c), couleur_colonne(c, true), nom, lab_colp_[n]->text(), unite, c + 1});
    }
    if (table_->lignes() == 0) {
        pict_graph_->efface();
        return;
    }
    double min = 0, max = 0;
    lit_nombre(txt_lim_[0]->text().toStdString(), min);
    lit_nombre(txt_lim_[1]->text().toStdString(), max);
    pict_graph_->trace(*table_, courbes, debut_, fin_, min, max);
}

void exp_data::closeEvent(QCloseEvent* e) {
    stop_ = true;
    fenetre::closeEvent(e);
}

/// The body or the panels may have changed in the settings window meanwhile.
void exp_data::changeEvent(QEvent* e) {
    if (e->type() == QEvent::ActivationChange && isActiveWindow() && !en_cours_) form_load();
    if (e->type() == QEvent::PaletteChange && lab_col_[0])
        for (entete_colonne* l : lab_col_) l->update();
    fenetre::changeEvent(e);
}

/// Ctrl+Z brings the last emptied column back before it undoes settings.
bool exp_data::event(QEvent* e) {
    if (e->type() == QEvent::ShortcutOverride || e->type() == QEvent::KeyPress) {
        auto* touche = static_cast<QKeyEvent*>(e);
        if (touche->matches(QKeySequence::Undo) && !gardees_.empty() && !en_cours_) {
            if (e->type() == QEvent::KeyPress) rend_colonne();
            e->accept();
            return true;
        }
    }
    return fenetre::event(e);
}

bool exp_data::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::Resize) aligne_colonnes();
    return fenetre::eventFilter(o, e);
}
