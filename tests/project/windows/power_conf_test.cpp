/// The power settings window as a person uses it: every page, refusals, repairs, catalogues, charts.

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QSlider>

#include <filesystem>

#include <qcustomplot.h>

#include "power/catalogues.h"
#include "power/power_champs.h"
#include "project/composants.h"
#include "project/pwr_fichier.h"
#include "project/windows/power_conf.h"
#include "shell/utilitaires.h"
#include "tests/gestes.h"
#include "widgets/graphe.h"

using gestes::messages;

namespace {

/// Fields that the record holds, the period apart.
bool reglage(const champ& c) { return c.type != type_champ::commentaire && c.type < type_champ::date_debut; }

/// How many settings differ.
int changes(const power_record& a, const power_record& b) {
    int n = 0;
    for (const champ& c : power_champs())
        for (int i = 0; reglage(c) && i < c.nombre; ++i) n += valeur(a, c, i) != valeur(b, c, i);
    return n;
}

class power_conf_ouverte : public gestes::essai_fenetre<power_conf> {
protected:
    void SetUp() override { ouvre(); }

    void choisit(const QString& liste, int n) {
        auto* l = controle<QListWidget>(liste);
        gestes::clique_ligne(l, l->item(n));
    }
    /// Takes entry n
    void prend(const QString& nom, int n) {
        auto* c = controle<QComboBox>(nom);
        gestes::montre_page_de(c);
        c->showPopup();
        auto* vue = c->view();
        QTest::mouseClick(vue->viewport(), Qt::LeftButton, {},
                          vue->visualRect(c->model()->index(n, 0)).center());
    }
    void refuse(const QString& nom, const QString& texte, const QString& message) {
        messages.clear();
        const QString avant = lu(nom);
        const power_record copie = s.power;
        s.config_modifiee = 0;
        tape(nom, texte);
        EXPECT_EQ(messages, QStringList{message}) << nom.toStdString() << " " << texte.toStdString();
        EXPECT_EQ(lu(nom), avant);
        EXPECT_EQ(QApplication::focusWidget(), controle<QLineEdit>(nom));
        EXPECT_EQ(changes(copie, s.power), 0) << nom.toStdString();
        EXPECT_EQ(s.config_modifiee, 0);
        messages.clear();
    }
    QStringList series(const QString& nom) {
        QStringList r;
        auto* d = controle<graphe>(nom)->dessin();
        for (int i = 0; i < d->graphCount(); ++i) r << d->graph(i)->name();
        return r;
    }
};

const QString bornes = "Valeur hors limite !! Saisissez une valeur : \n";

} // namespace

