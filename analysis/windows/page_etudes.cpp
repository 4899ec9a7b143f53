#include "analysis/windows/page_etudes.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <tuple>

#include "analysis/modes.h"
#include "analysis/windows/carte_balayage.h"
#include "analysis/windows/saisie_balayage.h"
#include "shell/formats.h"
#include "widgets/fenetre.h"
#include "widgets/fichiers.h"
#include "widgets/graphe.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

constexpr long variantes_page = 1'000'000; // rows that the page keeps
constexpr std::size_t lignes_table = 5000; // of them in the table
constexpr long courbes_max = 8;            // in a chart

QString duree(double s) {
    if (s < 1) return "moins d'une seconde";
    if (s < 90) return QString("environ %1 s").arg(std::lround(s));
    if (s < 5400) return QString("environ %1 min").arg(std::lround(s / 60));
    return QString("environ %1 h").arg(s / 3600, 0, 'f', 1);
}

} // namespace

page_etudes::page_etudes(session& s, QWidget* parent)
    : page("page_etudes", parent), s_(s), releve_(new QTimer(this)), saisie_(new saisie_balayage(s)),
      lab_estime_(new QLabel), lab_resultat_(new QLabel), lab_base_(new QLabel),
      cmd_lance_(new QPushButton(style::icone("lancer"), "&Lancer")),
      cmd_arrete_(new QPushButton(style::icone("arreter"), "Arr&êter")),
      cmd_csv_(new QPushButton("Enregistrer en &CSV…")), avance_(new QProgressBar),
      cmb_mesure_(new QComboBox), vues_(new QStackedWidget), graphe_(new graphe), carte_(new carte_balayage),
      tab_variantes_(new QTableWidget) {
    auto* gauche = new QWidget;
    auto* pile = new QVBoxLayout(gauche);
    QScrollArea* zone = defilee(saisie_);
    zone->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    zone->setMinimumWidth(saisie_->minimumSizeHint().width() + style::espace(4));
    pile->addWidget(zone, 1);
    lab_estime_->setObjectName("lab_estime");
    lab_estime_->setWordWrap(true);
    pile->addWidget(lab_estime_);
    lab_base_->setObjectName("lab_base_etude");
    lab_base_->setWordWrap(true);
    pile->addWidget(lab_base_);
    auto* boutons = new QHBoxLayout;
    cmd_lance_->setObjectName("cmd_lance_etude");
    cmd_arrete_->setObjectName("cmd_arrete_etude");
    boutons->addWidget(cmd_lance_);
    boutons->addWidget(cmd_arrete_);
    pile->addLayout(boutons);
    avance_->setAccessibleName("Avancement");
    pile->addWidget(avance_);

    auto* separe = new QSplitter;
    separe->addWidget(gauche);
    separe->addWidget(construit_resultats());
    separe->setStretchFactor(1, 1);
    separe->setChildrenCollapsible(false);
    auto* tout = new QHBoxLayout(fait_defiler());
    tout->addWidget(separe);

    connect(saisie_, &saisie_balayage::change, this, &page_etudes::estime);
    connect(cmd_lance_, &QPushButton::clicked, this, &page_etudes::lance);
    connect(cmd_arrete_, &QPushButton::clicked, this, &page_etudes::arrete);
    connect(releve_, &QTimer::timeout, this, &page_etudes::releve);
    cmd_arrete_->setEnabled(false);
    avance_->hide();
}

page_etudes::~page_etudes() {
    if (course_) course_->fil.request_stop();
}

