/// Whole runs of the attitude in the physical model.
#include <gtest/gtest.h>

#include "orbit/matrices.h"
#include "physics/attitude_physique.h"
#include "physics/soleil_almanach.h"
#include "tests/releve.h"

namespace {

constexpr double deg = 180 / 3.141592653589793;

struct scene {
    attitude_record a;
    orbit_state o;
    options_modele options;
    double debut = 18707.5;
    atmosphere air{DOSSIER_DATA};
    champ_geomagnetique champ{DOSSIER_DATA};

    scene() {
        o.orbite = {};
        o.orbite.orb_demi = 6978.137, o.orbite.orb_inclinaison = 97.8, o.orbite.orb_excentricite = 0;
        o.orbite.orb_ascension = 40, o.orbite.orb_anomalie = 10;
        options.sans_j2 = options.sans_gradient = options.sans_aero = options.sans_solaire =
            options.sans_magnetique = true;
    }
    double n() const { return std::sqrt(mu_physique / o.orbite.orb_demi) / o.orbite.orb_demi; }
    /// Rates of a satellite that follows the local frame in nominal pointing.
    void suit_l_orbite() { a.omega_init = {0, n(), 0, 0, 0, 0}; }
    std::vector<ligne_attitude> lance(double duree, int pas) {
        attitude_physique run(a, o, options, debut, air, champ);
        std::vector<ligne_attitude> lignes(1);
        run.lit(lignes[0]);
        for (double t = pas; t < duree + .1; t += pas) {
            run.avance(debut + t / 86400);
            run.lit(lignes.emplace_back());
        }
        evenements = run.evenements();
        return lignes;
    }
    std::vector<evenement_controle> evenements;
};

/// The two frequencies [rad/s] of an undamped signal sampled every h: x[k+2] + x[k-2] + a (x[k+1] + x[k-1]) +
/// b x[k] = 0, by least squares (Prony).
std::array<double, 2> deux_frequences(const std::vector<double>& x, double h) {
    double s11 = 0, s12 = 0, s22 = 0, t1 = 0, t2 = 0;
    for (std::size_t k = 2; k + 2 < x.size(); ++k) {
        const double u = x[k + 1] + x[k - 1], v = x[k], y = -(x[k + 2] + x[k - 2]);
        s11 += u * u, s12 += u * v, s22 += v * v, t1 += u * y, t2 += v * y;
    }
    const double det = s11 * s22 - s12 * s12, a = (t1 * s22 - t2 * s12) / det,
                 b = (t2 * s11 - t1 * s12) / det;
    const double racine = std::sqrt(a * a - 4 * (b - 2)); // of C^2 + a C + b - 2 = 0, C = 2 cos(w h)
    return {std::acos((-a + racine) / 4) / h, std::acos((-a - racine) / 4) / h};
}

} // namespace

/// The power model's chain of turns gives the attitude that the run starts from; the angles read back are
/// those entered, and a step later they have moved by the rates alone.
TEST(attitude_physique, entry_is_the_nominal_pointing_of_the_power_model) {
    scene s;
    s.o.orbite.orb_an = 1950, s.o.orbite.orb_jour = 1; // node of 1950 and of date are one
    s.debut = 100;
    s.o.pointage.roulis = 25, s.o.pointage.tangage = -35, s.o.pointage.lacet = 130;
    s.a.omega_init = {.01, -.02, .015, 0, 0, 0};
    const auto lignes = s.lance(2, 1);
    ASSERT_EQ(lignes.size(), 3u);

    milieu m;
    environnement_physique(s.o.orbite, true, nullptr, nullptr).place(100, {}, m);
    const tour_plan plan(s.o.orbite);
    const tour_local local(plan.vers_plan(m.r));
    const tour_corps corps(130, -35, 25);
    const rotation A = rotation_de({lignes[0].q[0], lignes[0].q[1], lignes[0].q[2], lignes[0].q[3]});
    for (const vec3& v : {vec3{1, 0, 0}, vec3{0, 1, 0}, vec3{0, 0, 1}}) {
        const vec3 attendu = corps.vers_corps(local.plan_vers_local(plan.vers_plan(v))), lu = A.vers_corps(v);
        for (int i = 0; i < 3; ++i) RELEVE("pointage.nominal", lu[i], attendu[i], 1e-12);
    }
    EXPECT_NEAR(lignes[0].roulis, 25, 1e-9);
    EXPECT_NEAR(lignes[0].tangage, -35, 1e-9);
    EXPECT_NEAR(lignes[0].lacet, 130, 1e-9);
    for (int k = 0; k < 3; ++k) { // the rates told are the slopes of the angles told (rpm)
        const double pente = (lignes[2].classique[7 + k] - lignes[0].classique[7 + k]) / 2;
        EXPECT_NEAR(lignes[1].classique[10 + k] * 6, pente, 2e-3) << k;
        EXPECT_NEAR(lignes[1].classique[16 + k] * 6,
                    (lignes[2].classique[13 + k] - lignes[0].classique[13 + k]) / 2, 2e-3)
            << k;
    }
}

