/// The power settings window as a person uses it: every page, refusals, repairs, catalogues, charts.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <qcustomplot.h>

#include "power/catalogues.h"
#include "power/power_champs.h"
#include "project/pwr_fichier.h"
#include "project/windows/power_conf.h"
#include "shell/utilitaires.h"
#include "shell/windows/graphe.h"
#include "shell/windows/verifications.h"

namespace {

QStringList dits; ///< the messages shown

bool retient(gravite, const QString& texte) {
    dits << texte;
    return true;
}

/// Fields that the record holds, the period apart.
bool reglage(const champ& c) { return c.type != type_champ::commentaire && c.type < type_champ::date_debut; }

/// How many settings differ.
int changes(const power_record& a, const power_record& b) {
    int n = 0;
    for (const champ& c : power_champs())
        for (int i = 0; reglage(c) && i < c.nombre; ++i) n += valeur(a, c, i) != valeur(b, c, i);
    return n;
}

class power_conf_ouverte : public testing::Test {
protected:
    power_conf_ouverte() {
        session_init(s);
        dits.clear();
        remplace_repondeur(retient);
    }
    ~power_conf_ouverte() override { remplace_repondeur(nullptr); }

    power_conf& fen() {
        if (!w) {
            w = std::make_unique<power_conf>(s);
            w->show();
            QApplication::setActiveWindow(w.get());
            EXPECT_TRUE(QTest::qWaitForWindowExposed(w.get()));
        }
        return *w;
    }
    template <class T>
    T* trouve(const QString& nom) {
        T* t = fen().findChild<T*>(nom);
        if (!t) ADD_FAILURE() << "pas de contrôle " << nom.toStdString();
        return t;
    }
    /// Brings the control's page forward, as a click on its tab does.
    void montre(QWidget* c) {
        auto* onglets = trouve<QTabWidget>("Onglet_power");
        for (int i = 0; i < onglets->count(); ++i)
            if (onglets->widget(i)->isAncestorOf(c)) onglets->setCurrentIndex(i);
    }
    /// Clicks into the box, types over what stands there, and leaves it by `touche`.
    void saisit(const QString& nom, const QString& texte, Qt::Key touche = Qt::Key_Tab) {
        auto* e = trouve<QLineEdit>(nom);
        montre(e);
        ASSERT_TRUE(e->isEnabled() && e->isVisible()) << nom.toStdString();
        QTest::mouseClick(e, Qt::LeftButton);
        e->selectAll();
        QTest::keyClicks(e, texte);
        QTest::keyClick(e, touche);
    }
    QString lu(const QString& nom) { return trouve<QLineEdit>(nom)->text(); }
    void coche(const QString& nom) {
        auto* b = trouve<QAbstractButton>(nom);
        montre(b);
        QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(8, b->height() / 2));
    }
    /// Takes entry n of a combo with the keyboard, also when it is the one in force.
    void prend(const QString& nom, int n) {
        auto* c = trouve<QComboBox>(nom);
        montre(c);
        c->showPopup();
        auto* vue = c->view();
        QTest::mouseClick(vue->viewport(), Qt::LeftButton, {},
                          vue->visualRect(c->model()->index(n, 0)).center());
    }
    void refuse(const QString& nom, const QString& texte, const QString& message) {
        dits.clear();
        const QString avant = lu(nom);
        const power_record copie = s.power;
        s.config_modifiee = 0;
        saisit(nom, texte);
        EXPECT_EQ(dits, QStringList{message}) << nom.toStdString() << " " << texte.toStdString();
        EXPECT_EQ(lu(nom), avant);
        EXPECT_EQ(QApplication::focusWidget(), trouve<QLineEdit>(nom));
        EXPECT_EQ(changes(copie, s.power), 0) << nom.toStdString();
        EXPECT_EQ(s.config_modifiee, 0);
        dits.clear();
    }
    QStringList series(const QString& nom) {
        QStringList r;
        auto* d = trouve<graphe>(nom)->dessin();
        for (int i = 0; i < d->graphCount(); ++i) r << d->graph(i)->name();
        return r;
    }
    QString titre(const QString& nom) {
        return qobject_cast<QCPTextElement*>(trouve<graphe>(nom)->dessin()->plotLayout()->element(0, 0))
            ->text();
    }

