/// Projects in the main window: open, save, failures, samples, recent projects, drag and drop.
#include "shell/windows/menu.h"

#include <cfenv>

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "project/att_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/windows/fenetre.h"
#include "shell/windows/verifications.h"

namespace {

QStringList messages;
bool repond(gravite, const QString& texte) {
    messages << texte;
    return true;
}

struct projets : testing::Test {
    QTemporaryDir dossier;
    session s;
    std::unique_ptr<menu> m;
    int fin = -1;
    QString choix;
    QList<demande_fichier> demandes;

    void SetUp() override {
        messages.clear();
        remplace_repondeur(repond);
        QSettings().clear();
        s.dossier_depart = dossier.path().toStdString();
        ouvre_menu();
    }
    void TearDown() override { remplace_repondeur(nullptr); }
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
        return m->findChild<T*>(nom);
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
    EXPECT_EQ(controle<QGroupBox>("z_energie")->title(), "Energie (mission)");
    EXPECT_EQ(controle<QGroupBox>("z_attitude")->title(), "Contrôle d'attitude (sans_nom)");
    EXPECT_EQ(controle<QDateTimeEdit>("txt_date_debut")->text(), "14/03/2001 06:00:00");
    EXPECT_EQ(controle<QDateTimeEdit>("txt_date_fin")->text(), "15/03/2001 12:00:00");
    EXPECT_EQ(controle<QComboBox>("cmb_pas")->currentText(), "10 min");
    EXPECT_EQ(s.periode.pas_sim, 600);
    EXPECT_EQ(s.config_modifiee, 1);
    EXPECT_TRUE(controle<QLabel>("lab_resume_demande")->text().contains("42.0 W de jour"));
    EXPECT_EQ(demandes.at(0).filtre, "Fichiers  Configuration (*.pwr);;All Files (*.*)");
    EXPECT_EQ(demandes.at(0).dossier, dossier.path());

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
    const auto boite = [](fenetre* f, const char* nom) { return f->findChild<QLineEdit*>(nom); };
    m->ouvre(projet("ouvert.pwr", 60, 42));
    EXPECT_EQ(boite(puissance, "gst_txt_pdem_0")->text().toDouble(), 42);

    attitude_record a;
    a.Masse = 61;
    record_orbite o;
    o.orb_demi = 7000;
    std::string raison;
    ASSERT_TRUE(sauve_attitude(dossier.filePath("a.att").toStdString(), a, raison));
    ASSERT_TRUE(sauve_orbite(dossier.filePath("o.orb").toStdString(), o, raison));
    m->ouvre(dossier.filePath("a.att"));
    m->ouvre(dossier.filePath("o.orb"));
    EXPECT_EQ(boite(attitude, "Masse")->text().toDouble(), 61);
    EXPECT_EQ(boite(orbite, "norad_demi")->text().toDouble(), 7000);

    note_resultats(s);
    QLineEdit* demande = boite(puissance, "gst_txt_pdem_0");
    m->montre_fenetre("power_conf", 4);
    QApplication::setActiveWindow(puissance); // no window manager hands the focus on
    demande->setFocus();
    demande->selectAll();
    QTest::keyClicks(demande, "55");
    QTest::keyClick(demande, Qt::Key_Tab);
    EXPECT_TRUE(controle<QLabel>("lab_resume_demande")->text().contains("55.0 W de jour"));
    EXPECT_TRUE(resultats_perimes(s));

    // The link of a line opens the window that edits it, at its page.
    puissance->close();
    auto* batterie = controle<QLabel>("lab_resume_batterie");
    emit batterie->linkActivated("power_conf:3");
    EXPECT_TRUE(puissance->isVisible());
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
    EXPECT_EQ(controle<QDateTimeEdit>("txt_date_debut")->text(), "01/01/1901 00:00:00");
    EXPECT_EQ(controle<QDateTimeEdit>("txt_date_fin")->text(), "31/12/2099 23:59:59");
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
    EXPECT_EQ(demandes[0].titre, "Enregistrer la configuration du système énergie");
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
    EXPECT_EQ(periode.j_debut, s.periode.j_debut);

