/// Projects in the main window: open, save, failures, samples, recent projects, drag and drop.
#include "shell/windows/menu.h"

#include <cfenv>

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QGroupBox>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>

#include "project/att_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/lancement.h"
#include "tests/gestes.h"
#include "widgets/fenetre.h"
#include "widgets/signe_verdict.h"

using namespace gestes;

namespace {

struct projets : essai_fenetres {
    std::unique_ptr<menu> m;
    int fin = -1;
    QString choix;
    QList<demande_fichier> demandes;

    void SetUp() override {
        QSettings().clear();
        s.dossier_depart = dossier.path().toStdString();
        ouvre_menu();
    }
    void ouvre_menu() {
        m = std::make_unique<menu>(s);
        m->fin_programme = [this](int code) { fin = code; };
        m->choisit_fichier = [this](QWidget*, const demande_fichier& d) {
            demandes << d;
            return choix;
        };
        m->show();
    }
    template <class T>
    T* controle(const char* nom) {
        return gestes::controle<T>(m.get(), nom);
    }
    void lance(const char* commande) { controle<QAction>(commande)->trigger(); }

    /// A project file with a step and a payload demand of its own.
    QString projet(const char* nom, int pas, float demande = 42) {
        power_record p;
        p.p_demand[0] = demande;
        simulation_period periode;
        periode.j_debut = 18700.25;
        periode.j_fin = 18701.5;
        periode.pas_sim = pas;
        const QString chemin = dossier.filePath(nom);
        EXPECT_TRUE(sauve_energie(chemin.toStdString(), p, periode));
        return chemin;
    }
    void lache(const QStringList& chemins) {
        QMimeData d;
        QList<QUrl> urls;
        for (const QString& c : chemins) urls << QUrl::fromLocalFile(c);
        d.setUrls(urls);
        QDragEnterEvent entre({5, 5}, Qt::CopyAction, &d, Qt::LeftButton, Qt::NoModifier);
        entre.ignore();
        QApplication::sendEvent(m.get(), &entre);
        if (!entre.isAccepted()) return;
        QDropEvent depose({5, 5}, Qt::CopyAction, &d, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m.get(), &depose);
    }
};

} // namespace

TEST_F(projets, opening_an_energy_project_restores_everything) {
    choix = projet("mission.pwr", 600);
    s.config_modifiee = 0;
    lance("mn_fichier_ouvrir");
    EXPECT_EQ(s.power.p_demand[0], 42);
    EXPECT_EQ(s.chemin_energie, choix.toStdString());
    EXPECT_EQ(m->windowTitle(), "Energie (mission)");
    EXPECT_EQ(controle<QLineEdit>("txt_date_debut")->text(), "14/03/2001 06:00:00");
    EXPECT_EQ(controle<QLineEdit>("txt_date_fin")->text(), "15/03/2001 12:00:00");
    EXPECT_EQ(controle<QComboBox>("cmb_pas")->currentText(), "10 min");
    EXPECT_EQ(s.periode.pas_sim, 600);

    EXPECT_EQ(s.config_modifiee, 1);

    // A step that the list does not restore leaves the list, and stays the step.
    for (const int pas : {45, 5}) {
        choix = projet("autre.pwr", pas);
        lance("mn_fichier_ouvrir");
        EXPECT_EQ(controle<QComboBox>("cmb_pas")->currentText(), "10 min");
        EXPECT_EQ(s.periode.pas_sim, pas);
    }
    choix = projet("nul.pwr", 0);
    lance("mn_fichier_ouvrir");
    EXPECT_FALSE(pas_valide(s));
}

