// The checks of the text boxes, the base of the windows, and the chart.
#include <qcustomplot.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QPushButton>
#include <QSettings>

#include <cmath>

#include "tests/gestes.h"
#include "widgets/boite_date.h"
#include "widgets/conduite.h"
#include "widgets/fenetre.h"
#include "widgets/fichiers.h"
#include "widgets/graphe.h"
#include "widgets/style.h"

using namespace gestes;

namespace {

struct Verifications : essai_fenetres {
    void SetUp() override {
        boite.show();
        autre.show();
        boite.activateWindow();
        boite.setText("neuf");
    }
    QLineEdit boite, autre;
};

class fenetre_essai : public fenetre {
public:
    explicit fenetre_essai(session& s) : fenetre(s, "fenetre_essai", "Essai") {
        boite = new QLineEdit(contenu());
        contenu()->setMinimumSize(200, 100);
        connect(boite, &QLineEdit::editingFinished, this, [this] {
            double x = 0.0;
            if (verif_double(boite, boite->text(), "1.5", x)) valeur = x;
        });
    }
    using fenetre::marque_changement;
    using fenetre::rapporte_faute;
    QLineEdit* boite;
    double valeur = 0.0;
};

/// Without a window manager a window has to take the keyboard itself, once it stands on the screen.
void active(QWidget& f) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&f));
    QApplication::setActiveWindow(&f);
}

} // namespace

TEST_F(Verifications, types) {
    double d = 1.0;
    float f = 1.0f;
    int n = 1;
    EXPECT_TRUE(verif_double(&boite, "2,25", "v", d));
    EXPECT_EQ(d, 2.25);
    EXPECT_TRUE(verif_simple(&boite, "0.1", "v", f));
    EXPECT_EQ(f, 0.1f);
    EXPECT_TRUE(verif_entier(&boite, "-12", "v", n));
    EXPECT_EQ(n, -12);
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(boite.text(), "neuf");

    EXPECT_FALSE(verif_entier(&boite, "1.5", "12", n));
    EXPECT_EQ(boite.text(), "12");
    EXPECT_FALSE(verif_entier(&boite, "3e9", "12", n));
    EXPECT_FALSE(verif_simple(&boite, "1e39", "12", f));
    EXPECT_FALSE(verif_double(&boite, "douze", "12", d));
    EXPECT_EQ(messages, QStringList(4, "Type de donnée non valide"));
    EXPECT_EQ(derniere, gravite::arret);
    EXPECT_EQ(n, -12);
    EXPECT_TRUE(boite.hasFocus() || QApplication::focusWidget() == nullptr);
}

TEST_F(Verifications, limites) {
    EXPECT_TRUE(verif_bornes(&boite, 10, 0, 10, true, true, "v"));
    EXPECT_TRUE(verif_max(&boite, 10, 10, true, "v"));
    EXPECT_TRUE(verif_min(&boite, 10, 10, true, "v"));
    EXPECT_FALSE(verif_bornes(&boite, 10, 0, 10, true, false, "5"));
    EXPECT_EQ(boite.text(), "5");
    EXPECT_FALSE(verif_bornes(&boite, 0, 0, 1.5, false, true, "5"));
    EXPECT_FALSE(verif_max(&boite, 10, 10, false, "5"));
    EXPECT_FALSE(verif_max(&boite, 11, 10, true, "5"));
    EXPECT_FALSE(verif_min(&boite, 0, 0, false, "5"));
    EXPECT_FALSE(verif_min(&boite, -1, 0, true, "5"));
    EXPECT_FALSE(verif_max(&boite, 1, .4f, true, "5")); // a limit that is a single shows its own digits
    EXPECT_EQ(messages, QStringList({"Valeur hors limite !! Saisissez une valeur : \n0 <= Valeur < 10",
                                     "Valeur hors limite !! Saisissez une valeur : \n0 < Valeur <= 1.5",
                                     "Valeur excessive !! Saisissez une valeur < 10",
                                     "Valeur excessive !! Saisissez une valeur <= 10",
                                     "Valeur insuffisante! Saisissez une valeur > 0",
                                     "Valeur insuffisante! Saisissez une valeur >= 0",
                                     "Valeur excessive !! Saisissez une valeur <= 0.4"}));
    EXPECT_EQ(derniere, gravite::avertissement);
}