    choix = dossier.filePath("copie.pwr");
    lance("mn_fichier_enregsous");
    EXPECT_EQ(demandes[1].nom, "neuf");
    EXPECT_EQ(s.chemin_energie, choix.toStdString());
    EXPECT_TRUE(QFile::exists(dossier.filePath("neuf.pwr")));
}

TEST_F(projets, a_failed_write_is_told_and_the_program_goes_on) {
    choix = dossier.filePath("absent/x.pwr");
    lance("mn_fichier_enregsous");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0], "Erreur d'écriture.\n Impossible d'enregistrer la configuration !!");
    EXPECT_EQ(fin, -1);
    EXPECT_TRUE(m->isVisible());
}

TEST_F(projets, a_damaged_energy_project_ends_the_program_with_its_line) {
    const QString chemin = projet("abime.pwr", 60, 33);
    QFile f(chemin);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    auto lignes = f.readAll().split('\n');
    f.close();
    lignes[202] = "abc\r"; // line 203, a count
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(lignes.join('\n'));
    f.close();
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
    EXPECT_EQ(demandes.at(0).titre, "Enregistrer le fichier de configuration du contrôle d'attitude");
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
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0], "Erreur de lecture_ligne du fichier de configuration.\nFichier non trouvable ou "
                           "format non valable !!");
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
    QFile vide(dossier.filePath("vide.pwr"));
    ASSERT_TRUE(vide.open(QIODevice::WriteOnly));
    vide.close();
    QTimer::singleShot(0, m.get(), [&] { m->ouvre(vide.fileName()); });
    EXPECT_EQ(QCoreApplication::exec(), 1);
    EXPECT_EQ(messages.size(), 1);
}

TEST_F(projets, an_orbit_that_means_nothing_is_shown_as_such) {
    QFile f(dossier.filePath("bruit.orb"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(QByteArray(114, char(0xff))); // every number a NaN
    f.close();
    std::feclearexcept(FE_ALL_EXCEPT);
    m->ouvre(f.fileName());
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

    QFile autre(dossier.filePath("notes.txt"));
    ASSERT_TRUE(autre.open(QIODevice::WriteOnly));
    autre.close();
    lache({autre.fileName()});
    EXPECT_TRUE(messages.isEmpty());
    m->ouvre(autre.fileName()); // as from the command line
    EXPECT_TRUE(messages.value(0).contains("n'est pas un projet"));
}

TEST_F(projets, recent_projects_are_kept_and_a_vanished_one_is_told) {
    const QString a = projet("a.pwr", 60), b = projet("b.pwr", 60);
    m->ouvre(a);
    m->ouvre(b);
    m->ouvre(a);
    s = session{};
    s.dossier_depart = dossier.path().toStdString();
    ouvre_menu(); // the program started again
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

TEST_F(projets, a_sample_opens_project_orbit_and_spin) {
    s = session{};
    s.dossier_depart = DOSSIER_DATA;
    ouvre_menu();
    auto* exemples = controle<QMenu>("mn_exemples");
    ASSERT_GE(exemples->actions().size(), 4);
    s.orbit.pointage.roulis = 20; // of what was open before
    auto* carte = controle<QPushButton>("carte_hexagone");
    ASSERT_TRUE(carte);
    QTest::mouseClick(carte, Qt::LeftButton);
    EXPECT_EQ(m->windowTitle(), "Energie (hexagone)");
    EXPECT_EQ(s.nom_orbite, "hexagone");
    EXPECT_EQ(s.power.opt_faces, 1);
    EXPECT_EQ(s.orbit.pointage.spin, vrai);
    EXPECT_EQ(s.orbit.pointage.vspin, 0.5);
    EXPECT_EQ(s.orbit.pointage.roulis, 0);
    EXPECT_TRUE(controle<QLabel>("lab_resume_pointage")->text().contains("0.500 tr/mn"));
    EXPECT_TRUE(messages.isEmpty());
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
    EXPECT_EQ(m->windowTitle(), "Energie (tape)");
}
