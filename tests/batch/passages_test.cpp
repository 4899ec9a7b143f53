/// Passes and two-line elements by the batch program: where stations and orbit come from, and what is
/// refused.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/batch/lance_batch.h"

TEST(batch_passages, stations_are_asked_for_or_the_etudes_or_the_programs) {
    const dossier_essai d;
    const auto lance = [&](const std::string& suite) {
        return lance_batch("passages --fin 18708.5 " + suite, d.chemin);
    };
    const std::string nomme = " --station '\"Ici\" et là,0,10' --colonnes station,duree";
    const auto r = lance(nomme);
    EXPECT_EQ(r.statut, 0) << r.erreurs;
    EXPECT_TRUE(r.sortie.starts_with("station,duree\n\"\"\"Ici\"\" et là\",")) << r.sortie;
    EXPECT_EQ(lance_batch("etude -o e.kestrel --station 'Étude,0,-60'", d.chemin).statut, 0);
    EXPECT_NE(lance("--etude e.kestrel").sortie.find("\nÉtude,"), std::string::npos);
    EXPECT_EQ(lance("--etude e.kestrel --station Autre,0,20").sortie.find("Étude"), std::string::npos);
    const std::string programme = lance("--champ orb_inclinaison=98").sortie;
    for (const char* nom : {"\nKiruna,", "\nTroll,", "\nKourou,"})
        EXPECT_NE(programme.find(nom), std::string::npos);
    for (const char* faux : {"--station A,1", "--station A,91,0", "--station ''", "--station A,1,2,3,4,5"})
        EXPECT_EQ(lance(faux).statut, 2) << faux;
    EXPECT_EQ(lance("--champ orb_excentricite=1").statut, 3) << "no position";
}

TEST(batch_passages, two_line_elements_stand_for_an_orbit) {
    const std::string tle = std::string(DONNEES_TEST) + "/iss.tle";
    const dossier_essai d;
    const auto r = lance_batch("orbite --tle " + tle + " --colonnes j");
    EXPECT_EQ(r.statut, 0);
    EXPECT_EQ(r.sortie.substr(0, 13), "j\n21447.51782") << "the period begins at the epoch";
    std::string abime = lit(tle);
    abime.replace(abime.find("130.5360"), 8, "130.5361");
    ecrit(d / "abime.tle", abime);
    const auto mal = lance_batch("orbite --tle abime.tle", d.chemin);
    EXPECT_EQ(mal.statut, 1);
    EXPECT_NE(mal.erreurs.find("abime.tle : ligne 3 : somme de contrôle 7 au lieu de 8"), std::string::npos)
        << mal.erreurs;
    EXPECT_EQ(lance_batch("orbite --orb x.orb --tle " + tle).statut, 2);
}
