#include "attitude/windows/att_sim.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QShowEvent>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <cmath>

#include "attitude/windows/boite_att.h"
#include "shell/lancement.h"
#include "shell/utilitaires.h"
#include "widgets/acces.h"
#include "widgets/fichiers.h"
#include "widgets/graphe.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

att_sim::att_sim(session& s, QWidget* parent)
    : fenetre(s, "att_sim", "Simulation du contrôle d'attitude", parent), s_(s), rythme_(new QTimer(this)),
      tache_(this, [this](course_att c) { calcul_fini(std::move(c)); }) {
    auto* gauche = new QVBoxLayout;
    gauche->setSpacing(style::espace(3));
    gauche->addWidget(cadre_vitesses());
    gauche->addWidget(cadre_resultats());
    gauche->addStretch();
    auto* droite = new QVBoxLayout;
    droite->addWidget(zone_graphes(), 1);
    droite->addLayout(ligne_pages());
    auto* h = new QHBoxLayout;
    h->setSpacing(style::espace(3));
    h->addLayout(gauche);
    h->addLayout(droite, 1);
    auto* tout = new QVBoxLayout(contenu());
    tout->setSpacing(style::espace(2));
    tout->addLayout(h, 1);
    tout->addLayout(ligne_pied());
    setTabOrder(cmd_relance_, cmd_save_);
    connect(new QShortcut(QKeySequence("F5"), this), &QShortcut::activated, cmd_relance_,
            &QPushButton::click);
    connect(new QShortcut(QKeySequence("Ctrl+Shift+S"), this), &QShortcut::activated, cmd_save_,
            &QPushButton::click); // both ask for a name
    form_load();
    vide_graphes();
    resize(style::espace(270), style::espace(165));
}

/// On a small screen the charts keep a readable size and are scrolled.
QWidget* att_sim::zone_graphes() {
    att_graph_ = new graphe;
    att_graph_->setObjectName("att_graph");
    att_graph_v_ = new graphe;
    att_graph_v_->setObjectName("att_graph_v");
    graphe::aligne(att_graph_, att_graph_v_);
    auto* graphes = new QWidget;
    graphes->setMinimumSize(style::espace(125), style::espace(100));
    auto* pile = new QVBoxLayout(graphes);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->addWidget(att_graph_, 1);
    pile->addWidget(att_graph_v_, 1);
    auto* defile = new QScrollArea;
    defile->setWidget(graphes);
    defile->setWidgetResizable(true);
    defile->setFrameShape(QFrame::NoFrame);
    defile->setFocusPolicy(Qt::NoFocus); // there is nothing to type in it
    return defile;
}

QLayout* att_sim::ligne_pied() {
    temp_calcul_ = new QProgressBar;
    temp_calcul_->setObjectName("temp_calcul");
    temp_calcul_->setToolTip("Avancement du calcul");
    temp_calcul_->setVisible(false);
    cmd_arrete_ =
        style::bouton("cmd_arrete", "Arrê&ter", "Arrêter le calcul ; ses enregistrements restent (Échap)");
    cmd_arrete_->setVisible(false);
    auto* quit_but = style::bouton("Quit_but", "&Quitter", "Ferme la fenêtre (Échap)");
    style::bouton_pied(quit_but);
    connect(cmd_arrete_, &QPushButton::clicked, this, [this] { suivi_->arret = true; });
    connect(rythme_, &QTimer::timeout, this, [this] { temp_calcul_->setValue(int(suivi_->part)); });
    connect(quit_but, &QPushButton::clicked, this, &att_sim::quitte);
    auto* pied = new QHBoxLayout;
    pied->setSpacing(style::espace(2));
    pied->addWidget(temp_calcul_, 1);
    pied->addWidget(cmd_arrete_);
    pied->addStretch();
    pied->addWidget(quit_but);
    return pied;
}

