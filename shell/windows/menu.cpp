#include "shell/windows/menu.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

#include "analysis/windows/verdict_vivant.h"
#include "attitude/att_defin_attitude.h"
#include "shell/windows/accueil.h"
#include "shell/windows/etabli.h"
#include "shell/windows/fenetres.h"
#include "shell/windows/fra_simulation.h"
#include "shell/windows/guide.h"
#include "shell/windows/menu_actions.h"
#include "shell/windows/menu_etude.h"
#include "shell/windows/pages.h"
#include "shell/windows/rapporteur.h"
#include "shell/windows/recherche.h"
#include "shell/windows/resume_projet.h"
#include "widgets/acces.h"
#include "widgets/disposition_flux.h"
#include "widgets/fenetre.h"
#include "widgets/fichiers.h"
#include "widgets/style.h"

namespace {

QString choisit(QWidget* parent, const demande_fichier& d) {
    if (d.ouvrir) return demande_lecture(parent, d.titre, d.dossier, d.filtre);
    return demande_nom(parent, d.titre, d.nom.isEmpty() ? d.dossier : d.dossier + "/" + d.nom, d.filtre);
}

bool est_projet(const QString& chemin) {
    const QString fin = QFileInfo(chemin).suffix().toLower();
    return fin == "kestrel" || fin == "pwr" || fin == "att" || fin == "orb";
}

} // namespace

menu::menu(session& s, QWidget* parent)
    : QMainWindow(parent), choisit_fichier(choisit),
      fin_programme([](int code) { QCoreApplication::exit(code); }), s_(s) {
    setObjectName("menu");
    setAcceptDrops(true);
    session_init(s_);
    attitude_init(s_.attitude, s_.orbit.pointage);

    auto* centre = new QWidget;
    auto* pile = new QVBoxLayout(centre);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->setSpacing(0);
    auto* entete = new QWidget;
    etabli_ = new etabli;
    entete->setObjectName("entete");
    pile->addWidget(entete);
    pile->addWidget(etabli_, 1);
    setCentralWidget(centre);

    const auto exemples = lit_exemples(QString::fromStdString(s_.dossier_depart));
    construit_menus();
    construit_modele();
    construit_entete(entete);
    auto* outils = findChild<QAction*>("mn_outils");
    outils->setCheckable(true);
    connect(outils, &QAction::toggled, this, [entete](bool oui) {
        entete->setVisible(oui);
        QSettings().setValue("menu/outils", oui);
    });
    outils->setChecked(true);
    outils->setChecked(QSettings().value("menu/outils", true).toBool());
    remplit_exemples(exemples);
    construit_pages(exemples);
    connect(fra_simulation_, &fra_simulation::change, this, &menu::configuration_a_change);
    construit_etude();
    rapporteur_ = std::make_unique<rapporteur>(s_, *this);

    statusBar()->setSizeGripEnabled(true);
    montre_titres();
    montre_modele();
    montre_recents();
    // Wide enough for the header in one row, where the screen is.
    // Room for the frame around it.
    const QSize place = screen()->availableSize() - QSize(style::espace(2), style::espace(10));
    resize(QSize(style::espace(340), style::espace(178)).boundedTo(place));
    restaure_geometrie(this, QSettings().value("geometrie/menu").toByteArray());
    QTimer::singleShot(0, this, [this] {
        for (const QString& chemin : QSettings().value("recents").toStringList()) offre_copie(chemin);
    });
}

menu::~menu() { fait_taire(this); }

