/// The page "Carte" as a person uses it: from the next pass to a station of one's own.
#include <QComboBox>
#include <QFileDialog>
#include <QSignalSpy>
#include <QTableView>
#include <QTableWidget>
#include <QWheelEvent>

#include "analysis/windows/carte_terre.h"
#include "analysis/windows/page_carte.h"
#include "tests/gestes.h"
#include "widgets/barre_temps.h"

using namespace gestes;

namespace {

struct essai_carte : essai_fenetres {
    essai_carte() {
        s.dossier_depart = DOSSIER_DATA;
        s.orbit.orbite.orb_inclinaison = 97.8;
        p = std::make_unique<page_carte>(s);
        p->resize(1200, 700);
        p->show();
        p->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(p.get()));
        attend_passages();
    }
    void attend_passages() {
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return !label(p.get(), "lab_passage_prochain").contains("calcul"); }));
    }
    QAbstractItemModel* table() { return controle<QTableView>(p.get(), "grid_passages")->model(); }
    QString cellule(int ligne, int colonne) { return table()->index(ligne, colonne).data().toString(); }
    void clique_passage(int ligne) {
        auto* t = controle<QTableView>(p.get(), "grid_passages");
        QTest::mouseClick(t->viewport(), Qt::LeftButton, {},
                          t->visualRect(table()->index(ligne, 1)).center());
    }
    void saisit(QTableWidget* t, int ligne, int colonne, const QString& texte) {
        t->setCurrentCell(ligne, colonne);
        t->editItem(t->item(ligne, colonne));
        tape_et_entre(texte);
    }
    /// Into the editor of a cell, which commits in its own time.
    static void tape_et_entre(const QString& texte) {
        QTest::keyClicks(QApplication::focusWidget(), texte);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QApplication::processEvents();
    }

    std::unique_ptr<page_carte> p;
};

} // namespace

TEST_F(essai_carte, a_click_on_a_pass_brings_the_date_there) {
    ASSERT_GT(table()->rowCount(), 20);
    EXPECT_TRUE(label(p.get(), "lab_passage_prochain").contains(cellule(0, 1))) << "the next one comes first";
    QSignalSpy date(p.get(), &page::date_montree);
    clique_passage(3);
    ASSERT_EQ(date.size(), 1);
    const double j = date[0][0].toDouble();
    const QString nom = cellule(0, 1); // under way now: first
    EXPECT_EQ(cellule(0, 0), "en vue");
    EXPECT_TRUE(label(p.get(), "lab_passage_prochain").startsWith("En vue de"));
    EXPECT_TRUE(label(p.get(), "lab_passage").contains("au plus haut"));
    EXPECT_EQ(cellule(table()->rowCount() - 1, 0), "passé");
    // The map: the station in view and chosen, the satellite within its circle.
    const contenu_carte& c = controle<carte_terre>(p.get(), "pict_carte")->contenu();
    int choisies = 0;
    for (const station_carte& m : c.stations)
        if (m.choisie) {
            ++choisies;
            EXPECT_TRUE(m.en_vue) << m.nom.toStdString();
        }
    EXPECT_EQ(choisies, 1);
    ASSERT_TRUE(c.satellite);
    EXPECT_EQ(c.satellite->j, j);
    // Another page moves the date; this one follows without telling it back.
    p->montre_date(s.periode.j_debut + 0.25);
    EXPECT_EQ(date.size(), 1);
    EXPECT_EQ(controle<carte_terre>(p.get(), "pict_carte")->contenu().satellite->j, s.periode.j_debut + 0.25);
    // By elevation, the highest at an end.
    auto* t = controle<QTableView>(p.get(), "grid_passages");
    t->sortByColumn(2, Qt::DescendingOrder);
    EXPECT_GE(cellule(0, 2).chopped(1).toInt(), cellule(5, 2).chopped(1).toInt());
    EXPECT_GT(cellule(0, 2).chopped(1).toInt(), 80);
}

TEST_F(essai_carte, time_runs_and_stops_at_its_end) {
    auto* b = controle<barre_temps>(p.get(), "barre_temps");
    controle<QComboBox>(p.get(), "cmb_vitesse")->setCurrentIndex(5); // two hours a second
    b->pose(b->fin() - 600 / 86400.0);
    clique(p.get(), "cmd_joue");
    EXPECT_TRUE(b->joue());
    EXPECT_TRUE(QTest::qWaitFor([b] { return !b->joue(); }));
    EXPECT_EQ(b->date(), b->fin());
    clique(p.get(), "cmd_joue"); // from the start again
    EXPECT_LT(b->date(), b->debut() + 0.5);
    clique(p.get(), "cmd_joue");
    EXPECT_FALSE(b->joue());
}

