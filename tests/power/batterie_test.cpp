/// The accumulator. Expected values: the points that the curves are told to pass through, continuity of value
/// and slope at their joints, inversion of the model by its solvers.
#include "power/power_bat.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <memory>

#include "shell/surveillance.h"
#include "tests/releve.h"

namespace {

/// A lithium-like cell without dependence on current at 1C and 25 degC: joints at 20 % and 70 %.
power_record lithium() {
    power_record p;
    p.ch_pt = {{{0, 0, 0, 3.0f, 0, 0},
                {20, .1f, -2, 3.6f, -.001f, .05f},
                {70, .2f, -3, 3.9f, -.001f, .05f},
                {110, .1f, -5, 4.2f, -.002f, .04f}}};
    p.de_pt = {{{0, 0, 0, 4.1f, 0, -.03f},
                {20, .1f, -2, 3.8f, .001f, -.05f},
                {70, .2f, -3, 3.5f, .001f, -.05f},
                {100, 0, 0, 2.7f, 0, 0}}};
    return p;
}

} // namespace

TEST(batterie, capacity_corrections) {
    power_record p;
    EXPECT_NEAR(bat_cap_current(p, 1), 1, 1e-12);
    EXPECT_NEAR(bat_cap_current(p, 10), 0.6, 1e-7);
    EXPECT_EQ(bat_cap_current(p, 0.1), 1.2f);
    EXPECT_EQ(bat_cap_current(p, 0.11), 1.2f) << "limited from above";
    EXPECT_LT(bat_cap_current(p, 0.5), 1.2);
    EXPECT_NEAR(bat_cap_temp(p, -50), 0.3, 1e-7);
    EXPECT_NEAR(bat_cap_temp(p, 50), 0.999, 1e-9);
    EXPECT_NEAR(bat_cap_temp(p, 0), 1 - 0.7 * std::pow(700, -0.5), 1e-7) << "exponential approach";
}

TEST(batterie, curves_pass_through_their_points_and_join_smoothly) {
    power_record p = lithium();
    const double T = 25, i = 1; // at these the points are the table's own
    RELEVE("batterie.points", bat_v_discharge(p, i, T, 1 - 1e-12), 4.1, 1e-6);
    RELEVE("batterie.points", bat_v_discharge(p, i, T, 0.8), 3.8, 1e-6);
    RELEVE("batterie.points", bat_v_discharge(p, i, T, 0.3), 3.5, 1e-6);
    RELEVE("batterie.points", bat_v_discharge(p, i, T, 1e-12), 2.7, 1e-6);
    EXPECT_EQ(bat_v_discharge(p, i, T, 0), 0);
    RELEVE("batterie.points", bat_v_charge(p, i, T, 0), 3.0, 1e-6);
    RELEVE("batterie.points", bat_v_charge(p, i, T, 0.2), 3.6, 1e-6);
    RELEVE("batterie.points", bat_v_charge(p, i, T, 0.7), 3.9, 1e-6);
    RELEVE("batterie.points", bat_v_charge(p, i, T, 1.1), 4.2, 1e-6);
    EXPECT_LT(bat_v_charge(p, i, T, 1.3), 4.2) << "beyond its flat point the cubic goes on";
    const double h = 1e-5;
    const auto saut_de_pente = [h](auto v, double x) { return (v(x + h) - 2 * v(x) + v(x - h)) / h; };
    for (double I : {0.1, 1.0, 3.0})
        for (double t : {-10.0, 25.0, 45.0}) {
            const double l = std::log10(I), dT = t - 25;
            const double x1 = (20 + .1f * dT - 2 * l) / 100, x2 = (70 + .2f * dT - 3 * l) / 100;
            const auto decharge = [&](double x) { return bat_v_discharge(p, I, t, 1 - x); };
            const auto charge = [&](double x) { return bat_v_charge(p, I, t, x); };
            for (double x : {x1, x2}) {
                RELEVE("batterie.pentes", saut_de_pente(decharge, x), 0, 1e-3) << x; // h times the curvature
                RELEVE("batterie.pentes", saut_de_pente(charge, x), 0, 1e-3) << x;
            }
            const double x3 = (110 + .1f * dT - 5 * l) / 100;
            EXPECT_NEAR((charge(x3 + h) - charge(x3 - h)) / (2 * h), 0, 1e-6) << "flat at the end of charge";
        }
    EXPECT_FALSE(p.courbe_charge_incompatible);
}

