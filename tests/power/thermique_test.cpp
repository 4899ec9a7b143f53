/// Thermal models. Expected values in closed form: radiative equilibrium, cooling to deep space
/// (T^-3 grows linearly), conservation of energy in a closed box, first order of the explicit rule.
#include "power/power_thermique.h"

#include <gtest/gtest.h>

#include "orbit/orb_trajecto.h"
#include "power/power_panneaux.h"
#include "shell/surveillance.h"
#include "tests/releve.h"

namespace {

constexpr double sigma = 5.67e-8;
constexpr double date = 18000; // exact in single precision

/// No light, no heat, no coupling, coatings that do not age; every temperature 300 K.
struct corps {
    power_record p;
    orbit_state o;

    corps() {
        o.sat_pos = {rayon_terre + 600, 0, 0};
        p.nad_z = -1;
        p.sun_sxy = 1;
        p.ext_alpha_lim = p.ext_alpha0;
        p.fac_alpha_lim = p.fac_alpha0;
        p.ext_cond.fill(0), p.ext_rad.fill(0);
        p.fac_cond.fill(0), p.fac_rad.fill(0);
        p.node_t.fill(300);
    }
    void panneaux(int32_t pas) { thermal_ext_panels(p, o, date, pas); }
    void cylindre(int32_t pas) { thermal_cylinder(p, o, date, pas); }
    void prisme(int32_t pas) { thermal_faces(p, o, date, pas); }
    void hexagone() {
        p.opt_faces = 1;
        recalcule_faces(p);
    }
};

} // namespace

TEST(thermique, coating_ages_to_99_percent_in_its_time) {
    power_record p;
    p.date_cell = 17000;
    EXPECT_NEAR(alpha(p, 17000, 0.16, 0.3, 20000), 0.16, 1e-12);
    EXPECT_NEAR(alpha(p, 18000, 0.16, 0.3, 24000), 0.99 * 0.3, 1e-12); // 24000 hours, 1000 days later
    EXPECT_NEAR(alpha(p, 30000, 0.16, 0.3, 24000), 0.3, 1e-6);
    EXPECT_EQ(alpha(p, 18000, 0.3, 0.3, 0), 0.3) << "nothing to age";
    for (const auto& [a0, lim, t99] : {std::tuple{0.4, 0.3, 20000.0}, {0.16, 0.3, 0.0}, {0.1, 0.0, 1.0}}) {
        const surveillance watch;
        alpha(p, 18000, a0, lim, t99);
        EXPECT_TRUE(watch.faute()) << a0;
    }
}

TEST(thermique, uncoupled_surfaces_reach_their_equilibrium) {
    corps c;
    c.p.flux_sun = 1360;
    c.p.flux_ir = 237;
    c.p.flux_alb = 200;
    c.p.pan_angle = pi; // front along +x, at the Sun
    c.p.pan_power[0] = 60;
    c.p.ext_alpha_lim[3] = c.p.ext_alpha_lim[4] = .6f; // +Y and -X alike, but for their times
    c.p.date_cell = date - 10;
    c.p.ext_t99[3] = 240;
    c.p.ext_t99[4] = 1;
    c.panneaux(400000);
    const double F0 = earth_view_factor(c.p, c.o, 0), F90 = earth_view_factor(c.p, c.o, 90);
    const double a = .3f, eps = .75f, ciel = F90 * (a * 200 + eps * 237);
    const auto equilibre = [&](double recu, double e) { return std::pow(recu / (e * sigma), 0.25); };
    RELEVE("thermique.equilibre", c.p.node_t[2], equilibre(a * 1360 + ciel, eps), 1e-6) << "+X, sunlit";
    RELEVE("thermique.equilibre", c.p.node_t[3], equilibre(F90 * (.99 * .6f * 200 + eps * 237), eps), 1e-6)
        << "+Y, on edge to the Earth, aged to 99 %";
    RELEVE("thermique.equilibre", c.p.node_t[4], equilibre(F90 * (.6f * 200 + eps * 237), eps), 1e-6)
        << "-X, aged at once";
    RELEVE("thermique.equilibre", c.p.node_t[5], equilibre(ciel, eps), 1e-6) << "-Y, not at all";
    RELEVE("thermique.equilibre", c.p.node_t[7], equilibre(F0 * (a * 200 + eps * 237), eps), 1e-6)
        << "-Z, towards the Earth";
    const double a0 = .75f, e0 = .76f, a1 = .16f, e1 = .85f;
    const double avant = a0 * (1360 + F90 * 200) + e0 * F90 * 237, arriere = F90 * (a1 * 200 + e1 * 237);
    RELEVE("thermique.equilibre", c.p.node_t[0], equilibre(avant + arriere - 60 / 0.5, e0 + e1), 1e-6)
        << "the panel, both sides, less its power";
    EXPECT_EQ(c.p.node_t[1], 300) << "the rear has no temperature";
    EXPECT_EQ(c.p.node_t[8], 300);
    EXPECT_NEAR(c.p.t_bat, 300 - 273.15, 1e-12);
}

