/// The program's folder and the mark of outdated results.
#include "shell/etude_recuperation.h"
#include "shell/session.h"
#include "tests/fichiers.h"

#include <gtest/gtest.h>

namespace {

struct bac : testing::Test {
    dossier_essai essai;
    fs::path racine = essai.chemin;
    fs::path source = racine / "donnees";
    void SetUp() override {
        fs::create_directories(source / "exemples");
        ecrit(source / "flux_solaire.txt", "flux");
        ecrit(source / "densite.txt", "densite");
        ecrit(source / "exemples" / "a.pwr", "projet");
        fs::create_directories(racine / "docs" / "images");
        ecrit(racine / "docs" / "guide.md", "guide");
        ecrit(racine / "docs" / "images" / "a.png", "image");
    }
};

} // namespace

TEST_F(bac, a_writable_program_folder_gets_the_data_and_keeps_the_users_own) {
    const fs::path exe = racine / "bin";
    fs::create_directories(exe);
    const fs::path du_batch = racine / "batch"; // without examples: not what the program needs
    fs::create_directories(du_batch);
    ecrit(du_batch / "flux_solaire.txt", "flux du batch");
    const std::vector<std::string> sources = {(racine / "absent").string(), du_batch.string(),
                                              source.string()};
    const std::string d = trouve_dossier_depart(exe.string() + "/", (racine / "perso").string(), sources);
    EXPECT_EQ(d, exe.string()); // no trailing separator
    EXPECT_EQ(lit(exe / "flux_solaire.txt"), "flux");
    EXPECT_EQ(lit(exe / "exemples" / "a.pwr"), "projet");
    EXPECT_EQ(lit(exe / "guide" / "guide.md"), "guide");
    EXPECT_EQ(lit(exe / "guide" / "images" / "a.png"), "image");
    EXPECT_FALSE(fs::exists(racine / "perso"));

    ecrit(exe / "densite.txt", "la mienne");
    fs::last_write_time(exe / "densite.txt",
                        fs::last_write_time(source / "densite.txt") + std::chrono::hours(1));
    ecrit(source / "flux_solaire.txt", "flux neuf");
    fs::last_write_time(source / "flux_solaire.txt",
                        fs::last_write_time(exe / "flux_solaire.txt") + std::chrono::hours(1));
    trouve_dossier_depart(exe.string(), (racine / "perso").string(), sources);
    EXPECT_EQ(lit(exe / "densite.txt"), "la mienne");
    EXPECT_EQ(lit(exe / "flux_solaire.txt"), "flux neuf");
}

TEST_F(bac, without_a_writable_program_folder_a_personal_one_is_made) {
    const fs::path perso = racine / "perso" / "kestrel";
    const std::string d =
        trouve_dossier_depart((racine / "absent").string(), perso.string(), {source.string()});
    EXPECT_EQ(d, perso.string());
    EXPECT_EQ(lit(perso / "densite.txt"), "densite");

    ecrit(racine / "obstacle", "un fichier");
    EXPECT_EQ(trouve_dossier_depart((racine / "absent").string(), (racine / "obstacle" / "x").string(),
                                    {source.string()}),
              "");
}

TEST(session, results_are_outdated_only_by_a_later_change) {
    session s;
    session_init(s);
    EXPECT_FALSE(resultats_perimes(s)); // no results yet
    note_resultats(s);
    EXPECT_FALSE(resultats_perimes(s));
    ++s.version_config;
    EXPECT_TRUE(resultats_perimes(s));
    note_resultats(s);
    EXPECT_FALSE(resultats_perimes(s));
}

TEST_F(bac, a_copy_is_offered_once_its_program_is_gone) {
    const std::string etat = essai / "etat";
    {
        etude_recuperation vivant(etat);
        ASSERT_TRUE(vivant.ecrit(etude_par_defaut(), "mission.kestrel"));
        EXPECT_TRUE(etude_recuperation::trouve(etat).empty());
    }
    ASSERT_EQ(etude_recuperation::trouve(etat).size(), 1u);
    EXPECT_EQ(etude_recuperation::trouve(etat)[0].chemin_etude, "mission.kestrel");
}