/// The menus from their table. Commands whose window does not exist are there, disabled.
void menu::construit_menus() {
    QMenu* par_niveau[] = {nullptr, nullptr};
    for (const entree_menu& e : entrees_menu()) {
        const QString texte = QString::fromUtf8(e.texte);
        if (e.genre == genre_entree::titre || e.genre == genre_entree::sous_menu) {
            QMenu* m = e.niveau == 0 ? menuBar()->addMenu(texte) : par_niveau[0]->addMenu(texte);
            m->setObjectName(e.controle);
            m->menuAction()->setObjectName(e.controle);
            m->menuAction()->setStatusTip(QString::fromUtf8(e.bulle));
            par_niveau[e.niveau] = m;
            continue;
        }
        QAction* a = par_niveau[e.niveau - 1]->addAction(texte);
        a->setObjectName(e.controle);
        if (e.genre == genre_entree::separateur) a->setSeparator(true);
        if (e.genre == genre_entree::etiquette) a->setEnabled(false);
        if (e.genre != genre_entree::commande) continue;
        a->setIcon(style::icone(e.icone));
        a->setStatusTip(QString::fromUtf8(e.bulle));
        a->setEnabled(!*e.fenetre || fabrique(e.fenetre));
        connect(a, &QAction::triggered, this, [this, nom = QString(e.controle)] { commande(nom); });
    }
    const auto raccourci = [this](const char* nom, const QKeySequence& touches) {
        findChild<QAction*>(nom)->setShortcut(touches);
    };
    raccourci("mn_fichier_ouvrir", QKeySequence::Open);
    raccourci("mn_fichier_enreg", QKeySequence::Save);
    raccourci("mn_fichier_enregsous", QKeySequence("Ctrl+Shift+S")); // not every desktop has one
    raccourci("mn_sim_pow_com", QKeySequence("F5"));
    raccourci("mn_sim_pow_gs", QKeySequence("F6"));
    raccourci("mn_exp_pow_bat", QKeySequence("F7"));
    raccourci("mn_exp_pow_data", QKeySequence("F8"));
    raccourci("mn_sim_att_com", QKeySequence("F9"));
    raccourci("mn_exp_att_data", QKeySequence("Shift+F8"));
    raccourci("mn_fichier_quit", QKeySequence("Ctrl+Q"));
    raccourci("mn_chercher", QKeySequence("Ctrl+K"));
    raccourci("mn_outils", QKeySequence("Ctrl+Shift+O"));
    // The key goes to what has the focus, the entry to the guide as it stands.
    auto* mn_guide = findChild<QAction*>("mn_aide_guide");
    const QKeySequence aide(QKeySequence::HelpContents);
    mn_guide->setText(mn_guide->text() + '\t' + aide.toString(QKeySequence::NativeText));
    connect(new QShortcut(aide, this), &QShortcut::activated, this, [this] {
        const QString champ = champ_du_controle(focusWidget()), page = etabli_->courante();
        montre_aide(!champ.isEmpty() ? champ : guide::page_de(page) >= 0 ? page : objectName());
    });
    mn_recents_ = findChild<QMenu*>("mn_recents");
    connect(findChild<QMenu*>("mn_fenetre"), &QMenu::aboutToShow, this, &menu::remplit_fenetres);
    findChild<QAction*>("mn_aide_guide")->setEnabled(!guide::fichier(s_).isEmpty());
}

/// The pages of the workbench, each with its entry in the menu and its key.
void menu::construit_pages(const QList<exemple>& exemples) {
    connect(etabli_, &etabli::page_faite, this, [this](page* p) {
        connect(p, &page::demande_fenetre, this, &menu::montre_fenetre);
        connect(p, &page::demande_page, etabli_, &etabli::montre);
        connect(p, &page::configuration_changee, this, [this](const QString& libelle) {
            if (!libelle.isEmpty()) s_.libelle_etape = libelle.toStdString();
            s_.config_modifiee = 1;
            fra_simulation_->montre(); // a page may have set the period
            configuration_a_change();
        });
        connect(p, &page::presentation_changee, this, [this](const QString& libelle) {
            if (!libelle.isEmpty()) s_.libelle_etape = libelle.toStdString();
            verdict_->suit();
            note_bientot();
            rafraichit();
        });
    });
    verdict_ = new verdict_vivant(s_, this);
    accueil_ = new accueil(exemples, QString::fromStdString(s_.dossier_depart));
    connect(accueil_, &accueil::demande_exemple, this, &menu::ouvre_exemple);
    connect(accueil_, &accueil::demande_fichier, this, &menu::ouvre);
    connect(accueil_, &accueil::demande_ouverture, this, &menu::mn_fichier_ouvrir);
    connect(accueil_, &accueil::demande_defaut, this, &menu::nouvelle_etude);
    etabli_->ajoute("accueil", "Accueil", "page_accueil", [this] { return accueil_; });
    etabli_->ajoute("resume_projet", "Résumé", "page_resume", [this] {
        auto* resume = new resume_projet(s_);
        resume->pose_verdict(verdict_->nouveau_signe());
        resume->montre_bilan(verdict_->dernier());
        connect(verdict_, &verdict_vivant::bilan_pret, resume, &resume_projet::montre_bilan);
        return resume;
    });
    for (const page_etabli& p : pages_etabli())
        etabli_->ajoute(p.nom, QString::fromUtf8(p.titre), p.icone, [this, p] { return p.fabrique(s_); });

    auto* affichage = findChild<QMenu*>("mn_affichage");
    int rang = 0;
    for (const QString& nom : etabli_->noms()) {
        QAction* a = affichage->addAction(etabli_->titre(nom));
        a->setObjectName("mn_page_" + QString(nom).remove("page_"));
        a->setStatusTip("Montrer la page « " + etabli_->titre(nom) + " »");
        a->setShortcut(QKeySequence(QString("Ctrl+%1").arg(++rang)));
        connect(a, &QAction::triggered, this, [this, nom] { etabli_->montre(nom); });
    }
    etabli_->montre("accueil");
}

