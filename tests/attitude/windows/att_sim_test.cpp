/// The attitude simulation as a person uses it: open, read the charts, page, change a rate, run again, save.
/// Reference of the results: the batch program on the same project.
#include "attitude/windows/att_sim.h"

#include <qcustomplot.h>

#include <QProcess>
#include <QProgressBar>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "attitude/att_pas.h"
#include "project/att_fichier.h"
#include "shell/lancement.h"
#include "tests/gestes.h"
#include "widgets/course.h"
#include "widgets/graphe.h"

using namespace gestes;

namespace {

/// The numbers of a comma-separated text after its head lines.
QVector<QVector<double>> nombres(const QByteArray& texte, int lignes_tete) {
    QVector<QVector<double>> r;
    const auto lignes = texte.split('\n');
    for (int i = lignes_tete; i < lignes.size(); ++i) {
        if (lignes[i].trimmed().isEmpty()) continue;
        QVector<double> l;
        for (const QByteArray& champ : lignes[i].trimmed().split(',')) l << champ.toDouble();
        r << l;
    }
    return r;
}

/// A results file without its first record, whose torques are those that the record held before the run.
QByteArray depuis_le_premier_pas(const QByteArray& texte) {
    qsizetype debut = 0;
    for (int i = 0; i < 6; ++i) debut = texte.indexOf('\n', debut) + 1;
    return texte.mid(debut);
}

class att_sim_window : public essai_fenetre<att_sim> {
protected:
    void SetUp() override {
        s.dossier_depart = dossier.path().toStdString();
        for (const char* nom : {"/densite.txt", "/flux_solaire.txt"})
            ASSERT_TRUE(QFile::copy(DOSSIER_DATA + QString(nom), dossier.path() + nom));
        temp = dossier.path() + "/temp/temp.tmp";
        s.periode.pas_sim = 5;
    }
    /// Opens the window and waits for its run to end.
    void ouvre() {
        essai_fenetre::ouvre();
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return !s.calcul_en_cours && (s.version_resultats != 0 || !bandeau().isEmpty()); }));
    }
    void attend() {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !s.calcul_en_cours; }, 60000));
    }
    void relance() {
        clique("cmd_relance");
        attend();
    }
    void dure(int pas) { s.periode.j_fin = s.periode.j_debut + pas * s.periode.pas_sim / 86400.0; }
    QCPGraph* courbe(const char* nom, int i) { return controle<graphe>(nom)->dessin()->graph(i); }
    /// The points of a curve; where an angle passes 180 degrees it has a gap, which counts for none.
    QVector<QCPGraphData> trace(const char* nom, int i = 0) {
        QVector<QCPGraphData> r;
        if (QCPGraph* g = courbe(nom, i))
            std::copy_if(g->data()->constBegin(), g->data()->constEnd(), std::back_inserter(r),
                         [](const QCPGraphData& p) { return std::isfinite(p.value); });
        return r;
    }
    qsizetype points(const char* nom, int i = 0) { return trace(nom, i).size(); }

    QString temp;
};

