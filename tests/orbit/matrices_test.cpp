/// Frame turns and the linear solver. Expected values: the geometry of each frame, Kepler's equation,
/// residuals.
#include "orbit/matrices.h"
#include "orbit/systeme_lineaire.h"

#include <gtest/gtest.h>

#include <random>

#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "shell/surveillance.h"

namespace {

orbit_state molniya() {
    orbit_state o;
    o.orbite.orb_inclinaison = 63.4;
    o.orbite.orb_ascension = 211;
    o.orbite.orb_excentricite = 0.7;
    o.orbite.orb_argument = 270;
    o.orbite.orb_anomalie = 25;
    o.orbite.orb_demi = 26554;
    orb_position(18800.3, o);
    return o;
}

void egaux(const vec3& a, const vec3& b, double tolerance, const char* quoi) {
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << quoi << ' ' << i;
}

mat3 matrice_roulis_tangage_lacet(const vec3& a) {
    const double s0 = std::sin(a[0]), c0 = std::cos(a[0]), s1 = std::sin(a[1]), c1 = std::cos(a[1]);
    const double s2 = std::sin(a[2]), c2 = std::cos(a[2]);
    mat3 r, p, y;
    r(0, 0) = 1, r(1, 1) = c0, r(1, 2) = s0, r(2, 1) = -s0, r(2, 2) = c0;
    p(1, 1) = 1, p(0, 0) = c1, p(0, 2) = -s1, p(2, 0) = s1, p(2, 2) = c1;
    y(2, 2) = 1, y(0, 0) = c2, y(0, 1) = s2, y(1, 0) = -s2, y(1, 1) = c2;
    return mat_produit(mat_produit(r, p), y);
}

} // namespace

TEST(matrices, orbital_frames_hold_the_orbit) {
    const orbit_state o = molniya();
    const tour_plan plan(o.orbite);
    const vec3 sat = plan.vers_plan(o.sat_pos), vit = plan.vers_plan(o.sat_vit);
    const double r = vec_norme(o.sat_pos);
    EXPECT_NEAR(sat[2], 0, 1e-9 * r) << "the orbit lies in its plane";
    EXPECT_NEAR(vit[2], 0, 1e-9);
    egaux(plan.depuis_plan(sat), o.sat_pos, 1e-10 * r, "plane and back");

    const tour_local local(sat);
    egaux(local.plan_vers_local(sat), {0, 0, r}, 1e-9 * r, "z is radial outward");
    const vec3 v = local.plan_vers_local(vit);
    EXPECT_GT(v[0], 0) << "x is along track";
    EXPECT_NEAR(v[0] * r, vec_norme(vec_vectoriel(o.sat_pos, o.sat_vit)), 1e-7) << "angular momentum";
    EXPECT_NEAR(v[1], 0, 1e-9) << "y is the orbit normal";
    egaux(local.local_vers_plan(local.plan_vers_local(vit)), vit, 1e-13, "local and back");
}

TEST(matrices, body_turns) {
    // Yaw of a quarter turn: what stood along y is along x; pitch: z falls on -x; roll: z falls on y.
    egaux(tour_corps(90, 0, 0).vers_corps({0, 1, 0}), {1, 0, 0}, 1e-14, "yaw");
    egaux(tour_corps(0, 90, 0).vers_corps({0, 0, 1}), {-1, 0, 0}, 1e-14, "pitch");
    egaux(tour_corps(0, 0, 90).vers_corps({0, 0, 1}), {0, 1, 0}, 1e-14, "roll");
    const tour_corps t(33, -21, 78);
    const vec3 v = {0.3, -1.2, 2.1};
    egaux(t.depuis_corps(t.vers_corps(v)), v, 1e-14, "body and back");
    const vec3 a = t.vers_corps({0.1, 0.7, -0.4}), b = t.vers_corps(v);
    egaux(vec_vectoriel(a, b), t.vers_corps(vec_vectoriel({0.1, 0.7, -0.4}, v)), 1e-13, "handedness");
}

TEST(matrices, inertial_to_body_takes_the_yaw_for_the_roll) {
    orbit_state o = molniya();
    o.pointage.psi = 12;
    o.pointage.theta = -7;
    o.pointage.phi = 40;
    const vec3 v = {1, 2, 3};
    const vec3 avant = inertiel_vers_corps(o, v);
    o.pointage.phi = -65;
    EXPECT_EQ(inertiel_vers_corps(o, v), avant) << "a roll has no effect in this direction";
    o.pointage.phi = o.pointage.psi;
    egaux(corps_vers_inertiel(o, avant), v, 1e-13, "the inverse, where roll and yaw are equal");
}