/// The toolbars in their titled frames, and the simulation frame behind them.
void menu::construit_entete(QWidget* entete) {
    auto* rangee = new disposition_flux(entete);
    rangee->setContentsMargins(style::espace(2), style::espace(1), style::espace(2), style::espace(1));
    rangee->setSpacing(style::espace(2));
    const auto groupe = [&](const char* nom, const QString& titre, const char* nom_barre) {
        auto* cadre = new QGroupBox(titre);
        cadre->setObjectName(nom);
        auto* barre = new QToolBar;
        barre->setObjectName(nom_barre);
        barre->setIconSize({style::espace(6), style::espace(6)});
        for (const touche_barre& t : touches_barres()) {
            if (qstrcmp(t.barre, nom_barre) != 0) continue;
            const auto* cible = findChild<QAction*>(t.commande);
            QAction* a = barre->addAction(style::icone(t.cle), QString::fromUtf8(t.bulle));
            a->setObjectName(QString("%1_%2").arg(t.barre, t.cle));
            a->setData(QString(t.cle));
            a->setToolTip(QString::fromUtf8(t.bulle));
            a->setEnabled(cible->isEnabled());
        }
        connect(barre, &QToolBar::actionTriggered, this, [this, barre](QAction* a) { clic_barre(barre, a); });
        auto* interieur = new QHBoxLayout(cadre);
        interieur->setContentsMargins(style::espace(1), 0, style::espace(1), 0);
        interieur->addWidget(barre);
        barre->setMinimumWidth(barre->sizeHint().width()); // every key in sight
        rangee->addWidget(cadre);
        return cadre;
    };
    groupe("z_orbito", "Orbito", "Toolbar_orb");
    z_energie_ = groupe("z_energie", "Energie", "Toolbar_power");
    z_attitude_ = groupe("z_attitude", "Contrôle d'attitude", "Toolbar_att");
    fra_simulation_ = new fra_simulation(s_);
    rangee->addWidget(fra_simulation_);
}

void menu::clic_barre(const QToolBar* barre, const QAction* touche) {
    for (const touche_barre& t : touches_barres())
        if (barre->objectName() == t.barre && touche->data().toString() == t.cle)
            findChild<QAction*>(t.commande)->trigger();
}

/// Runs the menu command of a control.
void menu::commande(const QString& controle) {
    fra_simulation_->valide_saisie();
    for (const entree_menu& e : entrees_menu())
        if (controle == e.controle && *e.fenetre) {
            montre_fenetre(e.fenetre, e.page);
            return;
        }
    const std::map<QString, std::function<void()>> commandes = {
        {"mn_etude_nouvelle", [this] { nouvelle_etude(); }},
        {"mn_etude_ouvrir", [this] { mn_etude_ouvrir(); }},
        {"mn_etude_enreg", [this] { enregistre_etude(); }},
        {"mn_etude_notes", [this] { mn_etude_notes(); }},
        {"mn_etude_enregsous", [this] { enregistre_etude_sous(); }},
        {"mn_etude_rapport", [this] { rapporteur_->demande(); }},
        {"mn_annuler", [this] { remonte(false); }},
        {"mn_refaire", [this] { remonte(true); }},
        {"mn_fichier_ouvrir", [this] { mn_fichier_ouvrir(); }},
        {"mn_fichier_enreg", [this] { mn_fichier_enreg(); }},
        {"mn_fichier_enregsous", [this] { mn_fichier_enregsous(); }},
        {"mn_attfich_ouvrir", [this] { mn_attfich_ouvrir(); }},
        {"mn_attfich_enreg", [this] { mn_attfich_enreg(); }},
        {"mn_attfich_enregsous", [this] { mn_attfich_enregsous(); }},
        {"mn_fichier_quit", [this] { close(); }},
        {"mn_accueil",
         [this] { etabli_->montre(etabli_->courante() == "accueil" ? "resume_projet" : "accueil"); }},
        {"mn_chercher", [this] { ouvre_recherche(); }},
        {"mn_aide_apropos", [this] { a_propos(); }},
    };
    if (const auto c = commandes.find(controle); c != commandes.end()) c->second();
}

