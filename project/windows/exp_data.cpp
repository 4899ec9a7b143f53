#include "project/windows/exp_data.h"

#include <QAction>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
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
    table_->recommence(nombre_colonnes, 0, 1);
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

/// The headers stand over the grid's columns: the same widths, without the room of the scroll bar.
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
        col = new entete_colonne(c, couleur_colonne(c), this);
        colp = new QLabel(this);
        colp->setObjectName(QString("lab_colp_%1").arg(c));
        colp->setAlignment(Qt::AlignCenter);
        entetes->addWidget(col, 0, c + 1);
        entetes->addWidget(colp, 1, c + 1);
        entetes->setColumnStretch(c + 1, 1);
        connect(col, &entete_colonne::clique, this, [this, c] {
            active_colonne(c);
            choisit_variable(c);
        });
        connect(col, &entete_colonne::vide, this, [this, c] {
            if (!en_cours_) vide_colonne(c);
        });
    }
    pile->addLayout(entetes);
    auto* h = grid_->horizontalHeader();
    h->setMinimumSectionSize(style::espace(10));
    connect(table_, &QAbstractItemModel::modelReset, this, [h, largeur_date] {
        h->setSectionResizeMode(QHeaderView::Stretch);
        h->setSectionResizeMode(0, QHeaderView::Fixed);
        h->resizeSection(0, largeur_date);
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
    auto* table = action("Enregistrer le &tableau…", "mn_table", [this] { demande_et_enregistre_table(); });
    auto* image = action("Enregistrer le &graphique…", "mn_image", [this] { demande_et_enregistre_image(); });
    vers_fichier_ = action("Calculer &vers un fichier…", "mn_vers_fichier", [this] { demande_et_calcule(); });
    vers_fichier_->setToolTip("Une ligne par pas, écrite à mesure ; le tableau reste tel qu'il est");
    auto* enregistrer = action(
        "Enregistrer", "mn_enregistrer", [this] { cmd_save_clic(); }, QKeySequence::Save);
    addAction(enregistrer);
    auto* menu = findChild<QToolButton*>("cmd_plus")->menu();
    menu->setToolTipsVisible(true);
    for (QAction* a : {copier_, table, image, vers_fichier_}) {
        menu->addAction(a);
        grid_->addAction(a);
        pict_graph_->addAction(a);
    }
    grid_->setContextMenuPolicy(Qt::ActionsContextMenu);
    pict_graph_->setContextMenuPolicy(Qt::ActionsContextMenu);
    opt_view_[0]->setChecked(true);
}

void exp_data::form_load() {
    {
        const QSignalBlocker muet(scroll_);
        scroll_->setRange(1, static_cast<int>(positions().size()));
        scroll_->setPageStep(1);
    }
    if (configuration() != configuration_) {
        if (en_cours_) stop_ = true; // the variables of the run are no longer those of the list
        configuration_ = configuration();
        liste_ = variables();
        list_var_->clear();
        for (const variable& v : liste_) {
            auto* i = new QListWidgetItem(v.nom, list_var_);
            i->setToolTip(v.sens);
        }
        for (int c = 0; c < nombre_colonnes; ++c)
            if (col_variable_[static_cast<size_t>(c)] > variables_communes()) vide_colonne(c);
    }
    for (int c = 0; c < nombre_colonnes; ++c) // a prism of six faces may have become one of four
        if (col_position_[static_cast<size_t>(c)] >= positions().size()) vide_colonne(c);
    montre_selecteur();
}

void exp_data::active_colonne(int colonne) {
    colonne_active_ = colonne;
    for (int c = 0; c < nombre_colonnes; ++c) lab_col_[static_cast<size_t>(c)]->marque_active(c == colonne);
    montre_selecteur();
}

void exp_data::choisit_variable(int colonne) {
    if (en_cours_) return; // the columns of a run stay
    const auto c = static_cast<size_t>(colonne);
    const int variable = list_var_->currentRow() + 1;
    const bool selecteur = variable > 0 && liste_[static_cast<size_t>(variable - 1)].avec_selecteur;
    const int position = selecteur ? scroll_->value() - 1 : 0;
    if (variable != col_variable_[c] || position != col_position_[c]) table_->vide_colonne(colonne);
    col_variable_[c] = variable;
    col_position_[c] = position;
    lab_col_[c]->setText(variable > 0 ? liste_[static_cast<size_t>(variable - 1)].nom : QString());
    lab_colp_[c]->setText(selecteur ? sous_titre(positions().value(position)) : QString());
    montre_selecteur();
    retrace();
}

void exp_data::vide_colonne(int colonne) {
    const auto c = static_cast<size_t>(colonne);
    col_variable_[c] = col_position_[c] = 0;
    lab_col_[c]->setText({});
    lab_colp_[c]->clear();
    table_->vide_colonne(colonne);
    montre_selecteur();
    retrace();
}

/// The selector shows only while the active column holds a variable that needs it.
void exp_data::montre_selecteur() {
    const int v = col_variable_[static_cast<size_t>(colonne_active_)];
    const bool utile = v > 0 && liste_[static_cast<size_t>(v - 1)].avec_selecteur;
    if (utile) {
        const QSignalBlocker muet(scroll_);
        scroll_->setValue(col_position_[static_cast<size_t>(colonne_active_)] + 1);
        txt_selecteur_->setText(positions().value(scroll_->value() - 1));
    }
    for (QWidget* w : std::initializer_list<QWidget*>{lab_selecteur_, txt_selecteur_, scroll_}) {
        w->setVisible(utile);
        w->setEnabled(utile);
    }
}

void exp_data::change_position(int position) {
    const auto c = static_cast<size_t>(colonne_active_);
    if (en_cours_) return montre_selecteur();
    txt_selecteur_->setText(positions().value(position - 1));
    if (col_position_[c] == position - 1) return;
    col_position_[c] = position - 1;
    lab_colp_[c]->setText(sous_titre(positions().value(position - 1)));
    table_->vide_colonne(colonne_active_);
    retrace();
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
    if (en_cours_ || !opt_view_[1]->isChecked()) return;
    QVector<trace_graph::courbe> courbes;
    for (int c = 0; c < nombre_colonnes; ++c) {
        const auto n = static_cast<size_t>(c);
        // A column whose variable has changed since the run has no values to draw.
        if (col_variable_[n] == 0 || table_->lignes() == 0 || table_->texte(0, c).empty()) continue;
        const QString position = lab_colp_[n]->text();
        courbes.push_back(
            {c, couleur_colonne(c), lab_col_[n]->text() + (position.isEmpty() ? "" : ", " + position)});
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