TEST_F(power_conf_ouverte, panels_page) {
    auto* liste = controle<QListWidget>("pan_list_conf");
    EXPECT_FALSE(liste->isEnabled()) << "with external panels the body's shape is not to choose";

    tape("pan_txt_ext_ang", "-45,5");
    EXPECT_EQ(s.power.pan_angle_init, -45.5f);
    EXPECT_EQ(lu("pan_txt_ext_ang"), "-45.5");
    auto* curseur = controle<QSlider>("pan_sld_ang");
    EXPECT_EQ(curseur->value(), -46);
    EXPECT_EQ(s.power.pan_angle_init, -45.5f) << "the slider follows without rounding the setting";
    curseur->setFocus();
    QTest::keyClick(curseur, Qt::Key_Right);
    EXPECT_EQ(s.power.pan_angle_init, -45);
    EXPECT_EQ(lu("pan_txt_ext_ang"), "-45");
    clique("pan_chk_fix");
    EXPECT_EQ(s.power.pan_fixed, vrai);

    clique("pan_opt_pan_1");
    EXPECT_EQ(s.power.opt_panel_ext, faux);
    EXPECT_FALSE(controle<QLineEdit>("pan_txt_ext_ang")->isEnabled());
    ASSERT_TRUE(liste->isEnabled());
    choisit("pan_list_conf", 1);
    EXPECT_EQ(s.power.nb_faces, 6);
    EXPECT_DOUBLE_EQ(s.power.face_azim[5], 300 * rad_par_degre);
    EXPECT_TRUE(controle<QWidget>("pan_img_body_1")->isVisible());
    EXPECT_FALSE(controle<QWidget>("pan_img_body_0")->isVisible());
    choisit("pan_list_conf", 2);
    EXPECT_EQ(s.power.opt_faces, 2);
    EXPECT_TRUE(controle<QWidget>("pan_img_body_2")->isVisible());
    choisit("pan_list_conf", 0);
    EXPECT_EQ(s.power.nb_faces, 4);
    EXPECT_DOUBLE_EQ(s.power.face_azim[1], 90 * rad_par_degre);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(power_conf_ouverte, cells_page) {
    f->montre_page(1);
    EXPECT_EQ(series("cel_charac_graph").first(), "Tréf");
    auto* rendement = controle<QLabel>("lbl_eff");
    EXPECT_EQ(rendement->text(), "19.6"); // 4300 / 1368 / 16
    tape("cel_txt_surf", "20");
    EXPECT_EQ(rendement->text(), "15.7"); // 4300 / 1368 / 20

    // At the ends of the slopes' range, where the nearest single lies beyond the limit.
    tape("cel_txt_disc", "0.05");
    EXPECT_EQ(s.power.cel_disc, .05f);
    tape("cel_txt_isc", ".4");
    EXPECT_EQ(lu("cel_txt_isc"), "0.52");
    EXPECT_EQ(s.power.cel_imp, .5f);
    tape("cel_txt_vmp", "2");
    EXPECT_EQ(lu("cel_txt_vmp"), "0.98");

    EXPECT_FALSE(controle<QLineEdit>("cel_txt_radisc")->isEnabled());
    clique("cel_opt_beol_1");
    EXPECT_EQ(s.power.cel_opt_beol, 1);
    ASSERT_TRUE(controle<QLineEdit>("cel_txt_radisc")->isEnabled());
    tape("cel_txt_radisc", "0.9");
    EXPECT_NEAR(lu("cel_txt_radimp").toDouble(), .9 * .98 * .52 / .5, 1e-6);
    tape("cel_txt_radvmp", "0.9");
    EXPECT_EQ(rendement->text(),
              QString::number(.9 * .98 * .52 * .98 * .9 * 10000 / 1368 / 20 * 100, 'f', 1));

    // The curve follows the option and the numbers.
    auto* d = controle<graphe>("cel_charac_graph")->dessin();
    EXPECT_NEAR(d->graph(0)->data()->constBegin()->value, .9 * .52, 1e-6); // Isc at end of life
    clique("cel_opt_puiss");
    EXPECT_EQ(d->graph(0)->data()->constBegin()->value, 0);
    clique("cel_opt_beol_0");
    EXPECT_FALSE(controle<QLineEdit>("cel_txt_radisc")->isEnabled());

    // Choosing the type in force takes the user's numbers back, but not the counts and the ratios.
    EXPECT_FALSE(label("cel_lab_place").startsWith("⚠"));
    tape("cel_txt_ns", "40");
    tape("cel_txt_np", "60");
    EXPECT_TRUE(label("cel_lab_place").startsWith("⚠")) << label("cel_lab_place").toStdString();
    tape("cel_txt_np", "1");
    tape("cel_txt_ns", "12.5");
    prend("cel_cmb_type", 0);
    EXPECT_EQ(lu("cel_txt_isc"), "0.53");
    EXPECT_EQ(lu("cel_txt_surf"), "16");
    EXPECT_EQ(s.power.cel_ns, 12.5f);
    EXPECT_EQ(s.power.cel_radisc, .9f);
    prend("cel_cmb_type", 1);
    EXPECT_EQ(s.power.cel_type, 1);
    EXPECT_EQ(lu("cel_txt_voc"), "0.54");
    EXPECT_EQ(rendement->text(), "15.6"); // 4275 / 1368 / 20
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(power_conf_ouverte, refusals_keep_the_value_and_the_focus) {
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
    tape("thex_txt_alphalim_0", "0.8");
    tape("thex_txt_alpha_0", "0.8");
    EXPECT_EQ(s.power.ext_alpha0[0], .8f);
    // What the hand has typed counts, even where it equals the rounded text; what is stored is judged.
    refuse("cel_txt_surf", "1e-50", bornes + "0 < Valeur <= 100");
    s.power.bat_c = 10.125f;
    f->form_load();
    tape("bat_txt_c", "10.12");
    EXPECT_EQ(s.power.bat_c, 10.12f);
    // Escape drops what is being typed, the next one closes, without a word.
    tape("thex_txt_alpha_0", "zz", Qt::Key_Escape);
    EXPECT_EQ(lu("thex_txt_alpha_0"), "0.8");
    EXPECT_TRUE(f->isVisible());
    QTest::keyClick(controle("thex_txt_alpha_0"), Qt::Key_Escape);
    EXPECT_FALSE(f->isVisible());
    EXPECT_EQ(s.power.ext_alpha0[0], .8f);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(power_conf_ouverte, thermal_page) {
    f->montre_page(2);
    EXPECT_TRUE(controle<QGroupBox>("thex_frm")->isVisible());
    EXPECT_FALSE(controle<QGroupBox>("thbd_frm")->isVisible());
    choisit("thex_list_cubeface", 3); // "Face -Y"
    tape("thex_txt_alpha_2", "0.4");
    tape("thex_txt_masse_2", "11");
    tape("thex_txt_cond_2", "0.02");
    EXPECT_EQ(s.power.ext_alpha0[5], .4f);
    EXPECT_EQ(s.power.ext_alpha0[2], .3f);
    EXPECT_EQ(s.power.ext_mass[5], 11);
    EXPECT_EQ(s.power.ext_cond[3], .02f);
    QTest::keyClick(controle("thex_list_cubeface"), Qt::Key_Home);
    EXPECT_EQ(lu("thex_txt_alpha_2"), "0.3");
    EXPECT_EQ(lu("thex_txt_cond_2"), "0.01");

    EXPECT_EQ(lu("th_txt_date"), "01/01/1999");
    tape("th_txt_date", "15062004", Qt::Key_Return);
    EXPECT_EQ(s.power.date_cell, date_vers_jour({.an = 2004, .mois = 6, .jour = 15}));

    clique("pan_opt_pan_1");
    f->montre_page(2);
    EXPECT_FALSE(controle<QGroupBox>("thex_frm")->isVisible());
    EXPECT_TRUE(controle<QGroupBox>("thbd_frm")->isVisible());
    choisit("thbd_list_cond", 2);
    EXPECT_EQ(lu("thbd_txt_alphalim"), "0.4");
    auto* courbes = controle<graphe>("th_graph_alpha")->dessin();
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(courbes->graph(i)->data()->constBegin()->value, s.power.fac_alpha0[i], 1e-6);
    tape("thbd_txt_rad", "0.006");
    EXPECT_EQ(s.power.fac_rad[2], .006f);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(power_conf_ouverte, batteries_page) {
    f->montre_page(3);
    EXPECT_FALSE(controle<QLineEdit>("bat_txt_0_3")->isEnabled());
    EXPECT_EQ(series("bat_ch_graph").mid(0, 2), QStringList({"0.2C", "0.5C"}));
    clique("bat_dch_opt_temp");
    clique("bat_ch_opt_temp");
    for (const char* nom : {"bat_dch_graph", "bat_ch_graph"})
        EXPECT_EQ(series(nom), QStringList({"-50°C", "-25°C", "0°C", "25°C", "50°C"})) << nom;

    prend("bat_cmb_type", 2);
    EXPECT_EQ(lu("bat_txt_d2_3"), "3.4");
    EXPECT_EQ(lu("gst_txt_chvmax"), "4");
    EXPECT_FALSE(controle<QLineEdit>("bat_txt_d2_3")->isEnabled());
    prend("bat_cmb_type", 3);
    EXPECT_EQ(s.power.bat_type, 3);
    EXPECT_EQ(lu("bat_txt_d2_3"), "3.4");
    tape("bat_txt_och_3", "4.3");
    EXPECT_EQ(s.power.ch_pt[3][3], 4.3f);

    // A value shown with two decimals keeps its digits until it is typed over.
    s.power.bat_c = 10.125f;
    f->form_load();
    EXPECT_EQ(lu("bat_txt_c"), "10.12");
    controle("bat_txt_c")->setFocus();
    QTest::keyClick(controle("bat_txt_c"), Qt::Key_Tab);
    EXPECT_EQ(s.power.bat_c, 10.125f);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(power_conf_ouverte, coinciding_charge_points_are_told_once) {
    choisit_batterie(s.power, 3);
    f->form_load();
    f->montre_page(3);
    for (int c : {1, 2}) {
        tape(QString("bat_txt_1_%1").arg(c), "0");
        tape(QString("bat_txt_2_%1").arg(c), "0");
    }
    messages.clear();
    tape("bat_txt_2_0", "15"); // point 1 stands at 15 % too
    EXPECT_EQ(messages, QStringList{QString::fromUtf8(message_charge_incompatible)});
    EXPECT_EQ(s.power.ch_pt[2][0], 15) << "the entry stays: the user mends it";
    EXPECT_FALSE(s.power.courbe_charge_incompatible) << "the mark is that of the runs";
    EXPECT_EQ(f->findChild<QTabWidget*>()->currentIndex(), 3);
    clique("bat_ch_opt_temp");
    tape("bat_txt_ns", "11");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_NE(bandeau(), "");

    // A window that is made with such a curve says so in its bar: no message before it is in sight.
    power_conf neuve(s);
    EXPECT_EQ(messages.size(), 1);
    EXPECT_NE(gestes::bandeau(&neuve), "");

    tape("bat_txt_2_0", "65");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(bandeau(), "");
    // Discharge points that coincide leave an empty chart, no message.
    tape("bat_txt_d1_1", "0"), tape("bat_txt_d1_2", "0"), tape("bat_txt_d2_1", "0"),
        tape("bat_txt_d2_2", "0");
    tape("bat_txt_d2_0", "15");
    EXPECT_EQ(messages.size(), 1);
}

TEST_F(power_conf_ouverte, management_page) {
    auto* v = controle<QLineEdit>("gst_txt_Vregul");
    EXPECT_FALSE(v->isEnabled());
    clique("gst_opt_regul_0");
    EXPECT_EQ(s.power.gst_regulated, 1);
    EXPECT_TRUE(controle("gst_lab_vregul")->isVisible()) << "no voltage yet: told at once";
    tape("gst_txt_Vregul", "28");
    EXPECT_EQ(s.power.gst_vregul, 28);
    EXPECT_TRUE(controle("gst_lab_vregul")->isHidden());
    clique("gst_opt_regul_1");
    EXPECT_EQ(s.power.gst_regulated, 0);
    EXPECT_FALSE(v->isEnabled());
    tape("gst_txt_pdem_0", "61");
    tape("gst_txt_pdem_1", "42,5");
    tape("gst_txt_diss_1", "12");
    EXPECT_EQ(s.power.p_demand, (std::array<float, 2>{61, 42.5f}));
    EXPECT_EQ(s.power.p_dissip, (std::array<float, 2>{15, 12}));
    clique("cmd_quit");
    EXPECT_FALSE(f->isVisible());
}

TEST_F(power_conf_ouverte, every_box_emessages_its_own_field_and_a_project_keeps_it) {
    clique("gst_opt_regul_0");
    clique("cel_opt_beol_1");
    prend("bat_cmb_type", 3);
    int faits = 0;
    for (auto corps : {0, 1}) { // the two thermal frames
        clique(QString("pan_opt_pan_%1").arg(corps));
        for (QLineEdit* e : f->findChildren<QLineEdit*>()) {
            if (!e->objectName().contains("_txt_") || e->objectName().startsWith("th_")) continue;
            gestes::montre_page_de(e);
            if (!e->isVisible() || !e->isEnabled()) continue;
            messages.clear();
            const power_record avant = s.power;
            const QString texte = e->text();
            const double x = texte.toDouble();
            // Far enough from the old value to be seen, near enough to stay within every limit.
            const QString neuf =
                texte.contains('.') ? QString::number(x * .99, 'f', 6) : QString::number(x - 1);
            const QString essai = x == 0 ? "1" : x == 1 ? "1.01" : neuf;
            tape(e->objectName(), essai);
            if (!messages.isEmpty()) { // an integer, or a limit next to it
                messages.clear();
                tape(e->objectName(), QString::number(x + 1));
            }
            EXPECT_TRUE(messages.isEmpty())
                << e->objectName().toStdString() << " " << messages.join(' ').toStdString();
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
    f->form_load();
    EXPECT_EQ(lu("cel_txt_isc"), "0.53");
    s.power = relue.power;
    f->form_load();
    EXPECT_NE(lu("cel_txt_isc"), "0.53");
    EXPECT_TRUE(controle<QRadioButton>("pan_opt_pan_1")->isChecked());
}

TEST_F(power_conf_ouverte, components_come_from_lists_and_own_ones_are_kept) {
    s.dossier_depart = dossier.path().toStdString();
    std::filesystem::copy(DOSSIER_DATA "/composants", s.dossier_depart + "/composants");
    // Every entry of the program's lists can be taken, on every surface; what is on record afterwards is it.
    const liste_composants l = charge_composants(s.dossier_depart);
    EXPECT_EQ(l.defaut, "");
    EXPECT_GE(l.composants.size(), 15U);
    std::string raison;
    for (const composant& c : l.composants) {
        EXPECT_FALSE(c.source.empty()) << c.nom;
        for (const drapeau externes : {vrai, faux}) {
            etude e;
            e.power.opt_panel_ext = externes;
            const int surfaces = c.genre == genre_composant::revetement
                                     ? static_cast<int>(surfaces_a_revetir(e.power).size())
                                     : 1;
            for (int k = 0; k < surfaces; ++k) {
                ASSERT_TRUE(pose_composant(e, c, k, raison)) << c.nom << raison;
                for (const auto& [n, y] : c.valeurs) {
                    const float* neuve = externes ? e.power.ext_alpha0.data() : e.power.fac_alpha0.data();
                    EXPECT_TRUE(n != "alpha0" || neuve[k] == float(y)) << c.nom;
                    power_record du_type;
                    choisit_batterie(du_type, int(y));
                    EXPECT_TRUE(n != "bat_type" || e.power.ch_pt == du_type.ch_pt) << c.nom;
                }
                for (const auto& [nom, x] : composant_en_place(e, c.genre, k).valeurs)
                    for (const auto& [n, y] : c.valeurs)
                        EXPECT_TRUE(n != nom || float(x) == float(y)) << c.nom << n;
            }
        }
    }

    const auto dialogue = [&](const char* bouton, auto avant) { // in the window that comes up
        QTimer::singleShot(0, [=] {
            auto* d = QApplication::activeModalWidget();
            ASSERT_TRUE(d);
            avant(d);
            QTest::mouseClick(d->findChild<QPushButton*>(bouton), Qt::LeftButton);
        });
    };
    f->montre_page(1);
    dialogue("cmd_choisir", [](QWidget* d) {
        QTest::keyClicks(d->findChild<QLineEdit*>("txt_recherche_composant"), "29,5");
        EXPECT_TRUE(d->findChild<QLabel*>("lab_source")->text().contains("2016"));
    });
    clique("cel_cmd_composant");
    EXPECT_FLOAT_EQ(s.power.cel_voc, 2.7f);
    EXPECT_EQ(lu("cel_txt_surf"), "30.18");
    EXPECT_EQ(s.libelle_etape, "Cellules : Triple jonction GaInP/GaAs/Ge, 29,5 %");
    EXPECT_NEAR(label("lbl_eff").toDouble(), 29.5, 0.05) << "what the sheet says of itself";

    // An own one, beside an entry that is none: both stay in the file.
    gestes::ecrit(dossier.filePath("mes_composants.json"), "[{\"genre\": \"moteur\"}]\n");
    tape("cel_txt_surf", "12.5");
    dialogue("cmd_ajouter_composant",
             [](QWidget* d) { d->findChild<QLineEdit*>("txt_nom_composant")->setText("La mienne"); });
    clique("cel_cmd_garder");
    EXPECT_TRUE(gestes::contenu(dossier.filePath("mes_composants.json")).contains("moteur"));
    tape("cel_txt_surf", "99");
    dialogue("cmd_choisir", [](QWidget* d) {
        EXPECT_TRUE(d->findChild<QLabel*>("lab_defaut_composants")->text().contains("l'entrée 1"));
        QTest::keyClicks(d->findChild<QLineEdit*>("txt_recherche_composant"), "mienne");
    });
    clique("cel_cmd_composant");
    EXPECT_EQ(s.power.cel_surface, 12.5f);
    composant homonyme = l.composants.back();
    ASSERT_NE(homonyme.genre, genre_composant::cellule);
    homonyme.nom = "La mienne";
    ASSERT_TRUE(garde_composant(s.dossier_depart, homonyme, raison)) << raison;
    EXPECT_EQ(gestes::contenu(dossier.filePath("mes_composants.json")).count("La mienne"), 2);

    // Values that no record takes change nothing, nor does a file that is no list.
    gestes::ecrit(dossier.filePath("mes_composants.json"),
                  "[{\"genre\": \"cellule\", \"nom\": \"Fausse\", \"valeurs\": {\"cel_isc\": 1, "
                  "\"cel_surface\": -3}}]");
    dialogue("cmd_choisir", [](QWidget* d) {
        QTest::keyClicks(d->findChild<QLineEdit*>("txt_recherche_composant"), "fausse");
    });
    clique("cel_cmd_composant");
    EXPECT_TRUE(!messages.isEmpty() && messages.last().contains("cel_surface")) << messages.size();
    EXPECT_FLOAT_EQ(s.power.cel_isc, .5202f);
    gestes::ecrit(dossier.filePath("mes_composants.json"), "{");
    EXPECT_FALSE(garde_composant(s.dossier_depart, l.composants[0], raison));
    EXPECT_EQ(gestes::contenu(dossier.filePath("mes_composants.json")), "{");
}
