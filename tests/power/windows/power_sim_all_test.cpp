/// The complete simulation, as a user drives it; the timers are stopped and ticked by hand.

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTime>
#include <QSignalSpy>

#include "power/power_step.h"
#include "power/windows/icone_batterie.h"
#include "power/windows/power_sim_all.h"
#include "power/windows/synoptique_pieces.h"
#include "power/windows/vue3d.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/formats.h"
#include "shell/lancement.h"
#include "shell/utilitaires.h"
#include "tests/gestes.h"
#include "widgets/course.h"
#include "widgets/graphe.h"
#include "widgets/jauge.h"

using gestes::messages;

namespace {

class simulation : public gestes::essai_fenetre<power_sim_all> {
protected:
    void SetUp() override { ouvre(); }

    void ouvre() {
        f = std::make_unique<power_sim_all>(s);
        controle("Pict_visu3d")->hide(); // drawing it thousands of times takes minutes
        f->show();
        minuterie("Timer_sim_pwr")->stop();
        minuterie("timer_icon_bat")->stop();
        ticks(1);
    }
    QTimer* minuterie(const char* nom) { return f->findChild<QTimer*>(nom); }
    void ticks(int n) {
        for (int i = 0; i < n; ++i) {
            QCoreApplication::processEvents(); // as the event loop does between two ticks
            QMetaObject::invokeMethod(minuterie("Timer_sim_pwr"), "timeout");
        }
        QCoreApplication::processEvents();
    }
    void seconde() { ticks(20); }
    /// n steps, at the pace of one for each tick.
    void pas(int n) {
        auto* vitesse = f->findChild<QComboBox*>("cmb_vitesse");
        vitesse->setCurrentIndex(vitesse->findData(20));
        for (int i = 0; i < n; ++i) { // the first tick may still belong to the slower pace
            const double j = s.periode.j_courant;
            for (int k = 0; k < 20 && s.periode.j_courant == j; ++k) ticks(1);
        }
    }
    void icone() { QMetaObject::invokeMethod(minuterie("timer_icon_bat"), "timeout"); }
    QAbstractButton* bouton(const char* nom) { return f->findChild<QAbstractButton*>(nom); }
    /// Enabled state of the three buttons, as "LPA".
    std::string actifs() {
        std::string r;
        if (bouton("cmd_lance")->isEnabled()) r += 'L';
        if (bouton("cmd_pause")->isEnabled()) r += 'P';
        if (bouton("cmd_stop")->isEnabled()) r += 'A';
        return r;
    }
    /// The arrows in sight, but for that of the shunt.
    QString fleches() {
        QStringList r;
        for (const char* nom : {"gs", "charge", "decharge"})
            if (controle<fleche>(QString("fl_") + nom)->isVisible()) r << nom;
        return r.join(' ');
    }
    void affiche(std::initializer_list<std::pair<const char*, double>> puissances) {
        for (const auto& [nom, x] : puissances)
            EXPECT_EQ(label(nom).toStdString(), format_image(x, "0.00 ")) << nom;
    }
};

TEST_F(simulation, a_run_makes_one_step_per_second_and_pauses_continues_stops) {
    EXPECT_EQ(s.sim_state, sim_arretee);
    EXPECT_EQ(actifs(), "L");
    const double debut = s.periode.j_debut, pas = s.periode.pas_sim / 86400.0;
    EXPECT_EQ(s.periode.j_courant, debut);

    clique("cmd_lance");
    EXPECT_EQ(s.sim_state, sim_lancee);
    EXPECT_EQ(actifs(), "PA");
    ticks(19); // the first second's 20 ticks began with the one at opening
    EXPECT_EQ(s.periode.j_courant, debut);
    ticks(1);
    EXPECT_EQ(s.periode.j_courant, debut + pas);
    seconde();
    EXPECT_EQ(s.periode.j_courant, debut + pas + pas);
    // Between steps the view sees the geometry of one interval later, the displays the step.
    power_record p = s.power;
    orbit_state o = s.orbit;
    environment_update(s.periode.j_courant + 0.05 / 86400.0, p, o, s.periode);
    EXPECT_EQ(s.power.sun_az, p.sun_az);
    EXPECT_EQ(s.orbit.sat_pos, o.sat_pos);

    clique("cmd_pause");
    EXPECT_EQ(s.sim_state, sim_en_pause);
    EXPECT_EQ(actifs(), "LA");
    const double date_pause = s.periode.j_courant;
    seconde();
    seconde();
    EXPECT_EQ(s.periode.j_courant, date_pause);
    clique("cmd_lance");
    seconde();
    EXPECT_EQ(s.periode.j_courant, date_pause + pas) << "continues from the pause";

    s.power.bat_soc = 0.5;
    clique("cmd_stop");
    EXPECT_EQ(s.power.bat_soc, 0.5) << "the reset waits for the tick";
    ticks(1);
    EXPECT_EQ(s.periode.j_courant, debut);
    EXPECT_NEAR(s.power.bat_soc, 1.0, 1e-6);
    // The start is in the shadow: the first step of the new run has begun to discharge.
    EXPECT_EQ(s.power.t_discharge, 120);
    EXPECT_EQ(label("lab_distime"), "00:02:00");
    EXPECT_EQ(label("lab_chtime"), "00:00:00");
    s.power.bat_soc = 0.25;
    seconde();
    EXPECT_EQ(s.power.bat_soc, 0.25) << "one reset for a stop";
    EXPECT_EQ(actifs(), "L");
    EXPECT_EQ(messages, QStringList());
}

TEST_F(simulation, a_run_equals_the_steps_made_without_a_window) {
    s.power.gst_charge_init = 60;
    f.reset();
    s.power.t_bat = 0; // kept from step to step, and the window has made one at its opening
    session t = s;
    ouvre();
    power_state_init(t.power);
    t.power.t_charge = t.power.t_discharge = 0;
    t.periode.j_courant = t.periode.j_debut;
    power_step(t.power, t.orbit, t.periode);
    clique("cmd_lance");
    for (int i = 0; i < 30; ++i) {
        pas(1);
        t.periode.j_courant += t.periode.pas_sim / 86400.0;
        power_step(t.power, t.orbit, t.periode);
        ASSERT_EQ(s.power.bat_soc, t.power.bat_soc) << i;
        ASSERT_EQ(s.power.gen_power, t.power.gen_power) << i;
        ASSERT_EQ(s.power.node_t, t.power.node_t) << i;
    }
}

TEST_F(simulation, refuses_to_start_before_the_coatings_or_with_a_step_below_a_second) {
    s.power.date_cell = 18707;
    s.periode.j_debut = 18707; // the test is strict
    clique("cmd_lance");
    EXPECT_EQ(s.sim_state, sim_arretee);
    EXPECT_EQ(messages, QStringList{message_date_cellules});
    s.periode.j_debut = std::nextafter(18707.0, 1e9);
    s.periode.pas_sim = 0;
    clique("cmd_lance");
    EXPECT_EQ(s.sim_state, sim_arretee);
    ASSERT_EQ(messages.size(), 2);
    EXPECT_TRUE(messages[1].contains("1 s"));
    s.periode.pas_sim = 1;
    QSignalSpy demande(f.get(), &fenetre::demande_fenetre);
    s.power.gst_regulated = 1; // at 0 V the generator would yield nothing
    clique("cmd_lance");
    EXPECT_EQ(s.sim_state, sim_arretee);
    EXPECT_EQ(messages.size(), 3);
    ASSERT_EQ(demande.size(), 1);
    EXPECT_EQ(demande[0][1].toInt(), page_gestion);
    s.power.gst_vregul = 28;
    clique("cmd_lance");
    EXPECT_EQ(s.sim_state, sim_lancee);
    EXPECT_EQ(messages.size(), 3);
}

TEST_F(simulation, keys_work_wherever_the_focus_stands) {
    f->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(f.get()));
    auto* lance = bouton("cmd_lance");
    lance->setFocus();
    QTest::keyClick(lance, Qt::Key_Space);
    ASSERT_EQ(s.sim_state, sim_lancee);
    EXPECT_EQ(f->focusWidget(), bouton("cmd_pause"));
    for (const char* nom : {"cmd_pause", "cmb_vitesse"}) {
        s.sim_state = sim_lancee;
        ticks(1);
        controle(nom)->setFocus();
        const auto camera = f->findChild<vue3d*>()->camera();
        QTest::keyClick(controle(nom), Qt::Key_S);
        const bool dessine = f->findChild<vue3d*>()->dessine();
        EXPECT_TRUE(!dessine || f->findChild<vue3d*>()->camera().zoom != camera.zoom);
        QTest::keyClick(controle(nom), Qt::Key_T);
        QTest::keyClick(controle(nom), Qt::Key_Space);
        EXPECT_EQ(s.sim_state, sim_en_pause) << nom;
    }
    EXPECT_EQ(controle<QComboBox>("cmb_vitesse")->currentIndex(), 0);
    clique("cmd_lance");
    controle("cmd_quit")->setFocus();
    QTest::keyClick(controle("cmd_quit"), Qt::Key_Space);
    EXPECT_FALSE(f->isVisible()) << "a button keeps its key";
}