/// All surfaces tightly bound to the internal node: one temperature, at which the body radiates what it
/// absorbs and makes.
TEST(thermique, isothermal_body) {
    corps c;
    c.p.flux_sun = 1360;
    c.p.p_heat = 120;
    c.p.ext_cond.fill(1000);
    c.panneaux(400000);
    const double recu = static_cast<double>(.3f) * 1360 + 120;
    const double T = std::pow(recu / (6 * .75 * sigma), 0.25);
    for (int i = 2; i <= 8; ++i)
        EXPECT_NEAR(c.p.node_t[i], T, 0.4) << i; // the sunlit face by 408 W over 1000 W/K
    double rayonne = 0;
    for (int i = 2; i < 8; ++i) rayonne += .75 * sigma * std::pow(c.p.node_t[i], 4);
    RELEVE("thermique.isotherme", rayonne, recu, 1e-8);
}

TEST(thermique, steady_state_of_cylinder_and_prism) {
    corps c;
    c.p.flux_sun = 1360;
    c.p.sun_az = 0.4;
    c.p.p_heat = 50;
    c.p.fac_rad = {.4f, .3f, .2f};
    c.p.fac_cond = {1, 2, 3};
    c.p.cyl_cond = .05f;
    c.p.body_width = 1;
    c.p.body_height = 1;
    corps k = c;
    for (int pas = 0; pas < 2000; ++pas) k.cylindre(600);
    const double bande = 1 * 0.17453292519943278, disque = pi / 4;
    double recu = 50, rayonne = 0;
    for (int i = 0; i < 36; ++i) {
        recu += bande * .75f * solar_flux_direct(k.p, 0, (10 * i + 5) * rad_par_degre);
        rayonne += bande * .76f * sigma * std::pow(k.p.node_t[i], 4);
    }
    for (int i = 36; i < 38; ++i) rayonne += disque * .85f * sigma * std::pow(k.p.node_t[i], 4);
    RELEVE("thermique.cylindre", rayonne, recu, 1e-6);
    EXPECT_GT(k.p.node_t[2], k.p.node_t[20]) << "the sunlit side is warmer";
    EXPECT_NEAR(k.p.t_bat, k.p.node_t[38] - 273.15, 1e-12);

    c.hexagone();
    c.prisme(1200000);
    recu = 50, rayonne = 0;
    for (int i = 0; i < 6; ++i) {
        recu += .75f * solar_flux_direct(c.p, 0, i * pi / 3);
        rayonne += .76f * sigma * std::pow(c.p.node_t[i], 4);
    }
    const double couvercle = 1.5 / std::tan(pi / 6); // apothem 0.866, width taken as the side
    for (int i = 8; i < 10; ++i) rayonne += couvercle * .85f * sigma * std::pow(c.p.node_t[i], 4);
    RELEVE("thermique.prisme", rayonne, recu, 1e-5);
    EXPECT_EQ(c.p.t_bat, 20.0);
}