    session s;
    std::unique_ptr<power_conf> w;
};

const QString bornes = "Valeur hors limite !! Saisissez une valeur : \n";

} // namespace

TEST_F(power_conf_ouverte, panels_page) {
    EXPECT_EQ(fen().windowTitle(), "Définition système énergie");
    EXPECT_EQ(fen().tag(), "conf");
    auto* liste = trouve<QListWidget>("pan_list_conf");
    EXPECT_FALSE(liste->isEnabled()) << "with external panels the body's shape is not to choose";

    saisit("pan_txt_ext_ang", "-45,5");
    EXPECT_EQ(s.power.pan_angle_init, -45.5f);
    EXPECT_EQ(lu("pan_txt_ext_ang"), "-45.5");
    auto* curseur = trouve<QSlider>("pan_sld_ang");
    EXPECT_EQ(curseur->value(), -46);
    EXPECT_EQ(s.power.pan_angle_init, -45.5f) << "the slider follows without rounding the setting";
    curseur->setFocus();
    QTest::keyClick(curseur, Qt::Key_Right);
    EXPECT_EQ(s.power.pan_angle_init, -45);
    EXPECT_EQ(lu("pan_txt_ext_ang"), "-45");
    saisit("pan_txt_ext_omega", "2.5", Qt::Key_Return);
    saisit("pan_txt_ext_lag", "30");
    saisit("pan_txt_ext_gap", "1.25");
    coche("pan_chk_fix");
    EXPECT_EQ(s.power.pan_speed, 2.5f);
    EXPECT_EQ(s.power.pan_delay, 30);
    EXPECT_EQ(s.power.pan_tolerance, 1.25f);
    EXPECT_EQ(s.power.pan_fixed, vrai);

    coche("pan_opt_pan_1");
    EXPECT_EQ(s.power.opt_panel_ext, faux);
    EXPECT_FALSE(trouve<QLineEdit>("pan_txt_ext_ang")->isEnabled());
    ASSERT_TRUE(liste->isEnabled());
    auto choisit = [&](int n) {
        QTest::mouseClick(liste->viewport(), Qt::LeftButton, {},
                          liste->visualItemRect(liste->item(n)).center());
    };
    choisit(1);
    EXPECT_EQ(s.power.nb_faces, 6);
    EXPECT_DOUBLE_EQ(s.power.face_azim[5], 300 * rad_par_degre);
    EXPECT_TRUE(trouve<QWidget>("pan_img_body_1")->isVisible());
    EXPECT_FALSE(trouve<QWidget>("pan_img_body_0")->isVisible());
    choisit(2);
    EXPECT_EQ(s.power.opt_faces, 2);
    EXPECT_EQ(trouve<QLabel>("pan_lab_s")->text(), "Diamètre (m)");
    EXPECT_TRUE(trouve<QWidget>("pan_img_body_2")->isVisible());
    choisit(0);
    EXPECT_EQ(s.power.nb_faces, 4);
    EXPECT_DOUBLE_EQ(s.power.face_azim[1], 90 * rad_par_degre);
    EXPECT_EQ(trouve<QLabel>("pan_lab_s")->text(), "Largeur (m)");
    saisit("pan_txt_h", "1.1");
    saisit("pan_txt_s", "0,7");
    EXPECT_EQ(s.power.body_height, 1.1f);
    EXPECT_EQ(s.power.body_width, .7f);
    EXPECT_EQ(s.config_modifiee, 1);
    EXPECT_TRUE(dits.isEmpty());
}

