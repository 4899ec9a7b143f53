/// The main window as a user works with it: start, simulation frame, menus and toolbars, quitting.
#include "shell/windows/menu.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTextBrowser>

#include "analysis/phrase_bilan.h"
#include "project/att_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/utilitaires.h"
#include "shell/windows/fenetres.h"
#include "shell/windows/frmFirst.h"
#include "shell/windows/menu_actions.h"
#include "tests/gestes.h"
#include "widgets/fenetre.h"

namespace {

struct ecran : gestes::essai_fenetres {
    std::unique_ptr<menu> m;
    int fin = -1;  ///< exit status of an ended program
    QString choix; ///< what the user picks in a file dialog; empty: cancels
    int dialogues = 0;

    void SetUp() override {
        remplace_repondeur(nullptr); // the question at the end is a real box
        s.dossier_depart = dossier.path().toStdString();
        m = std::make_unique<menu>(s);
        m->fin_programme = [this](int code) { fin = code; };
        m->choisit_fichier = [this](QWidget*, const demande_fichier& d) {
            ++dialogues;
            return QString(choix).replace(".pwr", "." + d.ending);
        };
        m->show();
    }
    template <class T>
    T* controle(const char* nom) {
        return gestes::controle<T>(m.get(), nom);
    }
    void choisit_pas(const char* texte) { controle<QComboBox>("cmb_pas")->setCurrentText(texte); }
    void tape_date(const char* nom, const char* texte) { gestes::tape(m.get(), nom, texte, Qt::Key_Return); }
    QString texte_date(const char* nom) { return controle<QLineEdit>(nom)->text(); }

    /// Answers the next question box with a button.
    void repondra(QMessageBox::StandardButton b) {
        QTimer::singleShot(0, qApp, [this, b] {
            auto* boite = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(boite);
            question = boite->text();
            QTest::mouseClick(boite->button(b), Qt::LeftButton);
        });
    }
    QString question;
};

} // namespace

TEST(demarrage, ok_hands_over_to_the_main_window_with_the_default_period) {
    session s;
    frmFirst premiere(s);
    premiere.show();
    EXPECT_EQ(premiere.principale(), nullptr);
    QTest::keyClick(premiere.findChild<QPushButton*>("cmdOK"), Qt::Key_Return);
    EXPECT_FALSE(premiere.isVisible());
    const menu* m = premiere.principale();
    ASSERT_TRUE(m && m->isVisible());
    EXPECT_EQ(m->windowTitle(), "Energie (sans_nom)");
    // Epoch 2001, day 80.55001, 15 turns a day: 21 March 13:12:00.864, for 96 minutes.
    EXPECT_EQ(m->findChild<QLineEdit*>("txt_date_debut")->text(), "21/03/2001 13:12:01");
    EXPECT_EQ(m->findChild<QLineEdit*>("txt_date_fin")->text(), "21/03/2001 14:48:01");
    EXPECT_DOUBLE_EQ(s.periode.j_fin - s.periode.j_debut, s.periode.j_debut + 1.0 / 15 - s.periode.j_debut);
    EXPECT_EQ(m->findChild<QComboBox*>("cmb_pas")->currentText(), "2 min");
}

TEST_F(ecran, toolbars_forward_to_the_menu) {
    // "open" exists in two toolbars: each goes to its own half.
    QString titre;
    m->choisit_fichier = [&](QWidget*, const demande_fichier& d) {
        titre = d.titre;
        return QString();
    };
    controle<QAction>("Toolbar_power_open")->trigger();
    EXPECT_EQ(titre, "Ouvrir un fichier configuration du système énergie");
    controle<QAction>("Toolbar_att_open")->trigger();
    EXPECT_EQ(titre, "Ouvrir un fichier de configuration du contrôle d'attitude");
}

TEST_F(ecran, entries_open_their_window_once_or_stand_disabled) {
    for (const entree_menu& e : entrees_menu()) {
        auto* a = controle<QAction>(e.controle);
        ASSERT_TRUE(a) << e.controle;
        if (!*e.fenetre) continue;
        const bool possible = QString(e.fenetre) == "guide"
                                  ? QFile::exists(dossier.filePath("guide/guide.md"))
                                  : fabrique(e.fenetre) != nullptr;
        EXPECT_EQ(a->isEnabled(), possible) << e.controle;
        if (!a->isEnabled()) continue;
        a->trigger();
        fenetre* f = m->montre_fenetre(e.fenetre, e.page);
        ASSERT_TRUE(f) << e.controle;
        EXPECT_TRUE(f->isVisible()) << e.controle;
        EXPECT_EQ(f->objectName(), e.fenetre);
        f->close();
        EXPECT_EQ(m->montre_fenetre(e.fenetre), f); // closed windows keep their state
        f->close();
    }
    EXPECT_EQ(m->montre_fenetre("inconnue"), nullptr);
}

