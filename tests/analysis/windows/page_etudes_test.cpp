/// A study as a user runs it: choose, run, read, open a variant, save.
#include "analysis/windows/page_etudes.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>

#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "tests/batch/lance_batch.h"
#include "tests/gestes.h"

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
