/// The page "Courbes" as a person compares two batteries on it; the batch program is the judge.
#include "analysis/windows/page_courbes.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QWheelEvent>

#include <cmath>

#include "analysis/windows/lecture_courbes.h"
#include "shell/formats.h"
#include "shell/windows/menu.h"
#include "tests/gestes.h"
#include "widgets/export_traces.h"
#include "widgets/fenetre.h"
#include "widgets/traces.h"

using namespace gestes;

namespace {

const QString exemple = QString(DOSSIER_DATA) + "/exemples/microsatellite";

const QString tangage = "yd(2) * (180 / pi)", vitesse = "omega(1) * (180 / pi)";

struct courbes_a_l_ecran : essai_fenetres {
    std::unique_ptr<menu> m;
    page_courbes* p = nullptr;
    traces* t = nullptr;
    lecture_courbes* lecture = nullptr;

    void SetUp() override {
        s.dossier_depart = dossier.path().toStdString();
        m = std::make_unique<menu>(s);
        m->fin_programme = [](int) {};
        m->resize(1366, 768);
        m->show();
        m->ouvre_orbite(exemple + ".orb");
        m->ouvre_energie(exemple + ".pwr");
        controle<QAction>(m.get(), "mn_page_courbes")->trigger();
        p = m->findChild<page_courbes*>();
        t = p->findChild<traces*>();
        lecture = p->findChild<lecture_courbes*>();
        ASSERT_TRUE(attend());
    }
    bool attend() {
        QApplication::processEvents();
        return QTest::qWaitFor([this] { return p->resultat() && !p->calcule_en_cours(); }, 30000);
    }
    void change_capacite(const QString& ah) {
        fenetre* energie = m->montre_fenetre("power_conf", 3);
        tape(energie, "bat_txt_c", ah);
        energie->close();
        ASSERT_TRUE(attend());
    }
    QString lu(const QString& courbe, const QString& calcul, int colonne) {
        for (int l = 0; l < lecture->rowCount(); ++l)
            if (lecture->item(l, 0)->text().contains(courbe) && lecture->item(l, 1)->text().contains(calcul))
                return lecture->item(l, colonne)->text();
        ADD_FAILURE() << courbe.toStdString();
        return {};
    }
    /// Rows of the batch program for the session's period with another capacity.
    QList<QList<double>> du_batch(const QString& ah) {
        QProcess b;
        b.start(KESTREL_BATCH,
                {"energie", "--orb", exemple + ".orb", "--pwr", exemple + ".pwr", "--champ", "bat_c=" + ah,
                 "--debut", court(s.periode.j_debut), "--fin", court(s.periode.j_fin), "--pas",
                 QString::number(s.periode.pas_sim), "--colonnes", "j,bat_soc,gen_power,p_excess"});
        EXPECT_TRUE(b.waitForFinished()) << b.errorString().toStdString();
        EXPECT_EQ(b.exitCode(), 0) << b.readAllStandardError().toStdString();
        return lignes(b.readAllStandardOutput(), ',');
    }
    /// Pitch and its rate of the attitude over the session's period.
    QList<QList<double>> attitude_du_batch(const QStringList& modele) {
        const QStringList periode = {"--debut", court(s.periode.j_debut), "--fin", court(s.periode.j_fin)};
        const QStringList commande = {"attitude",
                                      "--orb",
                                      exemple + ".orb",
                                      "--pwr",
                                      exemple + ".pwr",
                                      "--colonnes",
                                      tangage + "," + vitesse,
                                      "--pas",
                                      "2"};
        QProcess b;
        b.start(KESTREL_BATCH, commande + periode + modele);
        EXPECT_TRUE(b.waitForFinished()) << b.errorString().toStdString();
        EXPECT_EQ(b.exitCode(), 0) << b.readAllStandardError().toStdString();
        return lignes(b.readAllStandardOutput(), ',');
    }
    static QString court(double x) { return QString::fromStdString(format_court(x)); }
    static QList<QList<double>> lignes(const QByteArray& csv, char separateur) {
        QList<QList<double>> l;
        for (QByteArray ligne : csv.split('\n').mid(1)) {
            if (ligne.trimmed().isEmpty()) continue;
            l << QList<double>();
            for (QByteArray mot : ligne.trimmed().split(separateur)) {
                if (separateur == ';') mot.replace(',', '.');
                l.last() << (mot.isEmpty() ? NAN : mot.toDouble());
            }
        }
        return l;
    }
};

} // namespace

