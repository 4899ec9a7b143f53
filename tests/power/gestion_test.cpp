/// Power management. Expected values: conservation of energy and of charge, the nominal figures of a setting.
#include "power/power_gestion.h"

#include <gtest/gtest.h>

#include "power/power_bat.h"
#include "tests/releve.h"

namespace {

power_record bus(double gen_power, double soc) {
    power_record p;
    p.gen_power = gen_power;
    p.bat_soc = soc;
    p.bat_i = 0.5;
    p.bat_v = 1.3;
    p.t_bat = 20;
    return p;
}

/// What comes in equals what goes out, is stored, or becomes heat.
void verifie_bilan(const power_record& p) {
    const double entree = p.gen_power + p.bat_p;
    const double sortie = p.p_loss_gs + p.p_loss_de + p.p_payload + std::max(p.p_excess, 0.0);
    RELEVE("gestion.bus", entree / (1 + p.gen_power), sortie / (1 + p.gen_power), 1e-12);
    EXPECT_NEAR(p.p_heat, p.p_loss_ch + p.p_loss_de + p.p_loss_gs + p.p_loss_pl + std::max(p.p_excess, 0.0),
                1e-12);
}

} // namespace

TEST(gestion, ledger_closes_in_every_case) {
    for (double gen : {0.0, 30.0, 55.6, 90.0, 400.0})
        for (double soc : {0.0, 0.2, 0.95, 1.0})
            for (drapeau eclipse : {faux, vrai})
                for (float rendement : {100.f, 80.f}) {
                    power_record p = bus(gen, soc);
                    p.eclipse = eclipse;
                    p.gst_rend_bat = p.gst_rend_gs = rendement;
                    p.p_demand = {50, 35};
                    for (int pas = 0; pas < 20; ++pas) {
                        power_management(p, 60);
                        verifie_bilan(p);
                    }
                }
}

TEST(gestion, full_battery_trickles_and_excess_becomes_heat) {
    power_record p = bus(100, 1);
    p.t_charge = p.t_discharge = 300;
    power_management(p, 60);
    EXPECT_EQ(p.bat_soc, 1);
    EXPECT_EQ(p.bat_p, 0);
    EXPECT_EQ(p.bat_i, p.gst_i_maint);
    EXPECT_EQ(p.t_charge + p.t_discharge, 0);
    EXPECT_NEAR(p.p_excess, 90 - 50, 1e-12);
    EXPECT_NEAR(p.p_heat, 10 + 0.15 * 50 + 40, 1e-5);
}

TEST(gestion, charge_takes_the_excess_within_its_limits) {
    power_record p = bus(100, 0.5);
    p.bat_state_full = faux;
    power_management(p, 60);
    EXPECT_NEAR(p.bat_soc, 0.5 + 60 * 0.5 / (1.05 * 3600 * 10), 1e-9) << "the current of the last step";
    EXPECT_NEAR(-p.bat_p, 40, 10 * 10 * 1e-5) << "solver tolerance times the battery";
    EXPECT_EQ(p.bat_state_full, vrai);
    EXPECT_NEAR(p.p_loss_ch, 40 * (1 - 1 / 1.05), 1e-3);
    EXPECT_EQ(p.t_charge, 60);

    p.gst_ich_max = 0.8f;
    power_management(p, 60);
    EXPECT_EQ(p.bat_i, 0.8f);
    verifie_bilan(p);

    p.gst_ich_max = 100;
    p.gst_vch_max = 1.40f;
    power_management(p, 60);
    EXPECT_EQ(p.bat_v, 1.40f);
    EXPECT_NEAR(bat_v_charge(p, p.bat_i / p.bat_c, p.t_bat, p.bat_soc), 1.40, 1e-5);
    EXPECT_GT(p.p_excess, 0) << "what the shunt leaves becomes heat";
    verifie_bilan(p);

    p.bat_soc = 0.9999999;
    power_management(p, 60);
    EXPECT_EQ(p.bat_soc, 1);
    EXPECT_EQ(p.bat_state_full, faux) << "told in the one step that fills it";
    EXPECT_EQ(p.t_charge, 0);
    power_management(p, 60);
    EXPECT_EQ(p.bat_state_full, vrai);

    power_record sans_perte = bus(100, 0.5);
    sans_perte.gst_k_recharge = 1;
    power_management(sans_perte, 60);
    EXPECT_EQ(sans_perte.p_loss_ch, 0);
    power_record juste = bus(50, 0.5); // generator equal to the demand: a charge with nothing
    juste.gst_rend_gs = 100;
    power_management(juste, 60);
    EXPECT_EQ(juste.t_charge, 60);
    EXPECT_NEAR(juste.bat_p, 0, 2e-3);
}

TEST(gestion, shortage) {
    power_record p = bus(30, 0.6);
    power_management(p, 60);
    EXPECT_NEAR(p.bat_p, (50 - 27) / 0.9, 10 * 10 * 1e-5);
    EXPECT_NEAR(p.p_payload, 50, 1e-3);
    EXPECT_EQ(p.t_discharge, 60);
    p.t_discharge = 2147483600; // the duration ends with its type
    power_management(p, 60);
    EXPECT_EQ(p.t_discharge, 2147483647);
    p.bat_soc = 0;
    power_management(p, 60);
    EXPECT_EQ(p.bat_p, 0);
    EXPECT_EQ(p.bat_soc, 0);
    EXPECT_NEAR(p.p_payload, 27, 1e-5) << "the generator alone";
    p.gen_power = 100; // and the empty battery takes a charge again
    for (int pas = 0; pas < 10; ++pas) power_management(p, 60);
    EXPECT_GT(p.bat_soc, 0.01);
}

TEST(gestion, accumulator_count_wraps_in_discharge_only) {
    power_record p = bus(0, 0.6);
    p.bat_ns = 16;
    p.bat_np = 16;
    power_management(p, 60);
    EXPECT_EQ(p.bat_p, 0) << "256 is 0 in eight bits";
    EXPECT_GT(p.bat_i, 0);
    p.gen_power = 200;
    power_management(p, 60);
    EXPECT_NEAR(-p.bat_p, 130, 256 * 10 * 1e-5);
    p.bat_np = 17;
    p.gen_power = 0;
    power_management(p, 60);
    EXPECT_NEAR(p.bat_p, 16 * p.bat_i * p.bat_v, 1e-9) << "272 counts as 16";
}

/// Discharge to about 60 %, then charge until full: what went in over what came out is the recharge
/// coefficient, with the effective capacity of 0.999 at bat_t999 and 1 at any current.
TEST(gestion, amp_hours_over_a_cycle) {
    power_record p = bus(0, 1);
    p.bat_cmax = p.bat_c10 = 1;
    p.t_bat = p.bat_t999;
    p.gst_vch_max = 2;
    double sorti = 0, entre = 0;
    for (int s = 0; s < 3600; ++s) {
        sorti += p.bat_i;
        power_management(p, 1);
    }
    EXPECT_NEAR(p.bat_soc, 1 - sorti / 3600 / (10 * 0.999), 1e-6);
    const double courant_de_sortie = p.bat_i;
    p.gen_power = 120;
    int s = 0;
    do {
        entre += p.bat_i;
        power_management(p, 1);
    } while (p.bat_state_full == vrai && ++s < 20000);
    ASSERT_EQ(p.bat_soc, 1);
    RELEVE("gestion.recharge", entre / sorti, 1.05 / 0.999, 2 * courant_de_sortie / sorti);
}