TEST_F(projets, open_windows_follow_the_project_and_the_summary_follows_them) {
    fenetre* puissance = m->montre_fenetre("power_conf", 4);
    fenetre* orbite = m->montre_fenetre("orbito_conf", 0);
    fenetre* attitude = m->montre_fenetre("att_conf", 0);
    ASSERT_TRUE(puissance && orbite && attitude);
    m->ouvre(projet("ouvert.pwr", 60, 42));
    EXPECT_EQ(gestes::controle<QLineEdit>(puissance, "gst_txt_pdem_0")->text().toDouble(), 42);

    attitude_record a;
    a.Masse = 61;
    record_orbite o;
    o.orb_demi = 7000;
    std::string raison;
    ASSERT_TRUE(sauve_attitude(dossier.filePath("a.att").toStdString(), a, raison));
    ASSERT_TRUE(sauve_orbite(dossier.filePath("o.orb").toStdString(), o, raison));
    m->ouvre(dossier.filePath("a.att"));
    m->ouvre(dossier.filePath("o.orb"));
    EXPECT_EQ(gestes::controle<QLineEdit>(attitude, "Masse")->text().toDouble(), 61);
    EXPECT_EQ(gestes::controle<QLineEdit>(orbite, "norad_demi")->text().toDouble(), 7000);

    note_resultats(s);
    m->montre_fenetre("power_conf", 4);
    QApplication::setActiveWindow(puissance); // no window manager hands the focus on
    tape(puissance, "gst_txt_pdem_0", "55");
    EXPECT_TRUE(controle<QLabel>("lab_resume_demande")->text().contains("55.0 W de jour"));
    EXPECT_TRUE(resultats_perimes(s));

    // The link of a line opens the window that edits it, at its page.
    puissance->close();
    emit controle<QLabel>("lab_resume_batterie")->linkActivated("power_conf:3");
    EXPECT_TRUE(puissance->findChild<QWidget*>("bat_cmb_type")->isVisible());
}

TEST_F(projets, dates_beyond_the_pickers_stay_in_the_session) {
    power_record p;
    simulation_period periode;
    periode.j_debut = -20000.25; // 1895
    periode.j_fin = 60000;       // 2114
    choix = dossier.filePath("loin.pwr");
    ASSERT_TRUE(sauve_energie(choix.toStdString(), p, periode));
    lance("mn_fichier_ouvrir");
    EXPECT_EQ(s.periode.j_debut, -20000.25);
    EXPECT_EQ(s.periode.j_fin, 60000);
    EXPECT_EQ(controle<QLineEdit>("txt_date_debut")->text(), "01/01/1901 00:00:00");
    EXPECT_EQ(controle<QLineEdit>("txt_date_fin")->text(), "31/12/2099 23:59:59");
}