TEST_F(courbes_a_l_ecran, two_batteries_are_compared_and_the_numbers_are_those_of_the_batch_program) {
    s.periode.j_fin = s.periode.j_debut + .3;
    p->rafraichit();
    ASSERT_TRUE(attend());
    controle<QPushButton>(p, "cmd_garde")->click();
    change_capacite("4"); // follows at once
    const auto quinze = du_batch("15"), quatre = du_batch("4");
    ASSERT_EQ(p->resultat()->cherche("bat_soc")->valeurs.taille(), std::size_t(quatre.size()));

    // The kept run is told by what differs, and lies over the current one.
    EXPECT_EQ(controle<QListWidget>(p, "list_gardes")->item(0)->text(), "capacité nominale 15 Ah");
    auto* differences = controle<QTableWidget>(p, "tab_differences");
    ASSERT_EQ(differences->rowCount(), 1);
    EXPECT_TRUE(differences->item(0, 0)->text().endsWith("capacité nominale (Ah)"));
    EXPECT_EQ(differences->item(0, 1)->text() + "/" + differences->item(0, 2)->text(), "4/15");
    const qsizetype i = quatre.size() / 2;
    t->pose_curseur(quatre[i][0]);
    EXPECT_NEAR(lu("Taux de charge", "actuel", lecture_courbes::curseur).toDouble(), quatre[i][1], 5.1e-4);
    EXPECT_NEAR(lu("Taux de charge", "15 Ah", lecture_courbes::curseur).toDouble(), quinze[i][1], 5.1e-4);

    auto* ecart = controle<QComboBox>(p, "cbo_ecart");
    ecart->setCurrentIndex(1);
    emit ecart->activated(1);
    EXPECT_NEAR(lu("Écart : Taux de charge", "actuel", lecture_courbes::curseur).toDouble(),
                quatre[i][1] - quinze[i][1], 5.1e-4);
    EXPECT_GT(std::fabs(quatre[i][1] - quinze[i][1]), .01);
    ecart->setCurrentIndex(0);
    emit ecart->activated(0);

    // Marks: the energy between two dates is the sum of the steps.
    const qsizetype a = 100, b = 400;
    t->pose_marques(quatre[a][0], quatre[b][0]);
    double wh = 0;
    for (qsizetype k = a; k < b; ++k) wh += quatre[k][2] * s.periode.pas_sim / 3600;
    const QString integrale = lu("Puissance du générateur", "actuel", lecture_courbes::integrale);
    EXPECT_TRUE(integrale.endsWith(" Wh"));
    EXPECT_NEAR(integrale.section(' ', 0, 0).toDouble(), wh, .02);
    lecture->copie();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(integrale));

    // What is in sight goes out and comes back, in both manners.
    t->pose_vue(quatre[a][0], quatre[b][0]);
    for (const forme_csv f : {forme_csv::virgule, forme_csv::point_virgule}) {
        const QString chemin = dossier.filePath("courbes.csv");
        ASSERT_TRUE(enregistre_traces(p, *t, chemin, f));
        const QByteArray texte = contenu(chemin);
        const QList<QByteArray> tetes = texte.split('\n')[0].split(separateur_csv(f));
        const auto lues = lignes(texte, separateur_csv(f));
        ASSERT_NEAR(double(lues.size()), double(b - a + 1), 1);
        const qsizetype soc = tetes.indexOf("bat_soc"),
                        garde = tetes.indexOf("bat_soc [capacité nominale 15 Ah]");
        ASSERT_TRUE(soc > 0 && garde > 0 && tetes.contains("gen_power (W)")) << texte.left(400).toStdString();
        const qsizetype k = quatre.size() > 0 ? a + 50 : 0;
        const auto ligne = std::find_if(lues.begin(), lues.end(),
                                        [&](const auto& x) { return std::fabs(x[1] - quatre[k][0]) < 1e-7; });
        ASSERT_NE(ligne, lues.end());
        EXPECT_NEAR((*ligne)[soc], quatre[k][1], 1e-9);
        EXPECT_NEAR((*ligne)[garde], quinze[k][1], 1e-9);
    }
    const QPair<const char*, const char*> images[] = {
        {"x.png", "\x89PNG"}, {"x.svg", "<?xml"}, {"x.pdf", "%PDF"}};
    for (const auto& [nom, debut] : images) {
        ASSERT_TRUE(enregistre_traces(p, *t, dossier.filePath(nom)));
        EXPECT_TRUE(contenu(dossier.filePath(nom)).startsWith(debut)) << nom;
    }

    // The kept run's settings come back, and the page follows.
    controle<QPushButton>(p, "cmd_rouvre_etude")->click();
    EXPECT_EQ(s.power.bat_c, 15);
    ASSERT_TRUE(attend());
    EXPECT_EQ(controle<QListWidget>(p, "list_gardes")->item(0)->text(), "mêmes réglages");
    EXPECT_EQ(p->resultat()->cherche("bat_soc")->valeurs.en(quinze[i][0]), quinze[i][1]);

    // A kept run is computed anew, and the other one stays.
    change_capacite("4");
    controle<QPushButton>(p, "cmd_garde")->click();
    controle<QListWidget>(p, "list_gardes")->setCurrentRow(0);
    controle<QPushButton>(p, "cmd_recalcule_garde")->click();
    ASSERT_TRUE(attend());
    t->pose_curseur(quatre[i][0]);
    EXPECT_NEAR(lu("Taux de charge", "15 Ah", lecture_courbes::curseur).toDouble(), quinze[i][1], 5.1e-4);
    EXPECT_NEAR(lu("Taux de charge", "mêmes réglages", lecture_courbes::curseur).toDouble(), quatre[i][1],
                5.1e-4);
}