TEST_F(att_sim_window, a_changed_rate_is_run_again_and_agrees_with_the_batch_program) {
    s.attitude.OM_init = {0, 1.5, 0};
    s.attitude.JR = {0, .02, 0};
    ouvre();
    EXPECT_EQ(bandeau(), "");
    const QByteArray premier = contenu(temp);
    ASSERT_GT(premier.size(), 10000);

    tape("txt_psi", "0,5", Qt::Key_Return);
    EXPECT_TRUE(controle("txt_theta")->hasFocus());
    int unites = 0;
    for (const QLabel* l : controle("txt_psi")->parentWidget()->findChildren<QLabel*>())
        unites += l->text() == "deg/s";
    EXPECT_EQ(unites, 3);
    EXPECT_EQ(lu("txt_psi"), "0.5");
    EXPECT_DOUBLE_EQ(s.attitude.omega_init[0], 0.5 * 3.14159265358979 / 180);
    EXPECT_TRUE(bandeau().contains("Relancer"));
    relance();
    EXPECT_EQ(bandeau(), "");
    const QByteArray second = contenu(temp);
    EXPECT_NE(second, premier);

    // Five head lines, the fourth empty; then what the batch program computes from the saved project.
    const auto lignes = second.split('\n');
    EXPECT_EQ(lignes[0], "\"#BeginTime(JulianDays)\",18707.55001\r");
    EXPECT_EQ(lignes[3], "\r");
    std::string raison;
    const QString att = dossier.path() + "/essai.att";
    ASSERT_TRUE(sauve_attitude(att.toStdString(), s.attitude, raison)) << raison;
    QProcess batch;
    batch.start(KESTREL_BATCH, {"attitude", "--att", att, "--pas", "5"});
    ASSERT_TRUE(batch.waitForFinished(60000));
    ASSERT_EQ(batch.exitCode(), 0) << batch.readAllStandardError().constData();
    const auto attendu = nombres(batch.readAllStandardOutput(), 1), obtenu = nombres(second, 5);
    ASSERT_EQ(obtenu.size(), attendu.size());
    ASSERT_GT(obtenu.size(), 1100);
    for (int i = 0; i < obtenu.size(); ++i) {
        ASSERT_EQ(obtenu[i].size(), 25);
        // 15 digits in the file; the first record holds the torques of the run before.
        for (int c = 0; c < (i == 0 ? 22 : 25); ++c)
            ASSERT_NEAR(obtenu[i][c], attendu[i][c], 1e-14 * std::fabs(attendu[i][c])) << i << "," << c;
    }

    // The charts show the columns that they name.
    const QVector<double> rang = obtenu[700];
    for (int i = 0; i < 3; ++i) {
        EXPECT_DOUBLE_EQ(trace("att_graph", i)[700].value, rang[7 + i]);
        EXPECT_DOUBLE_EQ(trace("att_graph_v", i)[700].value, rang[1 + i]);
        EXPECT_DOUBLE_EQ(trace("att_graph_v", 3 + i)[700].value, rang[10 + i]);
        EXPECT_DOUBLE_EQ(trace("att_graph_v", 6 + i)[700].value, rang[19 + i]);
    }
    EXPECT_DOUBLE_EQ(trace("att_graph", 0)[700].key, rang[0]);

    // Both charts begin and end together.
    QCustomPlot *haut = controle<graphe>("att_graph")->dessin(),
                *bas = controle<graphe>("att_graph_v")->dessin();
    for (QCustomPlot* d : {haut, bas, haut, bas}) d->replot();
    EXPECT_EQ(haut->axisRect()->left(), bas->axisRect()->left());
    EXPECT_EQ(haut->axisRect()->right(), bas->axisRect()->right());

    // A value under the cursor stands on one line, with its unit.
    QTest::mouseMove(haut, haut->axisRect()->rect().center());
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().contains("&nbsp;deg</p>"); }))
        << QToolTip::text().toStdString();
    EXPECT_NE(rang[20], 0);
    controle<QCheckBox>("chk_roues")->click();
    EXPECT_EQ(controle<graphe>("att_graph_v")->dessin()->graphCount(), 6);
}

TEST_F(att_sim_window, pages_reach_the_whole_run) {
    s.periode.pas_sim = 1;
    dure(2500);
    ouvre();
    // The period counts 2500 steps, and the last date belongs to it: 2501 steps and the initial record.
    const auto tous = nombres(contenu(temp), 5);
    ASSERT_GE(tous.size(), 2501);
    EXPECT_EQ(points("att_graph"), 1000);
    // The scale is that of the motion: the first two steps, a start from nothing, stay out of it.
    double min = tous[3][10], max = min, depart = 0;
    for (int l = 0; l < 1000; ++l)
        for (int c = 10; c < 13; ++c) {
            if (l < 3) depart = std::max(depart, std::fabs(tous[l][c]));
            if (l < 3) continue;
            min = std::min(min, tous[l][c]);
            max = std::max(max, tous[l][c]);
        }
    EXPECT_GT(depart, max - min);
    EXPECT_NEAR(controle<graphe>("att_graph_v")->dessin()->yAxis2->range().size(), 1.12 * (max - min), 1e-9);
    auto* barre = controle<QScrollBar>("scr_diagr");
    EXPECT_EQ(barre->maximum(), 1); // Round(2.5 / Round(2.5 + 1))
    auto* page = controle<QSpinBox>("txt_page");
    EXPECT_EQ(page->maximum(), 3);
    page->setFocus();
    QTest::keyClick(page, Qt::Key_Up);
    EXPECT_EQ(points("att_graph_v", 5), 1000);
    EXPECT_DOUBLE_EQ(trace("att_graph", 0)[0].key, tous[1000][0]);
    EXPECT_DOUBLE_EQ(trace("att_graph", 2)[999].value, tous[1999][9]);

    barre->setValue(0);
    EXPECT_EQ(page->value(), 1);
    QTest::keyClick(barre, Qt::Key_Right);
    EXPECT_EQ(page->value(), 3);
    EXPECT_EQ(points("att_graph"), tous.size() - 2000);
    EXPECT_DOUBLE_EQ(trace("att_graph", 0)[0].key, tous[2000][0]);

    controle<QCheckBox>("chk_periode")->click();
    const int n = points("att_graph");
    EXPECT_EQ(n, (tous.size() + 2) / 3);
    EXPECT_DOUBLE_EQ(trace("att_graph", 1)[n - 1].value, tous[3 * (n - 1)][8]);
}

