/// Geometry, fluxes and drive of the panels. Expected values: vector geometry, the exact view factors of a
/// plate near a sphere (normal and tangent plate, e.g. Modest, "Radiative Heat Transfer"), brute-force
/// maxima.
#include "power/power_panneaux.h"

#include <gtest/gtest.h>

#include "orbit/orb_trajecto.h"
#include "shell/surveillance.h"
#include "tests/releve.h"

namespace {

/// Sun and Earth in given body directions, as `environment_update` leaves them.
power_record eclaire(vec3 soleil, vec3 terre, float flux_sun = 1360, double flux_alb = 300) {
    power_record p;
    const double s = vec_norme(soleil), t = vec_norme(terre);
    for (double& x : soleil) x /= s;
    for (double& x : terre) x /= t;
    p.sun_z = soleil[2], p.sun_sxy = std::hypot(soleil[0], soleil[1]),
    p.sun_az = atan_quad(soleil[1], soleil[0]);
    p.nad_z = terre[2], p.nad_sxy = std::hypot(terre[0], terre[1]), p.nad_az = atan_quad(terre[1], terre[0]);
    p.flux_sun = flux_sun;
    p.flux_alb = flux_alb;
    p.flux_ir = 237;
    return p;
}

orbit_state altitude(double h) {
    orbit_state o;
    o.sat_pos = {0, rayon_terre + h, 0};
    return o;
}

double degres(double rad) { return rad / rad_par_degre; }

} // namespace

TEST(panneaux, cell_law_joins_the_cosine_and_ends_at_zero) {
    power_record p;
    for (const auto& [d, m] : {std::pair{50.f, 75.f}, {30.f, 89.f}, {0.f, 60.f}}) {
        p.inc_div = d;
        p.inc_max = m;
        const double D = d * rad_par_degre, M = m * rad_par_degre, h = 1e-6;
        EXPECT_NEAR(cell_cosine(p, D + h), std::cos(D) - h * std::sin(D), 1e-11)
            << "value and slope at " << d;
        EXPECT_NEAR(cell_cosine(p, M - 1e-9), 0, 1e-8);
        EXPECT_EQ(cell_cosine(p, M), 0);
        EXPECT_EQ(cell_cosine(p, pi), 0);
        EXPECT_EQ(cell_cosine(p, D / 2), std::cos(D / 2));
        for (double t = D; t < M; t += 0.01) EXPECT_LE(cell_cosine(p, t + 0.01), cell_cosine(p, t) + 1e-15);
    }
    p.inc_div = p.inc_max = 80; // no parabola between equal angles
    const surveillance watch;
    EXPECT_EQ(cell_cosine(p, 81 * rad_par_degre), 0);
    EXPECT_GT(cell_cosine(p, 79 * rad_par_degre), 0.19);
    EXPECT_FALSE(watch.faute());
}

TEST(panneaux, earth_view_factor_near_the_exact_ones) {
    power_record p;
    for (double h : {300.0, 500.0, 800.0, 1500.0}) {
        const orbit_state o = altitude(h);
        const double rho = std::asin(rayon_terre / (rayon_terre + h)), s2 = carre(std::sin(rho));
        RELEVE("vue.face", earth_view_factor(p, o, 0) / s2, 1, 0.03) << h;
        const double tangent = (2 * rho - std::sin(2 * rho)) / (2 * pi);
        RELEVE("vue.tranche", earth_view_factor(p, o, 90) / tangent, 1, 0.07) << h;
        EXPECT_NEAR(earth_view_factor(p, o, 89.99), tangent, 0.07 * tangent) << "the other branch, " << h;
        EXPECT_LT(earth_view_factor(p, o, 180), 0.05) << "turned away: 0 but for the weakness of the fit";
        EXPECT_EQ(p.earth_half, arcsin_v(rayon_terre / (rayon_terre + h)));
        EXPECT_NEAR(earth_view_factor(p, o, 90 - 1e-7), earth_view_factor(p, o, 90), 1e-7)
            << "rounding at 90 degrees does not choose the branch";
    }
    const surveillance watch;
    earth_view_factor(p, altitude(-10), 0);
    EXPECT_TRUE(watch.faute()) << "inside the Earth";
}

TEST(panneaux, target_in_eclipse_and_on_the_axis) {
    const orbit_state o = altitude(600);
    power_record p = eclaire({-1, 0, 0}, {-0.3, 0, -1}, 1360, 50);
    p.eclipse = vrai;
    panel_target_update(p, o);
    EXPECT_NEAR(incidence_earth(p, p.pan_target, pi), 0, 2e-5) << "the albedo alone is followed";
    p.flux_alb = 0;
    panel_target_update(p, o);
    EXPECT_EQ(p.pan_target, sans_cible);
    p.eclipse = faux;
    p.sun_z = 0, p.sun_sxy = 1, p.sun_az = pi;
    panel_target_update(p, o);
    EXPECT_EQ(p.pan_target, sans_cible);
    p.sun_z = 1, p.sun_sxy = 0;
    panel_target_update(p, o);
    EXPECT_EQ(p.pan_target, demi_pi) << "Sun at the zenith";
    p.sun_z = -1;
    panel_target_update(p, o);
    EXPECT_EQ(p.pan_target, demi_pi - pi) << "the flip test turns it over";
    p.flux_alb = -1;
    p.pan_target = 0.123;
    panel_target_update(p, o);
    EXPECT_EQ(p.pan_target, 0.123);
}

