/// Catalogues and repairs. Expected values: the makers' tables of the settings window (cells and
/// accumulators), and the repair rules worked by hand.
#include <gtest/gtest.h>

#include "power/catalogues.h"
#include "power/power_bat.h"
#include "power/power_cellules.h"
#include "power/reparations.h"

TEST(catalogues, cell_overwrites_its_values_and_nothing_else) {
    power_record p;
    p.cel_ns = 12.5f;
    p.cel_np = 3;
    p.cel_radisc = .9f;
    p.cel_tref = 20;
    p.inc_div = 40;
    choisit_cellule(p, 1);
    EXPECT_EQ(p.cel_type, 1);
    const std::array<float, 9> attendu = {1.0f, .95f, .54f, .45f, .0012f, .0009f, -.002f, -.002f, 20};
    const std::array<float, 9> lu = {p.cel_isc,  p.cel_imp,  p.cel_voc,  p.cel_vmp,    p.cel_disc,
                                     p.cel_dimp, p.cel_dvoc, p.cel_dvmp, p.cel_surface};
    EXPECT_EQ(lu, attendu);
    EXPECT_NEAR(rendement_nominal(p), 4275. / 1368 / 20 * 100, 1e-5);
    EXPECT_EQ(p.cel_ns, 12.5f);
    EXPECT_EQ(p.cel_np, 3);
    EXPECT_EQ(p.cel_radisc, .9f);
    EXPECT_EQ(p.cel_tref, 20);
    EXPECT_EQ(p.inc_div, 40);
    // Back to the first entry: the defaults, to the last bit.
    choisit_cellule(p, 0);
    EXPECT_EQ(p.cel_disc, power_record{}.cel_disc);
    EXPECT_NEAR(rendement_nominal(p), 4300. / 1368 / 16 * 100, 1e-5);
    choisit_cellule(p, 2);
    EXPECT_EQ(p.cel_type, 0);
}

TEST(catalogues, accumulators) {
    power_record p;
    p.bat_ns = 7;
    p.bat_c = 4;
    choisit_batterie(p, 2);
    EXPECT_EQ(p.de_pt[2], (point_courbe{80, .1f, -2, 3.4f, .002f, -.4f}));
    EXPECT_EQ(p.ch_pt[3], (point_courbe{100, 0, -5, 4.15f, -.001f, .15f}));
    const std::array<float, 7> attendu = {1.0f, .8f, -50, 30, 50, 500, 300};
    const std::array<float, 7> lu = {p.bat_cmax, p.bat_c10,  p.bat_tmin, p.bat_cmin_pct,
                                     p.bat_t999, p.bat_tau0, p.bat_tau50};
    EXPECT_EQ(lu, attendu);
    EXPECT_EQ(p.gst_vch_max, 4.0f);
    EXPECT_EQ(p.gst_k_recharge, 1.0f);
    EXPECT_EQ(p.bat_ns, 7);
    EXPECT_EQ(p.bat_c, 4);
    // The points make a curve: full at 1C and 25 degC between the two plateaus.
    EXPECT_NEAR(bat_v_discharge(p, 1, 25, .5), 3.5, 1e-6);

    p.ch_pt[1][3] = 4.2f;
    const power_record avant = p;
    choisit_batterie(p, batterie_generique);
    EXPECT_EQ(p.bat_type, 3);
    EXPECT_EQ(p.ch_pt, avant.ch_pt);
    EXPECT_EQ(p.gst_vch_max, avant.gst_vch_max);

    choisit_batterie(p, 1);
    EXPECT_EQ(p.bat_type, 1);
    EXPECT_EQ(p.ch_pt, charge_nickel);
    EXPECT_EQ(p.de_pt, decharge_nickel);
    EXPECT_EQ(p.gst_vch_max, 1.55f);
    choisit_batterie(p, 4);
    EXPECT_EQ(p.bat_type, 1);
}

TEST(reparations, gap_between_short_circuit_and_maximum_power) {
    power_record p; // Isc .53, Imp .5, Voc 1, Vmp .86
    p.cel_isc = .5f;
    repare_isc(p);
    EXPECT_FLOAT_EQ(p.cel_isc, .52f);
    EXPECT_EQ(p.cel_imp, .5f);
    p.cel_imp = .7f;
    repare_imp(p);
    EXPECT_FLOAT_EQ(p.cel_imp, .5f);
    p.cel_voc = .2f;
    repare_voc(p);
    EXPECT_FLOAT_EQ(p.cel_voc, .88f);
    p.cel_vmp = 3;
    repare_vmp(p);
    EXPECT_FLOAT_EQ(p.cel_vmp, .86f);
    const power_record sain = p;
    repare_isc(p), repare_imp(p), repare_voc(p), repare_vmp(p);
    EXPECT_EQ(p.cel_isc, sain.cel_isc);
    EXPECT_EQ(p.cel_vmp, sain.cel_vmp);
}

TEST(reparations, end_of_life_products_keep_their_order) {
    power_record p;
    p.cel_radisc = .9f; // .477 against .5
    repare_radisc(p);
    EXPECT_FLOAT_EQ(p.cel_radimp, static_cast<float>(.9 * .98 * .53 / .5));
    EXPECT_GT(p.cel_radisc * p.cel_isc, p.cel_radimp * p.cel_imp);
    p.cel_radimp = 1;
    repare_radimp(p);
    EXPECT_FLOAT_EQ(p.cel_radisc, static_cast<float>(1.02 * .5 / .53));
    EXPECT_EQ(p.cel_radimp, 1);
    p.cel_radvoc = .5f;
    repare_radvoc(p);
    EXPECT_FLOAT_EQ(p.cel_radvmp, static_cast<float>(.5 * .98 / .86));
    p.cel_radvmp = .9f;
    repare_radvmp(p);
    EXPECT_FLOAT_EQ(p.cel_radvoc, static_cast<float>(.9 * 1.02 * .86));
    // No division by a current of zero from a file.
    p.cel_imp = p.cel_isc = 0;
    repare_radisc(p);
    EXPECT_EQ(p.cel_radimp, 1);
}