TEST_F(att_sim_window, a_begin_equal_to_the_end_is_one_step_and_idle_wheels_are_zeros) {
    s.attitude.OM_init = {0.00009, 0, 0};
    dure(0);
    ouvre();
    const auto tous = nombres(contenu(temp), 5);
    ASSERT_EQ(tous.size(), 2);
    EXPECT_EQ(tous[0][0], tous[1][0]); // a record bears the date of its step's start
    for (const auto& l : tous)
        for (int c = 19; c < 22; ++c) EXPECT_EQ(l[c], 0);
    EXPECT_FALSE(controle<QCheckBox>("chk_roues")->isEnabled());
    EXPECT_TRUE(controle<QProgressBar>("temp_calcul")->isHidden());
    EXPECT_EQ(points("att_graph"), 2);
}

TEST_F(att_sim_window, a_divergence_is_told_in_the_window_with_a_step_that_works) {
    s.periode.pas_sim = 120; // the program's default, too large for the default satellite
    ouvre();
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_TRUE(bandeau().contains("2 min est trop grand")) << bandeau().toStdString();
    const auto explose = nombres(contenu(temp), 5);
    EXPECT_GT(points("att_graph"), 3);
    EXPECT_LT(points("att_graph"), explose.size()); // the curves stop short of the explosion
    for (const auto& p : trace("att_graph_v", 0)) EXPECT_LT(std::fabs(p.value), 3);

    const QRegularExpressionMatch conseil = QRegularExpression("Essayez un pas de (\\d+) s").match(bandeau());
    ASSERT_TRUE(conseil.hasMatch()) << bandeau().toStdString();
    s.periode.pas_sim = conseil.captured(1).toInt();
    relance();
    EXPECT_EQ(bandeau(), "");
    EXPECT_EQ(points("att_graph"), 1000);

    // A body without inertia cannot be run at any step: said too, and no step is promised.
    s.attitude = {};
    s.attitude.I = {};
    s.attitude.I_corps = {};
    s.attitude.Mt = s.attitude.Masse = 0;
    relance();
    EXPECT_FALSE(bandeau().isEmpty());
    EXPECT_FALSE(bandeau().contains("Essayez"));
    EXPECT_TRUE(f->isVisible());
}

TEST_F(att_sim_window, results_missing_cut_or_foreign_are_told_and_the_window_goes_on) {
    s.periode.pas_sim = 1;
    dure(2500);
    ouvre();
    const QByteArray bon = contenu(temp);
    auto* page = controle<QSpinBox>("txt_page");

    QFile::remove(temp);
    page->setValue(2);
    EXPECT_TRUE(bandeau().contains("introuvable")) << bandeau().toStdString();
    EXPECT_EQ(points("att_graph"), 0);
    EXPECT_FALSE(f->enregistre_resultats(dossier.path() + "/x.txt"));

    ecrit(temp, bon.left(bon.size() / 2)); // in the middle of a record of the second page
    page->setValue(1);
    EXPECT_EQ(points("att_graph"), 1000);
    page->setValue(2);
    EXPECT_TRUE(bandeau().contains("coupé")) << bandeau().toStdString();
    EXPECT_GT(points("att_graph"), 100);
    EXPECT_LT(points("att_graph"), 400);

    ecrit(temp, "Date;valeur\n1;2\n");
    page->setValue(1);
    EXPECT_TRUE(bandeau().contains("n'est pas un fichier de résultats")) << bandeau().toStdString();
    EXPECT_EQ(points("att_graph"), 0);

    relance();
    EXPECT_EQ(bandeau(), "");
    EXPECT_TRUE(depuis_le_premier_pas(contenu(temp)) == depuis_le_premier_pas(bon));
    EXPECT_EQ(points("att_graph"), 1000);
}