TEST(batterie, solvers_invert_the_curves) {
    for (power_record p : {power_record{}, lithium()})
        for (double soc : {0.1, 0.5, 0.9})
            for (double i : {0.02, 0.3, 2.0})
                for (double i0 : {i, 0.2, 1.0, 0.0}) {
                    const double T = 20, vd = bat_v_discharge(p, i, T, soc), vc = bat_v_charge(p, i, T, soc);
                    RELEVE("batterie.inverse", bat_i_from_p_discharge(p, soc, i * vd, i0, T), i, 2e-5);
                    RELEVE("batterie.inverse", bat_i_from_p_charge(p, soc, i * vc, i0, T), i, 2e-5);
                    const double retour = bat_i_from_v_charge(p, soc, vc, i0, T);
                    EXPECT_NEAR(bat_v_charge(p, retour, T, soc), vc, 1e-5);
                }
    power_record p;
    EXPECT_EQ(bat_i_from_p_discharge(p, 0, 1, 0.3, 20), 0) << "empty";
    const double i0 = 0.3, juste = i0 * bat_v_charge(p, i0, 20, 0.5);
    EXPECT_EQ(bat_i_from_p_charge(p, 0.5, juste, i0, 20), i0) << "a start that holds is the result";
    EXPECT_EQ(bat_i_from_p_charge(p, 0.5, 0, 0, 20), 1e-6) << "nothing to charge: the floor";
}

TEST(batterie, charge_curve_that_fails_is_trapped) {
    power_record p = lithium();
    p.ch_pt[1][0] = 150; // both joints clamped to a full battery
    p.ch_pt[2][0] = 180;
    const surveillance watch;
    EXPECT_EQ(bat_v_charge(p, 1, 25, 0.5), 0);
    EXPECT_TRUE(p.courbe_charge_incompatible);
    EXPECT_FALSE(watch.faute()) << "the run continues";
    EXPECT_GT(bat_i_from_p_charge(p, 0.5, 1, 0.2, 25), 0) << "a curve of zeros ends the solver";
    EXPECT_GT(bat_i_from_v_charge(p, 0.5, 1, 0.2, 25), 0);
    EXPECT_EQ(bat_v_charge(p, 0, 25, 0.5), 0) << "no current has no logarithm";
    EXPECT_FALSE(watch.faute());
    std::feraiseexcept(FE_DIVBYZERO);
    EXPECT_EQ(bat_v_charge(p, 1, 25, 0.5), 0);
    EXPECT_TRUE(watch.faute()) << "a fault from before survives";
    EXPECT_NE(bat_v_charge(*std::make_unique<power_record>(), 1, 25, 0.5), 0)
        << "and does not spoil a good curve";
    EXPECT_EQ(std::fetestexcept(fautes_surveillees), FE_DIVBYZERO);
}

TEST(batterie, discharge_without_a_solution) {
    power_record p = lithium();
    for (auto& point : p.de_pt) point[5] = -2; // 2 V a decade: i * v has a maximum, near 20
    const surveillance watch;
    const double i = bat_i_from_p_discharge(p, 0.5, 19, 0.3, 25);
    EXPECT_NEAR(i * bat_v_discharge(p, i, 25, 0.5), 19, 1e-5);
    EXPECT_EQ(bat_i_from_p_discharge(p, 0.5, 1000, 0.3, 25), 1e-6) << "sent to the floor twice, it ends";
    EXPECT_FALSE(watch.faute());
    p.de_pt[1] = p.de_pt[2]; // joints that coincide: not trapped in discharge
    bat_i_from_p_discharge(p, 0.5, 1, 0.3, 25);
    EXPECT_TRUE(watch.faute());
}
