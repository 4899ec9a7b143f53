/// Whole journeys through the program, as a class goes through it in an afternoon.

#include <QAction>
#include <QComboBox>
#include <QDate>
#include <QImage>
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
    s.orbit.orbite = orbite_choisie; // the project file does not hold the orbit
    EXPECT_EQ(controle<QComboBox>(m, "cmb_pas")->currentText(), "1 min");
    resultats = ouvre<exp_data>("mn_exp_pow_data", "power_exp_data");
    EXPECT_EQ(tableau(resultats, variables, "apres.txt"), avant);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(parcours, a_class_damps_a_nutation) {
    // A newcomer's first run, with everything as it stands: it diverges, in plain words, and names a step.
    auto* calcul = ouvre("mn_sim_att_com", "att_sim");
    auto* bandeau = controle<QLabel>(calcul, "lab_bandeau");
    QTRY_VERIFY2_WITH_TIMEOUT(bandeau->isVisible(), "the first run says nothing", 20000);
    EXPECT_TRUE(bandeau->text().contains("pas")) << bandeau->text().toStdString();
    EXPECT_EQ(messages, QStringList());
    calcul->close();

    // A spinner with one nutation damper, at a step that holds.
    auto* reglages = ouvre("mn_conf_att_masses", "att_conf");
    tape(reglages, "I_zz", "3,2");
    ouvre("mn_conf_att_prop", "att_conf");
    clique(reglages, "chk_magn"); // no dipole: nothing drives it
    ouvre("mn_conf_att_act", "att_conf");
    clique(reglages, "chk_damp");
    tape(reglages, "txt_md1", "0.5");
    tape(reglages, "txt_ld1", "0.2");
    tape(reglages, "txt_c1", "0.01");
    tape(reglages, "txt_k1", "0.001", Qt::Key_Return);
    EXPECT_EQ(s.attitude.dip_res[0], 0);
    EXPECT_EQ(s.attitude.Mt, 51) << "each damper mass counts twice";
    choisit_pas("1 s");

    calcul = ouvre("mn_sim_att_com", "att_sim");
    tape(calcul, "txt_psi", "0.5");
    tape(calcul, "txt_fi", "3");
    clique(calcul, "cmd_relance");
    const QString resultats = dossier.filePath("temp/temp.tmp");
    EXPECT_EQ(contenu(resultats).count('\n'), 5 + 1 + 5761) << "96 min in steps of 1 s, both ends";
    EXPECT_FALSE(bandeau->isVisible()) << bandeau->text().toStdString();

    // The torques of the period, the project saved, opened again: the same numbers.
    const QStringList variables = {"Couple gradient de gravité (mN)", "Couple total (mN)"};
    choisit_pas("5 min");
    const QByteArray avant =
        tableau(ouvre<exp_data>("mn_exp_att_data", "att_exp_data"), variables, "couples_avant.txt");
    EXPECT_GT(avant.count('\n'), 20);
    choix = dossier.filePath("spinner.att");
    m->findChild<QAction*>("mn_attfich_enregsous")->trigger();
    repondra(QMessageBox::No);
    EXPECT_TRUE(m->close());

    demarre();
    m->ouvre(choix);
    EXPECT_EQ(s.attitude.md[0], .5);
    EXPECT_EQ(s.attitude.I(2, 2), 3.2 + 2 * 0.2 * 0.2 * 0.5);
    choisit_pas("5 min");
    EXPECT_EQ(tableau(ouvre<exp_data>("mn_exp_att_data", "att_exp_data"), variables, "couples_apres.txt"),
              avant);
    EXPECT_EQ(messages, QStringList());
}
