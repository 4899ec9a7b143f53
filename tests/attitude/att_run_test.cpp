/// The run loop and its results file.
///
/// The head and the form of the file are those of its description in attitude/att_resultats.h, typed here by
/// hand. Reference runs of the whole loop stand in tests/batch.
#include <gtest/gtest.h>

#include <sstream>

#include "attitude/att_run.h"
#include "orbit/pointage.h"
#include "shell/surveillance.h"
#include "tests/fichiers.h"

namespace {

struct essai {
    attitude_record a;
    orbit_state o;
    atmosphere air{DOSSIER_DATA};
    simulation_period p = periode_par_defaut(o.orbite);
    std::vector<enregistrement_att> lignes;
    std::vector<float> progres;
    int divergences = 0;

    att_run_bilan lance(double ecriture = 1) {
        lignes.clear();
        progres.clear();
        faces_recalcul(a);
        att_run_rappels r;
        r.ecrit = [this](const enregistrement_att& e) {
            lignes.push_back(e);
            leve_faute(); // what a window does while it draws is no fault of the run
        };
        r.progres = [this](float x) {
            progres.push_back(x);
            return true;
        };
        r.diverge = [this](double) { ++divergences; };
        return att_run(a, o, p, ecriture, air, r);
    }
};

} // namespace

TEST(att_run, records_bear_the_start_of_their_step) {
    essai e;
    e.p.pas_sim = 60;
    e.p.j_fin = e.p.j_debut + 10.5 * 60 / 86400;
    e.a.ctot = {1, 2, 3};
    EXPECT_EQ(e.lance().fin, att_run_fin::terminee);
    ASSERT_EQ(e.lignes.size(), 12u); // the initial state and eleven steps
    EXPECT_EQ(e.lignes[0][0], e.p.j_debut);
    EXPECT_EQ(e.lignes[1][0], e.p.j_debut);
    EXPECT_DOUBLE_EQ(e.lignes[11][0], e.p.j_debut + 600. / 86400);
    EXPECT_EQ(e.lignes[0][22], 1); // the couple that the record held
    EXPECT_NE(e.lignes[1][22], 1);
    EXPECT_EQ(e.lance(2.5).pas, 11); // rounds to 2
    EXPECT_EQ(e.lignes.size(), 6u);
    e.lance(100);
    EXPECT_EQ(e.lignes.size(), 1u);

    e.p.j_fin = e.p.j_debut;
    e.lance();
    EXPECT_EQ(e.lignes.size(), 2u);
    EXPECT_EQ(e.progres.back(), 100);
}

TEST(att_run, wheel_on_z_counts_from_the_second_run) {
    essai e;
    e.p.j_fin = e.p.j_debut;
    e.a.OM_init = {0, 9e-5, 10};
    e.lance();
    EXPECT_EQ(e.lignes[0][21], 0); // its test reads the copy of the last run
    e.lance();
    EXPECT_DOUBLE_EQ(e.lignes[0][21], 10 * 180 / 3.14159265358979);
    EXPECT_DOUBLE_EQ(e.lignes[0][20], 9e-5 * 180 / 3.14159265358979);
}

TEST(att_run, divergence_is_told_once_and_overflow_ends_the_run) {
    essai e;
    e.p.j_fin = e.p.j_debut + 1;
    const att_run_bilan b = e.lance(); // the default satellite at 120 s
    EXPECT_EQ(e.divergences, 1);
    EXPECT_TRUE(b.divergence);
    EXPECT_EQ(b.fin, att_run_fin::faute);
    EXPECT_EQ(e.lignes.size(), 42u);
    EXPECT_GT(b.date, e.p.j_debut);
    const std::string texte = texte_faute(b);
    EXPECT_NE(texte.find("2001"), std::string::npos) << texte;
    for (const auto& l : e.lignes)
        for (const double x : l) EXPECT_TRUE(std::isfinite(x));

    // The next run starts clean.
    e.p.j_fin = e.p.j_debut + 3600. / 86400;
    e.p.pas_sim = 2;
    EXPECT_EQ(e.lance().fin, att_run_fin::terminee);
    EXPECT_EQ(e.divergences, 1);
}

