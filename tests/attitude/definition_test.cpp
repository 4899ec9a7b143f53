/// Start of a run, totals of mass and inertia, Sun pointing.
#include <gtest/gtest.h>

#include "attitude/att_defin_attitude.h"
#include "orbit/soleil.h"
#include "shell/surveillance.h"

TEST(bilan_masses, totals) {
    attitude_record a;
    bilan_masses(a);
    EXPECT_EQ(a.Mt, a.Masse);
    EXPECT_EQ(a.I.e, a.I_corps.e);

    a.mext = {1, 0, 0};
    a.dext = {2, 0, 0};
    bilan_masses(a);
    EXPECT_DOUBLE_EQ(a.Mt, a.Masse + 1); // once in the mass, twice in the inertia: meant
    EXPECT_DOUBLE_EQ(a.I(1, 1), a.I_corps(1, 1) + 8);
    EXPECT_DOUBLE_EQ(a.I(2, 2), a.I_corps(2, 2) + 8);
    EXPECT_DOUBLE_EQ(a.I(0, 0), a.I_corps(0, 0));

    a = {};
    a.cm = {.1, -.2, .3};
    a.md = {0, 2, 0};
    a.ld = {0, .5, 0};
    a.I_corps(0, 1) = .25;
    bilan_masses(a);
    EXPECT_DOUBLE_EQ(a.Mt, 54);
    // Steiner's theorem for the body; a pair of 2 kg at half a metre on y.
    EXPECT_NEAR(a.I(0, 0), a.I_corps(0, 0) + 50 * (.04 + .09) + 2 * .25 * 2, 1e-12);
    EXPECT_NEAR(a.I(1, 1), a.I_corps(1, 1) + 50 * (.01 + .09), 1e-12);
    EXPECT_NEAR(a.I(0, 1), .25 + 50 * .1 * -.2, 1e-12);
    EXPECT_EQ(a.I(1, 0), a.I(0, 1));
    EXPECT_EQ(a.cm_total, a.cm);
    EXPECT_DOUBLE_EQ(a.face_c[0][0], .225 - .1);
    EXPECT_DOUBLE_EQ(a.face_c[3][0], -.225 - .1);
    EXPECT_DOUBLE_EQ(a.face_c[4][1], -.225 + .2);
    EXPECT_DOUBLE_EQ(a.face_c[0][2], -.3);
}

TEST(attitude_init, brings_the_state_to_the_initial_conditions) {
    attitude_record a;
    pointage_record p;
    a.omega_init = {.1, .2, .3, .4, .5, .6};
    a.OM_init = {10, 20, 30};
    a.omd = {7, 7, 7};
    a.z = a.zd = a.zdd = {1, 1, 1};
    a.dip_cmd = {1, -1, 1};
    a.jet_cmd = {1, 1, 1};
    a.dip_tot = {};
    p.yi_init = {.1, .2, .3};
    p.yd_init = {.4, .5, .6}; // roll, yaw, pitch
    attitude_init(a, p);
    EXPECT_EQ(a.omega, a.omega_init);
    EXPECT_EQ(a.om, (vec3{10 - .1, 20 - .2, 30 - .3}));
    EXPECT_EQ(a.omd, (vec3{-.4, -.6, 7})); // element 1 twice, element 2 as it was
    EXPECT_EQ(a.z, (vec3{}));
    EXPECT_EQ(a.zdd, (vec3{}));
    EXPECT_EQ(a.dip_cmd, (std::array<int16_t, 3>{}));
    EXPECT_EQ(a.jet_cmd, (std::array<int16_t, 3>{}));
    EXPECT_EQ(a.dip_tot, a.dip_res);
    // Euler rates of roll, pitch, yaw for the sequence yaw, pitch, roll (Hughes, appendix A).
    const auto taux = [](double roulis, double tangage) {
        const double t = .2 * std::sin(roulis) + .3 * std::cos(roulis);
        return vec3{.1 + t * std::tan(tangage), .2 * std::cos(roulis) - .3 * std::sin(roulis),
                    t / std::cos(tangage)};
    };
    const vec3 i = taux(.1, .2), d = taux(.4, .6);
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(a.yi[k], p.yi_init[k]);
        EXPECT_EQ(a.yd[k], p.yd_init[k]);
        EXPECT_NEAR(a.yi[3 + k], i[k], 1e-15);
        EXPECT_NEAR(a.yd[3 + k], d[k], 1e-15);
    }
    double norme = 0;
    for (const double q : a.quat) norme += q * q;
    EXPECT_NEAR(norme, 1, 1e-15);
}

TEST(pointage_soleil, ends_in_its_fault) {
    attitude_record a;
    orbit_state o;
    a.yd = {1, 2, 3, 4, 5, 6};
    surveillance veille;
    pointage_soleil(18800, a, o);
    EXPECT_TRUE(veille.faute());
    EXPECT_EQ(a.yd, (std::array<double, 6>{}));
    EXPECT_EQ(o.soleil_pos, soleil_position(18800));
}
