/// The verdict as a user meets it: it follows an edit in another window, and the page tells why and when.
#include "analysis/windows/page_bilan.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTableWidget>

#include "shell/windows/menu.h"
#include "tests/gestes.h"
#include "widgets/fenetre.h"
#include "widgets/signe_verdict.h"

using namespace gestes;

namespace {

struct bilan_a_l_ecran : essai_fenetres {
    std::unique_ptr<menu> m;

    void SetUp() override {
        s.dossier_depart = dossier.path().toStdString();
        m = std::make_unique<menu>(s);
        m->fin_programme = [](int) {};
        m->show();
        m->ouvre_orbite(QString(DOSSIER_DATA) + "/exemples/microsatellite.orb");
        m->ouvre_energie(QString(DOSSIER_DATA) + "/exemples/microsatellite.pwr");
        controle<QAction>(m.get(), "mn_page_bilan")->trigger();
    }
    static bool attend(const signe_verdict* signe, etat_verdict e) {
        return QTest::qWaitFor([&] { return signe->etat() == e; }, 20000);
    }
};

} // namespace

TEST_F(bilan_a_l_ecran, the_verdict_follows_an_edit_in_another_window) {
    auto* sur_page = m->findChild<QWidget*>("page_bilan")->findChild<signe_verdict*>();
    ASSERT_TRUE(attend(sur_page, etat_verdict::tient)) << sur_page->phrase().toStdString();

    fenetre* energie = m->montre_fenetre("power_conf", 3);
    auto* pied = energie->findChild<signe_verdict*>();
    ASSERT_TRUE(pied && attend(pied, etat_verdict::tient));
    tape(energie, "bat_txt_c", "4");
    ASSERT_TRUE(attend(pied, etat_verdict::tient_pas));
    EXPECT_TRUE(pied->phrase().contains("profondeur de décharge")) << pied->phrase().toStdString();
    ASSERT_TRUE(attend(sur_page, etat_verdict::tient_pas)); // the page in sight follows too
    EXPECT_EQ(sur_page->phrase(), pied->phrase());
    EXPECT_TRUE(label(m.get(), "lab_conseils").contains("capacité"));

    // A looser criterion: the same satellite holds, and the usual value comes back on request.
    auto* limite = controle<QDoubleSpinBox>(m.get(), "txt_dod_max");
    limite->setValue(60);
    EXPECT_TRUE(attend(sur_page, etat_verdict::tient)) << sur_page->phrase().toStdString();
    controle<QPushButton>(m.get(), "cmd_criteres_usuels")->click();
    EXPECT_EQ(limite->value(), 25);
    EXPECT_TRUE(attend(sur_page, etat_verdict::tient_pas));
}

TEST_F(bilan_a_l_ecran, a_mode_and_a_date_of_the_year_become_the_settings) {
    const auto* page = qobject_cast<page_bilan*>(m->findChild<QWidget*>("page_bilan"));
    const auto demande = [&] {
        return page->resultat().tours.empty() ? 0 : page->resultat().tours.front().e_demande;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return demande() > 0; }, 20000));
    const double sans = demande();
    controle<QPushButton>(m.get(), "cmd_ajoute_mode")->click(); // 10 W always
    ASSERT_EQ(s.modes.size(), 1u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return demande() != sans; }, 20000));
    EXPECT_NEAR(demande() - sans, 10 * page->resultat().tours.front().duree / 3600, 1e-9);

    auto* pire = controle<QPushButton>(m.get(), "cmd_pire");
    ASSERT_TRUE(QTest::qWaitFor([&] { return pire->isEnabled(); }, 20000));
    const double duree = s.periode.j_fin - s.periode.j_debut, debut = s.periode.j_debut;
    pire->click();
    EXPECT_GT(s.periode.j_debut, debut);
    EXPECT_NEAR(s.periode.j_fin - s.periode.j_debut, duree, 1e-9);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return page->resultat().tours.front().debut == s.periode.j_debut; }, 20000));

    const double heures = page->resultat().tours.front().duree / 3600, base = demande() - 10 * heures;
    const auto vient_a = [&](double watts) {
        return QTest::qWaitFor([&] { return std::fabs(demande() - base - watts * heures) < 1e-9; }, 20000);
    };
    controle<QPushButton>(m.get(), "cmd_ajoute_mode")->click();
    auto* table = controle<QTableWidget>(m.get(), "tab_modes");
    qobject_cast<QDoubleSpinBox*>(table->cellWidget(1, 1))->setValue(25);
    EXPECT_TRUE(vient_a(35));
    table->selectRow(0);
    controle<QPushButton>(m.get(), "cmd_retire_mode")->click();
    EXPECT_TRUE(vient_a(25));
}

TEST_F(bilan_a_l_ecran, a_mode_taken_away_takes_its_unfinished_entry_along) {
    const auto* annuler = controle<QAction>(m.get(), "mn_annuler");
    const auto annulable = [&] {
        QCoreApplication::processEvents();
        return annuler->text().section(" : ", 1);
    };
    auto* table = controle<QTableWidget>(m.get(), "tab_modes");
    montre_page_de(table);
    m->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m.get()));
    const auto saisit = [&](const char* texte) {
        auto* puissance = table->cellWidget(table->rowCount() - 1, 1)->findChild<QLineEdit*>();
        puissance->setFocus();
        puissance->selectAll();
        QTest::keyClicks(puissance, texte);
    };
    clique(m.get(), "cmd_ajoute_mode");
    EXPECT_EQ(annulable(), "Mode de consommation ajouté");
    saisit("25");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(s.modes[0].puissance, 25);
    EXPECT_EQ(annulable(), "Mode 1 : puissance");
    saisit("30");
    controle<QPushButton>(m.get(), "cmd_retire_mode")->click(); // by its letter: the box keeps the focus
    EXPECT_TRUE(s.modes.empty());
    EXPECT_EQ(annulable(), "Mode de consommation retiré");
}
