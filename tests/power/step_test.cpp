/// The whole step. Expected values: inverse square law, shadow of a circular orbit in closed form, geometry
/// of the pointing, conservation of power over an orbit in every configuration.
#include "power/power_step.h"

#include <gtest/gtest.h>

#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "power/power_cellules.h"
#include "shell/surveillance.h"
#include "tests/releve.h"

namespace {

struct essai {
    power_record p;
    orbit_state o;
    simulation_period periode;

    explicit essai(int32_t pas = 60) {
        o.orbite.orb_inclinaison = 51.6;
        o.orbite.orb_ascension = 30;
        p.cel_ns = 20, p.cel_np = 8;
        p.bat_ns = 14;
        periode = periode_par_defaut(o.orbite);
        periode.pas_sim = pas;
        orb_position(periode.j_debut, o);
        pointage_orbital(o, 3.1, -2.2, 7);
    }
    double duree() const { return 2 * pi * std::sqrt(std::pow(o.orbite.orb_demi, 3) / mu_terre); } // [s]
    void environnement(double secondes) {
        environment_update(periode.j_debut + secondes / 86400, p, o, periode);
    }
};

} // namespace

TEST(power_step, sun_flux_and_albedo) {
    const double au = 149597870.7;
    RELEVE("flux.constante", flux_solaire(3.828e26, au), 1361, 0.5) << "nominal luminosity of the IAU (2015)";
    EXPECT_NEAR(flux_solaire(3.8e26, au) / flux_solaire(3.8e26, 2 * au), 4, 1e-12);
    essai e;
    e.p.albedo.fill(.3f);
    e.p.albedo[2] = .5f; // March, the month of the default date
    double plein = 0;
    for (double s = 0; s < e.duree(); s += 20) {
        e.environnement(s);
        const double cosinus =
            vec_scalaire(e.o.sat_pos, e.o.soleil_pos) / vec_norme(e.o.sat_pos) / vec_norme(e.o.soleil_pos);
        const double angle = std::acos(cosinus) / rad_par_degre;
        const double rapport = e.p.flux_alb / flux_solaire(e.p.sun_power, vec_norme(e.o.soleil_pos)) / .5;
        plein = std::max(plein, rapport);
        if (angle > 100)
            EXPECT_EQ(e.p.flux_alb, 0) << angle;
        else
            RELEVE("flux.albedo", rapport, std::pow(std::cos(0.9 * angle * rad_par_degre), 1.5), 1e-6)
                << angle;
        EXPECT_NEAR(e.p.sun_nadir_cos, vec_scalaire(e.o.vec_nadir, e.o.vec_soleil), 1e-12)
            << "no frame changes an angle";
    }
    EXPECT_GT(plein, 0.8);
    e.p.earth_ir[3] = 240;
    e.periode.j_debut += 30; // April
    e.environnement(0);
    EXPECT_EQ(e.p.flux_ir, 240);
}

/// The power system's own shadow: an Earth of 6378.137 km.
TEST(power_step, eclipse_of_a_circular_orbit) {
    for (double noeud : {0.0, 15.0, 30.0, 45.0, 60.0, 70.0}) {
        essai e;
        e.o.orbite.orb_ascension = noeud;
        e.environnement(0);
        const vec3 h = vec_vectoriel(e.o.sat_pos, e.o.sat_vit);
        const double sinus = vec_scalaire(h, e.o.soleil_pos) / vec_norme(h) / vec_norme(e.o.soleil_pos);
        const double rapport =
            std::sqrt(1 - carre(rayon_terre / e.o.orbite.orb_demi)) / std::sqrt(1 - sinus * sinus);
        ASSERT_LT(rapport, 1);
        const int n = 20000;
        int ombre = 0;
        for (int k = 0; k < n; ++k) {
            e.environnement(e.duree() * k / n);
            ombre += e.p.eclipse == vrai;
        }
        RELEVE("energie.eclipse", double(ombre) / n, std::acos(rapport) / pi, 4e-4) << noeud;
        releve::point("eclipse", "modèle", std::fabs(std::asin(sinus)) / rad_par_degre, 100. * ombre / n);
    }
}

