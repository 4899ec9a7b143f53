/// Runs by dates in the physical model, and the coupled run.
#include <gtest/gtest.h>

#include "analysis/calcul.h"
#include "analysis/passages.h"
#include "orbit/orb_trajecto.h"
#include "physics/ombre.h"
#include "physics/soleil_almanach.h"

namespace {

struct essai {
    simulation_period periode;
    orbit_state o;
    power_record p;
    attitude_record a;
    reglages_calcul r;

    essai() {
        o.orbite.orb_inclinaison = 51.6;
        o.pointage.tangage = 20;
        bilan_masses(a);
        periode = periode_par_defaut(o.orbite);
        periode.pas_sim = 10;
        r.modele.physique = true;
        r.dossier_donnees = DOSSIER_DATA;
    }
    std::vector<std::vector<double>> lance(std::span<const char* const> noms) {
        std::vector<std::vector<double>> lignes;
        calcul c({periode, o, p, a}, voies_de(noms, p), r);
        while (c.suivant()) lignes.push_back(c.ligne());
        EXPECT_FALSE(c.faute()) << c.raison();
        return lignes;
    }
};

} // namespace

TEST(calcul_physique, light_follows_the_penumbra_and_the_eclipse_is_where_none_is_left) {
    essai e;
    const char* noms[] = {"part_soleil", "flux_sun",    "eclipse", "sat_pos",
                          "soleil_pos",  "pan_power_0", "flux_alb"};
    e.p.albedo.fill(0);
    e.p.albedo[2] = .4f; // of March, in which the period stands
    double albedo = 0;
    int penombre = 0, nuit = 0;
    for (const auto& l : e.lance(noms)) {
        const vec3 sat = {l[3], l[4], l[5]}, soleil = {l[6], l[7], l[8]};
        ASSERT_DOUBLE_EQ(l[0], part_du_soleil(sat, soleil));
        const double d = vec_norme(vec_difference(soleil, sat));
        ASSERT_NEAR(l[1], l[0] * 1361 * carre(unite_astronomique / d), 1e-4);
        ASSERT_EQ(l[2] == vrai, l[0] == 0);
        penombre += l[0] > 0 && l[0] < 1;
        nuit += l[2] == vrai;
        albedo = std::max(albedo, l[10]);
    }
    EXPECT_GE(penombre, 2); // the crossings last some 10 s
    EXPECT_GT(nuit, 150);
    EXPECT_GT(albedo, 400);
}

/// Held at the nominal pointing by wheels, the coupled satellite has the energy of the nominal one; left to
/// itself, it has not, and the Sun of the panels is that of the attitude told.
TEST(calcul_physique, the_panels_of_a_coupled_run_follow_its_attitude) {
    const char* noms[] = {"sun_z", "gen_power", "bat_soc", "angle_soleil_z", "tangage"};
    const char* de_l_energie[] = {"sun_z", "gen_power", "bat_soc"};
    essai nominal, tenu, libre;
    const auto attendu = nominal.lance(de_l_energie);
    tenu.r.couple = libre.r.couple = true;
    tenu.a.JR = {.1, .1, .1};
    tenu.a.dip_res = {};
    tenu.r.modele.controle.loi = loi_controle::pd;
    const auto a = tenu.lance(noms), b = libre.lance(noms);
    ASSERT_EQ(a.size(), attendu.size());
    double plus_grand = 0;
    for (std::size_t k = 0; k < a.size(); ++k) {
        if (k > 12) { // the first rows hold the rate to catch up
            ASSERT_NEAR(a[k][0], attendu[k][0], 1e-3) << k;
        }
        ASSERT_NEAR(b[k][0], std::cos(b[k][3] * pi / 180), 1e-12);
        plus_grand = std::max(plus_grand, std::fabs(b[k][0] - attendu[k][0]));
    }
    EXPECT_NEAR(a.back()[2], attendu.back()[2], 1e-3);
    EXPECT_NEAR(a.back()[4], 20, .05);
    EXPECT_GT(plus_grand, .5);
}

/// Torques by dates are those of the nominal pointing, as in the reference model but for what the two models
/// differ in: the gradient within the two Earth parameters, light twice as strong, drag a tenth.
TEST(calcul_physique, torques_at_the_nominal_pointing) {
    const char* noms[] = {"gradient", "aero", "solaire", "vitesse_roue"};
    essai p, q;
    for (essai* e : {&p, &q}) {
        e->o.orbite.orb_demi = 6778;
        e->o.orbite.orb_an = 1950, e->o.orbite.orb_jour = 1; // the axes of 1950 are those of the date
        e->periode = {.j_debut = 0, .j_fin = 0};
        e->o.pointage.lacet = e->o.pointage.roulis = 10; // the reference takes the yaw for the roll
        e->o.pointage.tangage = 35;
        e->a.cm = {.02, -.01, .03};
        e->a.cr.fill(0);
        e->a.cd.fill(0);
        bilan_masses(e->a);
    }
    q.r.modele.physique = false;
    pointage_record& n = q.o.pointage;
    n.psi = n.lacet, n.theta = n.tangage, n.phi = n.roulis;
    const auto a = p.lance(noms)[0], b = q.lance(noms)[0];
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(a[i] / b[i], 398600.4418 / 398601.3, 1e-5) << i;
    for (int i = 3; i < 6; ++i) EXPECT_NEAR(b[i] / a[i], 10, .01) << i;
    for (int i = 6; i < 9; ++i) EXPECT_NEAR(a[i] / b[i], 1361 / 299792458. / 2.322e-6 * 1.034, .02) << i;
    EXPECT_TRUE(std::isnan(b[9])); // no attitude is run there
}

TEST(calcul_physique, a_missing_field_file_ends_the_run_and_is_named) {
    essai e;
    e.r.dossier_donnees = "/absent";
    e.r.modele.sans_aero = true;
    const char* noms[] = {"roulis"};
    calcul c({e.periode, e.o, e.p, e.a}, voies_de(noms, e.p), e.r);
    EXPECT_FALSE(c.suivant());
    EXPECT_TRUE(c.faute_de_donnees());
    EXPECT_NE(c.raison().find("igrf14.txt"), std::string::npos);
}

/// After 30 days the drift of the node has moved the passes; the first of the first day is nearly the same.
TEST(calcul_physique, passes_follow_the_model) {
    essai e;
    const std::vector<station> toulouse = {{"Toulouse", 43.6, 1.44, .15, 5}};
    const auto passes = [&](bool physique, double jour) {
        options_modele m;
        m.physique = physique;
        const double debut = e.periode.j_debut + jour;
        return cherche_passages(trajectoire_du_modele(e.o.orbite, m), toulouse, debut, debut + 1).passages;
    };
    const auto a = passes(true, 0), b = passes(false, 0), c = passes(true, 30), d = passes(false, 30);
    ASSERT_FALSE(a.empty() || b.empty() || c.empty() || d.empty());
    EXPECT_NEAR(a[0].debut, b[0].debut, 60. / 86400);
    EXPECT_GT(std::fabs(c[0].debut - d[0].debut), 600. / 86400);
    // The highest place of each pass is where the elevation turns.
    options_modele m;
    m.physique = true;
    const trajectoire lieu = trajectoire_du_modele(e.o.orbite, m);
    for (const passage& p : a)
        for (const double s : {-2., 2.})
            EXPECT_GT(p.au_max.elevation,
                      repere_station(toulouse[0]).vers(lieu(p.date_max + s / 86400).pos).elevation);
}