/// P. C. Hughes, Spacecraft Attitude Dynamics (1986), 9.1: pitch n sqrt(3 (Ix - Iz) / Iy); roll and yaw the
/// roots of w^4 - (1 + 3 k1 + k1 k3) n^2 w^2 + 4 k1 k3 n^4, k1 = (Iy - Iz) / Ix, k3 = (Iy - Ix) / Iz.
TEST(gradient, libration_periods_of_the_three_axes) {
    scene s;
    s.options.sans_gradient = false;
    s.a.I = mat_diagonale(10, 12, 4);
    s.o.pointage.tangage = .05, s.o.pointage.roulis = .05, s.o.pointage.lacet = .03;
    const rotation R = rotation_lacet_tangage_roulis(.03 / deg, .05 / deg, .05 / deg);
    for (int i = 0; i < 3; ++i) s.a.omega_init[i] = R.l[i][1] * s.n();
    const auto lignes = s.lance(40000, 200);

    std::vector<double> tangage, roulis;
    for (const auto& l : lignes) tangage.push_back(l.tangage), roulis.push_back(l.roulis);
    // One frequency: x[k+1] + x[k-1] = 2 cos(w h) x[k].
    double num = 0, den = 0;
    for (std::size_t k = 1; k + 1 < tangage.size(); ++k)
        num += (tangage[k + 1] + tangage[k - 1]) * tangage[k], den += tangage[k] * tangage[k];
    const double pulsation = std::acos(num / den / 2) / 200;
    RELEVE("libration.tangage", pulsation / s.n(), std::sqrt(3 * 6. / 12), 2e-4);

    const double k1 = 8. / 10, k3 = 2. / 4, b = 1 + 3 * k1 + k1 * k3, d = std::sqrt(b * b - 16 * k1 * k3);
    const auto [lente, rapide] = deux_frequences(roulis, 200);
    RELEVE("libration.roulis_lacet", rapide / s.n(), std::sqrt((b + d) / 2), 1e-3);
    RELEVE("libration.roulis_lacet", lente / s.n(), std::sqrt((b - d) / 2), 1e-3);
}

/// Equilibrium in the local frame, and the region of stability (D. B. DeBra and R. H. Delp, 1961): Iy > Ix >
/// Iz librates, a body across (Ix < Iz) turns over.
TEST(gradient, equilibrium_and_stability_region) {
    scene s;
    s.options.sans_gradient = false;
    s.a.I = mat_diagonale(10, 12, 4);
    s.suit_l_orbite();
    for (const auto& l : s.lance(30000, 300)) {
        for (const double angle : {l.roulis, l.tangage, l.lacet})
            RELEVE("libration.equilibre", angle, 0, 1e-6);
    }
    const auto plus_grand = [&] {
        s.o.pointage.tangage = 2;
        double x = 0;
        for (const auto& l : s.lance(60000, 300))
            x = std::max({x, std::fabs(l.tangage), std::fabs(l.roulis)});
        return x;
    };
    EXPECT_LT(plus_grand(), 2.1);
    s.a.I = mat_diagonale(4, 12, 10);
    EXPECT_GT(plus_grand(), 60);
}