TEST(Style, boites_standard_en_francais) {
    QDialogButtonBox b(QDialogButtonBox::Yes | QDialogButtonBox::No | QDialogButtonBox::Cancel);
    EXPECT_EQ(b.button(QDialogButtonBox::Yes)->text().remove('&'), "Oui");
    EXPECT_EQ(b.button(QDialogButtonBox::No)->text().remove('&'), "Non");
    EXPECT_EQ(b.button(QDialogButtonBox::Cancel)->text().remove('&'), "Annuler");
}

TEST(Style, un_lien_suit_la_palette) {
    const QPalette avant = qApp->palette();
    const QString texte = "<a href=\"x\">lien</a>";
    QLabel ancien(texte);
    const QImage en_clair = ancien.grab().toImage();
    QPalette p = avant;
    p.setColor(QPalette::Link, QColor(200, 20, 10));
    qApp->setPalette(p);
    QCoreApplication::processEvents();
    QLabel neuf(texte);
    EXPECT_EQ(ancien.grab().toImage(), neuf.grab().toImage());
    EXPECT_NE(ancien.grab().toImage(), en_clair);
    qApp->setPalette(avant);
}

using Fenetre = essai_fenetres;

TEST_F(Fenetre, entree_place_et_fermeture) {
    {
        fenetre_essai f(s);
        f.show();
        active(f);
        f.resize(613, 407);
        f.boite->setFocus();
        QTest::keyClicks(f.boite, "7");
        QTest::keyClick(f.boite, Qt::Key_Escape); // the first one puts the old text back
        EXPECT_TRUE(f.isVisible());
        EXPECT_EQ(f.boite->text(), "");
        QTest::keyClicks(f.boite, "3,5");
        f.close();
        EXPECT_EQ(f.valeur, 3.5) << "the entry is taken in when the window closes";
        EXPECT_TRUE(messages.isEmpty());
    }
    fenetre_essai f(s);
    f.show();
    EXPECT_EQ(f.size(), QSize(613, 407));
    active(f);
    f.boite->setFocus();
    QTest::keyClicks(f.boite, "abc");
    QTest::keyClick(f.boite, Qt::Key_Return);
    EXPECT_EQ(messages.size(), 1) << "a refused entry is told once";
    EXPECT_EQ(f.boite->text(), "1.5");
    EXPECT_TRUE(f.boite->hasFocus());

    int dit = 0;
    QObject::connect(&f, &fenetre::configuration_changee, [&] { ++dit; });
    s.config_modifiee = 0;
    f.marque_changement();
    EXPECT_EQ(s.config_modifiee, 1);
    EXPECT_EQ(dit, 1);
    f.montre_bandeau("Attention");
    EXPECT_TRUE(f.findChild<QLabel*>("lab_bandeau")->isVisible());
    f.montre_bandeau("");
    EXPECT_FALSE(f.findChild<QLabel*>("lab_bandeau")->isVisible());

    // A wheel that passes over a list without the focus changes nothing, with it it does.
    QComboBox liste(&f);
    liste.addItems({"a", "b"});
    liste.show();
    const auto roule = [&] {
        QWheelEvent roue({5, 5}, liste.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&liste, &roue);
        return liste.currentIndex();
    };
    EXPECT_NE(liste.focusPolicy(), Qt::WheelFocus);
    EXPECT_EQ(roule(), 0);
    liste.setFocus();
    EXPECT_EQ(roule(), 1);

    // A refused entry left for another page brings its own page back.
    QTabWidget pages(&f);
    auto* retour = new QLineEdit;
    pages.addTab(retour, "1");
    pages.addTab(new QWidget, "2");
    pages.show();
    QObject::connect(retour, &QLineEdit::editingFinished, &f, [&] {
        double x = 0;
        if (touchee(retour)) verif_double(retour, retour->text(), "2", x);
    });
    retour->setFocus();
    QTest::keyClicks(retour, "x");
    QTest::mouseClick(pages.tabBar(), Qt::LeftButton, {}, pages.tabBar()->tabRect(1).center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return retour->hasFocus(); }));
    EXPECT_EQ(pages.currentIndex(), 0);
    EXPECT_EQ(messages.size(), 2);

    messages.clear();
    f.rapporte_faute("la simulation", 0.5, "division par zéro");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains("la simulation") && messages[0].contains("01/01/1950") &&
                messages[0].contains("12:00:00") && messages[0].contains("division par zéro"))
        << messages[0].toStdString();
}