TEST_F(courbes_a_l_ecran, runs_of_both_models_lie_over_each_other) {
    for (const char* nom : {"igrf14.txt", "densite.txt", "flux_solaire.txt"})
        ASSERT_TRUE(QFile::copy(QString(DOSSIER_DATA "/") + nom, dossier.filePath(nom)));
    s.periode.pas_sim = 2;
    s.periode.j_fin = s.periode.j_debut + .02;
    const auto jeux = jeux_courbes(s);
    const auto jeu = std::find_if(jeux.begin(), jeux.end(), [](const jeu_courbes& j) {
        return std::string_view(j.titre) == "Attitude";
    });
    auto* choix = controle<QComboBox>(p, "cbo_jeu");
    emit choix->activated(1 + int(jeu - jeux.begin()));
    ASSERT_TRUE(attend());
    controle<QPushButton>(p, "cmd_garde")->click();
    controle<QAction>(m.get(), "mn_modele_physique")->trigger();
    ASSERT_TRUE(attend());
    EXPECT_EQ(controle<QListWidget>(p, "list_gardes")->item(0)->text(), "Modèle de référence");
    EXPECT_TRUE(controle<QLabel>(p, "lab_modele_courbes")->isVisible());
    EXPECT_EQ(t->dessin().mention, "modèle physique") << "in the pictures that are exported too";
    const QString courbes = dossier.filePath("physique.csv");
    ASSERT_TRUE(enregistre_traces(p, *t, courbes, forme_csv::virgule));
    EXPECT_TRUE(contenu(courbes).split('\n')[0].contains(" [modèle physique]"));

    const auto reference = attitude_du_batch({}), physique = attitude_du_batch({"--modele", "physique"});
    const auto& trois = t->dessin().graphiques[0].courbes;
    ASSERT_EQ(trois.size(), 6) << "three angles, by both models";
    EXPECT_EQ(trois[2].nom, tangage);
    EXPECT_EQ(trois[3].calcul, "Modèle de référence");
    for (const std::size_t i : {1, 100, 400}) {
        EXPECT_EQ(trois[2].donnees->valeur(i), physique[qsizetype(i)][0]) << i;
        EXPECT_EQ(trois[3].donnees->valeur(i), reference[qsizetype(i)][0]) << i;
        EXPECT_EQ(t->dessin().graphiques[1].courbes[3].donnees->valeur(i), reference[qsizetype(i)][1]) << i;
    }
    EXPECT_GT(std::fabs(physique[400][1] - reference[400][1]), 1e-4);

    // By the names of the physical model too; what it alone computes has one curve.
    s.courbes = R"([{"courbes":["tangage"]},{"courbes":["energie"]}])";
    p->rafraichit();
    ASSERT_TRUE(attend());
    ASSERT_EQ(t->dessin().graphiques[0].courbes.size(), 2);
    EXPECT_EQ(t->dessin().graphiques[0].courbes[1].donnees->valeur(100), reference[100][0]);
    ASSERT_GE(t->dessin().graphiques[1].courbes.size(), 1);
    EXPECT_GT(t->dessin().graphiques[1].courbes[0].donnees->valeur(100), 0);
}