TEST_F(simulation, shows_charge_discharge_and_rest) {
    // A sample that begins in the Sun with a battery to fill, and reaches the shadow 14 steps later.
    std::string raison;
    erreur_fichier erreur;
    ASSERT_TRUE(charge_orbite(DOSSIER_DATA "/exemples/microsatellite.orb", s.orbit.orbite, raison));
    ASSERT_TRUE(charge_energie(DOSSIER_DATA "/exemples/microsatellite.pwr", s.power, s.periode, erreur));
    f->form_load();
    ticks(1);
    clique("cmd_lance");
    pas(1);
    const power_record& p = s.power;
    ASSERT_LT(p.bat_p, -50);
    EXPECT_EQ(fleches(), "gs charge");
    // Available: what the panels bring to the bus, less what the battery takes.
    affiche({{"lab_pgs", p.gen_power},
             {"lab_pbat", p.bat_p},
             {"lab_puse", 75},
             {"lab_pgs_diss", p.p_loss_gs},
             {"lab_diss_charge", p.p_loss_ch},
             {"lab_disscu", p.p_loss_pl},
             {"lab_pava", p.gen_power - p.p_loss_gs + p.bat_p},
             {"lab_chargemeter", p.bat_soc}});
    EXPECT_EQ(label("lab_voltmeter").toStdString(), format_image(p.bat_ns * p.bat_v, "00.00 "));
    EXPECT_EQ(label("lab_ammeter").toStdString(), format_image(p.bat_i / p.bat_c, "0.00") + "C");
    EXPECT_EQ(label("lab_chtime"), "00:01:00"); // the step of the start and this one, 30 s each
    EXPECT_EQ(label("lab_distime"), "00:00:00");
    icone();
    EXPECT_EQ(label("lab_state"), "Charge...");

    pas(20);
    ASSERT_GT(p.bat_p, 50);
    ASSERT_EQ(p.eclipse, vrai);
    EXPECT_EQ(fleches(), "decharge");
    affiche({{"lab_pgs", 0},
             {"lab_pbat", p.bat_p},
             {"lab_pbat_diss", p.p_loss_de},
             {"lab_pava", p.bat_p - p.p_loss_de}});
    EXPECT_EQ(label("lab_chtime"), "00:07:00"); // a discharge leaves it as it stands
    EXPECT_EQ(label("lab_distime"), QString::fromStdString(format_duree(p.t_discharge)));
    icone();
    EXPECT_EQ(label("lab_state"), "Décharge...");

    // The timers begin again with a run: in the Sun, one step of charge.
    clique("cmd_stop");
    ticks(1);
    EXPECT_EQ(label("lab_chtime"), "00:00:30");
    // A full battery in the Sun rests, and what nobody needs goes to the shunt.
    s.power.gst_charge_init = 100;
    s.config_modifiee = 1;
    ticks(1);
    clique("cmd_lance");
    pas(1);
    ASSERT_EQ(p.bat_p, 0);
    ASSERT_GT(p.p_excess, 50);
    EXPECT_EQ(label("lab_voltmeter"), "OFF");
    for (const QLabel* l : f->findChildren<QLabel*>()) EXPECT_FALSE(l->text() == "VOLT" && l->isVisible());
    EXPECT_EQ(label("lab_etat_sim"), "Simulation en cours");
    EXPECT_EQ(fleches(), "gs");
    EXPECT_TRUE(controle("fl_shunt")->isVisible());
    affiche({{"lab_exc", p.p_excess}, {"lab_pava", p.gen_power - p.p_loss_gs}});
    icone();
    EXPECT_EQ(label("lab_state"), "Attente...");

    // An empty one in the shadow: nothing left to deliver.
    clique("cmd_stop");
    s.power.gst_charge_init = 0;
    s.power.p_demand = {400, 400};
    ticks(1);
    clique("cmd_lance");
    pas(20);
    ASSERT_EQ(p.bat_soc, 0);
    affiche({{"lab_puse", 0}});
    EXPECT_TRUE(label("lab_etat_sim").contains("charge utile non alimentée"));
    EXPECT_FALSE(controle("fl_shunt")->isVisible());
    EXPECT_EQ(f->findChild<icone_batterie*>()->niveau(), 0);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(simulation, shows_date_eclipse_and_the_strip_of_one_orbit) {
    s.periode.j_debut = 18707.5; // 12:00:00 on 21 March 2001
    s.config_modifiee = 1;
    ticks(1);
    EXPECT_EQ(label("lab_cdate"), "21/03/2001");
    EXPECT_EQ(label("lab_chour"), "12:00:00");
    clique("cmd_lance");
    auto* image = f->findChild<image_eclipse*>("img_pan_eclipse");
    auto* bande = f->findChild<graphe*>("graphe_orbite");
    int eclipses = 0;
    for (int i = 0; i < 120; ++i) { // four hours: more than two turns
        pas(1);
        power_record p = s.power;
        orbit_state o = s.orbit;
        environment_update(s.periode.j_courant, p, o, s.periode);
        ASSERT_EQ(image->eclipse(), p.eclipse == vrai) << i;
        eclipses += image->eclipse();
    }
    EXPECT_GT(eclipses, 10);
    EXPECT_LT(eclipses, 110);
    EXPECT_EQ(label("lab_chour"), "16:00:00");
    // 7174 km: 6047 s in one turn, thus 51 steps of 120 s at most.
    EXPECT_GE(bande->nombre_points(0), 50);
    EXPECT_LE(bande->nombre_points(0), 51);
}

TEST_F(simulation, a_numerical_fault_ends_the_run_and_the_program_goes_on) {
    clique("cmd_lance");
    seconde();
    seconde();
    const double date = s.periode.j_courant;
    s.power.ext_alpha_lim[2] = s.power.ext_alpha0[2] / 2; // no ageing leads there
    seconde();
    EXPECT_EQ(s.sim_state, sim_arretee);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains("la simulation du sous-système complet"));
    EXPECT_EQ(actifs(), "LA");
    seconde();
    seconde();
    EXPECT_EQ(messages.size(), 1) << "told once";
    EXPECT_GT(s.periode.j_courant, date) << "the state stays as the fault left it";

    clique("cmd_lance"); // the same settings fail again, at the start
    seconde();
    EXPECT_EQ(messages.size(), 2);

    s.power.ext_alpha_lim[2] = 0.5f;
    clique("cmd_lance");
    seconde();
    EXPECT_EQ(s.sim_state, sim_lancee);
    EXPECT_EQ(s.periode.j_courant, s.periode.j_debut + s.periode.pas_sim / 86400.0);
    EXPECT_TRUE(std::isfinite(s.power.node_t[2]));
    EXPECT_EQ(messages.size(), 2);

    // While stopped, settings under edit are told in the bar only.
    clique("cmd_stop");
    ticks(1);
    s.power.ext_alpha_lim[2] = s.power.ext_alpha0[2] / 2;
    s.config_modifiee = 1;
    seconde();
    EXPECT_TRUE(bandeau().contains("réglages")) << bandeau().toStdString();
    EXPECT_EQ(messages.size(), 2);
    s.power.ext_alpha_lim[2] = 0.5f;
    s.config_modifiee = 1;
    ticks(1);
    EXPECT_EQ(bandeau(), QString());
}

