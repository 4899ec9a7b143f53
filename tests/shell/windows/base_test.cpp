// The checks of the text boxes, the base of the windows, and the chart.
#include <qcustomplot.h>

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSettings>

#include "tests/gestes.h"
#include "widgets/fenetre.h"
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

using Fenetre = essai_fenetres;

TEST_F(Fenetre, entree_place_et_fermeture) {
    {
        fenetre_essai f(s);
        f.show();
        active(f);
        f.resize(613, 407);
        f.boite->setFocus();
        QTest::keyClicks(f.boite, "3,5");
        QTest::keyClick(f.boite, Qt::Key_Escape);
        EXPECT_FALSE(f.isVisible());
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
    messages.clear();
    f.rapporte_faute("la simulation", 0.5, "division par zéro");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains("la simulation") && messages[0].contains("01/01/1950") &&
                messages[0].contains("12:00:00") && messages[0].contains("division par zéro"))
        << messages[0].toStdString();
}

using Graphe = essai_fenetres;

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