TEST(matrices, both_euler_triples_are_one_attitude) {
    orbit_state o = molniya();
    for (const vec3& angles : {vec3{0.2, -0.4, 1.1}, vec3{-1.3, 0.9, 2.8}, vec3{0, 0, 0}}) {
        vec3 a = angles, b, c;
        euler_vers_inertiel(o, a, b, c);
        const mat3 B = matrice_roulis_tangage_lacet(b), C = matrice_roulis_tangage_lacet(c);
        for (int k = 0; k < 9; ++k) EXPECT_NEAR(B.e[k], C.e[k], 1e-12);
        EXPECT_NEAR(c[1] + b[1], pi, 1e-14);
    }
    vec3 a = {0, pi, -0.5}, b, c;
    euler_vers_inertiel(o, a, b, c);
    EXPECT_EQ(a[0], 0) << "0 stays 0";
    EXPECT_EQ(a[1], pi - 1e-11) << "a half turn is kept away from";
}

TEST(matrices, angle_guard) {
    EXPECT_EQ(angle_garde(0.4), 0.4);
    EXPECT_EQ(angle_garde(-7.0), -7.0);
    EXPECT_EQ(angle_garde(0), 0);
    EXPECT_EQ(angle_garde(pi), pi - 1e-11);
    EXPECT_EQ(angle_garde(-pi), -(pi - 1e-11));
    const surveillance watch;
    EXPECT_FALSE(watch.faute());
    angle_garde(1e308); // subtracting pi changes nothing: the loop must still end
    EXPECT_TRUE(watch.faute());
}

TEST(matrices, kepler_of_the_attitude_kinematics) {
    for (double e : {0.0, 0.1, 0.7}) EXPECT_EQ(kepler_inverse(4.0, e), 4.0) << "the second half turn is left";
    for (double e : {0.01, 0.3, 0.7})
        for (double m = 0.05; m < pi; m += 0.1) {
            const double E = kepler_inverse(m, e);
            EXPECT_NEAR(E - e * std::sin(E), m, 1e-10) << e << ' ' << m;
        }
}

TEST(matrices, linear_solver) {
    std::mt19937 alea(11);
    std::uniform_real_distribution<double> u(-1, 1);
    for (int essai = 0; essai < 200; ++essai) {
        const int n = 1 + essai % 6;
        double A[36], b[6], x[6];
        for (int i = 0; i < n; ++i) {
            const double echelle = std::pow(10, 4 * u(alea)); // rows of very different sizes
            for (int j = 0; j < n; ++j) A[i * 6 + j] = echelle * u(alea);
            A[i * 6 + i] += echelle * 2;
            b[i] = echelle * u(alea);
        }
        ASSERT_EQ(resout_lineaire(n, A, 6, b, x), 0);
        for (int i = 0; i < n; ++i) {
            double reste = -b[i], taille = std::fabs(b[i]);
            for (int j = 0; j < n; ++j)
                reste += A[i * 6 + j] * x[j], taille += std::fabs(A[i * 6 + j] * x[j]);
            EXPECT_LE(std::fabs(reste), 1e-13 * taille) << n;
        }
    }
    // A system that needs exchanges, with its exact solution.
    const double P[9] = {0, 0, 2, 3, 0, 0, 0, 5, 0}, b[3] = {8, 3, 10};
    double x[3];
    ASSERT_EQ(resout_lineaire(3, P, 3, b, x), 0);
    EXPECT_EQ(x[0], 1);
    EXPECT_EQ(x[1], 2);
    EXPECT_EQ(x[2], 4);
    // Singular: two proportional rows, and a row of zeros; x stays as it is.
    const double S[9] = {1, 2, 3, 2, 4, 6, 1, 0, 1}, Z[4] = {1, 2, 0, 0};
    double y[3] = {7, 7, 7};
    EXPECT_EQ(resout_lineaire(3, S, 3, b, y), -1);
    EXPECT_EQ(resout_lineaire(2, Z, 2, b, y), -1);
    EXPECT_EQ(y[0] + y[1] + y[2], 21);
}
