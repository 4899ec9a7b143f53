// The two studies of the energy system, used as a person does.
// Expected numbers: the models stepped by the test itself; for the battery, its own curves and Ah counts.

#include <QAbstractItemModel>
#include <QComboBox>
#include <QPointer>
#include <QScrollBar>
#include <QTableView>

#include <cmath>
#include <map>

#include "power/catalogues.h"
#include "power/power_bat.h"
#include "power/power_panneaux.h"
#include "power/power_step.h"
#include "power/windows/power_exp_bat.h"
#include "power/windows/power_exp_pan.h"
#include "shell/formats.h"
#include "shell/lancement.h"
#include "shell/surveillance.h"
#include "tests/gestes.h"
#include "widgets/graphe.h"
#include "widgets/style.h"
#include "widgets/trace_graph.h"

using namespace gestes;

namespace {

struct Etudes : essai_fenetres {
    Etudes() { s.power.cel_ns = 20; }
};

QAbstractItemModel& table(QWidget& f) { return *controle<QTableView>(&f, "grid")->model(); }
std::string cellule(QWidget& f, int ligne, int colonne) {
    return table(f).index(ligne, colonne).data().toString().toStdString();
}
QStringList titres(QWidget& f) {
    QStringList t;
    for (int c = 0; c < table(f).columnCount(); ++c)
        t << table(f).headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
    return t;
}

void saisit(QWidget& f, const QString& nom, const QString& texte) { tape(&f, nom, texte, Qt::Key_Return); }
double nombre(QWidget& f, const QString& nom) { return label(&f, nom).toDouble(); }

} // namespace

TEST_F(Etudes, external_panels_with_incidences_and_best_angle) {
    power_exp_pan f(s);
    f.show();
    session t = s;
    clique(&f, "cmd_saisir");
    clique(&f, "opt_view_1");
    EXPECT_EQ(titres(f), (QStringList{"Date", "Panneau 1", "Maximum", "Minimum"}));
    struct valeurs {
        double temperature, puissance, cellules, incidence, meilleur;
        bool eclipse;
    };
    std::vector<valeurs> attendues;
    const power_record& p = t.power;
    power_state_init(t.power);
    const double fin = t.periode.j_fin + 0.1 / 86400;
    for (double j = t.periode.j_debut; j <= fin; j += 120 / 86400.0) {
        t.periode.j_courant = j;
        power_step(t.power, t.orbit, t.periode);
        const double m = panel_target_refined(p);
        attendues.push_back({p.node_t[0] - 273.15, p.pan_power[0], cell_flux(p, p.pan_angle, pi),
                             incidence_sun(p, p.pan_angle, pi) * 180 / M_PI,
                             (m == 1000 ? p.pan_angle : m) * 180 / M_PI, p.eclipse == vrai});
    }
    const int n = static_cast<int>(attendues.size());
    const auto verifie = [&](const char* bouton, int colonne, double valeurs::*champ, const char* image) {
        clique(&f, bouton);
        ASSERT_EQ(table(f).rowCount(), n);
        for (int l = 0; l < n; ++l)
            EXPECT_EQ(cellule(f, l, colonne), format_image(attendues[size_t(l)].*champ, image))
                << bouton << l;
    };
    verifie("cmd_temperature", 1, &valeurs::temperature, "0.000");
    verifie("cmd_temperature", 2, &valeurs::temperature, "0.000"); // one panel: its own maximum
    verifie("cmd_puissance", 1, &valeurs::puissance, "0.00");
    verifie("cmd_flux", 4, &valeurs::cellules, "0.0");
    verifie("cmd_angles", 1, &valeurs::incidence, "0.00");
    verifie("cmd_angles", 4, &valeurs::meilleur, "0.00");
    for (int l = 0; l < n; ++l)
        EXPECT_EQ(table(f).index(l, 0).data(Qt::BackgroundRole).isValid(), attendues[size_t(l)].eclipse) << l;

    QByteArray texte = "Date\tIncidence Soleil\tIncidence Terre\tAngle courant\tMeilleur angle\n\n";
    for (int l = 0; l < n; ++l) {
        for (int c = 0; c < 5; ++c) texte += (c ? "\t" : "") + QByteArray::fromStdString(cellule(f, l, c));
        texte += "\n";
    }
    const QString chemin = dossier.filePath("angles.txt");
    EXPECT_TRUE(f.enregistre_table(chemin));
    EXPECT_EQ(contenu(chemin), texte);
}

