#include "power/windows/power_exp_bat.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>
#include <cmath>

#include "shell/formats.h"
#include "widgets/graphe.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

using std::size_t;

power_exp_bat::power_exp_bat(session& s, QWidget* parent)
    : fenetre(s, "power_exp_bat", "Charge/Décharge des batteries", parent), s_(s) {
    auto* tout = new QVBoxLayout(contenu());
    tout->setContentsMargins(style::espace(3), style::espace(3), style::espace(3), style::espace(3));
    tout->setSpacing(style::espace(3));
    auto* h = new QHBoxLayout;
    h->setSpacing(style::espace(3));
    // The entries scroll on a low screen; what starts and stops the study stays in sight below.
    auto* cadres = new QWidget;
    auto* pile = new QVBoxLayout(cadres);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->setSpacing(style::espace(3));
    for (QWidget* w : {construit_saisies(), construit_mode(), construit_resultats()}) pile->addWidget(w);
    pile->addStretch(1);
    auto* zone = new QScrollArea(this);
    zone->setFrameShape(QFrame::NoFrame);
    zone->setFocusPolicy(Qt::NoFocus);
    zone->setWidgetResizable(true);
    zone->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    zone->setWidget(cadres);
    zone->setMinimumWidth(cadres->sizeHint().width() + zone->verticalScrollBar()->sizeHint().width());
    zone->setMinimumHeight(style::espace(30));
    h->addWidget(zone);
    h->addWidget(construit_courbes(), 1);
    tout->addLayout(h, 1);
    tout->addWidget(construit_bas());
    form_load();
    etat_boutons(false);
    regle_defilement(false);
    retrace_courbes();
    resize(style::espace(270), style::espace(150));
}

QLineEdit* power_exp_bat::ajoute_saisie(QGridLayout* g, champ c, const char* nom, const char* titre,
                                        const char* aide) {
    auto* e = new QLineEdit(this);
    e->setObjectName(nom);
    e->setToolTip(aide);
    e->installEventFilter(this);
    style::boite_nombre(e, 8);
    e->setFixedWidth(e->maximumWidth()); // one width for all boxes, typed or computed
    auto* l = new QLabel(titre, this);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setBuddy(e);
    // Charge and discharge have captions alike.
    if (const auto* cadre = qobject_cast<QGroupBox*>(g->parentWidget()))
        e->setAccessibleName(cadre->title() + " : " + titre);
    const int ligne = g->rowCount();
    g->addWidget(l, ligne, 0);
    g->addWidget(e, ligne, 1); // the unit stands in the title
    saisies_[c].boite = e;
    connect(e, &QLineEdit::editingFinished, this, [this, c] { valide(c); });
    return e;
}

QWidget* power_exp_bat::construit_saisies() {
    auto* cadre = new QGroupBox("Éclipse et recharge", this);
    auto* g = new QGridLayout(cadre);
    const auto limites = [this](champ c, double min, double max, bool min_inclus) {
        saisies_[c].min = min;
        saisies_[c].max = max;
        saisies_[c].min_inclus = min_inclus;
    };
    ajoute_saisie(g, tecl, "txt_tecl", "Durée d'éclipse (mn)", "Durée de la décharge, de 0 à 14400 min");
    ajoute_saisie(g, tchde, "txt_tchde", "Température (°C)",
                  "Température de l'accumulateur, fixe, de -100 à 100 °C");
    ajoute_saisie(g, chk, "txt_chk", "Coefficient de recharge",
                  "Capacité chargée sur capacité déchargée, au-dessus de 0");
    ajoute_saisie(g, chvmax, "txt_chvmax", "Tension maximum (V)",
                  "Tension par accumulateur à partir de laquelle le courant de charge diminue");
    ajoute_saisie(g, chcour, "txt_chcour", "Courant/Cnom (/h)",
                  "Courant de charge en multiples de la capacité nominale, au-dessus de 0");
    limites(tecl, 0, decharge_max, true);
    limites(tchde, -100, 100, true);
    for (const champ c : {chk, chvmax, chcour, depuis, decour}) limites(c, 0, reglage_batterie_max, false);
    g->setColumnStretch(0, 1);
    return cadre;
}

QWidget* power_exp_bat::construit_mode() {
    auto* cadre = new QGroupBox("Décharge", this);
    auto* g = new QGridLayout(cadre);
    opt_depuis_ = new QRadioButton("&Puissance constante", this);
    opt_depuis_->setObjectName("opt_depuis");
    opt_depuis_->setToolTip("La puissance fournie reste la même ; le courant suit la tension");
    opt_decour_ = new QRadioButton("&Courant constant", this);
    opt_decour_->setObjectName("opt_decour");
    opt_decour_->setToolTip("Le courant fourni reste le même");
    g->addWidget(opt_depuis_, 0, 0, 1, 2);
    ajoute_saisie(g, depuis, "txt_depuis", "Puissance/Cnom (V/h)",
                  "Puissance par accumulateur sur sa capacité nominale, au-dessus de 0");
    g->addWidget(opt_decour_, g->rowCount(), 0, 1, 2);
    ajoute_saisie(g, decour, "txt_decour", "Courant/Cnom (/h)",
                  "Courant de décharge en multiples de la capacité nominale, au-dessus de 0");
    g->setColumnStretch(0, 1);
    connect(opt_depuis_, &QRadioButton::toggled, this, &power_exp_bat::etat_mode);
    opt_depuis_->setChecked(true);
    return cadre;
}

