/// The orbit window, page by page, as its user goes through it.

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>

#include <cmath>

#include "orbit/matrices.h"
#include "orbit/orb_trajecto.h"
#include "orbit/windows/dessin_orbite.h"
#include "orbit/windows/orbito_conf.h"
#include "orbit/windows/page_orbite.h"
#include "power/environnement.h"
#include "shell/utilitaires.h"
#include "tests/gestes.h"

using namespace gestes;

namespace {

class orbito : public essai_fenetre<orbito_conf> {
protected:
    void SetUp() override { ouvre(); }
};

} // namespace

TEST_F(orbito, elements_are_brought_into_range_without_a_word) {
    tape("norad_ascension", "400");
    EXPECT_EQ(lu("norad_ascension"), "360.0000000000");
    EXPECT_TRUE(bandeau().contains("« 400 » a été ramené à 360")) << bandeau().toStdString();
    tape("norad_excentricite", "0006703"); // as in two-line elements
    EXPECT_EQ(s.orbit.orbite.orb_excentricite, 1);
    EXPECT_TRUE(bandeau().contains("0.0006703"));
    tape("norad_inclinaison", "-200", Qt::Key_Return);
    EXPECT_EQ(s.orbit.orbite.orb_inclinaison, -180);
    tape("norad_an", "2004.9");
    EXPECT_EQ(s.orbit.orbite.orb_an, 2004);
    EXPECT_NE(f->bandeau(), "");
    int periodes = 0;
    QObject::connect(f.get(), &fenetre::periode_changee, [&] { ++periodes; });
    clique("cmd_bandeau"); // the period does not follow the epoch unasked
    EXPECT_EQ(periodes, 1);
    EXPECT_EQ(s.periode.j_debut, date_epoque(2004, s.orbit.orbite.orb_jour - 1));
    EXPECT_EQ(s.periode.j_fin, s.periode.j_debut + 1 / s.orbit.orbite.orb_moy_mvt);
    EXPECT_EQ(f->bandeau(), "");
    tape("norad_an", "24");
    EXPECT_TRUE(bandeau().contains("1901")) << "a year of two digits stays, and is told";
    tape("norad_an", "2004");
    tape("norad_excentricite", "0,25"); // a comma is a point
    EXPECT_EQ(s.orbit.orbite.orb_excentricite, .25);
    EXPECT_EQ(controle<QLabel>("lab_apogee")->text(), "2589.36300");
    EXPECT_EQ(controle<QLabel>("lab_perigee")->text(), "-997.63700");
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(s.config_modifiee, 1);

    tape("norad_argument", "abc");
    EXPECT_EQ(messages, QStringList{"Type de donnée non valide"});
    EXPECT_EQ(lu("norad_argument"), "0.0000000000");
}

TEST_F(orbito, axis_and_mean_motion_follow_one_another_both_ways) {
    controle<QLineEdit>("norad_moy_mvt")->setFocus();
    controle<QLineEdit>("norad_demi")->setFocus();
    EXPECT_EQ(s.orbit.orbite.orb_demi, 7174) << "a box passed through changes nothing";
    tape("norad_moy_mvt", "15");
    // Kepler's third law, 398601.3 km3/s2: 15 turns a day on 6945.03 km.
    EXPECT_NEAR(s.orbit.orbite.orb_demi, 6945.03, .01);
    const QString axe = lu("norad_demi");
    tape("norad_demi", "7000");
    EXPECT_NEAR(s.orbit.orbite.orb_moy_mvt, 14.8235, 1e-3);
    EXPECT_EQ(controle<QLabel>("lab_periode")->text(), "01:37:09");
    tape("norad_demi", axe);
    EXPECT_NEAR(s.orbit.orbite.orb_moy_mvt, 15, 1e-9);
    EXPECT_EQ(controle<QLabel>("lab_periode")->text(), "01:36:00");
    tape("norad_moy_mvt", "0.8");
    EXPECT_EQ(controle<QLabel>("lab_periode")->text(), "1 j 06:00:00");
    tape("norad_moy_mvt", "1.000001"); // 86399.9 s
    EXPECT_EQ(controle<QLabel>("lab_periode")->text(), "1 j 00:00:00");
}