TEST_F(Etudes, faces_and_cylinder_panel_by_panel) {
    s.power.opt_panel_ext = faux;
    s.power.opt_faces = 1;
    recalcule_faces(s.power);
    power_exp_pan f(s);
    f.show();
    EXPECT_FALSE(controle<QWidget>(&f, "cmd_angles")->isVisible());
    clique(&f, "cmd_saisir");
    clique(&f, "opt_view_1");
    ASSERT_EQ(table(f).columnCount(), 9); // date, six panels, extremes
    for (int l = 0; l < table(f).rowCount(); ++l) {
        double max = -1e9, min = 1e9;
        for (int c = 1; c <= 6; ++c) {
            max = std::max(max, std::stod(cellule(f, l, c)));
            min = std::min(min, std::stod(cellule(f, l, c)));
        }
        EXPECT_EQ(std::stod(cellule(f, l, 7)), max);
        EXPECT_EQ(std::stod(cellule(f, l, 8)), min);
    }
    const int derniere = table(f).rowCount() - 1;
    clique(&f, "cmd_flux");
    EXPECT_EQ(cellule(f, derniere, 6),
              format_image(cell_flux(s.power, s.power.face_elev[5], s.power.face_azim[5]), "0.0"));

    s.power.opt_faces = 2;
    recalcule_faces(s.power);
    f.form_load();
    clique(&f, "cmd_saisir");
    EXPECT_EQ(table(f).columnCount(), 37);
    clique(&f, "cmd_puissance");
    EXPECT_EQ(cellule(f, derniere, 36), format_image(s.power.pan_power[35], "0.00"));
    clique(&f, "opt_view_0");
    auto* trace = controle<trace_graph>(&f, "pict_graph");
    EXPECT_TRUE(trace->valeurs_sous(trace->rect().center()).contains("Panneau 28"));

    // Of a month each curve fills its columns of pixels: all four are seen nevertheless.
    s.periode.j_fin = s.periode.j_debut + 30;
    clique(&f, "cmd_saisir");
    const QImage image = trace->grab().toImage();
    std::map<QRgb, int> pixels;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width() - 40; ++x) ++pixels[image.pixel(x, y)];
    for (const int rang : {0, 1, 2, 3})
        EXPECT_GT(pixels[style::accorde(style::couleur_courbe(rang), false).rgb()], 200) << rang;
}

TEST_F(Etudes, generator_study_refused_interrupted_and_faulting) {
    power_exp_pan f(s);
    f.show();
    s.periode.pas_sim = 0;
    clique(&f, "cmd_saisir");
    EXPECT_EQ(messages, QStringList{message_pas});
    EXPECT_EQ(table(f).rowCount(), 0);

    s.periode.pas_sim = 120;
    const double fin = s.periode.j_fin;
    s.periode.j_fin = s.periode.j_debut + 3650;
    QTimer::singleShot(60, &f, [&] { clique(&f, "cmd_stopcalcul"); });
    clique(&f, "cmd_saisir");
    EXPECT_GE(table(f).rowCount(), 1);
    EXPECT_LT(table(f).rowCount(), 3650 * 720);
    // The axis ends where the run did.
    const QString derniere = table(f).index(table(f).rowCount() - 1, 0).data().toString();
    EXPECT_EQ(label(&f, "lab_x_10"), derniere.right(8));
    EXPECT_FALSE(s.calcul_en_cours);

    s.periode.j_fin = fin;
    s.power.ext_alpha0[3] = .9f; // above its limit
    messages.clear();
    clique(&f, "cmd_saisir");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains("21/03/2001 13:12:00")) << messages[0].toStdString();
    EXPECT_TRUE(messages[0].contains("la face -X")) << messages[0].toStdString();
    EXPECT_EQ(table(f).rowCount(), 0);

    // The advice fits the fault: cells colder than their model, aged out of order, a perigee in the ground.
    s.power.ext_alpha0[3] = .3f;
    const power_record sain = s.power;
    choisit_cellule(s.power, 1);
    s.power.ext_t_init[0] = -150;
    clique(&f, "cmd_saisir");
    s.power = sain;
    s.power.cel_opt_beol = 1;
    s.power.cel_radisc = .9f;
    clique(&f, "cmd_saisir");
    s.power = sain;
    s.orbit.orbite.orb_demi = 6400;
    clique(&f, "cmd_saisir");
    ASSERT_EQ(messages.size(), 4);
    for (const char* mot : {"Silicium", "panneau 1", "-138.7 °C"})
        EXPECT_TRUE(messages[1].contains(mot)) << messages[1].toStdString();
    EXPECT_TRUE(messages[2].contains("fin de vie")) << messages[2].toStdString();
    EXPECT_TRUE(messages[3].contains("6428 km")) << messages[3].toStdString();
}