TEST(power_step, pointing_and_spin) {
    essai e;
    pointage_orbital(e.o, 0, 0, 0);
    e.environnement(777);
    EXPECT_NEAR(e.p.nad_z, -1, 1e-12) << "nominal attitude: the Earth stands on -z";
    const surveillance watch;
    e.environnement(1500);
    EXPECT_FALSE(watch.faute());

    // A yaw turns the Sun about z by as much; a roll carries the Earth by as much.
    const double azimut = e.p.sun_az, z = e.p.sun_z;
    pointage_orbital(e.o, 0, 0, 25);
    e.environnement(1500);
    EXPECT_NEAR(std::remainder(azimut - e.p.sun_az - 25 * rad_par_degre, 2 * pi), 0, 1e-9);
    EXPECT_NEAR(e.p.sun_z, z, 1e-12);
    pointage_orbital(e.o, 40, 0, 0);
    e.environnement(1500);
    EXPECT_NEAR(std::acos(-e.p.nad_z) / rad_par_degre, 40, 1e-9);

    e.o.pointage.lacet = 350;
    e.o.pointage.vspin = 0.5;
    e.environnement(10);
    EXPECT_EQ(e.o.pointage.psi, 350) << "spin off";
    e.o.pointage.spin = vrai;
    e.environnement(10);
    EXPECT_NEAR(e.o.pointage.psi, 350 + 30 - 360, 1e-4);
    e.environnement(600);
    EXPECT_NEAR(e.o.pointage.psi, 350 + 1800 - 360, 1e-3) << "brought back by one turn, no more";
    e.o.pointage.vspin = -0.5;
    e.environnement(600);
    EXPECT_NEAR(e.o.pointage.psi, 350 - 1800 + 360, 1e-3);
}

TEST(power_step, start_of_a_run) {
    essai e;
    power_record& p = e.p;
    p.t_bat = 12, p.t_charge = 34, p.t_discharge = 56;
    p.gst_charge_init = 80;
    p.pan_angle_init = 45;
    for (int i = 0; i < 9; ++i) p.ext_t_init[i] = float(i);
    p.fac_t_init = {10, 20, 30};
    p.node_t.fill(-1);
    power_state_init(p);
    EXPECT_NEAR(p.bat_soc, 0.8, 1e-12);
    EXPECT_NEAR(p.bat_i, 1e-5, 1e-15);
    EXPECT_GT(p.bat_v, 1);
    EXPECT_NEAR(p.pan_angle, pi / 4, 1e-12);
    EXPECT_EQ(p.pan_wait, -1);
    EXPECT_EQ(p.node_t[0], 273.15);
    EXPECT_EQ(p.node_t[1], -1) << "the rear is left as it was";
    EXPECT_EQ(p.node_t[8], 281.15);
    EXPECT_EQ(p.node_t[9], -1);
    EXPECT_EQ(p.t_bat, 12);
    EXPECT_EQ(p.t_charge + p.t_discharge, 90);

    p.opt_panel_ext = faux;
    p.opt_faces = 2;
    power_state_init(p);
    EXPECT_EQ(p.node_t[35], 283.15);
    EXPECT_EQ(p.node_t[36], 293.15);
    EXPECT_EQ(p.node_t[37], 303.15);
    EXPECT_EQ(p.node_t[38], 298.15);
    p.opt_faces = 1;
    recalcule_faces(p);
    p.node_t.fill(-1);
    power_state_init(p);
    EXPECT_EQ(p.node_t[5], 283.15);
    EXPECT_EQ(p.node_t[6], -1);
    EXPECT_EQ(p.node_t[9], 303.15);
    EXPECT_EQ(p.node_t[10], 298.15);
}