/// No radiation to space and no light: the heat stays in the body.
TEST(thermique, energy_is_conserved_in_a_closed_box) {
    corps c;
    c.p.ext_eps.fill(0), c.p.fac_eps.fill(0);
    c.p.p_heat = 80;
    c.p.ext_cond = {1, 2, 3, 4, 5, 6}, c.p.ext_rad = {.1f, .2f, .3f, .4f, .5f, .6f};
    c.p.fac_cond = {1, 2, 3}, c.p.fac_rad = {.1f, .2f, .3f};
    c.p.cyl_cond = .3f;
    c.p.body_face_area = .7f;
    for (int i = 0; i < 39; ++i) c.p.node_t[i] = 280 + (i * 37) % 40;
    const double interne = 40 * 800, largeur = .4f, hauteur = .8f;

    corps x = c;
    x.panneaux(3600);
    double gain = interne * (x.p.node_t[8] - c.p.node_t[8]);
    for (int i = 2; i < 8; ++i) gain += 8000 * static_cast<double>(.7f) * (x.p.node_t[i] - c.p.node_t[i]);
    RELEVE("thermique.boite", gain, 80 * 3600, 1e-3);
    x = c;
    x.panneaux(1); // each face is bound to the inside by its own numbers, and so in the prism below
    for (int i = 0; i < 6; ++i) {
        const double avant = c.p.node_t[i + 2], dedans = c.p.node_t[8];
        const double recu = c.p.ext_cond[i] * (dedans - avant) +
                            c.p.ext_rad[i] * sigma * (std::pow(dedans, 4) - std::pow(avant, 4));
        EXPECT_NEAR((x.p.node_t[i + 2] - avant) * 8000, recu, 1e-6) << i;
    }

    x = c;
    x.cylindre(1200);
    gain = interne * (x.p.node_t[38] - c.p.node_t[38]);
    for (int i = 0; i < 36; ++i)
        gain += largeur * 0.17453292519943278 * 4000 * (x.p.node_t[i] - c.p.node_t[i]);
    for (int i = 36; i < 38; ++i) gain += pi * largeur * largeur / 4 * 1600 * (x.p.node_t[i] - c.p.node_t[i]);
    RELEVE("thermique.boite", gain, 80 * 1200, 1e-3);

    for (int16_t option : {0, 1}) {
        x = c;
        x.p.opt_faces = option;
        recalcule_faces(x.p);
        x.prisme(3600);
        const int n = x.p.nb_faces;
        gain = interne * (x.p.node_t[10] - c.p.node_t[10]);
        for (int i = 0; i < n; ++i) gain += largeur * hauteur * 4000 * (x.p.node_t[i] - c.p.node_t[i]);
        const double couvercle =
            n / 4.0 * largeur * largeur / std::tan(pi / n); // regular polygon of side `largeur`
        for (int i = 8; i < 10; ++i) gain += couvercle * 1600 * (x.p.node_t[i] - c.p.node_t[i]);
        RELEVE("thermique.boite", gain, 80 * 3600, 1e-3) << n;

        corps y = c;
        y.p.opt_faces = option;
        recalcule_faces(y.p);
        y.prisme(1);
        const double capacites[] = {4000, 1600, 1600}; // J/K/m²
        const int noeuds[] = {1, 8, 9};
        for (int j = 0; j < 3; ++j) {
            const double avant = c.p.node_t[noeuds[j]], dedans = c.p.node_t[10];
            const double recu = c.p.fac_cond[j] * (dedans - avant) +
                                c.p.fac_rad[j] * sigma * (std::pow(dedans, 4) - std::pow(avant, 4));
            EXPECT_NEAR((y.p.node_t[noeuds[j]] - avant) * capacites[j], recu, 1e-6) << n << ' ' << j;
        }
    }
}