TEST_F(Etudes, battery_discharged_and_charged_again) {
    power_exp_bat f(s);
    f.show();
    saisit(f, "txt_tecl", "30");
    EXPECT_EQ(f.focusWidget(), controle<QWidget>(&f, "txt_tchde")) << "Return goes on to the next box";
    saisit(f, "txt_tchde", "25");
    saisit(f, "txt_chk", "1");
    saisit(f, "txt_chvmax", "2"); // never reached: the charge current stays
    saisit(f, "txt_chcour", "0,25");
    controle<QRadioButton>(&f, "opt_decour")->click();
    EXPECT_FALSE(controle<QWidget>(&f, "txt_depuis")->isEnabled());
    saisit(f, "txt_decour", "0.5");
    const power_record avant = s.power;
    clique(&f, "cmd_saisir");
    // 1801 seconds at 0.5 C over the two capacity ratios, given back at 0.25 C.
    const double prise = 1801 * 0.5 / bat_cap_temp(s.power, 25) / bat_cap_current(s.power, 0.5) / 3600;
    EXPECT_EQ(nombre(f, "lab_dod"), std::floor(100 * prise));
    const double recharge = std::ceil(prise * 3600 / 0.25);
    EXPECT_EQ(label(&f, "lab_tch").toStdString(), format_duree(std::lround(recharge)));
    EXPECT_EQ(s.power.bat_soc, avant.bat_soc); // the study stands apart
    EXPECT_EQ(s.calculs, 0u);
    const int points = controle<graphe>(&f, "pict_graphs_0")->nombre_points(0);
    const int dizaines = static_cast<int>(std::floor((1800 + recharge) / 10)); // a point every ten seconds
    EXPECT_EQ(points, dizaines + 1);
    EXPECT_EQ(controle<graphe>(&f, "pict_graphs_1")->nombre_points(0), points);

    // A shorter stretch of time is seen at once, the rest by scrolling.
    auto* barre = controle<QScrollBar>(&f, "scroll_graphs");
    EXPECT_FALSE(barre->isEnabled());
    QTest::keyClick(controle<QComboBox>(&f, "cmb_duree"), Qt::Key_Home); // 30 min
    EXPECT_EQ(barre->maximum(), (dizaines + 5) / 6 - 30);

    // Each run restarts from a full accumulator; a long one empties it and charges all of it.
    saisit(f, "txt_tecl", "300");
    clique(&f, "cmd_saisir");
    EXPECT_EQ(nombre(f, "lab_dod"), 100);
    EXPECT_EQ(label(&f, "lab_tch"), "04:00:00");
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(Etudes, battery_entries_are_checked) {
    power_exp_bat f(s);
    f.show();
    const QString avant = controle<QLineEdit>(&f, "txt_chk")->text();
    saisit(f, "txt_chk", "0");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].startsWith("Valeur hors limite !!")) << messages[0].toStdString();
    EXPECT_EQ(controle<QLineEdit>(&f, "txt_chk")->text(), avant);
    EXPECT_EQ(f.focusWidget(), controle<QWidget>(&f, "txt_chk"));
    s.power.gst_k_recharge = 1.25f;
    s.power.p_demand = {100, 25}; // the night's over 10 accumulators of 10 Ah at 90 %
    f.form_load();
    EXPECT_EQ(controle<QLineEdit>(&f, "txt_chk")->text(), "1.25");
    EXPECT_EQ(controle<QLineEdit>(&f, "txt_depuis")->text(), "0.278");
    saisit(f, "txt_depuis", "0.4");
    s.power.gst_k_recharge = 1.5f; // as by an undo
    f.form_load();
    EXPECT_EQ(controle<QLineEdit>(&f, "txt_chk")->text(), "1.5");
    EXPECT_EQ(controle<QLineEdit>(&f, "txt_depuis")->text(), "0.4") << "an entry stays";

    saisit(f, "txt_tchde", "-100"); // no capacity is left there
    clique(&f, "cmd_saisir");
    ASSERT_EQ(messages.size(), 2);
    EXPECT_TRUE(messages[1].contains("-100 °C")) << messages[1].toStdString();
    EXPECT_EQ(label(&f, "lab_dod"), "");
    EXPECT_EQ(f.focusWidget(), controle<QWidget>(&f, "txt_tchde"));
}