/// Flow and light along +x: by hand, force -rho v^2 A (2 - sn) and -p A (1 - cr + 2 (cr + cd / 3)) on one
/// face. A face of full accommodation gives -rho v^2 A c u whatever the incidence.
TEST(couples, one_face_by_hand) {
    attitude_record a;
    a.dim = {.4, .5, .6};
    a.cm = {.01, .02, -.03};
    faces_recalcul(a);
    const double F = -4e-12 * 7500 * 7500 * .3 * (2 - .9);
    const vec3 T = couple_aero_physique(a, 4e-12, {7500, 0, 0});
    RELEVE("faces.air_lumiere", T[1] / (.03 * F), 1, 1e-12);
    RELEVE("faces.air_lumiere", T[2] / (.02 * F), 1, 1e-12);
    const double L = -4.5e-6 * .3 * (.1 + 2 * (.9 + .05 / 3));
    const vec3 S = couple_solaire_physique(a, 4.5e-6, {1, 0, 0});
    RELEVE("faces.air_lumiere", S[1] / (.03 * L), 1, 1e-12);

    a.sn = a.st = {1, 1, 1, 1, 1, 1};
    const vec3 v = {3000, -4000, 5000}, u = vec_echelle(1 / vec_norme(v), v);
    vec3 somme{};
    for (const int face : {0, 4, 2}) { // those that look forward
        const double aires[] = {.3, .24, .2};
        const vec3 f = vec_echelle(-4e-12 * 5e7 * aires[face % 3] * std::fabs(u[face % 3]), u);
        somme = vec_somme(somme, vec_vectoriel(a.face_c[face], f));
    }
    const vec3 biais = couple_aero_physique(a, 4e-12, v);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(biais[i], somme[i], 1e-20);
}

/// Detumbling by B-dot: the mean energy of each turn round the Earth is below that of the one before, down to
/// a few times the orbit's rate, with the coils at their limit at first and free at last.
TEST(controle, b_dot_brakes_the_rotation) {
    scene s;
    s.options.controle.loi = loi_controle::b_dot;
    s.options.controle.gain = 1e6, s.options.controle.dipole_max = 1;
    s.a.omega_init = {.02, -.03, .04, 0, 0, 0};
    const auto lignes = s.lance(6 * 5800, 58);
    for (std::size_t k = 0; k < lignes.size(); k += 4)
        releve::point("b_dot", "modèle", static_cast<double>(k) * 58 / 3600, 1e3 * lignes[k].energie);
    std::array<double, 6> E{};
    for (std::size_t k = 0; k < 600; ++k) E[k / 100] += lignes[k].energie / 100;
    const double reste = .5 * 2.541 * carre(2.5 * s.n()); // the turn that the field itself makes
    EXPECT_GT(E[1], reste);
    for (int k = 1; k < 6; ++k) {
        EXPECT_LT(E[k], std::max(E[k - 1], reste)) << k;
        releve::note("controle.b_dot", E[k] / std::max(E[k - 1], reste), 1);
    }
    EXPECT_LT(vec_norme(lignes.back().omega) / deg, 4 * s.n());
    ASSERT_FALSE(s.evenements.empty());
    EXPECT_TRUE(s.evenements.front().debut);
    EXPECT_FALSE(s.evenements.back().debut);
    EXPECT_EQ(lignes.back().sature, 0);
}

/// PD in a run: towards the local frame and towards the Sun, with every torque; a wheel at its largest speed
/// is an event and its axis is lost.
TEST(controle, pd_points_and_tells_its_limits) {
    scene s;
    s.options = {};
    s.a.dip_res = {}; // a PD law leaves its torque as an offset
    s.options.controle.loi = loi_controle::pd;
    s.a.JR = {.01, .01, .01};
    s.a.omega_init = {.002, 0, -.002, 0, 0, 0};
    s.o.pointage.roulis = 20;
    ligne_attitude fin = s.lance(1200, 10).back();
    EXPECT_NEAR(fin.roulis, 20, .02);
    EXPECT_NEAR(fin.tangage, 0, .02);
    EXPECT_NEAR(fin.lacet, 0, .02);
    EXPECT_TRUE(s.evenements.empty());

    s.o.pointage.spin = vrai;
    s.o.pointage.vspin = .05; // a turn in the 1200 s
    fin = s.lance(1200, 10).back();
    EXPECT_NEAR(fin.lacet, 0, .3);
    EXPECT_NEAR(fin.roulis, 20, .3);
    s.o.pointage.spin = faux;

    s.options.controle.cible = cible_controle::soleil;
    s.options.controle.face = 4;
    fin = s.lance(1200, 10).back();
    EXPECT_NEAR(fin.angle_soleil[1], 180, .02);

    s.options.controle.vitesse_max = 1;
    s.lance(1200, 10);
    bool vitesse = false;
    for (const auto& e : s.evenements) vitesse = vitesse || e.nature == vitesse_roue_saturee;
    EXPECT_TRUE(vitesse);
}