TEST_F(power_conf_ouverte, cells_page) {
    fen().montre_page(1);
    EXPECT_EQ(series("cel_charac_graph").first(), "Tréf");
    EXPECT_GE(series("cel_charac_graph").size(), 3);
    auto* rendement = trouve<QLabel>("lbl_eff");
    EXPECT_EQ(rendement->text(), "19.6"); // 4300 / 1368 / 16
    saisit("cel_txt_surf", "20");
    EXPECT_EQ(rendement->text(), "15.7"); // 4300 / 1368 / 20

    // At the ends of the slopes' range, where the nearest single lies beyond the limit.
    saisit("cel_txt_disc", "0.05");
    EXPECT_EQ(s.power.cel_disc, .05f);
    saisit("cel_txt_isc", ".4");
    EXPECT_EQ(lu("cel_txt_isc"), "0.52");
    EXPECT_EQ(s.power.cel_imp, .5f);
    saisit("cel_txt_vmp", "2");
    EXPECT_EQ(lu("cel_txt_vmp"), "0.98");

    EXPECT_FALSE(trouve<QLineEdit>("cel_txt_radisc")->isEnabled());
    coche("cel_opt_beol_1");
    EXPECT_EQ(s.power.cel_opt_beol, 1);
    ASSERT_TRUE(trouve<QLineEdit>("cel_txt_radisc")->isEnabled());
    saisit("cel_txt_radisc", "0.9");
    EXPECT_NEAR(lu("cel_txt_radimp").toDouble(), .9 * .98 * .52 / .5, 1e-6);
    saisit("cel_txt_radvmp", "0.9");
    EXPECT_EQ(rendement->text(),
              QString::number(.9 * .98 * .52 * .98 * .9 * 10000 / 1368 / 20 * 100, 'f', 1));

    // The curve follows the option and the numbers.
    auto* d = trouve<graphe>("cel_charac_graph")->dessin();
    EXPECT_NEAR(d->graph(0)->data()->constBegin()->value, .9 * .52, 1e-6); // Isc at end of life
    coche("cel_opt_puiss");
    EXPECT_EQ(d->graph(0)->data()->constBegin()->value, 0);
    EXPECT_EQ(d->yAxis->label(), "Puissance (W)");
    coche("cel_opt_beol_0");
    EXPECT_FALSE(trouve<QLineEdit>("cel_txt_radisc")->isEnabled());

    // Choosing the type in force takes the user's numbers back, but not the counts and the ratios.
    saisit("cel_txt_ns", "12.5");
    prend("cel_cmb_type", 0);
    EXPECT_EQ(lu("cel_txt_isc"), "0.53");
    EXPECT_EQ(lu("cel_txt_surf"), "16");
    EXPECT_EQ(s.power.cel_ns, 12.5f);
    EXPECT_EQ(s.power.cel_radisc, .9f);
    prend("cel_cmb_type", 1);
    EXPECT_EQ(s.power.cel_type, 1);
    EXPECT_EQ(lu("cel_txt_voc"), "0.54");
    EXPECT_EQ(rendement->text(), "15.6"); // 4275 / 1368 / 20
    EXPECT_TRUE(dits.isEmpty());
}

TEST_F(power_conf_ouverte, refusals_keep_the_value_and_the_focus) {
    fen();
    refuse("cel_txt_isc", "abc", "Type de donnée non valide");
    refuse("cel_txt_isc", "10.01", bornes + "0 <= Valeur <= 10");
    refuse("cel_txt_dvoc", "-0.051", bornes + "-0.05 <= Valeur <= 0.05");
    refuse("cel_txt_surf", "0", bornes + "0 < Valeur <= 100");
    refuse("cel_txt_tetad", "76", "Valeur excessive !! Saisissez une valeur <= 75");
    refuse("cel_txt_tetad", "91", bornes + "0 <= Valeur <= 90");
    refuse("cel_txt_tetam", "49.5", "Valeur insuffisante! Saisissez une valeur >= 50");
    refuse("pan_txt_h", "-1", "Valeur insuffisante! Saisissez une valeur >= 0");
    refuse("pan_txt_ext_lag", "2.5", "Type de donnée non valide");
    refuse("pan_txt_ext_ang", "181", bornes + "-180 <= Valeur <= 180");
    refuse("thex_txt_alpha_0", "0.78", "Valeur excessive !! Saisissez une valeur <= 0.77");
    refuse("thex_txt_alphalim_0", "0.7", "Valeur insuffisante! Saisissez une valeur >= 0.75");
    refuse("bat_txt_ns", "256", "Type de donnée non valide");
    refuse("bat_txt_np", "1e400", "Type de donnée non valide");
    refuse("gst_txt_kcharge", "0.9", "Valeur insuffisante! Saisissez une valeur >= 1");
    refuse("gst_txt_diss_1", "100.5", bornes + "0 <= Valeur <= 100");
    refuse("gst_txt_chvmax", "nan", "Type de donnée non valide");
    prend("bat_cmb_type", 3);
    refuse("bat_txt_tc0", "15", "Valeur insuffisante! Saisissez une valeur > 15");
    refuse("bat_txt_tc50", "100", bornes + "0 <= Valeur < 100");
    refuse("bat_txt_cmax", "0.99", bornes + "1 <= Valeur <= 2");
    refuse("bat_txt_cmin", "100", bornes + "0 <= Valeur < 100");
    refuse("bat_txt_tmin", "50", "Valeur excessive !! Saisissez une valeur < 50");
    // Limits that are themselves singles: the number shown for the limit is accepted.
    saisit("thex_txt_alphalim_0", "0.8");
    saisit("thex_txt_alpha_0", "0.8");
    EXPECT_EQ(s.power.ext_alpha0[0], .8f);
    // Escape drops what is being typed and closes, without a word.
    auto* e = trouve<QLineEdit>("thex_txt_alpha_0");
    e->setFocus();
    QTest::keyClicks(e, "zz");
    QTest::keyClick(e, Qt::Key_Escape);
    EXPECT_FALSE(fen().isVisible());
    EXPECT_EQ(s.power.ext_alpha0[0], .8f);
    EXPECT_TRUE(dits.isEmpty());
}