QWidget* power_exp_bat::construit_resultats() {
    auto* cadre = new QGroupBox("Résultats", this);
    auto* g = new QGridLayout(cadre);
    const auto ajoute = [&](const char* nom, const char* titre, const char* aide) {
        auto* v = new QLabel(this);
        v->setObjectName(nom);
        v->setToolTip(aide);
        style::montre_calcule(v);
        auto* l = new QLabel(titre, this);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const int ligne = g->rowCount();
        g->addWidget(l, ligne, 0);
        g->addWidget(v, ligne, 1);
        v->setFixedWidth(saisies_[tecl].boite->maximumWidth());
        return v;
    };
    lab_dod_ = ajoute("lab_dod", "DOD %", "Profondeur de décharge atteinte à la fin de l'éclipse");
    lab_tch_ = ajoute("lab_tch", "Temps de recharge", "Durée de la recharge complète (hh:mm:ss)");
    g->setColumnStretch(0, 1);
    return cadre;
}

QWidget* power_exp_bat::construit_bas() {
    auto* cadre = new QWidget(this);
    auto* ligne = new QHBoxLayout(cadre);
    ligne->setContentsMargins(0, 0, 0, 0);
    ligne->setSpacing(style::espace(2));
    lab_status_ = new QLabel(this);
    lab_status_->setObjectName("lab_status");
    statusbar_ = new QProgressBar(this);
    statusbar_->setObjectName("statusbar");
    statusbar_->setTextVisible(false);
    statusbar_->setToolTip("Part de la simulation qui est faite");
    ligne->addWidget(statusbar_, 1);
    ligne->addWidget(lab_status_);
    const auto bouton = [&](const char* nom, const char* texte, const char* aide) {
        auto* b = new QPushButton(texte, this);
        b->setObjectName(nom);
        b->setToolTip(aide);
        style::bouton_pied(b);
        ligne->addWidget(b);
        return b;
    };
    boutons_.arrete = bouton("cmd_stopcalcul", "&Interrompre", "Arrête la simulation en cours");
    ligne->addSpacing(style::espace(4));
    boutons_.lance =
        bouton("cmd_saisir", "&Saisir", "Lit les valeurs et simule, à partir d'un accumulateur plein (F5)");
    auto* quitter = bouton("cmd_quit", "&Quitter", "Ferme la fenêtre (Échap)");
    connect(boutons_.lance, &QPushButton::clicked, this, &power_exp_bat::cmd_saisir_clic);
    connect(new QShortcut(QKeySequence("F5"), this), &QShortcut::activated, boutons_.lance,
            &QPushButton::click);
    connect(boutons_.arrete, &QPushButton::clicked, this, [this] { stop_ = true; });
    connect(quitter, &QPushButton::clicked, this, &QWidget::close);
    return cadre;
}

QWidget* power_exp_bat::construit_courbes() {
    auto* cadre = new QWidget(this);
    auto* v = new QVBoxLayout(cadre);
    v->setContentsMargins(0, 0, 0, 0);
    const char* titres[] = {"Tension d'un accumulateur", "État de charge"};
    const char* ordonnees[] = {"V", "%"};
    const QColor couleurs[] = {style::couleur(style::role::batterie),
                               style::couleur(style::role::charge_utile)};
    for (size_t i = 0; i < 2; ++i) {
        auto* g = new graphe(this);
        g->setObjectName(QString("pict_graphs_%1").arg(i));
        g->titre(titres[i]);
        g->axes("Temps (min)", ordonnees[i]);
        g->courbe(titres[i], couleurs[i]);
        g->legende(false);
        v->addWidget(g, 1);
        pict_graphs_[i] = g;
    }
    pict_graphs_[1]->limites_y(0, 100);
    graphe::aligne({pict_graphs_[0], pict_graphs_[1]});
    auto* ligne = new QHBoxLayout;
    cmb_duree_ = new QComboBox(this);
    cmb_duree_->setObjectName("cmb_duree");
    for (const int minutes : {30, 120, 360, 1440})
        cmb_duree_->addItem(minutes < 60 ? QString("%1 min").arg(minutes) : QString("%1 h").arg(minutes / 60),
                            minutes);
    cmb_duree_->addItem("Tout", 0);
    cmb_duree_->setCurrentIndex(4);
    cmb_duree_->setToolTip("Durée visible d'un coup ; la barre fait défiler le reste");
    auto* titre = new QLabel("Durée &visible :", this);
    titre->setBuddy(cmb_duree_);
    scroll_graphs_ = new QScrollBar(Qt::Horizontal, this);
    scroll_graphs_->setObjectName("scroll_graphs");
    scroll_graphs_->setInvertedControls(false); // the right arrow goes right
    scroll_graphs_->setToolTip("Défilement des courbes");
    ligne->addWidget(titre);
    ligne->addWidget(cmb_duree_);
    ligne->addWidget(scroll_graphs_, 1);
    v->addLayout(ligne);
    connect(cmb_duree_, &QComboBox::currentIndexChanged, this, [this] {
        regle_defilement(false);
        retrace_courbes();
    });
    connect(scroll_graphs_, &QScrollBar::valueChanged, this, [this] { retrace_courbes(); });
    return cadre;
}