void menu::remplit_exemples(const QList<exemple>& exemples) {
    auto* m = findChild<QMenu*>("mn_exemples");
    m->menuAction()->setEnabled(!exemples.isEmpty());
    for (const exemple& e : exemples) {
        QAction* a = m->addAction(style::icone(e.icone), e.titre);
        a->setStatusTip(e.contenu);
        connect(a, &QAction::triggered, this, [this, e] { ouvre_exemple(e); });
    }
}

void menu::configuration_a_change() {
    ++s_.version_config;
    verdict_->suit();
    montre_modele();
    note_bientot();
    // The start page gives way to what has been started; the other pages follow the edit where they are.
    if (etabli_->courante() == "accueil") etabli_->montre("resume_projet");
    rafraichit();
}

void menu::rafraichit() { etabli_->rafraichit(); }

void menu::a_propos() {
    QMessageBox::about(
        this, "À propos de KESTREL",
        "<h3>KESTREL " + QCoreApplication::applicationVersion() +
            "</h3><p>Simulateur de petit satellite en orbite terrestre : orbite, énergie et "
            "contrôle d'attitude.</p><p>Logiciel libre sous licence GNU GPL version 3 ou "
            "ultérieure, sans aucune garantie.</p><p>Données du programme : " +
            QDir::toNativeSeparators(QString::fromStdString(s_.dossier_depart)).toHtmlEscaped() + "</p>");
}

void menu::resizeEvent(QResizeEvent* e) {
    constexpr int tout_en_une_rangee = 335; // tools and period side by side
    fra_simulation_->en_une_rangee(width() < style::espace(tout_en_une_rangee));
    QMainWindow::resizeEvent(e);
}

void menu::changeEvent(QEvent* e) {
    if (e->type() == QEvent::ActivationChange && etabli_) rafraichit();
    QMainWindow::changeEvent(e);
}

/// The same question for every way to quit.
void menu::closeEvent(QCloseEvent* e) {
    if (!terminee_) {
        fra_simulation_->valide_saisie();
        QMessageBox boite(QMessageBox::Question, "Configuration", "Voulez-vous enregistrer le projet ?",
                          QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, this);
        boite.setObjectName("question_quitter");
        boite.button(QMessageBox::Yes)->setText("&Oui");
        boite.button(QMessageBox::No)->setText("&Non");
        boite.button(QMessageBox::Cancel)->setText("&Annuler");
        boite.setDefaultButton(QMessageBox::Yes);
        const int reponse = boite.exec();
        // What the energy project does not hold is asked for in a box of its own, which names it.
        if (reponse == QMessageBox::Cancel || (reponse == QMessageBox::Yes && !enregistre_projet()) ||
            !laisse_etude(false)) {
            e->ignore();
            return;
        }
    }
    e->accept();
    if (!terminee_) termine(0);
}

/// Ends the program: closes every window, which stops their runs.
void menu::termine(int code) {
    terminee_ = true;
    QSettings().setValue("geometrie/menu", saveGeometry());
    // The end below carries the exit status; the last window's closing would replace it.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    for (auto& [nom, f] : fenetres_)
        if (f) f->close();
    if (code == 0) oublie_copie();
    hide();
    fin_programme(code);
}

void menu::dragEnterEvent(QDragEnterEvent* e) {
    for (const QUrl& url : e->mimeData()->urls())
        if (est_projet(url.toLocalFile())) e->acceptProposedAction();
}

void menu::dropEvent(QDropEvent* e) {
    QStringList chemins;
    for (const QUrl& url : e->mimeData()->urls())
        if (est_projet(url.toLocalFile())) {
            e->acceptProposedAction();
            chemins << url.toLocalFile();
        }
    ouvre_tous(chemins);
}