TEST_F(power_conf_ouverte, thermal_page) {
    fen().montre_page(2);
    EXPECT_TRUE(trouve<QGroupBox>("thex_frm")->isVisible());
    EXPECT_FALSE(trouve<QGroupBox>("thbd_frm")->isVisible());
    auto* faces = trouve<QListWidget>("thex_list_cubeface");
    QTest::mouseClick(faces->viewport(), Qt::LeftButton, {}, faces->visualItemRect(faces->item(3)).center());
    saisit("thex_txt_alpha_2", "0.4");
    saisit("thex_txt_t99_2", "15000");
    saisit("thex_txt_masse_2", "11");
    saisit("thex_txt_cond_2", "0.02");
    saisit("thex_txt_masse_3", "41");
    saisit("thex_txt_eps_1", "0.8");
    EXPECT_EQ(s.power.ext_alpha0[5], .4f); // "Face -Y"
    EXPECT_EQ(s.power.ext_alpha0[2], .3f);
    EXPECT_EQ(s.power.ext_t99[5], 15000);
    EXPECT_EQ(s.power.ext_mass[5], 11);
    EXPECT_EQ(s.power.ext_cond[3], .02f);
    EXPECT_EQ(s.power.ext_mass[8], 41);
    EXPECT_EQ(s.power.ext_eps[1], .8f);
    faces->setFocus();
    QTest::keyClick(faces, Qt::Key_Home);
    EXPECT_EQ(lu("thex_txt_alpha_2"), "0.3");
    EXPECT_EQ(lu("thex_txt_cond_2"), "0.01");

    auto* date = trouve<QDateEdit>("th_txt_date");
    EXPECT_EQ(date->text(), "01/01/1999");
    date->setFocus();
    QTest::keyClicks(date, "15062004");
    QTest::keyClick(date, Qt::Key_Return);
    EXPECT_EQ(s.power.date_cell, date_vers_jour({.an = 2004, .mois = 6, .jour = 15}));

    coche("pan_opt_pan_1");
    fen().montre_page(2);
    EXPECT_FALSE(trouve<QGroupBox>("thex_frm")->isVisible());
    EXPECT_TRUE(trouve<QGroupBox>("thbd_frm")->isVisible());
    auto* surfaces = trouve<QListWidget>("thbd_list_cond");
    QTest::mouseClick(surfaces->viewport(), Qt::LeftButton, {},
                      surfaces->visualItemRect(surfaces->item(2)).center());
    EXPECT_EQ(lu("thbd_txt_alphalim"), "0.4");
    saisit("thbd_txt_rad", "0.006");
    saisit("thbd_txt_cp_int", "810");
    saisit("thbd_txt_condcyl", "0.002");
    EXPECT_EQ(s.power.fac_rad[2], .006f);
    EXPECT_EQ(s.power.int_cp, 810);
    EXPECT_EQ(s.power.cyl_cond, .002f);
    EXPECT_TRUE(dits.isEmpty());
}

