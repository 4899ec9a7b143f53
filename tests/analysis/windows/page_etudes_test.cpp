/// A study as a user runs it: choose, run, read, open a variant, save.
#include "analysis/windows/page_etudes.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <qcustomplot.h>

#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "tests/batch/lance_batch.h"
#include "tests/gestes.h"
#include "widgets/graphe.h"

using namespace gestes;

struct etudes_a_l_ecran : essai_fenetres {
    const std::string base = std::string(DOSSIER_DATA) + "/exemples/microsatellite";
    std::unique_ptr<page_etudes> page;

    void SetUp() override {
        std::string raison;
        erreur_fichier erreur;
        ASSERT_TRUE(charge_orbite(base + ".orb", s.orbit.orbite, raison));
        ASSERT_TRUE(charge_energie(base + ".pwr", s.power, s.periode, erreur));
        page = std::make_unique<page_etudes>(s);
        page->resize(1100, 700);
        page->show();
        page->rafraichit();
    }
    void lance() {
        controle<QPushButton>(page.get(), "cmd_lance_etude")->click();
        ASSERT_TRUE(page->en_cours());
        ASSERT_TRUE(QTest::qWaitFor([&] { return !page->en_cours(); }, 60000));
    }
};

TEST_F(etudes_a_l_ecran, a_study_gives_the_rows_of_the_batch_program_and_opens_a_variant) {
    tape(page.get(), "txt_valeurs_0", "5:15:2.5");
    lance();
    const auto* table = controle<QTableWidget>(page.get(), "tab_variantes");
    ASSERT_EQ(table->rowCount(), 5);
    const auto r =
        lance_batch("balayage --orb " + base + ".orb --pwr " + base + ".pwr --varie bat_c=5:15:2.5");
    const QStringList lignes = QString::fromStdString(r.sortie).split('\n');
    const QStringList noms = lignes[0].split(','), valeurs = lignes[4].split(','); // bat_c = 12.5
    for (int c = 0; c + 1 < table->columnCount(); ++c) {
        const QString nom = table->horizontalHeaderItem(c)->text();
        EXPECT_EQ(table->item(3, c)->text(), QString::number(valeurs[noms.indexOf(nom)].toDouble(), 'g', 6))
            << nom.toStdString();
    }

    const QString chemin = dossier.filePath("variantes.csv");
    QTimer::singleShot(0, [&] {
        auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(d, nullptr);
        d->findChild<QLineEdit*>()->setText(chemin);
        QTest::keyClick(d->findChild<QLineEdit*>(), Qt::Key_Return);
    });
    controle<QPushButton>(page.get(), "cmd_csv_etude")->click();
    EXPECT_EQ(QString(contenu(chemin)).count('\n'), lignes.size() - 1) << "heading and rows, to the last";

    QSignalSpy changee(page.get(), &page::configuration_changee);
    emit const_cast<QTableWidget*>(table)->cellDoubleClicked(3, 0);
    EXPECT_EQ(changee.count(), 1);
    EXPECT_EQ(s.power.bat_c, 12.5F);
}

TEST_F(etudes_a_l_ecran, further_fields_make_a_named_curve_each_and_a_click_opens_the_point_below) {
    tape(page.get(), "txt_valeurs_0", "5,15");
    for (int i = 0; i < 2; ++i) controle<QPushButton>(page.get(), "cmd_ajoute_champ")->click();
    QApplication::processEvents();
    tape(page.get(), "txt_valeurs_1", "2,8");
    controle<QComboBox>(page.get(), "cmb_champ_2")->setCurrentText("bat_np");
    tape(page.get(), "txt_valeurs_2", "1,2");
    lance();
    auto* mesure = controle<QComboBox>(page.get(), "cmb_mesure");
    mesure->setCurrentIndex(1); // depth of discharge
    emit mesure->activated(1);
    auto* graphique = page->findChild<graphe*>();
    const QCustomPlot* dessin = graphique->dessin();
    const auto* table = controle<QTableWidget>(page.get(), "tab_variantes");
    ASSERT_EQ(dessin->graphCount(), 4);
    ASSERT_EQ(table->rowCount(), 8);
    for (int l = 0; l < 8; ++l) { // variant, capacity, cells and accumulators in parallel, margin, depth
        const auto en = [&](int c) { return table->item(l, c)->text().toDouble(); };
        const QString nom = QString("cel_np = %1, bat_np = %2").arg(en(2)).arg(en(3));
        const QCPGraph* g = dessin->graph(l % 4);
        EXPECT_EQ(g->name(), nom);
        EXPECT_EQ(g->data()->at(l / 4)->key, en(1));
        EXPECT_NEAR(g->data()->at(l / 4)->value, en(5), 1e-5 * std::fabs(en(5)));
    }
    emit graphique->clique(14.0, dessin->graph(3)->data()->at(1)->value);
    EXPECT_EQ(s.power.bat_c, 15.F);
    EXPECT_EQ(s.power.cel_np, 8);
    EXPECT_EQ(s.power.bat_np, 2);
}

TEST_F(etudes_a_l_ecran, wrong_values_are_told_before_the_start_and_a_run_can_be_stopped) {
    tape(page.get(), "txt_valeurs_0", "0,5");
    EXPECT_FALSE(controle<QPushButton>(page.get(), "cmd_lance_etude")->isEnabled());
    EXPECT_TRUE(label(page.get(), "lab_estime").contains("supérieur à 0"));
    tape(page.get(), "txt_valeurs_0", "5:15:0.0001"); // 100,001 variants
    EXPECT_TRUE(label(page.get(), "lab_estime").contains("variantes"));
    controle<QPushButton>(page.get(), "cmd_lance_etude")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return page->lignes() > 0; }, 20000));
    controle<QPushButton>(page.get(), "cmd_arrete_etude")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !page->en_cours(); }, 20000));
    EXPECT_GT(page->lignes(), 0);
    EXPECT_LT(page->lignes(), 100001);
    EXPECT_TRUE(label(page.get(), "lab_resultat_etude").contains("arrêtée"));
}