TEST(att_run, missing_data_file_ends_the_run_by_name) {
    essai e;
    e.air = atmosphere("/nulle/part");
    const att_run_bilan b = e.lance();
    EXPECT_EQ(b.fin, att_run_fin::faute);
    EXPECT_EQ(b.date, e.p.j_debut);
    EXPECT_NE(texte_faute(b).find("/nulle/part/"), std::string::npos);
    EXPECT_EQ(e.lignes.size(), 1u);
}

TEST(att_run, caller_can_stop_it) {
    essai e;
    e.p.pas_sim = 1;
    e.p.j_fin = e.p.j_debut + 1;
    att_run_rappels r;
    int appels = 0;
    float dernier = 0;
    r.progres = [&](float x) {
        EXPECT_GE(x, dernier);
        dernier = x;
        return ++appels < 3;
    };
    const att_run_bilan b = att_run(e.a, e.o, e.p, 1, e.air, r);
    EXPECT_EQ(b.fin, att_run_fin::arretee);
    EXPECT_LT(b.pas, 80000);
    EXPECT_EQ(appels, 3);
}

TEST(resultats, file_to_the_byte) {
    const dossier_essai essai;
    const fs::path& dossier = essai.chemin;
    const std::string chemin = chemin_resultats(dossier.string());
    EXPECT_EQ(fs::path(chemin), dossier / "temp" / "temp.tmp");

    ecrivain_resultats f;
    std::string raison;
    ASSERT_TRUE(f.ouvre(chemin, 18707.55001, 18708, 120, raison)) << raison;
    attitude_record a;
    a.omega = {pi / 180, 0, -0.0, 1e-9, 0, 0};
    a.yd = {pi, pi / 2, -pi / 4, pi / 30, 2 * pi / 30, 3 * pi / 30};
    a.yi = {1. / 3, 0, 0, 0, 0, 0};
    a.om = {5, 5, 5};
    a.ctot = {1.5e-20, -12345678, 0.1 + 0.2};
    f.ecrit(enregistrement_de(a, 18707.55001, false));
    ASSERT_TRUE(f.ferme());

    const std::string texte = lit(chemin);
    std::string attendu = "\"#BeginTime(JulianDays)\",18707.55001\r\n"
                          "\"#EndTime(JulianDays)\",18708\r\n"
                          "\"#TimeStep(s)\",120\r\n"
                          "\r\n"
                          "\"j_courant\"";
    std::istringstream noms(
        "omega(0) omega(1) omega(2) omega(3) omega(4) omega(5) yd(0) yd(2) yd(1) yd(3) yd(4) yd(5) "
        "yi(0) yi(1) yi(2) yi(3) yi(4) yi(5) om(0) om(1) om(2) ctot(0) ctot(1) ctot(2)");
    for (std::string nom; noms >> nom;) {
        const bool couple = nom[0] == 'c', taux = nom[0] == 'y' && nom[3] >= '3';
        attendu += ",\"" + nom + (couple ? "" : taux ? " * (30 / pi)" : " * (180 / pi)") + '"';
    }
    attendu += "\r\n18707.55001,1,0,0,5.72957795130824E-08,0,0,180,-45,90,1,2,3,"
               "19.0985931710275,0,0,0,0,0,0,0,0,1.5E-20,-12345678,0.3\r\n";
    EXPECT_EQ(texte, attendu);

    EXPECT_FALSE(f.ouvre((dossier / "temp").string(), 0, 1, 1, raison)); // a folder
    EXPECT_FALSE(raison.empty());
}

TEST(resultats, two_programs_have_a_file_each) {
    const dossier_essai essai;
    const std::string dossier = essai.chemin.string(), abandonne = (essai / "temp/temp-1-0.tmp").string();
    place_resultats premier;
    EXPECT_EQ(premier.prend(dossier), chemin_resultats(dossier));
    EXPECT_EQ(premier.prend(dossier), chemin_resultats(dossier));
    ecrit(abandonne, "of a program that was killed");
    std::string autre;
    {
        place_resultats second;
        autre = second.prend(dossier);
        EXPECT_NE(autre, chemin_resultats(dossier));
        EXPECT_TRUE(fs::exists(autre));
    }
    EXPECT_FALSE(fs::exists(autre));
    EXPECT_FALSE(fs::exists(abandonne));
    EXPECT_TRUE(fs::exists(chemin_resultats(dossier)));
}
