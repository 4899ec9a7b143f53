/// The four disturbance torques in closed form.
///
/// Gravity gradient and libration: P. C. Hughes, Spacecraft Attitude Dynamics (1986), 8.1 and 9.1. The other
/// torques: force on one face by hand.
#include <gtest/gtest.h>

#include "attitude/att_couples.h"
#include "attitude/att_igrf.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "shell/surveillance.h"
#include "tests/fichiers.h"
#include "tests/releve.h"

namespace {

constexpr double rho = 4e-12;

/// A satellite on the x axis that flies along y over the equator, in air of constant density; nominal
/// pointing, so that body x is along track, y along the orbit normal, z outward.
struct scene {
    attitude_record a;
    orbit_state o;
    dossier_essai dossier;
    atmosphere air;

    scene() : air((prepare(dossier), dossier.chemin.string())) {
        a.dip_res = {};
        o.sat_pos = {7000, 0, 0};
        o.sat_vit = {0, 7.5, 0};
        o.sat_alt = 500;
        o.soleil_pos = {1.5e8, 0, 0};
        o.vec_soleil = {1, 0, 0};
    }
    static void prepare(const dossier_essai& dossier) {
        dossier.copie("flux_solaire.txt");
        ecrit(dossier / "densite.txt", " 100 4.00E-12 4.00E-12 4.00E-12\n"
                                       "2499 4.00E-12 4.00E-12 4.00E-12\n");
    }
    tour_inertiel_corps tour() { return tour_inertiel_corps(o); }
};

} // namespace

TEST(gradient, closed_form_and_libration_frequency) {
    scene s;
    s.a.I = mat_diagonale(3, 4, 1.5);
    const double mu = 1195803.9 / 3;
    for (const double theta : {0., 10., -35., 80.}) {
        s.o.pointage.theta = theta;
        const double t = theta * pi / 180;
        const vec3 T = couple_gradient(s.a, s.o, s.tour());
        RELEVE("couples.gradient", T[1], -3 * mu / std::pow(7000., 3) * (3 - 1.5) * std::sin(t) * std::cos(t),
               1e-19)
            << theta;
        EXPECT_NEAR(T[0], 0, 1e-19);
        EXPECT_NEAR(T[2], 0, 1e-19);
    }

    // Products of inertia are read from the upper triangle, stored positive.
    s.o.pointage.theta = 0;
    s.a.I(1, 2) = .5;
    s.a.I(2, 1) = 77;
    // n = z: n x (J n) = (-J_yz, J_xz, 0), and J_yz = -0.5.
    EXPECT_NEAR(couple_gradient(s.a, s.o, s.tour())[0], 3 * mu / std::pow(7000., 3) * .5, 1e-18);

    // Pitch libration about the vertical: w^2 = 3 n^2 (Ix - Iz) / Iy, timed over ten small swings.
    const double n = std::sqrt(mu / std::pow(7000., 3));
    const double periode = 2 * pi / (n * std::sqrt(3 * (3 - 1.5) / 4));
    double theta = 1e-3, taux = 0, t = 0, dernier = 0;
    int passages = 0;
    for (const double dt = .5; passages < 20; t += dt) {
        s.o.pointage.theta = theta * 180 / pi;
        taux += couple_gradient(s.a, s.o, s.tour())[1] / 4 * dt;
        const double avant = theta;
        theta += taux * dt;
        if (avant * theta < 0) {
            ++passages;
            dernier = t + dt * avant / (avant - theta);
        }
    }
    RELEVE("couples.libration", dernier / 9.75 / periode, 1, 1e-3); // the first passage comes after a quarter
}

TEST(aero, one_face_by_hand) {
    EXPECT_DOUBLE_EQ(facteur_vent(100), 1);
    EXPECT_DOUBLE_EQ(facteur_vent(400), 1.4);
    EXPECT_DOUBLE_EQ(facteur_vent(600), 1.4);
    EXPECT_DOUBLE_EQ(facteur_vent(800), 1);
    EXPECT_NEAR(facteur_vent(250), 1.2, 1e-15);

    scene s;
    s.a.dim = {1, .5, .4};
    s.a.cm = {0, .1, -.2};
    faces_recalcul(s.a);
    // The air follows the Earth, faster by 1.4 at 500 km.
    const double v = 7.5 - 1.4 * 0.004178079012116429 * pi / 180 * 7000;
    const double q = rho * .5 * v * v * 1e7, aire = .5 * .4;
    vec3 T = couple_aero(s.a, s.o, s.tour(), 18800, s.air);
    const double normale = -2 * q * (2 - s.a.sn[0]);
    EXPECT_NEAR(T[0], 0, 1e-15);
    RELEVE("couples.aero", T[1] / (.2 * aire * normale), 1, 1e-9); // lever (.5, -.1, .2)
    RELEVE("couples.aero", T[2] / (.1 * aire * normale), 1, 1e-9);

    // Pitched by 30 degrees the wind meets +x and +z; with levers along z alone each face is a force in x.
    s.a.cm = {};
    s.a.st = {};
    faces_recalcul(s.a);
    s.o.pointage.theta = 30;
    T = couple_aero(s.a, s.o, s.tour(), 18800, s.air);
    EXPECT_EQ(T, (vec3{})); // normal forces through the centre turn nothing
    s.a.st[0] = .8;
    T = couple_aero(s.a, s.o, s.tour(), 18800, s.air);
    const double c = std::cos(pi / 6), tangentielle = -2 * q * c * std::sin(pi / 6) * .8;
    EXPECT_NEAR(T[1], -.5 * aire * tangentielle, 1e-12); // V = (cos, 0, sin): along +z at the lever +x
    EXPECT_EQ(T[0], 0);

    // Small components are cut; from 2500 km up there is no air.
    s.a.st[0] = .8e-6;
    T = couple_aero(s.a, s.o, s.tour(), 18800, s.air);
    EXPECT_EQ(T[1], 0);
    s.a.st[0] = .8;
    s.o.sat_alt = 2500;
    EXPECT_EQ(couple_aero(s.a, s.o, s.tour(), 18800, s.air), (vec3{}));
}