/// Heat into a lone internal node counts the seconds that were simulated.
TEST(thermique, seconds_simulated) {
    for (const auto& [pas, secondes] : {std::pair{0, 0},
                                        {1, 1},
                                        {300, 300},
                                        {301, 301},
                                        {599, 599},
                                        {600, 600},
                                        {601, 600},
                                        {900, 900},
                                        {1000, 999},
                                        {3601, 3600}}) {
        corps c;
        c.p.p_heat = 64;
        corps x = c, k = c, f = c;
        x.panneaux(pas), k.cylindre(pas), f.prisme(pas);
        EXPECT_NEAR((x.p.node_t[8] - 300) * 500, pas, 1e-6) << pas;
        EXPECT_NEAR((f.p.node_t[10] - 300) * 500, pas, 1e-6) << pas;
        EXPECT_NEAR((k.p.node_t[38] - 300) * 500, secondes, 1e-6) << "the cylinder drops the rest, " << pas;
        if (pas == 0) {
            EXPECT_EQ(x.p.node_t, c.p.node_t);
            EXPECT_EQ(k.p.node_t, c.p.node_t);
            EXPECT_EQ(f.p.node_t, c.p.node_t);
        }
    }
    corps un, deux;
    un.p.flux_sun = deux.p.flux_sun = 1360;
    un.panneaux(120);
    deux.panneaux(60), deux.panneaux(60);
    EXPECT_EQ(un.p.node_t, deux.p.node_t) << "a step is its passes, nothing else";
}

TEST(thermique, cooling_to_deep_space_and_order_of_the_rule) {
    // Closed form of m cp dT/dt = -eps sigma T^4, for the top disc of the cylinder.
    const double C = 2 * 800, t = 2400,
                 exact = std::pow(std::pow(300, -3) + 3 * .85f * sigma * t / C, -1.0 / 3);
    double erreur[3];
    for (int n = 0; n < 3; ++n) { // passes of 4, 2 and 1 seconds
        corps c;
        const int32_t pas = 1200 >> n;
        for (int fait = 0; fait < t; fait += pas) {
            c.cylindre(pas);
            if (n == 2) releve::point("refroidissement", "modèle", (fait + pas) / 60., c.p.node_t[36]);
        }
        erreur[n] = c.p.node_t[36] - exact;
    }
    RELEVE("thermique.refroidissement", erreur[2], 0, 0.05);
    RELEVE("thermique.ordre", erreur[0] / erreur[1], 2, 0.02) << "halving the pass halves the error";
    RELEVE("thermique.ordre", erreur[1] / erreur[2], 2, 0.02);
}

/// A sine wave of temperature around the wall keeps its shape and decays by the eigenvalue of its wavelength.
TEST(thermique, conduction_around_the_cylinder) {
    for (int ondes : {1, 3, 11}) {
        corps c;
        c.p.fac_eps.fill(0);
        c.p.body_width = 1;
        c.p.cyl_cond = 5;
        const auto onde = [&](int i) { return std::cos(2 * pi * ondes * i / 36 + 0.3); };
        for (int i = 0; i < 36; ++i) c.p.node_t[i] = 300 + 20 * onde(i);
        c.cylindre(200);
        const double taux = 5 / 0.17453292519943278 / 4000 * (2 - 2 * std::cos(2 * pi * ondes / 36));
        for (int i = 0; i < 36; ++i)
            RELEVE("thermique.conduction", c.p.node_t[i], 300 + 20 * onde(i) * std::pow(1 - taux, 200), 1e-9)
                << ondes << ' ' << i;
    }
}

TEST(thermique, divergence_is_a_fault) {
    corps c;
    c.p.ext_mass[4] = 1e-6f; // a face without mass: the explicit rule runs away
    const surveillance watch;
    c.panneaux(120);
    EXPECT_TRUE(watch.faute());
}