QWidget* page_etudes::construit_resultats() {
    auto* droite = new QWidget;
    auto* pile = new QVBoxLayout(droite);
    auto* tete = new QHBoxLayout;
    lab_resultat_->setObjectName("lab_resultat_etude");
    lab_resultat_->setWordWrap(true);
    lab_resultat_->setText(
        "Ici viendra ce que deviennent marge, décharge et températures quand un réglage varie : "
        "choisissez à gauche, puis « Lancer ».");
    cmb_mesure_->setObjectName("cmb_mesure");
    cmb_mesure_->setAccessibleName("Mesure montrée");
    cmb_mesure_->setFocusPolicy(Qt::StrongFocus);
    cmb_mesure_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    cmb_mesure_->hide(); // until there is something to choose
    cmd_csv_->setObjectName("cmd_csv_etude");
    cmd_csv_->setEnabled(false);
    pile->addWidget(lab_resultat_);
    tete->addWidget(cmb_mesure_);
    tete->addStretch();
    tete->addWidget(cmd_csv_);
    pile->addLayout(tete);
    vues_->addWidget(graphe_);
    vues_->addWidget(carte_);
    vues_->setMinimumHeight(style::espace(50));
    pile->addWidget(vues_, 3);
    tab_variantes_->setObjectName("tab_variantes");
    tab_variantes_->setAccessibleName("Variantes");
    tab_variantes_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tab_variantes_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tab_variantes_->setToolTip("Un double clic ouvre la variante comme étude en cours");
    tab_variantes_->verticalHeader()->hide();
    tab_variantes_->setFont(style::police_nombres());
    pile->addWidget(tab_variantes_, 2);
    connect(cmb_mesure_, &QComboBox::activated, this, &page_etudes::trace);
    connect(cmd_csv_, &QPushButton::clicked, this, &page_etudes::enregistre_csv);
    connect(tab_variantes_, &QTableWidget::cellDoubleClicked, this,
            [this](int l) { ouvre_variante(lignes_[std::size_t(l)].variante); });
    connect(carte_, &carte_balayage::clique, this, &page_etudes::ouvre_variante);
    connect(graphe_, &graphe::clique, this, &page_etudes::ouvre_point);
    return droite;
}

void page_etudes::rafraichit() {
    // What the variants are made of besides the settings that vary.
    QStringList base;
    if (s_.modele.physique) base << "Modèle physique.";
    if (!s_.modes.empty()) base << QString::fromStdString(phrase_modes(s_));
    lab_base_->setVisible(!base.isEmpty());
    lab_base_->setText(base.join(' '));
    estime();
}

/// The number of variants and about how long they will take.
void page_etudes::estime() {
    plan_balayage p;
    QString raison;
    const bool bon = saisie_->plan(p, raison);
    const long n = bon ? nombre_variantes(p) : 0;
    cmd_lance_->setEnabled(bon && n > 0 && n <= variantes_page && !course_);
    if (!bon) return lab_estime_->setText(raison);
    if (n < 0 || n > variantes_page)
        return lab_estime_->setText("Plus d'un million de variantes : passez par kestrel_batch balayage.");
    // A budget takes 2 to 16 turns, three as a rule; a step some microseconds.
    const double par_pas = s_.power.opt_panel_ext == vrai ? 2e-6 : s_.power.opt_faces == 2 ? 8e-6 : 3e-6;
    const double secondes =
        3 * duree_orbite(s_) / s_.periode.pas_sim * par_pas * double(n) / saisie_->coeurs();
    const QString variantes = QString("%L1 variantes").arg(n);
    lab_estime_->setText(std::isfinite(secondes) ? variantes + ", " + duree(secondes) : variantes);
}

void page_etudes::lance() {
    plan_balayage p;
    QString raison;
    if (!saisie_->plan(p, raison)) {
        message(this, gravite::avertissement, raison);
        return;
    }
    p.bilan.dossier_donnees = s_.dossier_depart;
    balayage_ = std::make_shared<const balayage>(s_, std::move(p));
    lignes_.clear();
    const auto& plan = balayage_->plan();
    tab_variantes_->clear();
    tab_variantes_->setRowCount(0);
    const auto noms = colonnes_balayage(plan);
    tab_variantes_->setColumnCount(int(noms.size()));
    for (int c = 0; c < int(noms.size()); ++c)
        tab_variantes_->setHorizontalHeaderItem(
            c, new QTableWidgetItem(QString::fromStdString(noms[std::size_t(c)])));
    cmb_mesure_->clear();
    for (const mesure& m : plan.mesures)
        cmb_mesure_->addItem(m.colonne ? QString(m.colonne->titre) : QString("Le satellite tient"));
    cmb_mesure_->show();

    course_ = std::make_unique<course>();
    course_->fil = std::jthread(
        [c = course_.get(), b = balayage_, coeurs = saisie_->coeurs()](const std::stop_token& arret) {
            deroule_balayage(
                *b, 0, coeurs,
                [c](ligne_balayage&& l) {
                    const std::lock_guard verrou(c->verrou);
                    c->prets.push_back(std::move(l));
                    return true;
                },
                arret);
            const std::lock_guard verrou(c->verrou);
            c->finie = true;
        });
    avance_->setRange(0, int(balayage_->variantes()));
    avance_->setValue(0);
    avance_->show();
    cmd_lance_->setEnabled(false);
    cmd_arrete_->setEnabled(true);
    cmd_csv_->setEnabled(false); // until all rows are there
    releve_->start(100);
}