TEST_F(essai_carte, the_stations_are_the_etudes_once_edited) {
    controle<QTabWidget>(p.get(), "onglets_carte")->setCurrentIndex(1);
    auto* t = controle<QTableWidget>(p.get(), "grid_stations");
    ASSERT_EQ(t->rowCount(), 12);
    EXPECT_TRUE(s.stations.empty());
    QSignalSpy change(p.get(), &page::configuration_changee);
    saisit(t, 0, 4, "12,5");
    ASSERT_EQ(s.stations.size(), 12u);
    EXPECT_EQ(s.stations[0].masque, 12.5);
    ASSERT_EQ(change.size(), 1);
    EXPECT_EQ(change[0][0].toString(), "Station Toulouse : masque 5 → 12.5");
    saisit(t, 1, 1, "95");
    EXPECT_EQ(s.stations[1].latitude, 50.0005);
    EXPECT_EQ(t->item(1, 1)->text(), "50.0005");
    EXPECT_TRUE(label(p.get(), "lab_stations").contains("latitude 95 : de -90 à 90"));
    EXPECT_EQ(change.size(), 1);

    clique(p.get(), "cmd_station_ajoute");
    tape_et_entre("Ici");
    ASSERT_EQ(s.stations.size(), 13u);
    EXPECT_EQ(s.stations[12].nom, "Ici");
    for (int n = 12; n > 0; --n) {
        t->setCurrentCell(0, 0);
        clique(p.get(), "cmd_station_retire");
    }
    ASSERT_EQ(s.stations.size(), 1u);
    attend_passages();
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return cellule(0, 1) == "Ici" && cellule(table()->rowCount() - 1, 1) == "Ici"; }));

    QTimer::singleShot(0, [this] {
        auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(d, nullptr);
        d->selectFile(dossier.filePath("p.csv"));
        d->findChild<QLineEdit*>()->setText(dossier.filePath("p.csv"));
        static_cast<QDialog*>(d)->accept();
    });
    controle<QTabWidget>(p.get(), "onglets_carte")->setCurrentIndex(0);
    clique(p.get(), "cmd_passages_csv");
    const QByteArray csv = contenu(dossier.filePath("p.csv"));
    EXPECT_TRUE(
        csv.startsWith("station,debut,fin,duree,elevation_max,date_max,azimut_debut,azimut_max,azimut_fin,"
                       "distance_min\nIci,"))
        << csv.left(120).toStdString();
    EXPECT_EQ(csv.count('\n'), table()->rowCount() + 1);

    clique(p.get(), "cmd_station_defaut");
    EXPECT_TRUE(s.stations.empty());
    EXPECT_EQ(t->rowCount(), 12);
}

TEST_F(essai_carte, the_map_zooms_about_the_pointer_and_tells_the_place) {
    auto* c = controle<carte_terre>(p.get(), "pict_carte");
    const QPointF ici = c->pixel({2.35, 48.85});
    const auto avant = c->sol(ici);
    ASSERT_TRUE(avant);
    EXPECT_NEAR(avant->lon, 2.35, 1e-9);
    QWheelEvent molette(ici, c->mapToGlobal(ici), {}, {0, 480}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
    QApplication::sendEvent(c, &molette);
    EXPECT_GT(c->zoom(), 2);
    EXPECT_NEAR(c->sol(ici)->lon, 2.35, 1e-6);
    EXPECT_NEAR(c->sol(ici)->lat, 48.85, 1e-6);
    QTest::mouseMove(c, ici.toPoint());
    EXPECT_TRUE(label(p.get(), "lab_pointeur").contains("heure solaire"));
    // A drag moves what is under it.
    QTest::mousePress(c, Qt::LeftButton, {}, ici.toPoint());
    QTest::mouseMove(c, ici.toPoint() + QPoint(60, 30));
    QTest::mouseRelease(c, Qt::LeftButton, {}, ici.toPoint() + QPoint(60, 30));
    EXPECT_NEAR(c->sol(ici.toPoint() + QPoint(60, 30))->lon,
                c->sol(ici.toPoint())->lon + 60 / (c->width() / 360.0 * c->zoom()), 0.5);
    QTest::mouseDClick(c, Qt::LeftButton);
    EXPECT_EQ(c->zoom(), 1);
    // Over the date line: the map turns with it, and every point stays in the frame.
    c->agrandit(1.5, c->pixel({179, 0}));
    EXPECT_NEAR(c->pixel({-179, 0}).x() - c->pixel({179, 0}).x(),
                c->pixel({181, 10}).x() - c->pixel({179, 10}).x(), 1e-6);
}