TEST_F(simulation, a_change_of_the_configuration_asks_for_a_new_start) {
    QSignalSpy resultats(f.get(), &fenetre::resultats_changes);
    clique("cmd_lance");
    seconde();
    EXPECT_FALSE(resultats.isEmpty());
    s.power.gst_charge_init = 70;
    s.config_modifiee = 1;
    ++s.version_config;
    seconde();
    seconde();
    EXPECT_TRUE(resultats_perimes(s)) << "of the old settings, as long as it goes on";
    EXPECT_EQ(s.sim_state, sim_lancee);
    EXPECT_TRUE(bandeau().startsWith("La configuration a changé :")) << bandeau().toStdString();
    EXPECT_GT(s.power.bat_soc, 0.9);
    clique("cmd_stop");
    ticks(1);
    EXPECT_EQ(bandeau(), QString());
    EXPECT_FLOAT_EQ(s.power.bat_soc, 0.7f);
    resultats.clear();
    clique("cmd_lance");
    seconde();
    EXPECT_FALSE(resultats_perimes(s));
    EXPECT_FALSE(resultats.isEmpty()) << "the main window is told";

    // Surfaces that the run knows nothing of: it stops, and says why until the next one.
    s.power.opt_panel_ext = faux;
    s.power.opt_faces = 1;
    recalcule_faces(s.power);
    s.config_modifiee = 1;
    seconde();
    EXPECT_EQ(s.sim_state, sim_arretee);
    EXPECT_TRUE(bandeau().startsWith("Le corps ou le montage")) << bandeau().toStdString();
    EXPECT_EQ(s.periode.j_courant, s.periode.j_debut);
    EXPECT_NEAR(s.power.node_t[5], 298, 20) << "begun again on the new faces";
    clique("cmd_lance");
    seconde();
    EXPECT_EQ(bandeau(), QString());
    clique("cmd_stop");
    ticks(1);

    // While stopped, the start shown follows the settings.
    s.power.gst_charge_init = 40;
    s.config_modifiee = 1;
    ticks(1);
    EXPECT_EQ(label("lab_chargemeter"), "0.40 ");

    // An opened project ends the run and begins anew.
    clique("cmd_lance");
    seconde();
    seconde();
    s.power.gst_charge_init = 80;
    f->form_load();
    EXPECT_EQ(s.sim_state, sim_arretee);
    ticks(1);
    EXPECT_EQ(s.periode.j_courant, s.periode.j_debut);
    EXPECT_EQ(label("lab_chargemeter"), "0.80 ");
}

