/// Whole journeys through the program, as a class goes through it in an afternoon.

#include <QAction>
#include <QComboBox>
#include <QDate>
#include <QImage>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>

#include <algorithm>

#include "project/windows/exp_data.h"
#include "shell/windows/frmFirst.h"
#include "shell/windows/menu.h"
#include "tests/gestes.h"

using namespace gestes;

namespace {

/// The program from its first screen to the question at its end.
class parcours : public essai_fenetres {
protected:
    void SetUp() override { demarre(); }
    void TearDown() override { premiere.reset(); }

    void demarre() {
        s = {};
        s.dossier_depart = dossier.path().toStdString();
        for (const char* nom : {"flux_solaire.txt", "densite.txt"})
            QFile::copy(QString(DOSSIER_DATA) + "/" + nom, dossier.filePath(nom));
        premiere = std::make_unique<frmFirst>(s);
        premiere->show();
        clique(premiere.get(), "cmdOK");
        m = premiere->principale();
        ASSERT_NE(m, nullptr);
        m->fin_programme = [this](int code) { fin = code; };
        m->choisit_fichier = [this](QWidget*, const demande_fichier& d) {
            return QString(choix).replace(".pwr", "." + d.ending);
        };
    }
    template <class T = QWidget>
    T* ouvre(const char* entree, const char* fenetre) {
        m->findChild<QAction*>(entree)->trigger();
        return fenetre_ouverte<T>(fenetre);
    }
    void choisit_pas(const char* texte) { controle<QComboBox>(m, "cmb_pas")->setCurrentText(texte); }

    /// Runs the complete simulation for n steps at the window's fastest pace; the lowest charge on the way.
    double simule(int n) {
        auto* f = ouvre("mn_sim_pow_com", "power_sim_all");
        controle<QWidget>(f, "Pict_visu3d")
            ->hide(); // drawing every tick takes minutes without a graphics card
        auto* minuterie = f->findChild<QTimer*>("Timer_sim_pwr");
        minuterie->stop();
        const auto tic = [&] { QMetaObject::invokeMethod(minuterie, "timeout"); };
        auto* vitesse = controle<QComboBox>(f, "cmb_vitesse");
        vitesse->setCurrentIndex(vitesse->count() - 1);
        tic();
        clique(f, "cmd_lance");
        EXPECT_EQ(s.sim_state, sim_lancee);
        double plus_bas = 1;
        const double fin_course = s.periode.j_debut + n * s.periode.pas_sim / 86400.;
        for (int k = 0; k < 100 * n && s.periode.j_courant < fin_course; ++k) {
            tic();
            plus_bas = std::min(plus_bas, s.power.bat_soc);
        }
        EXPECT_GE(s.periode.j_courant, fin_course - 1e-9);
        clique(f, "cmd_stop");
        tic();
        f->close();
        return plus_bas;
    }

    /// A column of a result window, and its period computed; the saved table.
    QByteArray tableau(exp_data* f, const QStringList& variables, const char* fichier) {
        auto* liste = controle<QListWidget>(f, "list_var");
        for (int c = 0; c < variables.size(); ++c) {
            const auto trouves = liste->findItems(variables[c], Qt::MatchExactly);
            EXPECT_EQ(trouves.size(), 1) << variables[c].toStdString();
            clique(f, QString("lab_col_%1").arg(c).toLatin1());
            liste->setCurrentItem(trouves.value(0));
            emit liste->itemClicked(trouves.value(0));
        }
        clique(f, "cmd_saisir");
        const QString chemin = dossier.filePath(fichier);
        EXPECT_TRUE(f->enregistre_table(chemin));
        return contenu(chemin);
    }

    std::unique_ptr<frmFirst> premiere;
    menu* m = nullptr;
    QString choix;
    int fin = -1;
};

} // namespace