TEST(solaire, one_face_by_hand_and_nothing_in_shadow) {
    scene s;
    s.a.dim = {1, .5, .4};
    s.a.cm = {.05, .1, 0};
    faces_recalcul(s.a);
    // Sun along body z (outward): face +z alone, at lever (-.05, -.1, .2).
    vec3 T = couple_solaire(s.a, s.o, s.tour());
    const double P = (2 * (s.a.cd[2] / 3 + s.a.cr[2]) + 1 - s.a.cr[2]) * (1 * .5) * -2.322e-06;
    RELEVE("couples.solaire", T[0], -.1 * P, 1e-18);
    RELEVE("couples.solaire", T[1], .05 * P, 1e-18);
    EXPECT_NEAR(T[2], 0, 1e-18);

    s.o.eclipse = vrai;
    EXPECT_EQ(couple_solaire(s.a, s.o, s.tour()), (vec3{}));
}

TEST(magnetique, field_at_the_satellite_and_dipole_in_force) {
    scene s;
    s.o.orbite.orb_inclinaison = 40;
    const double date = 18800.3;
    orb_position(date, s.o);
    sous_point(date, s.o);
    // Three unit dipoles give the field: T = D x B.
    vec3 B;
    s.a.dip_res = {1, 0, 0};
    const vec3 Tx = couple_magnetique(s.a, s.o, s.tour(), date);
    s.a.dip_res = {0, 1, 0};
    const vec3 Ty = couple_magnetique(s.a, s.o, s.tour(), date);
    B = {-Ty[2], Tx[2], -Tx[1]};
    EXPECT_EQ(Tx[0], 0);
    EXPECT_NEAR(Ty[0], B[2], 1e-18);
    // Turned back by hand: body z is outward, and the geodetic vertical stands for the geocentric one.
    const vec3 nT = champ_igrf(date).synthese(vec_norme(s.o.sat_pos), sincos_de(pi / 2 - s.o.sat_lat),
                                              sincos_de(s.o.sat_lon));
    RELEVE("couples.magnetique", vec_norme(B) / vec_norme(nT) * 1e9, 1, 3e-12);
    EXPECT_NEAR(B[2], nT[0] * 1e-9, 4e-3 * vec_norme(B)); // 0.2 degree between the two verticals

    s.a.dip_res = {.5, 0, 0};
    s.a.dip_act = {.25, 3, 4};
    s.a.dip_cmd = {-1, 0, 0};
    const vec3 T = couple_magnetique(s.a, s.o, s.tour(), date);
    EXPECT_NEAR(T[1], -.25 * B[2], 1e-18);
    EXPECT_NEAR(T[2], .25 * B[1], 1e-18);
}

TEST(couples, at_a_date_the_spin_has_turned_the_yaw) {
    scene s;
    s.a.dip_res = {1, -2, .5};
    s.o.pointage.spin = vrai;
    s.o.pointage.vspin = .1; // turns a minute
    s.o.pointage.lacet = 20;
    s.o.pointage.tangage = 5;
    const double debut = 18800, date = debut + 7. / 1440; // seven minutes: 252 degrees
    couples_a_la_date(s.a, s.o, date, debut, s.air);
    EXPECT_NEAR(s.o.pointage.psi, 272, 1e-6);
    EXPECT_EQ(s.o.pointage.theta, 5);
    // One single turn is taken off.
    couples_a_la_date(s.a, s.o, debut + 30. / 1440, debut, s.air); // 1080 degrees
    EXPECT_NEAR(s.o.pointage.psi, 740, 1e-6);
}

TEST(couples, a_number_that_is_none_is_a_fault) {
    scene s;
    s.a.cr[2] = std::nan(""); // as a damaged file may hold
    surveillance veille;
    int fautes = 0;
    for (int i = 0; i < 20; ++i, veille.efface()) { // once around: the outward face is lit by day
        couples_a_la_date(s.a, s.o, 18800 + i * .0035, 18800, s.air);
        fautes += veille.faute();
        EXPECT_EQ(veille.faute(), !std::isfinite(s.a.ctot[1])) << i;
    }
    EXPECT_GT(fautes, 0);
    EXPECT_LT(fautes, 20);
}