TEST_F(power_conf_ouverte, batteries_page) {
    fen().montre_page(3);
    EXPECT_FALSE(trouve<QLineEdit>("bat_txt_0_3")->isEnabled());
    EXPECT_EQ(titre("bat_dch_graph"), "Caractéristiques de décharge à 25°C");
    EXPECT_EQ(series("bat_ch_graph").mid(0, 2), QStringList({"0.2C", "0.5C"}));
    coche("bat_dch_opt_temp");
    coche("bat_ch_opt_temp");
    EXPECT_EQ(titre("bat_dch_graph"), "Caractéristiques de décharge à Cnom");
    EXPECT_EQ(titre("bat_ch_graph"), "Caractéristiques de charge à Cnom");
    EXPECT_EQ(series("bat_ch_graph"), QStringList({"-50°C", "-25°C", "0°C", "25°C", "50°C"}));
    coche("bat_ch_opt_courant");
    EXPECT_EQ(titre("bat_ch_graph"), "Caractéristiques de charge à 25°C");

    prend("bat_cmb_type", 2);
    EXPECT_EQ(lu("bat_txt_d2_3"), "3.4");
    EXPECT_EQ(lu("bat_txt_cmax"), "1.00");
    EXPECT_EQ(lu("gst_txt_chvmax"), "4");
    EXPECT_EQ(lu("gst_txt_kcharge"), "1");
    EXPECT_FALSE(trouve<QLineEdit>("bat_txt_d2_3")->isEnabled());
    prend("bat_cmb_type", 3);
    EXPECT_EQ(s.power.bat_type, 3);
    EXPECT_EQ(lu("bat_txt_d2_3"), "3.4");
    saisit("bat_txt_och_3", "4.3");
    saisit("bat_txt_d100_0", "99");
    saisit("bat_txt_1_1", "0.05");
    EXPECT_EQ(s.power.ch_pt[3][3], 4.3f);
    EXPECT_EQ(s.power.de_pt[3][0], 99);
    EXPECT_EQ(s.power.ch_pt[1][1], .05f);

    // A value shown with two decimals keeps its digits until it is typed over.
    s.power.bat_c = 10.125f;
    fen().form_load();
    EXPECT_EQ(lu("bat_txt_c"), "10.12");
    auto* capacite = trouve<QLineEdit>("bat_txt_c");
    capacite->setFocus();
    QTest::keyClick(capacite, Qt::Key_Tab);
    EXPECT_EQ(s.power.bat_c, 10.125f);
    EXPECT_TRUE(dits.isEmpty());
}

TEST_F(power_conf_ouverte, coinciding_charge_points_are_told_once) {
    choisit_batterie(s.power, 3);
    fen().montre_page(3);
    for (int c : {1, 2}) {
        saisit(QString("bat_txt_1_%1").arg(c), "0");
        saisit(QString("bat_txt_2_%1").arg(c), "0");
    }
    dits.clear();
    saisit("bat_txt_2_0", "15"); // point 1 stands at 15 % too
    EXPECT_EQ(dits, QStringList{QString::fromUtf8(message_charge_incompatible)});
    EXPECT_EQ(s.power.ch_pt[2][0], 15) << "the entry stays: the user mends it";
    EXPECT_FALSE(s.power.courbe_charge_incompatible) << "the mark is that of the runs";
    EXPECT_EQ(fen().findChild<QTabWidget*>()->currentIndex(), 3);
    coche("bat_ch_opt_temp");
    saisit("bat_txt_ns", "11");
    EXPECT_EQ(dits.size(), 1);
    auto* bandeau = trouve<QLabel>("lab_bandeau");
    EXPECT_TRUE(bandeau->isVisible());

    saisit("bat_txt_2_0", "65");
    EXPECT_EQ(dits.size(), 1);
    EXPECT_FALSE(bandeau->isVisible());
    // Discharge points that coincide leave an empty chart, no message.
    saisit("bat_txt_d1_1", "0"), saisit("bat_txt_d1_2", "0"), saisit("bat_txt_d2_1", "0"),
        saisit("bat_txt_d2_2", "0");
    saisit("bat_txt_d2_0", "15");
    EXPECT_EQ(dits.size(), 1);
}