TEST_F(orbito, an_orbit_goes_to_a_file_and_comes_back) {
    const QString chemin = dossier.filePath("haute.essai.orb");
    auto* page = f->findChild<page_orbite*>();
    tape("norad_demi", "8000.5");
    page->enregistre(chemin);
    EXPECT_EQ(lu("orbite_nom"), "haute.essai");
    tape("norad_demi", "9000");
    page->ouvre(chemin);
    EXPECT_EQ(lu("norad_demi"), "8000.5000000000");
    EXPECT_TRUE(messages.isEmpty());

    page->enregistre("/nulle/part/x.orb");
    page->ouvre("/nulle/part/x.orb");
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(s.orbit.orbite.orb_demi, 8000.5);
    // A foreign file gives the elements that its bytes spell, and the window lives.
    ecrit(chemin, QByteArray(200, char(0xff)));
    page->ouvre(chemin);
    ecrit(chemin, "court");
    page->ouvre(chemin);
    EXPECT_EQ(s.orbit.orbite.orb_demi, 0);
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(orbito, pointing_is_converted_between_the_frames) {
    const pointage_record& p = s.orbit.pointage;
    tape("txt_attx", "-200");
    EXPECT_EQ(lu("txt_attx"), "-180.00");
    tape("txt_attx", "30");
    tape("txt_atty", "95");
    EXPECT_EQ(p.tangage, 90);
    tape("txt_atty", "10");
    tape("txt_attz", "-5");
    EXPECT_EQ(p.lacet, 0);
    tape("txt_attz", "40");
    EXPECT_NEAR(p.yd_init[0], 30 * M_PI / 180, 1e-12);
    EXPECT_NEAR(p.yd_init[1], 40 * M_PI / 180, 1e-12);
    EXPECT_NEAR(p.yd_init[2], 10 * M_PI / 180, 1e-12);
    EXPECT_EQ(p.psi, 40);
    EXPECT_EQ(p.phi, 30);
    EXPECT_NE(p.yi_init[0], 0);
    EXPECT_FALSE(controle<QWidget>("txt_inerx")->isEnabled());

    clique("opt_iner");
    EXPECT_EQ(p.orbital, faux);
    EXPECT_FALSE(controle<QWidget>("txt_attx")->isEnabled());
    tape("txt_inery", "20");
    EXPECT_NEAR(p.yi_init[1], 20 * M_PI / 180, 1e-12);
    EXPECT_NEAR(lu("txt_atty").toDouble(), p.yd_init[2] * 180 / M_PI, .005) << "the pitch is element 2";
}

TEST_F(orbito, spin_face_and_sun) {
    clique("Chk_spin");
    tape("txt_vspin", "250");
    EXPECT_EQ(lu("txt_vspin"), "100.000");
    EXPECT_EQ(s.orbit.pointage.vspin, 100);
    s.config_modifiee = 0;
    controle<QLineEdit>("txt_vspin")->setFocus();
    QTest::keyClick(controle<QLineEdit>("txt_vspin"), Qt::Key_Tab);
    EXPECT_EQ(s.config_modifiee, 0) << "a box passed through changes nothing";
    auto* face = controle<QComboBox>("cmb_pointage");
    const auto choisit = [&](const char* texte) {
        face->setCurrentText(texte);
        emit face->activated(face->currentIndex());
    };
    choisit("-X");
    EXPECT_EQ(s.orbit.pointage.mode_pointage, 4);
    choisit("-Y"); // no such test: the last value stays
    EXPECT_EQ(s.orbit.pointage.mode_pointage, 4);
    choisit("-Z");
    EXPECT_EQ(s.orbit.pointage.mode_pointage, 5);

    clique("cmd_sun");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains("division par zéro") || messages[0].contains("opération non valide"));
    tape("txt_vspin", "2"); // the program goes on
    EXPECT_EQ(s.orbit.pointage.vspin, 2);
}

TEST_F(orbito, solar_flux_by_either_end_of_the_year) {
    // 3.8e26 W at 152.10 and 147.09 million km.
    EXPECT_EQ(lu("env_txt_flux_0"), "1307.09");
    EXPECT_EQ(lu("env_txt_flux_1"), "1397.67");
    tape("env_txt_flux_1", "1400");
    EXPECT_NEAR(s.power.sun_power, 1400 * 4 * M_PI * std::pow(147090267.044645e3, 2), 1e18);
    tape("env_txt_flux_0", "1500");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0], "Valeur excessive !! Saisissez une valeur <= 1400");
    tape("env_txt_flux_1", "1000");
    EXPECT_TRUE(messages.value(1).startsWith("Valeur insuffisante! Saisissez une valeur >= "));
    EXPECT_EQ(lu("env_txt_flux_1"), "1400.00");
    tape("env_txt_flux_0", "-1");
    EXPECT_EQ(messages.value(2), "Valeur insuffisante! Saisissez une valeur >= 0");
}

TEST_F(orbito, monthly_tables) {
    clique("env_cmd_isoterre");
    // (1 - 0.38) x flux / 4 at the ends of the year.
    EXPECT_NEAR(*std::max_element(s.power.earth_ir.begin(), s.power.earth_ir.end()), 216.5, .3);
    EXPECT_NEAR(*std::min_element(s.power.earth_ir.begin(), s.power.earth_ir.end()), 202.7, .3);
    EXPECT_EQ(lu("env_txt_ir"), QString::number(s.power.earth_ir[0], 'f', 2));

    controle<QListWidget>("env_list_months_alb")->setCurrentRow(3);
    tape("env_txt_albedo", "1.5");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(lu("env_txt_albedo"), "0.38");
    tape("env_txt_albedo", "0.6");
    tape("env_txt_var", "0.41");
    clique("env_cmd_sin");
    EXPECT_EQ(messages.value(1), "Valeur excessive !! Saisissez une valeur <= 0.4");
    tape("env_txt_var", "0.4");
    clique("env_cmd_sin");
    EXPECT_EQ(messages.size(), 2);
    tape("env_txt_var", "2");
    clique("env_cmd_sin");
    EXPECT_EQ(messages.size(), 3);
    EXPECT_EQ(lu("env_txt_var"), "0.4") << "the last amplitude that was accepted";
    EXPECT_EQ(s.power.albedo[6], 1.f); // a quarter of a year later
    EXPECT_EQ(s.power.albedo[0], .2f);
    EXPECT_EQ(s.power.albedo[3], .6f);
    tape("env_txt_var", "-0.5"); // a negative amplitude has its limit too
    clique("env_cmd_sin");
    EXPECT_EQ(messages.size(), 4);
    tape("env_txt_ir", "0");
    EXPECT_EQ(s.power.earth_ir[0], 0);
    tape("env_txt_ir", "-1");
    EXPECT_EQ(messages.size(), 5);
}