TEST_F(projets, cancelled_dialogs_change_nothing) {
    const session avant = s;
    for (const char* c : {"mn_fichier_ouvrir", "mn_fichier_enreg", "mn_fichier_enregsous",
                          "mn_attfich_ouvrir", "mn_attfich_enreg", "mn_attfich_enregsous"}) {
        QDir::setCurrent("/");
        lance(c);
        EXPECT_EQ(QDir::currentPath(), QDir(dossier.path()).canonicalPath()) << c;
    }
    EXPECT_EQ(demandes.size(), 6);
    EXPECT_EQ(s.version_config, avant.version_config);
    EXPECT_EQ(s.chemin_energie, "");
    EXPECT_EQ(s.chemin_attitude, "");
    EXPECT_TRUE(QDir(dossier.path()).isEmpty());
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(projets, saving_asks_once_then_rewrites_in_silence) {
    choix = dossier.filePath("neuf.pwr");
    lance("mn_fichier_enreg");
    ASSERT_EQ(demandes.size(), 1);
    EXPECT_EQ(demandes[0].nom, "");
    EXPECT_EQ(m->windowTitle(), "Energie (neuf)");

    s.power.p_demand[0] = 77;
    lance("mn_fichier_enreg");
    EXPECT_EQ(demandes.size(), 1);
    power_record p;
    simulation_period periode;
    erreur_fichier erreur;
    ASSERT_TRUE(charge_energie(choix.toStdString(), p, periode, erreur));
    EXPECT_EQ(p.p_demand[0], 77);

    choix = dossier.filePath("copie.pwr");
    lance("mn_fichier_enregsous");
    EXPECT_EQ(demandes[1].nom, "neuf");
    EXPECT_EQ(s.chemin_energie, choix.toStdString());

    // A failed write is told, and the program goes on.
    choix = dossier.filePath("absent/x.pwr");
    lance("mn_fichier_enregsous");
    EXPECT_EQ(messages, QStringList{"Erreur d'écriture.\n Impossible d'enregistrer la configuration !!"});
    EXPECT_EQ(fin, -1);
    EXPECT_TRUE(m->isVisible());
}

TEST_F(projets, a_damaged_energy_project_ends_the_program_with_its_line) {
    const QString chemin = projet("abime.pwr", 60, 33);
    auto lignes = contenu(chemin).split('\n');
    lignes[202] = "abc\r"; // line 203, a count
    ecrit(chemin, lignes.join('\n'));
    choix = chemin;
    lance("mn_fichier_ouvrir");
    EXPECT_EQ(fin, 1);
    ASSERT_EQ(messages.size(), 1); // and no question
    EXPECT_TRUE(messages[0].contains("abime.pwr"));
    EXPECT_TRUE(messages[0].contains("203"));
    EXPECT_FALSE(m->isVisible());
    EXPECT_EQ(s.power.p_demand[0], 33); // no rollback of what was read
    EXPECT_EQ(s.chemin_energie, "");
}

TEST_F(projets, an_attitude_project_is_saved_and_opened_apart) {
    choix = dossier.filePath("sca.att");
    s.attitude.Masse = 61;
    lance("mn_attfich_enreg");
    EXPECT_EQ(controle<QGroupBox>("z_attitude")->title(), "Contrôle d'attitude (sca)");
    EXPECT_EQ(m->windowTitle(), "Energie (sans_nom)");
    s.attitude.Masse = 62;
    lance("mn_attfich_enreg"); // in silence
    EXPECT_EQ(demandes.size(), 1);
    s.attitude.Masse = 63;
    s.config_modifiee = 0;
    lance("mn_attfich_ouvrir");
    EXPECT_EQ(s.attitude.Masse, 62);
    EXPECT_EQ(s.config_modifiee, 1);

    // What cannot be read leaves the record.
    choix = dossier.filePath("absent.att");
    lance("mn_attfich_ouvrir");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(s.attitude.Masse, 62);
    EXPECT_EQ(s.chemin_attitude, dossier.filePath("sca.att").toStdString());

    // A failed save as ends in silence, a failed save ends the program.
    choix = dossier.filePath("absent/x.att");
    lance("mn_attfich_enregsous");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(fin, -1);
    s.chemin_attitude = choix.toStdString();
    lance("mn_attfich_enreg");
    EXPECT_EQ(fin, 1);
    ASSERT_EQ(messages.size(), 2);
    EXPECT_TRUE(messages[1].contains("x.att"));
}

TEST_F(projets, the_exit_status_survives_the_closing_of_the_windows) {
    m = std::make_unique<menu>(s);
    m->show();
    ecrit(dossier.filePath("vide.pwr"), "");
    QTimer::singleShot(0, m.get(), [&] { m->ouvre(dossier.filePath("vide.pwr")); });
    EXPECT_EQ(QCoreApplication::exec(), 1);
    EXPECT_EQ(messages.size(), 1);
}

TEST_F(projets, an_orbit_that_means_nothing_is_shown_as_such) {
    ecrit(dossier.filePath("bruit.orb"), QByteArray(114, char(0xff))); // every number a NaN
    std::feclearexcept(FE_ALL_EXCEPT);
    m->ouvre(dossier.filePath("bruit.orb"));
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(s.nom_orbite, "bruit");
    EXPECT_TRUE(controle<QLabel>("lab_resume_eclipse")->text().contains("indéfinie"));
    EXPECT_EQ(std::fetestexcept(FE_INVALID), 0); // a run in progress sees no fault of the summary

    // What cannot be read changes nothing, results included.
    s.config_modifiee = 0;
    const auto version = s.version_config;
    m->ouvre_orbite(dossier.path());
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(s.nom_orbite, "bruit");
    EXPECT_EQ(s.config_modifiee, 0);
    EXPECT_EQ(s.version_config, version);
}

TEST_F(projets, files_dropped_on_the_window_are_opened) {
    const QString pwr = projet("lache.pwr", 300);
    record_orbite o;
    o.orb_demi = 7000;
    std::string raison;
    const QString orb = dossier.filePath("basse.orb");
    ASSERT_TRUE(sauve_orbite(orb.toStdString(), o, raison));
    const double debut = s.periode.j_debut;
    lache({orb});
    EXPECT_EQ(s.orbit.orbite.orb_demi, 7000);
    EXPECT_EQ(s.nom_orbite, "basse");
    EXPECT_EQ(s.periode.j_debut, debut); // an orbit replaces the orbit and nothing else
    lache({pwr});
    EXPECT_EQ(s.chemin_energie, pwr.toStdString());
    EXPECT_TRUE(messages.isEmpty());

    // The orbit of the project's own name is offered, unless it came along.
    o.orb_demi = 7500;
    ASSERT_TRUE(sauve_orbite(dossier.filePath("lache.orb").toStdString(), o, raison));
    m->ouvre(pwr);
    EXPECT_TRUE(messages.value(0).contains("lache.orb"));
    EXPECT_EQ(s.orbit.orbite.orb_demi, 7500);
    EXPECT_TRUE(controle<QLabel>("lab_resume_orbite")->text().contains("lache"));
    messages.clear();
    m->ouvre(orb);
    m->ouvre_tous({pwr, dossier.filePath("lache.orb")});
    EXPECT_EQ(s.orbit.orbite.orb_demi, 7500);
    EXPECT_TRUE(messages.isEmpty());

    const QString autre = dossier.filePath("notes.txt");
    ecrit(autre, "");
    lache({autre});
    EXPECT_TRUE(messages.isEmpty());
    m->ouvre(autre); // as from the command line
    EXPECT_TRUE(messages.value(0).contains("n'est pas un projet"));
}

TEST_F(projets, recent_projects_are_kept_and_a_vanished_one_is_told) {
    const QString a = projet("a.pwr", 60), b = projet("b.pwr", 60);
    m->ouvre(a);
    m->ouvre(b);
    m->ouvre(a);
    s = session{};
    s.dossier_depart = dossier.path().toStdString();
    QFile::rename(a, a + ".nouveau"); // as a save stopped halfway leaves it
    ouvre_menu();                     // the program started again
    ASSERT_TRUE(QTest::qWaitFor([&] { return !messages.isEmpty(); }));
    EXPECT_TRUE(messages.takeFirst().contains("interrompu"));
    EXPECT_TRUE(QFile::exists(a));
    auto* recents = controle<QMenu>("mn_recents");
    ASSERT_EQ(recents->actions().size(), 2);
    EXPECT_TRUE(recents->actions()[0]->text().contains("a.pwr"));
    QFile::remove(b);
    recents->actions()[1]->trigger();
    EXPECT_TRUE(messages.value(0).contains("n'existe pas"));
    EXPECT_EQ(fin, -1);
    EXPECT_EQ(recents->actions().size(), 1);
    recents->actions()[0]->trigger();
    EXPECT_EQ(s.chemin_energie, a.toStdString());
}

TEST_F(projets, an_example_opens_as_a_copy_of_its_etude) {
    s = session{};
    s.dossier_depart = DOSSIER_DATA;
    ouvre_menu();
    EXPECT_EQ(controle<QMenu>("mn_exemples")->actions().size(), 8);
    // Each card bears its verdict: one of them does not hold.
    int tiennent = 0, pas = 0;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            tiennent = pas = 0;
            for (const auto* signe : controle<QWidget>("accueil")->findChildren<signe_verdict*>()) {
                tiennent += signe->etat() == etat_verdict::tient;
                pas += signe->etat() == etat_verdict::tient_pas;
            }
            return tiennent + pas == 8;
        },
        60'000));
    EXPECT_EQ(pas, 1);
    EXPECT_TRUE(controle<QPushButton>("carte_radar")->accessibleDescription().contains("ne tient pas"));
    s.orbit.pointage.roulis = 20; // of what was open before: asked for, and let go
    repondra(QMessageBox::Discard);
    clique(m.get(), "carte_hexagone");
    EXPECT_EQ(s.nom_orbite, "hexagone");
    EXPECT_EQ(s.power.opt_faces, 1);
    EXPECT_EQ(s.orbit.pointage.spin, vrai);
    EXPECT_EQ(s.orbit.pointage.vspin, 0.5);
    EXPECT_EQ(s.orbit.pointage.roulis, 0);
    EXPECT_TRUE(controle<QLabel>("lab_resume_pointage")->text().contains("0.500 tr/min"));
    EXPECT_TRUE(messages.isEmpty());

    // It is a copy: named, without a place of its own, not among the recent projects.
    EXPECT_EQ(m->windowTitle(), "Energie (hexagone)");
    EXPECT_EQ(s.chemin_energie, "");
    EXPECT_TRUE(controle<QMenu>("mn_recents")->actions().isEmpty());
    choix = dossier.filePath("a_moi.pwr");
    lance("mn_fichier_enreg");
    EXPECT_EQ(demandes.value(0).nom, "hexagone");
    EXPECT_EQ(m->windowTitle(), "Energie (a_moi)");
    EXPECT_TRUE(m->statusBar()->currentMessage().contains(QDir::toNativeSeparators(choix)));

    // Ctrl+S of the copy is the étude's; the example stays as it was.
    clique(m.get(), "carte_radar");
    EXPECT_EQ(s.modes.size(), 1u);
    EXPECT_TRUE(controle<QLabel>("lab_notes")->text().contains("<b>À essayer</b>"));
    // A field that the notes name leads to where it is set.
    EXPECT_TRUE(controle<QLabel>("lab_notes")->text().contains("(<a href=\"power_conf:1\">cel_np</a>=9"));
    emit controle<QLabel>("lab_notes")->linkActivated("power_conf:1");
    EXPECT_EQ(
        gestes::controle<QTabWidget>(gestes::fenetre_ouverte("power_conf"), "Onglet_power")->currentIndex(),
        1);
    const QString modele = DOSSIER_DATA "/exemples/radar.kestrel";
    const QByteArray avant = gestes::contenu(modele);
    EXPECT_EQ(controle<QAction>("mn_etude_enreg")->shortcut(), QKeySequence("Ctrl+S"));
    s.power.bat_c = 12;
    choix = dossier.filePath("a_moi.kestrel");
    lance("mn_etude_enreg");
    EXPECT_EQ(demandes.last().nom, "radar");
    EXPECT_EQ(s.chemin_etude, choix.toStdString());
    EXPECT_EQ(gestes::contenu(modele), avant);
    EXPECT_NE(gestes::contenu(choix), avant);
    lance("mn_etude_nouvelle");

    // The default satellite is a new project: what would be lost is named first.
    s.orbit.orbite.orb_demi = 7000;
    s.attitude.Masse = 77;
    QString question;
    QTimer::singleShot(0, [&question] {
        auto* boite = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(boite);
        question = boite->text();
        boite->button(QMessageBox::Discard)->click();
    });
    emit controle<QPushButton>("cmd_accueil_defaut")->clicked();
    EXPECT_TRUE(question.contains("le projet d'attitude, l'orbite")) << question.toStdString();
    EXPECT_EQ(s.orbit.orbite, record_orbite{});
    EXPECT_EQ(s.attitude.Masse, attitude_record{}.Masse);
    EXPECT_EQ(m->windowTitle(), "Energie (sans_nom)");
}

TEST_F(projets, the_file_dialog_is_the_one_asked_for) {
    m.reset(new menu(s)); // with the real dialog
    m->show();
    QString titre;
    QTimer::singleShot(0, qApp, [&] {
        auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(d);
        titre = d->windowTitle();
        EXPECT_EQ(d->directory().canonicalPath(), QDir(dossier.path()).canonicalPath());
        EXPECT_EQ(d->acceptMode(), QFileDialog::AcceptSave);
        d->findChild<QLineEdit*>()->setText("tape");
        QTest::keyClick(d->findChild<QLineEdit*>(), Qt::Key_Return);
    });
    lance("mn_fichier_enregsous");
    EXPECT_EQ(titre, "Enregistrer la configuration du système énergie");
    EXPECT_TRUE(QFile::exists(dossier.filePath("tape.pwr"))); // the ending is added
}