QWidget* att_sim::cadre_vitesses() {
    auto* cadre = new QGroupBox("Vitesses initiales");
    auto* g = new QGridLayout(cadre);
    g->setHorizontalSpacing(style::espace(2));
    const char* noms[] = {"txt_psi", "txt_theta", "txt_fi"};
    const char* textes[] = {"&Psi (X)", "&Thêta (Y)", "P&hi (Z)"};
    const char* axes[] = {"X", "Y", "Z"};
    for (int i = 0; i < 3; ++i) {
        auto* b = new boite_att(noms[i]);
        b->en_degres();
        b->setToolTip(
            QString("Vitesse angulaire initiale du corps autour de l'axe %1, en deg/s").arg(axes[i]));
        b->relie(s_.attitude.omega_init[i]);
        lie_champ(b, element_nomme("omega_init[" + std::to_string(i) + "]"));
        connect(b, &boite_att::change, this, [this] {
            vitesses_changees_ = true;
            marque_changement();
            montre_bandeau("Les courbes sont celles des anciennes vitesses initiales : « Relancer » les "
                           "recalcule.");
        });
        auto* l = new QLabel(textes[i]);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setBuddy(b);
        g->addWidget(l, i, 0);
        g->addWidget(b, i, 1);
        g->addWidget(new QLabel("deg/s"), i, 2);
        vitesses_[i] = b;
    }
    cmd_relance_ =
        style::bouton("cmd_relance", "&Relancer", "Recalculer la période avec les réglages actuels (F5)");
    connect(cmd_relance_, &QPushButton::clicked, this, &att_sim::att_run);
    g->addWidget(cmd_relance_, 3, 0, 1, 3);
    return cadre;
}

QWidget* att_sim::cadre_resultats() {
    auto* cadre = new QGroupBox("Résultats");
    auto* v = new QVBoxLayout(cadre);
    chk_taux_ = new QCheckBox("T&aux de roulis, tangage, lacet");
    chk_taux_->setObjectName("chk_taux");
    chk_taux_->setToolTip("Montrer les taux des angles (tr/min, axe de droite)");
    chk_taux_->setChecked(true);
    chk_roues_ = new QCheckBox("Roues d'&inertie");
    chk_roues_->setObjectName("chk_roues");
    chk_roues_->setToolTip("Montrer les vitesses relatives des roues (deg/s)");
    chk_roues_->setChecked(true);
    for (QCheckBox* c : {chk_taux_, chk_roues_}) {
        connect(c, &QCheckBox::toggled, this, &att_sim::att_trace);
        v->addWidget(c);
    }
    cmd_save_ = style::bouton("cmd_save", "&Enregistrer en texte…",
                              "Enregistrer le fichier de résultats complet (25 colonnes) sous un autre nom");
    cmd_save_->setShortcut(QKeySequence::Save);
    cmd_image_ =
        style::bouton("cmd_image", "Enregistrer en i&mages…", "Enregistrer les deux graphiques en PNG");
    connect(cmd_save_, &QPushButton::clicked, this, &att_sim::demande_resultats);
    connect(cmd_image_, &QPushButton::clicked, this, &att_sim::demande_images);
    v->addWidget(cmd_save_);
    v->addWidget(cmd_image_);
    return cadre;
}

QLayout* att_sim::ligne_pages() {
    scr_diagr_ = new QScrollBar(Qt::Horizontal);
    scr_diagr_->setObjectName("scr_diagr");
    scr_diagr_->setInvertedControls(false);
    scr_diagr_->setFocusPolicy(Qt::StrongFocus);
    scr_diagr_->setToolTip("Parcourir les pages des résultats, de la première à la dernière");
    txt_page_ = new QSpinBox;
    txt_page_->setObjectName("txt_page");
    txt_page_->setPrefix("page ");
    txt_page_->setRange(1, 1);
    txt_page_->setToolTip("Page montrée, de 1000 enregistrements au plus");
    chk_periode_ = new QCheckBox("T&oute la période");
    chk_periode_->setObjectName("chk_periode");
    chk_periode_->setToolTip("Tracer la période entière, un enregistrement sur n");
    connect(scr_diagr_, &QScrollBar::valueChanged, this, [this](int v) {
        // The bar's few positions spread over all pages, from the first to the last.
        page_ =
            long(std::lround(double(v) * double(pages_.pages() - 1) / std::max(1, scr_diagr_->maximum())));
        att_trace();
    });
    connect(txt_page_, &QSpinBox::valueChanged, this, [this](int page) {
        page_ = page - 1;
        att_trace();
    });
    connect(chk_periode_, &QCheckBox::toggled, this, &att_sim::att_trace);
    auto* h = new QHBoxLayout;
    h->setSpacing(style::espace(2));
    h->addWidget(scr_diagr_, 1);
    h->addWidget(txt_page_);
    h->addWidget(chk_periode_);
    return h;
}

void att_sim::form_load() {
    for (boite_att* b : vitesses_) b->montre();
}

void att_sim::showEvent(QShowEvent* e) {
    fenetre::showEvent(e);
    if (!e->spontaneous()) QTimer::singleShot(0, this, [this] { lance_affichee(50); });
}

