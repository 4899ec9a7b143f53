/// Sweeps and sizing: the same bytes however they are run, and the numbers of single budgets.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "tests/batch/lance_batch.h"

namespace {

const std::string projet =
    "--orb " DOSSIER_DATA "/exemples/microsatellite.orb --pwr " DOSSIER_DATA "/exemples/microsatellite.pwr ";

std::vector<std::vector<std::string>> cellules(const std::string& texte) {
    std::vector<std::vector<std::string>> lignes;
    std::istringstream flux(texte);
    for (std::string ligne, mot; std::getline(flux, ligne);) {
        auto& mots = lignes.emplace_back();
        for (std::istringstream m(ligne); std::getline(m, mot, ',');) mots.push_back(mot);
    }
    return lignes;
}

} // namespace

TEST(balayage, rows_are_those_of_single_budgets_on_any_number_of_cores_and_after_a_break) {
    const dossier_essai dossier;
    // 41 x 2 variants in blocks of 16; the orbit varies, so that each has its own environment.
    const std::string commande =
        "balayage " + projet +
        "--pas 300 --varie bat_c=5:15:0.25 --varie orb_inclinaison=0,60 --mesures marge,soc_fin ";
    const auto seul = lance_batch(commande + "--coeurs 1");
    ASSERT_EQ(seul.statut, 0) << seul.erreurs;
    EXPECT_EQ(lance_batch(commande + "--coeurs 3").sortie, seul.sortie);

    const auto lignes = cellules(seul.sortie);
    ASSERT_EQ(lignes.size(), 1 + 41 * 2u);
    EXPECT_EQ(lignes[0], (std::vector<std::string>{"variante", "bat_c", "orb_inclinaison", "marge", "soc_fin",
                                                   "faute"}));
    for (const std::size_t v : {0u, 37u, 81u}) {
        EXPECT_EQ(lignes[v + 1][0], std::to_string(v));
        const auto bilan =
            cellules(lance_batch("bilan " + projet + "--pas 300 --colonnes marge,soc_fin --champ bat_c=" +
                                 lignes[v + 1][1] + " --champ orb_inclinaison=" + lignes[v + 1][2])
                         .sortie);
        EXPECT_EQ(lignes[v + 1][3], bilan.back()[0]) << v;
        EXPECT_EQ(lignes[v + 1][4], bilan.back()[1]) << v;
    }

    // Cut in the middle of a row, then taken up again in place.
    const std::string fichier = dossier / "res.csv";
    ecrit(fichier, seul.sortie.substr(0, seul.sortie.size() / 2));
    EXPECT_EQ(lance_batch(commande + "--reprise " + fichier).statut, 0);
    EXPECT_EQ(lit(fichier), seul.sortie);
    // What a killed run leaves beside its place is found.
    fs::remove(fichier);
    ecrit(fichier + ".partiel", seul.sortie.substr(0, seul.sortie.size() / 3));
    EXPECT_EQ(lance_batch(commande + "--reprise " + fichier).statut, 0);
    EXPECT_EQ(lit(fichier), seul.sortie);
    EXPECT_FALSE(fs::exists(fichier + ".partiel"));
    // Rows of another sweep are no beginning of this one.
    EXPECT_EQ(lance_batch("balayage " + projet +
                          "--varie bat_c=6:16:0.25 --varie orb_inclinaison=0,60 --mesures "
                          "marge,soc_fin --reprise " +
                          fichier)
                  .statut,
              1);
    EXPECT_EQ(lit(fichier), seul.sortie);
}

#ifdef KESTREL_BATCH_MPI
TEST(balayage, two_ranks_give_the_same_bytes) {
    const dossier_essai dossier;
    const std::string mpirun = "OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1 mpirun "
                               "--oversubscribe -np 2 '" KESTREL_BATCH_MPI "' ";
    const std::string commande = "balayage " + projet + "--pas 60 --varie bat_c=5:15:0.02 ";
    const std::string fichier = dossier / "res.csv";
    ASSERT_EQ(lance_programme(mpirun + commande + "-o " + fichier).statut, 0);
    EXPECT_EQ(lit(fichier), lance_batch(commande).sortie);
}
#endif