void page_etudes::arrete() {
    if (course_) course_->fil.request_stop();
}

/// Takes the rows that have come since the last time.
void page_etudes::releve() {
    bool finie = false;
    const std::size_t avant = lignes_.size();
    {
        const std::lock_guard verrou(course_->verrou);
        finie = course_->finie;
        std::move(course_->prets.begin(), course_->prets.end(), std::back_inserter(lignes_));
        course_->prets.clear();
    }
    avance_->setValue(int(lignes_.size()));
    remplit(avant);
    if (lignes_.size() != avant || finie) trace();
    if (!finie) return;
    releve_->stop();
    course_.reset();
    avance_->hide();
    cmd_arrete_->setEnabled(false);
    cmd_csv_->setEnabled(!lignes_.empty());
    estime();
    const auto fautes = std::count_if(lignes_.begin(), lignes_.end(), [](const auto& l) { return l.faute; });
    QString texte = QString("%L1 variantes calculées").arg(lignes_.size());
    if (long(lignes_.size()) < balayage_->variantes())
        texte += QString(" sur %L1, étude arrêtée").arg(balayage_->variantes());
    if (fautes > 0) texte += QString(", %L1 en faute").arg(fautes);
    lab_resultat_->setText(texte + ". Un clic sur le graphique ouvre une variante.");
}

void page_etudes::remplit(std::size_t de) {
    const std::size_t fin = std::min(lignes_.size(), lignes_table);
    if (de >= fin) return;
    tab_variantes_->setRowCount(int(fin));
    for (std::size_t l = de; l < fin; ++l) {
        const ligne_balayage& x = lignes_[l];
        int c = 0;
        const auto cellule = [&](const QString& t) {
            auto* i = new QTableWidgetItem(t);
            i->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            tab_variantes_->setItem(int(l), c++, i);
        };
        cellule(QString::number(x.variante));
        for (const double v : x.valeurs) cellule(QString::number(v, 'g', 6));
        for (const double v : x.mesures) cellule(std::isfinite(v) ? QString::number(v, 'g', 6) : QString());
        cellule(x.faute ? "oui" : "");
    }
}

void page_etudes::trace() {
    if (!balayage_ || lignes_.empty() || cmb_mesure_->currentIndex() < 0) return;
    const plan_balayage& p = balayage_->plan();
    const auto m = std::size_t(cmb_mesure_->currentIndex());
    if (p.tirages > 1) return trace_histogramme(m);
    if (p.variations.size() != 2) return trace_courbe(m);
    std::vector<double> z(std::size_t(balayage_->variantes()), NAN);
    for (const ligne_balayage& l : lignes_) z[std::size_t(l.variante)] = l.mesures[m];
    carte_->montre(QString::fromStdString(p.variations[0].nom), p.variations[0].valeurs,
                   QString::fromStdString(p.variations[1].nom), p.variations[1].valeurs,
                   cmb_mesure_->currentText(), std::move(z));
    vues_->setCurrentWidget(carte_);
}

/// How many the values of the further fields make.
long page_etudes::courbes() const {
    const auto n = balayage_->plan().variations[0].valeurs.size();
    return std::max(1L, balayage_->variantes() / long(std::max<std::size_t>(1, n)));
}