/// The page counters and the scroll bar after a run, and the first page.
void att_sim::prepare_pages(const ecrivain_resultats& sortie) {
    const double milliers = (fin_ - debut_) / pas_ / 1000;
    const double n = std::nearbyint(milliers + 1);
    pages_.ouvre(fichier_temp_.toStdString(), sortie);
    page_ = 0;
    const QSignalBlocker muet_barre(scr_diagr_), muet_page(txt_page_);
    scr_diagr_->setRange(0, int(std::max(0.0, std::nearbyint(milliers / n))));
    scr_diagr_->setSingleStep(1);
    scr_diagr_->setPageStep(1);
    scr_diagr_->setValue(0);
    txt_page_->setRange(1, int(std::max<int64_t>(1, pages_.pages())));
    txt_page_->setSuffix(QString(" / %1").arg(txt_page_->maximum()));
    txt_page_->setValue(1);
    for (QWidget* w : std::initializer_list<QWidget*>{scr_diagr_, txt_page_, chk_periode_})
        w->setEnabled(pages_.pages() > 1);
    chk_roues_->setEnabled(roues_actives_);
    cmd_save_->setEnabled(pages_.pages() > 0);
    cmd_image_->setEnabled(pages_.pages() > 0);
    att_trace();
}

void att_sim::quitte() {
    // This path names a folder that the run's own path lacks, so that nothing is asked or deleted unless the
    // program lives in such a folder: meant.
    const QString ancien =
        QDir::cleanPath(QString::fromStdString(s_.dossier_depart)) + "/kestrel/temp/temp.tmp";
    if (fichier_temp_ == ancien && fichier_resultats_.isEmpty() &&
        message(this, gravite::question, "Voulez-vouz enregistrez les résultat?"))
        demande_resultats();
    QFile::remove(ancien);
    close();
}

void att_sim::demande_resultats() {
    const QString chemin = demande_nom(this, "Enregistrement des résultats",
                                       QString::fromStdString(s_.dossier_depart) + "/resultats_attitude.txt",
                                       "Fichier texte (*.txt)");
    if (!chemin.isEmpty()) enregistre_resultats(chemin);
}

bool att_sim::enregistre_resultats(const QString& chemin) {
    if (!QFile::exists(fichier_temp_)) {
        montre_bandeau("Le fichier de résultats " + fichier_temp_ + " a disparu : « Relancer » le refait.");
        return false;
    }
    if (QFileInfo(chemin).canonicalFilePath() == QFileInfo(fichier_temp_).canonicalFilePath())
        return true;                          // it stands there already
    const QString partiel = chemin + ".part"; // the old file goes only once the new one is whole
    QFile::remove(partiel);
    if (protege_en_ecriture(chemin) || !QFile::copy(fichier_temp_, partiel) ||
        (QFile::exists(chemin) && !QFile::remove(chemin)) || !QFile::rename(partiel, chemin)) {
        QFile::remove(partiel);
        return dit_echec_ecriture(this, QDir::toNativeSeparators(chemin),
                                  "Le fichier ne peut pas être écrit.");
    }
    fichier_resultats_ = chemin;
    montre_bandeau("Résultats enregistrés dans " + QDir::toNativeSeparators(chemin));
    return true;
}

void att_sim::demande_images() {
    const QString chemin =
        demande_nom(this, "Enregistrer les graphiques",
                    QString::fromStdString(s_.dossier_depart) + "/attitude.png", "Image PNG (*.png)");
    if (!chemin.isEmpty()) enregistre_images(chemin);
}

bool att_sim::enregistre_images(const QString& chemin) {
    const QFileInfo f(chemin);
    const QString base = f.path() + "/" + f.completeBaseName();
    for (const auto& [g, fin] :
         {std::pair(att_graph_, "-angles.png"), std::pair(att_graph_v_, "-vitesses.png")})
        if (!g->enregistre(base + fin))
            return dit_echec_ecriture(this, QDir::toNativeSeparators(base + fin),
                                      "Le fichier ne peut pas être écrit.");
    montre_bandeau("Graphiques enregistrés dans " +
                   QDir::toNativeSeparators(base + "-angles.png, -vitesses.png"));
    return true;
}

void att_sim::closeEvent(QCloseEvent* e) {
    if (suivi_) suivi_->arret = true;
    for (boite_att* b : vitesses_) b->valide();
    fenetre::closeEvent(e);
}

void att_sim::changeEvent(QEvent* e) {
    fenetre::changeEvent(e);
    if (e->type() == QEvent::ActivationChange && isActiveWindow() && version_ != 0 &&
        version_ != s_.version_config && !vitesses_changees_)
        montre_bandeau("Les réglages ont changé depuis ce calcul : « Relancer » le refait. " + bilan_);
}