TEST_F(courbes_a_l_ecran, a_kept_run_is_renamed_redrawn_hidden_and_forgotten) {
    controle<QPushButton>(p, "cmd_garde")->click();
    auto* liste = controle<QListWidget>(p, "list_gardes");
    ASSERT_EQ(liste->count(), 1);
    const auto courbes = [&] { return t->dessin().graphiques[0].courbes; };
    const auto avec = courbes();
    liste->item(0)->setText("Avant"); // as F2 does
    EXPECT_EQ(courbes().last().calcul, "Avant");
    QTimer::singleShot(0, [&] {
        auto* m = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(m, nullptr);
        for (QAction* a : m->actions())
            if (a->isCheckable() && !a->isChecked()) {
                QTest::mouseClick(m, Qt::LeftButton, {}, m->actionGeometry(a).center());
                return;
            }
    });
    controle<QPushButton>(p, "cmd_apparence")->click();
    EXPECT_NE(courbes().last().trait, avec.last().trait);
    EXPECT_EQ(courbes().size(), avec.size());
    liste->item(0)->setCheckState(Qt::Unchecked);
    EXPECT_LT(courbes().size(), avec.size());
    controle<QPushButton>(p, "cmd_supprime_garde")->click();
    EXPECT_EQ(liste->count(), 0);
}

TEST_F(courbes_a_l_ecran, a_variable_is_found_by_part_of_its_name_and_saved_in_the_etude) {
    const auto version = s.version_config;
    tape(p, "txt_cherche_variable", "panneau chaud temperature", Qt::Key_Return);
    ASSERT_TRUE(attend());
    EXPECT_NE(s.courbes.find("node_t_max"), std::string::npos) << s.courbes;
    EXPECT_NE(p->resultat()->cherche("node_t_max"), nullptr);
    EXPECT_EQ(t->dessin().unites(2), (QStringList{"°C", "K"})) << "an axis for each unit";
    EXPECT_EQ(s.version_config, version) << "no result depends on the charts";
    s.courbes = R"([{"courbes":["sat_alt"]}])"; // as by an étude that is opened
    p->rafraichit();
    ASSERT_TRUE(attend());
    ASSERT_EQ(t->dessin().graphiques.size(), 1);
    EXPECT_EQ(t->dessin().graphiques[0].courbes[0].nom, "sat_alt");
}

TEST_F(courbes_a_l_ecran, wheel_back_events_and_a_long_run_that_is_stopped) {
    EXPECT_TRUE(lecture->isVisible() && t->isVisible());
    m->resize(960, 540); // a low screen: one or the other
    EXPECT_TRUE(!lecture->isVisible() && t->isVisible());
    controle<QAbstractButton>(p, "cmd_lectures")->click();
    EXPECT_TRUE(lecture->isVisible() && !t->isVisible());
    m->resize(1366, 768);
    EXPECT_TRUE(lecture->isVisible() && t->isVisible());
    QSignalSpy date(p, &page::date_montree);
    const double debut = t->dessin().debut, fin = t->dessin().fin;
    const QPoint ou(t->width() * 3 / 4, t->height() / 2);
    const double sous = t->dessin().date_en(ou.x());
    QWheelEvent molette(ou, t->mapToGlobal(ou), {}, {0, 240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                        false);
    QApplication::sendEvent(t, &molette);
    EXPECT_LT(t->dessin().fin - t->dessin().debut, .7 * (fin - debut));
    EXPECT_NEAR(t->dessin().date_en(ou.x()), sous, 1e-9) << "the date under the pointer stays there";
    QTest::keyClick(t, Qt::Key_Backspace);
    EXPECT_NEAR(t->dessin().debut, debut, 1e-9);
    EXPECT_NEAR(t->dessin().fin, fin, 1e-9);

    t->pose_curseur(debut);
    t->va_evenement(1);
    ASSERT_EQ(date.size(), 1);
    EXPECT_EQ(date[0][0].toDouble(), p->resultat()->evenements.front().date);

    // Too long to follow an edit: it waits, runs on request, and what is done when it is stopped stays.
    const auto* avant = p->resultat();
    s.periode.pas_sim = 1;
    s.periode.j_fin = s.periode.j_debut + 30;
    p->rafraichit();
    EXPECT_EQ(p->resultat(), avant);
    auto* calcule = controle<QPushButton>(p, "cmd_calcule_courbes");
    ASSERT_TRUE(calcule->isVisible());
    calcule->click();
    QTest::qWait(100);
    controle<QPushButton>(p, "cmd_arrete_courbes")->click();
    ASSERT_TRUE(attend());
    EXPECT_TRUE(p->resultat()->partiel);
    EXPECT_GT(p->resultat()->cherche("bat_soc")->valeurs.taille(), 10u);
    EXPECT_LT(p->resultat()->fin, s.periode.j_fin - 1);
    EXPECT_TRUE(label(p, "lab_etat_courbes").contains("partiel"));
}