/// The measure against the first field; the values of the further fields make a curve each (the first ones).
void page_etudes::trace_courbe(std::size_t mesure) {
    const plan_balayage& p = balayage_->plan();
    const long autres = courbes();
    graphe_->efface();
    graphe_->axes(QString::fromStdString(p.variations[0].nom) +
                      (autres > courbes_max
                           ? QString(" (%1 premières courbes sur %L2)").arg(courbes_max).arg(autres)
                           : QString()),
                  cmb_mesure_->currentText());
    for (long a = 0; a < std::min(autres, courbes_max); ++a) {
        QVector<QPair<double, double>> points;
        QStringList nom;
        for (const ligne_balayage& l : lignes_) {
            if (l.variante % autres != a) continue;
            points << QPair(l.valeurs[0], l.mesures[mesure]);
            if (!nom.isEmpty()) continue;
            for (std::size_t k = 1; k < l.valeurs.size(); ++k)
                nom << QString("%1 = %2")
                           .arg(QString::fromStdString(p.variations[k].nom))
                           .arg(l.valeurs[k], 0, 'g', 6);
        }
        std::sort(points.begin(), points.end());
        QVector<double> x, y;
        for (const auto& [vx, vy] : points) x << vx, y << vy;
        graphe_->donnees(graphe_->courbe(nom.isEmpty() ? cmb_mesure_->currentText() : nom.join(", "),
                                         style::couleur_courbe(int(a))),
                         x, y);
    }
    graphe_->legende(autres > 1, 2);
    graphe_->retrace();
    vues_->setCurrentWidget(graphe_);
}

void page_etudes::trace_histogramme(std::size_t mesure) {
    std::vector<double> v;
    for (const ligne_balayage& l : lignes_)
        if (std::isfinite(l.mesures[mesure])) v.push_back(l.mesures[mesure]);
    graphe_->efface();
    graphe_->axes(cmb_mesure_->currentText(), "variantes");
    if (!v.empty()) {
        const auto [min, max] = std::minmax_element(v.begin(), v.end());
        const int classes = std::clamp(int(std::sqrt(double(v.size()))), 5, 60);
        const double large = std::max((*max - *min) / classes, 1e-12);
        std::vector<int> nombre(std::size_t(classes), 0);
        for (const double x : v) ++nombre[std::size_t(std::min(classes - 1, int((x - *min) / large)))];
        QVector<double> x{*min}, y{0};
        for (int i = 0; i < classes; ++i) {
            x << *min + i * large << *min + (i + 1) * large;
            y << nombre[std::size_t(i)] << nombre[std::size_t(i)];
        }
        x << *max;
        y << 0;
        graphe_->donnees(graphe_->courbe(cmb_mesure_->currentText(), style::couleur_courbe(0)), x, y);
    }
    graphe_->retrace();
    vues_->setCurrentWidget(graphe_);
}

/// The variant that is drawn nearest to a point of the chart: by its first field, then by its measure.
void page_etudes::ouvre_point(double x, double y) {
    if (!balayage_ || lignes_.empty() || balayage_->plan().tirages > 1 || cmb_mesure_->currentIndex() < 0)
        return;
    const auto m = std::size_t(cmb_mesure_->currentIndex());
    const long n = courbes();
    const auto loin = [&](const ligne_balayage& l) {
        const double dy = std::fabs(l.mesures[m] - y);
        return std::tuple(l.variante % n >= courbes_max, std::fabs(l.valeurs[0] - x),
                          std::isfinite(dy) ? dy : INFINITY);
    };
    ouvre_variante(std::min_element(lignes_.begin(), lignes_.end(), [&](const auto& a, const auto& b) {
                       return loin(a) < loin(b);
                   })->variante);
}

void page_etudes::ouvre_variante(long variante) {
    etude e;
    if (!balayage_ || variante < 0 || variante >= balayage_->variantes() || !balayage_->etude_de(variante, e))
        return;
    copie_reglages(e, s_);
    emit configuration_changee(QString("Variante %1 de l'étude").arg(variante));
}

void page_etudes::enregistre_csv() {
    const QString chemin = demande_nom(this, "Enregistrer les variantes",
                                       QString::fromStdString(s_.dossier_depart), "Tableau CSV (*.csv)");
    if (chemin.isEmpty()) return;
    std::string texte;
    for (const std::string& nom : colonnes_balayage(balayage_->plan()))
        texte += (texte.empty() ? "" : ",") + nom;
    texte += '\n';
    for (const ligne_balayage& l : lignes_) texte += texte_ligne(balayage_->plan(), l) + '\n';
    enregistre_octets(this, chemin, QByteArray::fromStdString(texte));
}