TEST_F(Fenetre, une_place_gardee_qui_ne_tient_pas_est_oubliee) {
    QWidget source, f;
    for (const QRect& r :
         {QRect(10, 10, 400, 300), QRect(10, 10, 16777215, 300), QRect(9000, 10, 400, 300)}) {
        source.setGeometry(r);
        f.setGeometry(1, 2, 30, 40);
        EXPECT_EQ(restaure_geometrie(&f, source.saveGeometry()), r == QRect(10, 10, 400, 300)) << r.width();
    }
    EXPECT_EQ(f.size(), QSize(30, 40));
    EXPECT_FALSE(restaure_geometrie(&f, "abc"));
}

TEST(Fichiers, un_nom_garde_ses_points_et_recoit_la_fin_de_son_genre) {
    const QString pwr = "Fichiers  Configuration (*.pwr)", image = "Image (*.bmp *.dib)";
    EXPECT_EQ(avec_suffixe("/a.b/mission.v2", pwr), "/a.b/mission.v2.pwr");
    EXPECT_EQ(avec_suffixe("Mission.PWR", pwr), "Mission.PWR");
    EXPECT_EQ(avec_suffixe("courbe.jpg", image), "courbe.jpg.bmp");
    EXPECT_EQ(avec_suffixe("courbe.dib", image), "courbe.dib");
    EXPECT_EQ(avec_suffixe("courbe", "All Files (*.*)"), "courbe");
}

TEST(Dates, se_tapent_en_entier_en_chiffres_ou_en_partie) {
    const date_record base{.an = 2001, .mois = 3, .jour = 21, .heure = 13, .minute = 12, .seconde = 1};
    const auto lu = [&](const char* t, bool heure = true) {
        const auto d = lit_date(t, base, heure);
        return d ? date_vers_texte(*d) : std::string();
    };
    EXPECT_EQ(lu("15/06/2025 10:20:30"), "15/06/2025 10:20:30");
    EXPECT_EQ(lu("15062025102030"), "15/06/2025 10:20:30");
    EXPECT_EQ(lu("29022024"), "29/02/2024 13:12:01");
    EXPECT_EQ(lu("2025-06-15"), "15/06/2025 13:12:01");
    EXPECT_EQ(lu(" 1/4 "), "01/04/2001 13:12:01");
    EXPECT_EQ(lu("8:05"), "21/03/2001 08:05:00");
    EXPECT_EQ(lu("2/1 0900"), "02/01/2001 09:00:00");
    for (const char* t :
         {"", "29/02/2023", "15/06/24", "150625", "32/01/2001", "24:00", "1/2/3/4", "midi", "//"})
        EXPECT_EQ(lu(t), "") << t;
    EXPECT_EQ(lu("15/06/2004 08:00", false), "");
}

TEST_F(Fenetre, une_date_montree_garde_sa_fraction) {
    boite_date b(true);
    double saisie = 0;
    QObject::connect(&b, &boite_date::date_saisie, [&](double j) { saisie = j; });
    b.show();
    active(b);
    b.setFocus();
    b.montre(18707 + 5.0 / 24 - 1e-10); // a hair before 05:00:00
    EXPECT_EQ(b.text(), "21/03/2001 05:00:00");
    b.valide();
    EXPECT_EQ(saisie, 0) << "showing is not typing";
    b.selectAll();
    QTest::keyClicks(&b, "31/12/2100");
    QTest::keyClick(&b, Qt::Key_Return);
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(b.text(), "21/03/2001 05:00:00");
    b.setCursorPosition(4);
    QTest::keyClick(&b, Qt::Key_Up); // the month
    EXPECT_EQ(b.text(), "21/04/2001 05:00:00");
    EXPECT_EQ(saisie, date_vers_jour({.an = 2001, .mois = 4, .jour = 21, .heure = 5}));
}

using Graphe = essai_fenetres;