TEST(dessin, the_satellite_stands_where_kepler_puts_it) {
    for (double e : {0., .01, .73, .999})
        for (int m = -179; m < 180; m += 7) {
            const double E = anomalie_excentrique((m + 360) * M_PI / 180, e);
            EXPECT_NEAR(E - e * std::sin(E), m * M_PI / 180, 1e-9) << e << " " << m;
        }
    EXPECT_NEAR(anomalie_excentrique(300 * M_PI / 180, .73) * 180 / M_PI, 258.6 - 360, .5);
}

TEST_F(orbito, an_opened_project_is_shown) {
    s.power.albedo[0] = .11f;
    s.orbit.orbite.orb_demi = 7777;
    f->form_load();
    EXPECT_EQ(lu("env_txt_albedo"), "0.11");
    EXPECT_EQ(lu("norad_demi"), "7777.0000000000");
    // The month in view stays.
    s.power.albedo[5] = .22f;
    controle<QListWidget>("env_list_months_alb")->setCurrentRow(5);
    f->form_load();
    EXPECT_EQ(lu("env_txt_albedo"), "0.22");
}

TEST_F(orbito, two_line_elements_are_pasted_and_told_wrong_where_they_are) {
    const QString bons = contenu(DONNEES_TEST "/iss.tle");
    QApplication::clipboard()->clear();
    const auto dans_la_boite = [&](const QString& texte, bool importe, QString& dit) {
        QTimer::singleShot(0, [&, texte, importe] {
            auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(d, nullptr);
            auto* zone = gestes::controle<QPlainTextEdit>(d, "txt_tle");
            QTest::keyClick(zone, Qt::Key_V, Qt::ControlModifier); // nothing to paste
            zone->setPlainText(texte);
            dit = gestes::label(d, "lab_tle");
            auto* b = gestes::controle<QPushButton>(d, "cmd_tle_importer");
            EXPECT_EQ(b->isEnabled(), importe);
            importe ? b->click() : d->reject();
        });
        clique("orb_tle");
    };
    QString dit;
    const record_orbite avant = s.orbit.orbite;
    dans_la_boite(QString(bons).replace("247.4627", "247.4628"), false, dit);
    EXPECT_EQ(dit, "ligne 3 : somme de contrôle 7 au lieu de 8");
    EXPECT_EQ(s.orbit.orbite.orb_jour, avant.orb_jour);
    dans_la_boite(bons, true, dit);
    EXPECT_TRUE(dit.startsWith("ISS (ZARYA), époque 20/09/2008 12:25:40"));
    EXPECT_EQ(s.orbit.orbite.orb_inclinaison, 51.6416);
    EXPECT_EQ(lu("norad_jour"), "264.5178");
    EXPECT_EQ(lu("orbite_nom"), "ISS (ZARYA)");
    EXPECT_EQ(s.config_modifiee, 1);
    EXPECT_TRUE(bandeau().contains("époque")) << "the period is offered to follow";
}

TEST_F(orbito, a_face_is_turned_to_the_sun_where_the_other_command_fails) {
    s.orbit.orbite.orb_inclinaison = 97.8;
    s.periode.j_debut += 3;
    auto* faces = controle<QPushButton>("cmd_oriente_soleil")->menu();
    ASSERT_EQ(faces->actions().size(), 6);
    for (int face = 0; face < 6; ++face) {
        faces->actions()[face]->trigger();
        EXPECT_TRUE(bandeau().contains("regarde le Soleil"));
        EXPECT_TRUE(controle<QRadioButton>("opt_iner")->isChecked());
        orbit_state o = s.orbit;
        orb_position(s.periode.j_debut, o);
        vec3 n{};
        n[face % 3] = face < 3 ? 1 : -1;
        EXPECT_GT(vec_scalaire(corps_vers_inertiel(o, n), o.vec_soleil), 0.9999999) << face;
    }
    s.orbit.orbite.orb_demi = 0;
    const vec3 angles = s.orbit.pointage.inertiel;
    faces->actions()[0]->trigger();
    EXPECT_EQ(s.orbit.pointage.inertiel, angles);
    EXPECT_TRUE(bandeau().contains("pas de position"));
}