TEST_F(parcours, a_class_sizes_a_battery) {
    // The orbit: 700 km, sun-synchronous, its node near local noon, so that every turn has its eclipse.
    auto* orbite = ouvre("mn_sim_car", "orbito_conf");
    tape(orbite, "norad_inclinaison", "98.19");
    tape(orbite, "norad_demi", "7078.137");
    tape(orbite, "norad_argument", "90", Qt::Key_Return);
    orbite->close();

    // Panels that carry the load, and a battery that is far too small.
    auto* energie = ouvre("mn_conf_pow_perf", "power_conf");
    tape(energie, "cel_txt_ns", "40");
    tape(energie, "cel_txt_np", "6");
    ouvre("mn_conf_pow_bat", "power_conf");
    tape(energie, "bat_txt_ns", "20");
    tape(energie, "bat_txt_c", "0,5"); // a French hand
    ouvre("mn_conf_pow_oper", "power_conf");
    tape(energie, "gst_txt_chvmax", "1.55");
    EXPECT_EQ(messages, QStringList());

    choisit_pas("1 min");
    EXPECT_EQ(simule(200), 0) << "the battery runs empty in the eclipse";

    ouvre("mn_conf_pow_bat", "power_conf");
    tape(energie, "bat_txt_c", "15");
    EXPECT_EQ(s.power.bat_c, 15);
    const double mieux = simule(200);
    EXPECT_GT(mieux, 0.8);
    EXPECT_LT(mieux, 0.99);
    EXPECT_EQ(messages, QStringList());

    // The period in a table and a picture.
    const QStringList variables = {"Batterie Taux de charge", "Puissance GS (W)",
                                   "Température Panneaux (°C)"};
    auto* resultats = ouvre<exp_data>("mn_exp_pow_data", "power_exp_data");
    const QByteArray avant = tableau(resultats, variables, "avant.txt");
    EXPECT_EQ(avant.count('\n') - 4, 97) << "a turn of 96 min in steps of 1 min, and its first row";
    clique(resultats, "opt_view_1");
    EXPECT_TRUE(resultats->enregistre_image(dossier.filePath("courbes.bmp")));
    EXPECT_FALSE(QImage(dossier.filePath("courbes.bmp")).isNull());

    // Out with the save question; in again: the same numbers.
    const record_orbite orbite_choisie = s.orbit.orbite;
    choix = dossier.filePath("classe.pwr");
    repondra(QMessageBox::Yes);
    EXPECT_TRUE(m->close());
    EXPECT_EQ(fin, 0);
    ASSERT_TRUE(QFile::exists(choix));

    demarre();
    m->ouvre(choix);
    EXPECT_EQ(messages.size(), 1); // its orbit, saved beside it, is offered
    EXPECT_EQ(s.orbit.orbite, orbite_choisie);
    messages.clear();
    EXPECT_EQ(controle<QComboBox>(m, "cmb_pas")->currentText(), "1 min");
    resultats = ouvre<exp_data>("mn_exp_pow_data", "power_exp_data");
    EXPECT_EQ(tableau(resultats, variables, "apres.txt"), avant);
    EXPECT_EQ(messages, QStringList());
}

/// The words of a step of the guide's first hour.
static QString etape(int n) {
    const QString texte =
        QString::fromUtf8(contenu(DOSSIER_DATA "/../docs/guide.md")).replace(QChar(0xa0), ' ');
    const qsizetype debut = texte.indexOf(QString("\n### %1. ").arg(n));
    EXPECT_GT(debut, 0) << n;
    return texte.sliced(debut, texte.indexOf("\n### ", debut + 5) - debut);
}

/// What a pattern captures in a text, in its order.
static QStringList trouve(const QString& texte, const char* motif) {
    QStringList liste;
    for (auto i = QRegularExpression(motif).globalMatch(texte); i.hasNext();) liste << i.next().captured(1);
    EXPECT_FALSE(liste.isEmpty()) << motif;
    return liste;
}

TEST_F(parcours, the_first_hour_goes_as_the_guide_tells_it) {
    trouve_dossier_depart(dossier.path().toStdString(), {}, {DOSSIER_DATA}); // the samples
    demarre();
    const QString exemple = trouve(etape(1), "Cliquez sur \\*\\*([^*]+)\\*\\* :")[0];
    for (auto* carte : m->findChildren<QPushButton*>())
        if (carte->accessibleName() == exemple) carte->click();
    EXPECT_TRUE(m->windowTitle().contains("microsatellite")) << exemple.toStdString();

    // The numbers of the summary, as the guide reads them.
    const QString resume = etape(2);
    QString duree = trouve(resume, "dure (\\d+ h \\d+ min \\d+ s)")[0];
    duree.replace(" h ", ":").replace(" min ", ":").remove(" s");
    EXPECT_TRUE(label(m, "lab_resume_periode").contains("0" + duree)) << duree.toStdString();
    for (const QString& watts : trouve(resume, "(\\d+) W"))
        EXPECT_TRUE(label(m, "lab_resume_demande").contains(watts + ".0 W")) << watts.toStdString();
    EXPECT_EQ(s.power.bat_ns, trouve(resume, "(\\d+) accumulateurs")[0].toInt());
    EXPECT_EQ(s.power.bat_c, trouve(resume, "accumulateurs de (\\d+) Ah")[0].toInt());

    // The header first, then the variable: each column holds its own in the end.
    const QString tables = etape(7);
    EXPECT_LT(tables.indexOf("en-tête"), tables.indexOf("« Puissance GS"));
    auto* f = ouvre<exp_data>("mn_exp_pow_data", "power_exp_data");
    auto* liste = controle<QListWidget>(f, "list_var");
    const QStringList variables = trouve(tables, "« ([^»]*\\(W\\)) »");
    ASSERT_EQ(variables.size(), 4);
    for (int c = 0; c < variables.size(); ++c) {
        clique(f, QString("lab_col_%1").arg(c));
        const auto lignes = liste->findItems(variables[c], Qt::MatchExactly);
        ASSERT_EQ(lignes.size(), 1) << variables[c].toStdString();
        clique_ligne(liste, lignes[0]);
    }
    f->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(f));
    QTest::keyClick(f, Qt::Key_F5);
    auto* table = controle<QTableView>(f, "grid")->model();
    EXPECT_GT(table->rowCount(), 100);
    for (int c = 0; c < variables.size(); ++c) {
        EXPECT_EQ(label(f, QString("lab_col_%1").arg(c)), variables[c]);
        EXPECT_FALSE(table->index(0, c + 1).data().toString().isEmpty());
    }
    EXPECT_EQ(messages, QStringList());
}