void power_exp_bat::form_load() {
    if (en_cours_) { // of settings that are not those in hand
        stop_ = true;
        montre_bandeau("Les réglages ont changé pendant le calcul : l'étude s'est arrêtée.");
    }
    const power_record& p = s_.power;
    // The night's demand, brought to one accumulator of one ampere-hour.
    const double elements = p.bat_ns * p.bat_np * static_cast<double>(p.bat_c) * p.gst_rend_bat / 100;
    const double puissance = elements > 0 ? p.p_demand[1] / elements : 0;
    const auto propose = [this](champ c, double x, double sinon) {
        const double arrondi = std::round(x * 1000) / 1000;
        saisie& s = saisies_[c];
        const double proposee = arrondi > s.min && arrondi <= s.max ? arrondi : sinon;
        // What was entered stays when an undo, say, changes nothing of it.
        if (s.proposee == proposee) return;
        s.proposee = s.valeur = proposee;
        montre_valeur(c);
    };
    propose(tecl, 35, 35);
    propose(tchde, p.int_t_init, 20);
    propose(chk, p.gst_k_recharge, 1.05);
    propose(chvmax, p.gst_vch_max, 1.5);
    propose(chcour, p.bat_c > 0 ? std::min<double>(p.gst_ich_max / p.bat_c, 0.5) : 0.5, 0.5);
    propose(depuis, puissance, 0.5);
    propose(decour, 0.5, 0.5);
}

void power_exp_bat::montre_valeur(champ c) {
    saisies_[c].boite->setText(QString::fromStdString(format_court(saisies_[c].valeur)));
    saisies_[c].boite->setModified(false);
}

bool power_exp_bat::valide(champ c) {
    saisie& s = saisies_[c];
    if (!s.boite->isModified()) return true;
    s.boite->setModified(false);
    const QString ancien = QString::fromStdString(format_court(s.valeur));
    double x = 0;
    if (!verif_double(s.boite, s.boite->text(), ancien, x) ||
        !verif_bornes(s.boite, x, s.min, s.max, s.min_inclus, true, ancien))
        return false;
    s.valeur = x;
    montre_valeur(c);
    return true;
}

/// Return goes to the next box, as the tabulator does; a refused entry keeps the focus.
bool power_exp_bat::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::KeyPress) {
        const int touche = static_cast<QKeyEvent*>(e)->key();
        if (touche == Qt::Key_Return || touche == Qt::Key_Enter)
            for (int c = 0; c < nombre_champs; ++c)
                if (saisies_[static_cast<size_t>(c)].boite == o) {
                    if (valide(static_cast<champ>(c))) focusNextChild();
                    return true;
                }
    }
    return fenetre::eventFilter(o, e);
}

void power_exp_bat::etat_mode() {
    if (saisies_[depuis].boite) saisies_[depuis].boite->setEnabled(opt_depuis_->isChecked());
    if (saisies_[decour].boite) saisies_[decour].boite->setEnabled(!opt_depuis_->isChecked());
}

double power_exp_bat::duree_visible() const { return cmb_duree_->currentData().toDouble(); }

/// Range of the scroll bar, in minutes.
void power_exp_bat::regle_defilement(bool a_la_fin) {
    const int total = static_cast<int>(std::ceil(static_cast<double>(t_dernier_) / 60));
    const int visible = static_cast<int>(duree_visible());
    const int reste = visible > 0 ? std::max(0, total - visible) : 0;
    scroll_graphs_->setPageStep(std::max(1, visible));
    scroll_graphs_->setSingleStep(std::max(1, visible / 20));
    scroll_graphs_->setRange(0, reste);
    scroll_graphs_->setEnabled(reste > 0);
    if (a_la_fin) scroll_graphs_->setValue(reste);
}

void power_exp_bat::retrace_courbes() {
    const double visible = duree_visible();
    const double total = std::max(1.0, static_cast<double>(t_dernier_) / 60);
    const double debut = visible > 0 ? scroll_graphs_->value() : 0;
    for (graphe* g : pict_graphs_) {
        g->limites_x(debut, debut + (visible > 0 ? visible : total));
        g->retrace();
    }
}

void power_exp_bat::closeEvent(QCloseEvent* e) {
    stop_ = true;
    fenetre::closeEvent(e);
}