TEST_F(simulation, the_charge_curve_message_comes_once_for_a_run) {
    QSignalSpy demande(f.get(), &fenetre::demande_fenetre);
    s.power.gst_charge_init = 50;
    s.power.p_demand = {0, 0};
    s.power.ch_pt[1][0] = s.power.ch_pt[2][0] = 150; // both abscissae clamped to 1
    s.config_modifiee = 1;
    // The run goes on behind a message that nobody answers.
    static double pendant;
    static const simulation_period* periode;
    periode = &s.periode;
    remplace_repondeur([](gravite, const QString& texte) {
        messages << texte;
        pendant = periode->j_courant;
        (void)QTest::qWaitFor([] { return periode->j_courant != pendant; });
        pendant = periode->j_courant - pendant;
        return true;
    });
    pas(1);
    minuterie("Timer_sim_pwr")->start(1);
    clique("cmd_lance");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !messages.isEmpty() && pendant < 1; }));
    EXPECT_GT(pendant, 0);
    minuterie("Timer_sim_pwr")->stop();
    minuterie("Timer_sim_pwr")->setInterval(50);
    pas(60);
    EXPECT_EQ(messages.count(message_charge_incompatible), 1);
    EXPECT_EQ(messages.size(), 1);
    ASSERT_EQ(demande.size(), 1);
    EXPECT_EQ(demande[0][0].toString(), "power_conf");
    EXPECT_EQ(demande[0][1].toInt(), 3);
    EXPECT_EQ(s.sim_state, sim_lancee) << "the run continues";
    clique("cmd_stop");
    ticks(1);
    clique("cmd_lance");
    pas(60);
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(simulation, real_time_follows_the_clock_and_resets_once) {
    auto* vitesse = controle<QComboBox>("cmb_vitesse");
    vitesse->setCurrentIndex(vitesse->findData(20)); // has no say in real time
    s.temps_reel = true;
    s.periode.pas_sim = 1;
    // Days from 1950; the clock counts from 1970.
    const auto maintenant = [] { return QDateTime::currentMSecsSinceEpoch() / 86400e3 + 7305; };
    clique("cmd_lance");
    const double avant = maintenant();
    seconde();
    EXPECT_GE(s.periode.j_courant, avant - 1e-9);
    EXPECT_LE(s.periode.j_courant, maintenant() + 1e-9);
    int pas_faits = 0;
    for (int i = 0; i < 40; ++i) {
        const double j = s.periode.j_courant;
        QTest::qSleep(1); // the clock moves between two ticks
        ticks(1);
        pas_faits += s.periode.j_courant != j;
    }
    EXPECT_EQ(pas_faits, 2);
    clique("cmd_stop");
    ticks(1);
    s.power.bat_soc = 0.3;
    seconde();
    EXPECT_EQ(s.power.bat_soc, 0.3);
    EXPECT_FALSE(vitesse->isEnabled());
}