TEST_F(ecran, the_guide_is_read_from_the_programs_folder) {
    EXPECT_FALSE(controle<QAction>("mn_aide_guide")->isEnabled());
    QDir(dossier.path()).mkdir("guide");
    gestes::ecrit(dossier.filePath("guide/guide.md"), "# Premiers pas\n\nOuvrez un exemple.");
    m = std::make_unique<menu>(s);
    controle<QAction>("mn_aide_guide")->trigger();
    const fenetre* g = m->montre_fenetre("guide");
    EXPECT_TRUE(g->findChild<QTextBrowser*>("txt_guide")->toPlainText().startsWith("Premiers pas"));
}

TEST_F(ecran, real_time_holds_the_step_at_one_second) {
    s.config_modifiee = 0;
    choisit_pas("5 min");
    EXPECT_EQ(s.periode.pas_sim, 300);
    EXPECT_EQ(s.config_modifiee, 0); // the step marks nothing
    gestes::clique(m.get(), "chk_RealTime");
    EXPECT_TRUE(s.temps_reel);
    EXPECT_EQ(s.config_modifiee, 1);
    EXPECT_EQ(s.periode.pas_sim, 1);
    for (const char* nom : {"cmb_pas", "txt_date_debut", "txt_date_fin"})
        EXPECT_FALSE(controle<QWidget>(nom)->isEnabled()) << nom;

    gestes::clique(m.get(), "chk_RealTime");
    EXPECT_FALSE(s.temps_reel);
    EXPECT_TRUE(controle<QWidget>("cmb_pas")->isEnabled());
    EXPECT_EQ(s.periode.pas_sim, 1); // the list still shows another step
    EXPECT_EQ(controle<QComboBox>("cmb_pas")->currentText(), "5 min");
    // Picking the very step shown counts as a choice.
    auto* c = controle<QComboBox>("cmb_pas");
    c->showPopup();
    QTest::keyClick(c->view(), Qt::Key_Return);
    EXPECT_EQ(s.periode.pas_sim, 300);
}

TEST_F(ecran, dates_typed_land_in_the_session_and_never_cross) {
    tape_date("txt_date_fin", "20/03/2001 00:00:00");
    EXPECT_EQ(s.periode.j_fin, s.periode.j_debut);
    s.config_modifiee = 0;
    tape_date("txt_date_fin", "25/03/2001 02:30:05"); // an hour that a summer time would skip
    EXPECT_EQ(texte_date("txt_date_fin"), "25/03/2001 02:30:05");
    const date_record d{.an = 2001, .mois = 3, .jour = 25, .heure = 2, .minute = 30, .seconde = 5};
    EXPECT_EQ(s.periode.j_fin, date_vers_jour(d));
    EXPECT_EQ(s.config_modifiee, 1);

    tape_date("txt_date_debut", "26/03/2001 00:00:00"); // after the end: becomes the end
    EXPECT_EQ(texte_date("txt_date_debut"), "25/03/2001 02:30:05");
    EXPECT_EQ(s.periode.j_debut, date_vers_jour(d));
    EXPECT_EQ(s.periode.j_fin, date_vers_jour(d));

    tape_date("txt_date_debut", "20/03/2001 00:00:00");
    tape_date("txt_date_fin", "01/01/1999 00:00:00"); // before the start: becomes the start
    EXPECT_EQ(texte_date("txt_date_fin"), "20/03/2001 00:00:00");
    EXPECT_EQ(s.periode.j_fin, s.periode.j_debut);
}

TEST_F(ecran, every_way_to_quit_asks_and_cancel_keeps_everything) {
    for (const char* voie : {"mn_fichier_quit", "Toolbar_power_quit", "fermeture"}) {
        repondra(QMessageBox::Cancel);
        if (QString(voie) == "fermeture")
            EXPECT_FALSE(m->close());
        else
            controle<QAction>(voie)->trigger();
        EXPECT_EQ(question, "Voulez-vous enregistrer le projet ?");
        EXPECT_TRUE(m->isVisible()) << voie;
        EXPECT_EQ(fin, -1);
        question.clear();
    }
    repondra(QMessageBox::No);
    EXPECT_TRUE(m->close());
    EXPECT_EQ(fin, 0);
    EXPECT_EQ(dialogues, 0);
}