TEST_F(Etudes, a_recharge_without_end_is_told_and_can_be_left) {
    power_exp_bat f(s);
    f.show();
    saisit(f, "txt_chk", "1000"); // 1e6 seconds give back 0.03 % of the capacity
    saisit(f, "txt_chvmax", "2");
    saisit(f, "txt_chcour", "0.001");
    QTimer::singleShot(60, &f, [&] { f.close(); });
    clique(&f, "cmd_saisir");
    EXPECT_FALSE(f.isVisible());
    EXPECT_FALSE(s.calcul_en_cours);
    EXPECT_TRUE(messages.isEmpty());

    // A project opened meanwhile, or an undo, ends the study of the old settings.
    f.show();
    QTimer::singleShot(60, &f, [&] { f.form_load(); });
    auto* lance = controle<QWidget>(&f, "cmd_saisir");
    lance->setFocus();
    QTest::keyClick(lance, Qt::Key_Space);
    EXPECT_TRUE(bandeau(&f).contains("réglages ont changé")) << bandeau(&f).toStdString();
    EXPECT_FALSE(s.calcul_en_cours);
    EXPECT_EQ(f.focusWidget(), lance) << "the next Space starts again";

    saisit(f, "txt_chk", "1000");
    saisit(f, "txt_chvmax", "2");
    saisit(f, "txt_chcour", "0.001");
    clique(&f, "cmd_saisir");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].startsWith("La recharge ne se termine pas")) << messages[0].toStdString();
    EXPECT_EQ(label(&f, "lab_tch"), "");
    EXPECT_TRUE(controle<QWidget>(&f, "cmd_saisir")->isEnabled());

    // Deleted while it runs.
    QPointer<power_exp_bat> ephemere = new power_exp_bat(s);
    ephemere->show();
    saisit(*ephemere, "txt_chk", "1000");
    saisit(*ephemere, "txt_chcour", "0.001");
    QTimer::singleShot(60, &f, [&] { delete ephemere.data(); });
    clique(ephemere, "cmd_saisir");
    EXPECT_TRUE(ephemere.isNull());
    EXPECT_FALSE(s.calcul_en_cours);
}

TEST_F(Etudes, a_charge_curve_that_fails_is_told_once_and_opens_the_settings) {
    s.power.ch_pt[2][0] = s.power.ch_pt[1][0]; // two points of the curve at one abscissa
    s.power.ch_pt[2][1] = s.power.ch_pt[1][1];
    s.power.ch_pt[2][2] = s.power.ch_pt[1][2];
    power_exp_bat f(s);
    f.show();
    QString demandee;
    QObject::connect(&f, &fenetre::demande_fenetre,
                     [&](const QString& nom, int page) { demandee += nom + QString::number(page); });
    QTimer::singleShot(3000, &f, [&] { clique(&f, "cmd_stopcalcul"); });
    clique(&f, "cmd_saisir");
    EXPECT_EQ(messages.count(message_charge_incompatible), 1);
    EXPECT_EQ(demandee, "power_conf3");
}