TEST_F(simulation, a_long_step_and_a_faster_pace_leave_the_buttons_alive) {
    s.periode.pas_sim = 3600;
    s.power.opt_panel_ext = faux;
    s.power.opt_faces = 2; // the heaviest thermal model
    s.config_modifiee = 1;
    auto* vitesse = f->findChild<QComboBox*>("cmb_vitesse");
    vitesse->setCurrentIndex(vitesse->findData(20)); // a step at each tick
    clique("cmd_lance");
    ticks(1);
    const double j = s.periode.j_courant;
    ticks(10);
    EXPECT_NEAR(s.periode.j_courant, j + 10 * 3600 / 86400.0, 1e-9);
    // A click that waits in the queue is served at the start of the next tick, before its step.
    QMetaObject::invokeMethod(bouton("cmd_pause"), "click", Qt::QueuedConnection);
    ticks(5);
    EXPECT_EQ(s.sim_state, sim_en_pause);
    EXPECT_NEAR(s.periode.j_courant, j + 10 * 3600 / 86400.0, 1e-9);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(simulation, another_calculation_takes_the_record_away) {
    clique("cmd_lance");
    pas(3);
    {
        const course autre(s, s.periode);
        EXPECT_EQ(s.sim_state, sim_en_pause);
        s.power.bat_soc = 0.125;
        s.periode.j_courant = s.periode.j_fin;
        seconde();
        EXPECT_EQ(s.sim_state, sim_arretee);
        EXPECT_TRUE(bandeau().startsWith("Un autre calcul")) << bandeau().toStdString();
        clique("cmd_lance");
        EXPECT_EQ(messages, QStringList{message_calcul_en_cours});
        seconde();
        EXPECT_EQ(s.power.bat_soc, 0.125);
        EXPECT_EQ(s.periode.j_courant, s.periode.j_fin);
    }
    clique("cmd_lance");
    pas(1);
    EXPECT_EQ(s.periode.j_courant, s.periode.j_debut + s.periode.pas_sim / 86400.0);
    EXPECT_GT(s.power.bat_soc, 0.9);
    EXPECT_EQ(bandeau(), QString());

    // A short one, over before the next tick, while the simulation is stopped.
    clique("cmd_stop");
    ticks(1);
    {
        const course autre(s, s.periode);
        s.periode.j_courant = s.periode.j_fin;
    }
    clique("cmd_lance");
    pas(1);
    EXPECT_EQ(s.periode.j_courant, s.periode.j_debut + s.periode.pas_sim / 86400.0);
}

TEST_F(simulation, closing_ends_the_run) {
    for (const bool echappe : {false, true}) {
        f->show();
        clique("cmd_lance");
        pas(1);
        ASSERT_EQ(s.sim_state, sim_lancee);
        echappe ? QTest::keyClick(f.get(), Qt::Key_Escape) : clique("cmd_quit");
        EXPECT_FALSE(f->isVisible());
        EXPECT_EQ(s.sim_state, sim_arretee);
        ticks(1);
        EXPECT_EQ(s.periode.j_courant, s.periode.j_debut);
    }
    f->show();
    EXPECT_TRUE(minuterie("Timer_sim_pwr")->isActive());
    s.sim_state = sim_lancee;
    f.reset();
    EXPECT_EQ(s.sim_state, sim_arretee);
}

TEST(icone_batterie, levels_and_words_at_their_limits) {
    const std::pair<double, int> niveaux[] = {{1, 5},      {0.9, 5},  {0.8999, 4}, {0.65, 4},
                                              {0.6499, 3}, {0.4, 3},  {0.3999, 2}, {0.15, 2},
                                              {0.1499, 1}, {1e-9, 1}, {0, 0}};
    for (const auto& [soc, niveau] : niveaux) {
        EXPECT_EQ(niveau_batterie(soc), niveau) << soc;
        EXPECT_EQ(etat_batterie(1, soc), 6 - niveau) << soc;
    }
    EXPECT_EQ(etat_batterie(0, 0.5), 8);

    icone_batterie b;
    b.montre(0.5, etat_batterie(-1, 0.5));
    QList<int> images;
    for (int i = 0; i < 4; ++i, b.avance()) images << b.barres();
    EXPECT_EQ(images, (QList<int>{3, 4, 5, 3}));
    b.montre(0.5, etat_batterie(1, 0.5));
    images.clear();
    for (int i = 0; i < 3; ++i, b.avance()) images << b.barres();
    EXPECT_EQ(images, (QList<int>{3, 2, 3}));
}

TEST(jauge, widens_its_scale_and_rests_when_inactive) {
    jauge j("Courant", "lab_ammeter", "", style::role::batterie);
    j.echelle(0.5, true);
    j.montre(1.3, "1.30C");
    EXPECT_EQ(j.pleine_echelle(), 2);
    j.montre(7, "OFF", false);
    EXPECT_EQ(j.valeur(), 0);
    EXPECT_EQ(j.pleine_echelle(), 2);
    EXPECT_EQ(echelle_ronde(15.75), 20);
    EXPECT_EQ(echelle_ronde(50), 50);
}

} // namespace