TEST_F(ecran, quitting_with_yes_saves_first) {
    repondra(QMessageBox::Yes);
    EXPECT_FALSE(m->close()); // the file dialog was cancelled: nothing is lost
    EXPECT_EQ(dialogues, 1);
    EXPECT_EQ(fin, -1);

    // What was edited and never saved goes into files of its own.
    gestes::tape(m->montre_fenetre("orbito_conf", 0), "norad_demi", "7000");
    gestes::tape(m->montre_fenetre("att_conf", 0), "Masse", "61");
    m->activateWindow();
    choix = dossier.filePath("fin.pwr");
    choisit_pas("10 min");
    repondra(QMessageBox::Yes);
    EXPECT_TRUE(m->close());
    EXPECT_EQ(fin, 0);
    power_record p;
    simulation_period periode;
    erreur_fichier erreur;
    ASSERT_TRUE(charge_energie(choix.toStdString(), p, periode, erreur)) << erreur.texte();
    EXPECT_EQ(periode.pas_sim, 600);
    attitude_record a;
    record_orbite o;
    std::string raison;
    ASSERT_TRUE(charge_attitude(dossier.filePath("fin.att").toStdString(), a, raison)) << raison;
    EXPECT_EQ(a.Masse, 61);
    ASSERT_TRUE(charge_orbite(dossier.filePath("fin.orb").toStdString(), o, raison)) << raison;
    EXPECT_EQ(o.orb_demi, 7000);
}

TEST_F(ecran, the_middle_follows_the_project_and_marks_old_results) {
    auto* accueil = controle<QWidget>("accueil");
    EXPECT_TRUE(accueil->isVisible());
    choisit_pas("5 min"); // an edit
    EXPECT_TRUE(controle<QWidget>("resume_projet")->isVisible());
    // 7174 km, circular; a sphere of 6428 km hides 2 asin(6428 / 7174) of the turn seen from the side.
    EXPECT_TRUE(controle<QLabel>("lab_resume_altitudes")->text().contains("795.9 à 795.9 km"));
    EXPECT_TRUE(controle<QLabel>("lab_resume_periode")->text().contains("01:36:00"));
    // The figures are those of the budget.
    const bilan b = calcule_bilan(s, {.dossier_donnees = s.dossier_depart});
    const QString marge = QString::fromStdString(nombre_fr(b.tours.back().marge, 0)) + " %";
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return controle<QLabel>("lab_chiffre_marge")->text().contains(marge); }));
    EXPECT_FALSE(controle<QLabel>("lab_perime")->isVisible());
    note_resultats(s);
    choisit_pas("1 min");
    EXPECT_TRUE(controle<QLabel>("lab_perime")->isVisible());
    EXPECT_FALSE(controle<QLabel>("lab_modele_resume")->isVisible());
    controle<QAction>("mn_modele_physique")->trigger();
    EXPECT_TRUE(controle<QLabel>("lab_modele_resume")->isVisible());
    emit controle<QLabel>("lab_accueil")->linkActivated("accueil");
    EXPECT_TRUE(accueil->isVisible());
    auto* seconde = controle<QAction>("mn_page_resume_projet");
    EXPECT_EQ(seconde->shortcut(), QKeySequence("Ctrl+2"));
    seconde->trigger();
    EXPECT_FALSE(accueil->isVisible());
    // Each picture has its name and leads to what edits it, by the keyboard too.
    for (const auto& [nom, fenetre] :
         {std::pair("vig_orbite", "orbito_conf"), {"vig_satellite", "power_conf"}}) {
        auto* v = controle<QAbstractButton>(nom);
        EXPECT_FALSE(v->accessibleName().isEmpty());
        QTest::keyClick(v, Qt::Key_Return);
        gestes::fenetre_ouverte(fenetre)->close();
    }
    gestes::clique(m.get(), "vig_carte");
    EXPECT_TRUE(controle<QWidget>("page_carte")->isVisible());
}

TEST_F(ecran, the_summary_folds_to_the_width_and_scrolls) {
    choisit_pas("5 min");
    auto* page = controle<QWidget>("resume_projet");
    auto* carte = controle<QWidget>("vig_carte");
    auto* orbite = controle<QWidget>("vig_orbite");
    auto* lignes = controle<QWidget>("z_resume_orbite");
    const auto place = [&](QWidget* w) { return w->mapTo(page, QPoint()); };
    for (const auto& [largeur, cote_a_cote] : {std::pair(1360, true), {960, false}, {640, false}}) {
        m->resize(largeur, 540);
        QTest::qWait(20);
        EXPECT_EQ(place(carte).y() == place(orbite).y(), cote_a_cote) << largeur;
        EXPECT_LE(place(lignes).x() + lignes->width(), page->width()) << largeur;
    }
}