TEST(power_step, order_of_a_step) {
    essai e;
    power_state_init(e.p);
    e.p.t_bat = 18;
    for (int pas = 0; pas < 40; ++pas) {
        power_step(e.p, e.o, e.periode);
        const power_record avant = e.p;
        e.periode.j_courant += 60 / 86400.0;
        power_step(e.p, e.o, e.periode);
        EXPECT_EQ(e.p.cell_eff[0], static_cast<float>(cell_efficiency(avant, avant.node_t[0])))
            << "temperature and voltage of the last step";
    }
    e.p.opt_panel_ext = 5; // neither true nor false: the faces sequence, here without a face
    e.p.opt_faces = 2;
    recalcule_faces(e.p);
    power_state_init(e.p);
    power_step(e.p, e.o, e.periode);
    EXPECT_EQ(e.p.t_bat, 20);
    EXPECT_EQ(e.p.gen_power, 0);
}

TEST(power_step, ledger_over_orbits_in_every_configuration) {
    for (int configuration = 0; configuration < 4; ++configuration) {
        essai e;
        e.p.opt_panel_ext = configuration == 0 ? vrai : faux;
        e.p.opt_faces = static_cast<int16_t>(configuration == 0 ? 0 : configuration - 1);
        recalcule_faces(e.p);
        e.p.gst_charge_init = 70;
        e.p.p_demand = {18, 12};
        const surveillance watch;
        power_state_init(e.p);
        double produit = 0, jours = 0, nuits = 0;
        for (int pas = 0; pas < 300; ++pas) {
            power_step(e.p, e.o, e.periode);
            const power_record& p = e.p;
            RELEVE("energie.bus", p.gen_power + p.bat_p,
                   p.p_loss_gs + p.p_loss_de + p.p_payload + std::max(p.p_excess, 0.0), 1e-11)
                << configuration << ' ' << pas;
            double panneaux = 0;
            for (double x : p.pan_power) panneaux += x;
            EXPECT_NEAR(p.gen_power, configuration == 0 ? 2 * panneaux : panneaux, 1e-11);
            EXPECT_TRUE(p.bat_soc >= 0 && p.bat_soc <= 1);
            produit += p.gen_power;
            (p.eclipse == vrai ? nuits : jours) += p.gen_power;
            e.periode.j_courant += 60 / 86400.0;
        }
        EXPECT_FALSE(watch.faute()) << configuration;
        EXPECT_GT(jours, 0);
        EXPECT_LT(nuits, 0.02 * jours) << "a little albedo at most";
    }
}

TEST(power_step, faults) {
    for (auto defaut : {+[](essai& e) { e.p.ext_alpha0[3] = .6f; }, // above its limit
                        +[](essai& e) { e.p.cel_imp = .6f; },       // above the short-circuit current
                        +[](essai& e) { e.o.orbite.orb_demi = 6400; }, +[](essai& e) { e.p.ext_t99[2] = 0; },
                        +[](essai& e) { e.p.bat_t999 = e.p.bat_tmin; }}) {
        essai e;
        defaut(e);
        e.p.gen_power = 0;
        const surveillance watch;
        power_state_init(e.p);
        bool faute = watch.faute();
        for (int pas = 0; pas < 100 && !faute; ++pas) {
            power_step(e.p, e.o, e.periode);
            faute = watch.faute();
            e.periode.j_courant += 60 / 86400.0;
        }
        EXPECT_TRUE(faute);
    }
}

/// The charge is a first-order integral of the last step's current: halving the step halves the error.
TEST(power_step, state_of_charge_converges_with_the_step) {
    double soc[4];
    for (int n = 0; n < 4; ++n) {
        essai e(96 >> n);
        e.p.bat_c = 20;
        e.p.gst_charge_init = 60;
        e.p.p_demand = {20, 20};
        e.p.gst_rend_gs = 0; // the battery alone: no edge of a shadow to fall between steps
        power_state_init(e.p);
        for (double s = 0; s < 96 * 30; s += e.periode.pas_sim) {
            power_step(e.p, e.o, e.periode);
            e.periode.j_courant += e.periode.pas_sim / 86400.0;
        }
        soc[n] = e.p.bat_soc;
    }
    RELEVE("energie.ordre", (soc[0] - soc[1]) / (soc[1] - soc[2]), 2, 0.1);
    RELEVE("energie.ordre", (soc[1] - soc[2]) / (soc[2] - soc[3]), 2, 0.1);
}