TEST_F(power_conf_ouverte, management_page) {
    auto* v = trouve<QLineEdit>("gst_txt_Vregul");
    EXPECT_FALSE(v->isEnabled());
    coche("gst_opt_regul_0");
    EXPECT_EQ(s.power.gst_regulated, 1);
    saisit("gst_txt_Vregul", "28");
    EXPECT_EQ(s.power.gst_vregul, 28);
    coche("gst_opt_regul_1");
    EXPECT_EQ(s.power.gst_regulated, 0);
    EXPECT_FALSE(v->isEnabled());
    saisit("gst_txt_pdem_0", "61");
    saisit("gst_txt_pdem_1", "42,5");
    saisit("gst_txt_diss_1", "12");
    EXPECT_EQ(s.power.p_demand, (std::array<float, 2>{61, 42.5f}));
    EXPECT_EQ(s.power.p_dissip, (std::array<float, 2>{15, 12}));
    coche("cmd_quit");
    EXPECT_FALSE(fen().isVisible());
}

TEST_F(power_conf_ouverte, every_box_edits_its_own_field_and_a_project_keeps_it) {
    coche("gst_opt_regul_0");
    coche("cel_opt_beol_1");
    prend("bat_cmb_type", 3);
    fen();
    int faits = 0;
    for (auto corps : {0, 1}) { // the two thermal frames
        coche(QString("pan_opt_pan_%1").arg(corps));
        for (QLineEdit* e : fen().findChildren<QLineEdit*>()) {
            if (!e->objectName().contains("_txt_") || e->objectName().startsWith("th_")) continue;
            montre(e);
            if (!e->isVisible() || !e->isEnabled()) continue;
            dits.clear();
            const power_record avant = s.power;
            const QString texte = e->text();
            const double x = texte.toDouble();
            // Far enough from the old value to be seen, near enough to stay within every limit.
            const QString neuf =
                texte.contains('.') ? QString::number(x * .99, 'f', 6) : QString::number(x - 1);
            const QString essai = x == 0 ? "1" : x == 1 ? "1.01" : neuf;
            saisit(e->objectName(), essai);
            if (!dits.isEmpty()) { // an integer, or a limit next to it
                dits.clear();
                saisit(e->objectName(), QString::number(x + 1));
            }
            EXPECT_TRUE(dits.isEmpty())
                << e->objectName().toStdString() << " " << dits.join(' ').toStdString();
            const int n = changes(avant, s.power);
            EXPECT_GE(n, 1) << e->objectName().toStdString();
            EXPECT_LE(n, 2) << "one field, and one that is repaired: " << e->objectName().toStdString();
            ++faits;
        }
    }
    EXPECT_GT(faits, 120);

    QTemporaryDir dossier;
    const std::string chemin = dossier.filePath("essai.pwr").toStdString();
    ASSERT_TRUE(sauve_energie(chemin, s.power, s.periode));
    session relue;
    session_init(relue);
    erreur_fichier erreur;
    ASSERT_TRUE(charge_energie(chemin, relue.power, relue.periode, erreur)) << erreur.texte();
    for (const champ& c : power_champs()) {
        for (int i = 0; reglage(c) && i < c.nombre; ++i) {
            const double x = valeur(s.power, c, i);
            // The file holds seven digits.
            EXPECT_NEAR(valeur(relue.power, c, i), x, 5e-7 * std::abs(x)) << c.nom << " " << i;
        }
    }
    // The same project opened while the window shows another: all controls follow.
    s.power = power_record{};
    fen().form_load();
    EXPECT_EQ(lu("cel_txt_isc"), "0.53");
    s.power = relue.power;
    fen().form_load();
    EXPECT_NE(lu("cel_txt_isc"), "0.53");
    EXPECT_TRUE(trouve<QRadioButton>("pan_opt_pan_1")->isChecked());
}