TEST_F(Graphe, coupe_ce_qui_ne_se_voit_pas) {
    graphe g;
    g.resize(600, 400);
    g.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&g));
    g.limites_y(0, 1500);
    const int ir = g.courbe("IR", Qt::red, Qt::DashLine);
    g.donnees(ir, {0, 1, 2, 3}, {200, 1e15, -3.65e17, 200});
    QElapsedTimer t;
    t.start();
    g.dessin()->replot(QCustomPlot::rpImmediateRefresh);
    EXPECT_LT(t.elapsed(), 2000) << "took minutes when the dashes were laid along the whole line";

    const int angle = g.courbe("lacet", Qt::blue);
    g.angulaire(angle);
    g.donnees(angle, {0, 1, 2}, {179, -179, -178});
    EXPECT_TRUE(std::isnan((g.dessin()->graph(angle)->data()->constBegin() + 1)->value));

    // However long the wheel turns, the view keeps digits to show.
    const QPointF milieu = g.dessin()->axisRect()->center();
    for (int i = 0; i < 400; ++i) {
        QWheelEvent roue(milieu, g.dessin()->mapToGlobal(milieu), {}, {0, i < 200 ? 1200 : -1200},
                         Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(g.dessin(), &roue);
        const QCPRange r = g.dessin()->xAxis->range();
        ASSERT_GT(r.size(), 1e-11);
        ASSERT_LT(r.size(), 1e5);
    }
    // Nor is it held where the data no longer are.
    g.donnees(angle, {1e9, 1e9 + 1, 1e9 + 2}, {1, 2, 3});
    g.donnees(ir, {1e9}, {0});
    g.dessin()->xAxis->setRange(5, 6);
    EXPECT_GT(g.dessin()->xAxis->range().upper, 9e8);
}

TEST_F(Graphe, suit_les_donnees_puis_l_utilisateur) {
    graphe g;
    g.resize(600, 400);
    g.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&g));
    const int a = g.courbe("a", style::couleur(style::role::generateur));
    const int b = g.courbe("b", style::couleur(style::role::batterie), Qt::DashLine, true);
    g.donnees(a, {0, 1, 2}, {0, 10, 5});
    g.donnees(b, {0, 1, 2}, {100, 100, 100});
    g.bandes({{0.5, 1.0}, {1.5, 1.75}});
    g.retrace();
    EXPECT_EQ(g.dessin()->xAxis->range().lower, 0.0);
    EXPECT_EQ(g.dessin()->xAxis->range().upper, 2.0);
    EXPECT_GT(g.dessin()->yAxis->range().upper, 10.0);
    EXPECT_LT(g.dessin()->yAxis2->range().lower, 100.0) << "a flat curve still has a range";

    g.ajoute_point(a, 4, 3);
    g.oublie_avant(a, 1);
    EXPECT_EQ(g.nombre_points(a), 3);
    g.oublie_avant(b, 1);
    g.retrace();
    EXPECT_EQ(g.dessin()->xAxis->range().upper, 4.0);
    EXPECT_EQ(g.dessin()->xAxis->range().lower, 1.0);

    // After a zoom by the wheel new data leave the view alone; a double click fits it again.
    QTest::qWait(0);
    const QPoint milieu = g.dessin()->axisRect()->center();
    QWheelEvent roue(milieu, g.dessin()->mapToGlobal(milieu), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(g.dessin(), &roue);
    const double serre = g.dessin()->xAxis->range().upper;
    EXPECT_LT(serre, 4.0);
    g.ajoute_point(a, 8, 3);
    g.retrace();
    EXPECT_EQ(g.dessin()->xAxis->range().upper, serre);
    QTest::mouseDClick(g.dessin(), Qt::LeftButton, {}, milieu);
    EXPECT_EQ(g.dessin()->xAxis->range().upper, 8.0);

    EXPECT_TRUE(g.enregistre(dossier.filePath("g.png")));
    EXPECT_TRUE(g.enregistre(dossier.filePath("g.pdf")));
    EXPECT_FALSE(g.enregistre(dossier.filePath("absent/g.png")));
    EXPECT_GT(QImage(dossier.filePath("g.png")).width(), 600);

    g.efface();
    EXPECT_EQ(g.dessin()->graphCount(), 0);
}