TEST(panneaux, refined_target_is_a_local_maximum_of_the_cell_flux) {
    const orbit_state o = altitude(600);
    for (const vec3& soleil : {vec3{-1, 0.1, 0.3}, vec3{-0.8, 0.3, -0.4}, vec3{0.7, 0.1, -0.3}}) {
        power_record p = eclaire(soleil, {-0.4, 0.2, -0.8}, 1360, 250);
        panel_target_update(p, o);
        const power_record avant = p;
        const double a = panel_target_refined(p);
        EXPECT_EQ(p.pan_target, avant.pan_target) << "changes no field";
        for (double ecart : {-0.02, 0.02}) EXPECT_LT(cell_flux(p, a + ecart, pi), cell_flux(p, a, pi));
        p.flux_alb = 0;
        EXPECT_EQ(panel_target_refined(p), p.pan_target) << "closed form without albedo";
        p.flux_alb = 250;
        p.pan_target = sans_cible;
        EXPECT_EQ(panel_target_refined(p), sans_cible);
    }
    // Nothing to find: lit neither by Sun nor Earth within the cell's reach, no fault.
    power_record p = eclaire({0, 1, 0}, {0, 1, 0.001});
    p.pan_target = 0.3;
    const surveillance watch;
    EXPECT_EQ(panel_target_refined(p), 0.3);
    EXPECT_FALSE(watch.faute());
}

namespace {

power_record servo(double cible) {
    power_record p;
    p.pan_target = cible;
    p.pan_angle = 0;
    p.pan_wait = -1;
    p.pan_tolerance = 1;
    p.pan_delay = 2;
    p.pan_speed = 1;
    return p;
}

} // namespace

TEST(panneaux, drive_waits_then_turns) {
    power_record p = servo(30 * rad_par_degre);
    panel_drive_update(p, 10); // 2 s of waiting, 8 s at 1 degree a second
    EXPECT_NEAR(degres(p.pan_angle), 8, 1e-12);
    EXPECT_EQ(p.pan_moving, vrai);
    panel_drive_update(p, 10); // the delay still stands at 2: 8 more degrees, then it is spent
    EXPECT_NEAR(degres(p.pan_angle), 16, 1e-12);
    EXPECT_EQ(p.pan_wait, -8);
    panel_drive_update(p, 10);
    EXPECT_NEAR(degres(p.pan_angle), 26, 1e-12);
    EXPECT_EQ(p.pan_wait, -1);
    panel_drive_update(p, 10);
    EXPECT_EQ(p.pan_angle, p.pan_target);
    EXPECT_EQ(p.pan_moving, faux);
    p.pan_target += 0.5 * rad_par_degre;
    const double avant = p.pan_angle;
    panel_drive_update(p, 10);
    EXPECT_EQ(p.pan_angle, avant) << "within the tolerance";
}

TEST(panneaux, drive_with_a_delay_longer_than_a_step) {
    power_record p = servo(5 * rad_par_degre);
    p.pan_delay = 25;
    p.pan_speed = 10;
    for (int attendu : {25, 15, 5}) {
        panel_drive_update(p, 10);
        EXPECT_EQ(p.pan_angle, 0);
        EXPECT_EQ(p.pan_wait, attendu);
    }
    panel_drive_update(p, 10); // 5 s left of the delay, 5 s to move
    EXPECT_EQ(p.pan_angle, p.pan_target);
}

TEST(panneaux, drive_the_short_way_and_without_need) {
    power_record p = servo(-170 * rad_par_degre);
    p.pan_angle = 170 * rad_par_degre;
    p.pan_delay = 0;
    panel_drive_update(p, 15); // through 180 degrees, and round to the negative side
    EXPECT_NEAR(degres(p.pan_angle), -175, 1e-9);
    EXPECT_EQ(p.pan_wait, 0);
    panel_drive_update(p, 15);
    EXPECT_EQ(p.pan_wait, -15) << "a delay of 0 is spent like another";
    for (auto immobile : {+[](power_record& r) { r.pan_fixed = vrai; },
                          +[](power_record& r) { r.pan_target = sans_cible; }}) {
        power_record q = servo(1);
        immobile(q);
        panel_drive_update(q, 60);
        EXPECT_EQ(q.pan_angle, 0);
        EXPECT_EQ(q.pan_wait, -1);
    }
}