TEST(balayage, draws_depend_on_seed_and_variant_and_a_fault_leaves_the_study_going) {
    const std::string commande = "balayage " + projet + "--pas 300 --orbites 1 --mesures soc_fin --graine 5 ";
    const auto tous = lance_batch(commande + "--varie 'bat_c~N(10,2)' --tirages 400");
    const auto lignes = cellules(tous.sortie);
    ASSERT_EQ(lignes.size(), 401u);
    double somme = 0, carres = 0;
    for (std::size_t i = 1; i < lignes.size(); ++i) {
        const double x = std::stod(lignes[i][1]);
        somme += x;
        carres += x * x;
    }
    const double moyenne = somme / 400, ecart = std::sqrt(carres / 400 - moyenne * moyenne);
    EXPECT_NEAR(moyenne, 10, 3 * 2 / std::sqrt(400.0)); // three standard errors
    EXPECT_NEAR(ecart, 2, 3 * 2 / std::sqrt(800.0));
    EXPECT_EQ(
        lance_batch(commande + "--varie 'bat_c~N(10,2)' --tirages 10").sortie,
        tous.sortie.substr(0, lance_batch(commande + "--varie 'bat_c~N(10,2)' --tirages 10").sortie.size()));
    // A perigee inside the shadow's sphere faults; its neighbours do not.
    const auto fautes = cellules(lance_batch(commande + "--varie orb_demi=7100,6400,7200").sortie);
    ASSERT_EQ(fautes.size(), 4u);
    EXPECT_EQ(fautes[1].back() + fautes[2].back() + fautes[3].back(), "010");
    EXPECT_EQ(fautes[2][2], "");
    // What is no setting of the orbit changes the environment of the variants too.
    for (const char* champ : {"albedo[2]=0.4:0.7:0.3", "earth_ir[2]=100,300", "sun_power=3e26,4e26"}) {
        const auto deux =
            cellules(lance_batch("balayage " + projet +
                                 "--debut 27107.5 --pas 300 --orbites 1 --mesures t_pan_max --varie " + champ)
                         .sortie);
        ASSERT_EQ(deux.size(), 3u) << champ;
        EXPECT_NE(deux[1][2], deux[2][2]) << champ;
    }
}

TEST(balayage, wrong_plans_are_told_with_the_limits) {
    for (const char* faux : {"", "--varie bat_z=1,2", "--varie bat_c=0,5", "--varie bat_c=",
                             "--varie bat_c=1:2", "--varie bat_c=2:1:1", "--varie 'bat_c~U(2,1)' --tirages 2",
                             "--varie 'bat_c~N(2,1)'", "--varie bat_c=1,2 --tirages 3",
                             "--varie bat_c=1,2 --mesures rien", "--varie bat_c=1,2 --coeurs 0"})
        EXPECT_EQ(lance_batch("balayage " + std::string(faux)).statut, 2) << faux;
    const std::string dit = lance_batch("balayage --varie bat_c=0,5").erreurs;
    EXPECT_NE(dit.find("bat_c"), std::string::npos) << dit;
    EXPECT_NE(dit.find("supérieur à 0"), std::string::npos) << dit;
}

TEST(dimensionne, the_answer_reaches_the_goal_and_a_little_less_does_not) {
    const std::string base = projet + "--pas 300 ";
    const auto r = lance_batch("dimensionne " + base + "--champ bat_c --de 2 --a 30 --but 'dod<=10'");
    ASSERT_EQ(r.statut, 0) << r.erreurs;
    const auto lignes = cellules(r.sortie);
    const double c = std::stod(lignes.back()[1]);
    const auto dod = [&](double x) {
        return std::stod(
            cellules(
                lance_batch("bilan " + base + "--colonnes dod --champ bat_c=" + std::to_string(x)).sortie)
                .back()[0]);
    };
    EXPECT_LE(dod(c + 1e-5), 10);
    EXPECT_GT(dod(c - 1e-3), 10);
    EXPECT_EQ(lance_batch("dimensionne " + base + "--champ bat_c --de 2 --a 30 --but 'dod<10'").sortie,
              r.sortie);
    EXPECT_EQ(lance_batch("dimensionne " + base + "--champ bat_c --de 2 --a 3 --but 'dod<=1'").statut, 4);
    EXPECT_EQ(lance_batch("dimensionne " + base + "--champ bat_ns --de 20 --a 40 --but tient").statut, 0);
    const auto entier =
        cellules(lance_batch("dimensionne " + base + "--champ bat_np --de 1 --a 40 --but 'dod<=5'").sortie);
    EXPECT_EQ(entier.back()[1], "2");
    EXPECT_EQ(entier[1][3], "0") << "and one is not enough";
    for (const char* faux : {"--de 1 --a 2 --but tient", "--champ bat_c --de 2 --a 1 --but tient",
                             "--champ bat_c --de 0 --a 1 --but tient", "--champ bat_c --de 1 --a 2",
                             "--champ bat_c --de 1 --a 2 --but 'dod=3'"})
        EXPECT_EQ(lance_batch("dimensionne " + std::string(faux)).statut, 2) << faux;
}