TEST_F(att_sim_window, a_folder_that_cannot_be_written_or_a_bad_step_stops_the_run_before_it_begins) {
    ecrit(dossier.path() + "/temp", "a file where the folder should be");
    const attitude_record avant = s.attitude;
    ouvre();
    EXPECT_TRUE(bandeau().contains("Impossible d'écrire")) << bandeau().toStdString();
    EXPECT_EQ(s.attitude.omega, avant.omega);
    EXPECT_EQ(s.version_resultats, 0u);

    QFile::remove(dossier.path() + "/temp");
    s.periode.pas_sim = 0;
    clique("cmd_relance");
    EXPECT_EQ(bandeau(), QString(message_pas));
    EXPECT_FALSE(QFile::exists(temp));

    s.periode.pas_sim = 5;
    s.calcul_en_cours = true; // a table of torques is being computed on the same records
    clique("cmd_relance");
    EXPECT_EQ(bandeau(), QString(message_calcul_en_cours));
    EXPECT_FALSE(QFile::exists(temp));

    s.calcul_en_cours = false;
    relance();
    EXPECT_EQ(bandeau(), "");
    EXPECT_TRUE(QFile::exists(temp));

    // A data file of the atmosphere that is missing ends the run and is named.
    QFile::remove(dossier.path() + "/densite.txt");
    relance();
    EXPECT_TRUE(bandeau().contains("densite.txt")) << bandeau().toStdString();
    EXPECT_FALSE(bandeau().contains("Essayez"));
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(att_sim_window, results_are_saved_as_text_and_pictures_and_quitting_asks_nothing) {
    dure(200);
    ouvre();
    const QString copie = dossier.path() + "/copie.txt";
    ecrit(copie, "an older one");
    EXPECT_TRUE(f->enregistre_resultats(copie));
    EXPECT_TRUE(contenu(copie) == contenu(temp));
    EXPECT_TRUE(f->enregistre_images(dossier.path() + "/vue.png"));
    EXPECT_FALSE(QImage(dossier.path() + "/vue-vitesses.png").isNull());
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_FALSE(f->enregistre_resultats(dossier.path() + "/pas/de/dossier.txt"));
    EXPECT_EQ(messages.size(), 1);

    // The path that quitting names is another one than the run's.
    messages.clear();
    QDir().mkpath(dossier.path() + "/kestrel/temp");
    ecrit(dossier.path() + "/kestrel/temp/temp.tmp", "x");
    auto* fi = controle<QLineEdit>("txt_fi"); // typed, and not yet left
    fi->setFocus();
    fi->selectAll();
    QTest::keyClicks(fi, "2");
    clique("Quit_but");
    EXPECT_DOUBLE_EQ(s.attitude.omega_init[2], 2 * 3.14159265358979 / 180);
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_FALSE(f->isVisible());
    EXPECT_FALSE(QFile::exists(dossier.path() + "/kestrel/temp/temp.tmp"));
    EXPECT_TRUE(QFile::exists(temp));

    // Shown again, it runs again with the settings of the moment.
    dure(100);
    f->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return points("att_graph") < 150; }));
}

TEST_F(att_sim_window, a_run_works_on_a_copy_and_can_be_stopped) {
    s.periode.pas_sim = 1;
    dure(60000);
    ouvre();
    const QByteArray bon = contenu(temp);
    // A timer of another window moves the attitude while the run goes on.
    int tops = 0;
    QTimer perturbe;
    QObject::connect(&perturbe, &QTimer::timeout, [&] {
        ++tops;
        s.attitude.omega[0] += 1;
    });
    perturbe.start(1);
    relance();
    EXPECT_GT(tops, 0);
    EXPECT_TRUE(depuis_le_premier_pas(contenu(temp)) == depuis_le_premier_pas(bon));
    perturbe.stop();

    s.attitude.I_corps = mat_diagonale(100, 100, 100); // heavy enough not to diverge
    bilan_masses(s.attitude);
    dure(2900000); // seconds of computing, if it were let
    clique("cmd_relance");
    EXPECT_FALSE(controle("cmd_relance")->isEnabled());
    EXPECT_TRUE(s.calcul_en_cours);
    clique("cmd_arrete");
    attend();
    EXPECT_TRUE(bandeau().startsWith("Calcul arrêté le ")) << bandeau().toStdString();
    EXPECT_TRUE(controle("cmd_relance")->isEnabled());
    EXPECT_GE(points("att_graph"), 1);
    clique("cmd_relance");
    f->close();
    attend();
    f->att_run(); // and a window that goes takes its run along
    f.reset();
    EXPECT_FALSE(s.calcul_en_cours);
}

} // namespace
