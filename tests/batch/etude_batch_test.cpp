/// The étude through the batch program: written, read by every command, and what goes over it.
#include <gtest/gtest.h>

#include "tests/batch/lance_batch.h"

namespace {

const std::string cas = std::string(DONNEES_TEST) + "/cas";

} // namespace

TEST(etude_batch, a_run_from_an_etude_is_the_run_from_its_files) {
    const dossier_essai d;
    const std::string e = d / "e.kestrel";
    const std::string fichiers = " --orb att_22_avant_epoque.orb --att att_22_avant_epoque.att";
    const std::string options = " --roulis 12 --lacet 34 --spin 0.5 --debut 19000 --fin 19000.02 --pas 60";
    ASSERT_EQ(lance_batch("etude" + fichiers + options + " -o " + e, cas).statut, 0);
    for (const char* commande : {"attitude", "couples"}) {
        const auto r = lance_batch(std::string(commande) + " --etude " + e);
        EXPECT_EQ(r.statut, 0) << r.erreurs;
        EXPECT_TRUE(r.sortie == lance_batch(commande + fichiers + options, cas).sortie) << commande;
    }
    // Explicit options go over it; rewritten in place it stays the same.
    EXPECT_EQ(lance_batch("orbite --colonnes j --fin 19000 --etude " + e).sortie, "j\n19000\n");
    const std::string avant = lit(e);
    EXPECT_EQ(lance_batch("etude --etude " + e + " -o " + e).statut, 0);
    EXPECT_EQ(lit(e), avant);
    EXPECT_EQ(lance_batch("orbite --etude " + e + " -o " + e).statut, 2);
    EXPECT_EQ(lit(e), avant);
    EXPECT_EQ(lance_batch("etude --etude " + e + " --note 'un mot'").sortie,
              std::string(avant).replace(avant.find("\"notes\": \"\""), 11, "\"notes\": \"un mot\""));
}

TEST(etude_batch, fields_are_set_by_name_in_every_command) {
    const auto soc = [](const std::string& champs) {
        return lance_batch("energie --colonnes bat_soc " + champs).sortie;
    };
    EXPECT_TRUE(soc("--champ bat_c=20") != soc(""));
    EXPECT_TRUE(soc("--champ bat_c=10") == soc(""));
    // The default period follows an orbit that is changed, and gives way to what is said of it.
    EXPECT_EQ(lance_batch("orbite --colonnes j --champ orb_jour=101 --champ fin=18728").sortie, "j\n18728\n");
    const std::pair<const char*, const char*> fautes[] = {
        {"bat_c=0", "--champ bat_c : 0 n'est pas permis (supérieur à 0)"},
        {"bat_c=1e300", "--champ bat_c : nombre trop grand"},
        {"danse=1", "--champ danse : champ inconnu"},
        {"Résiduel=1", "champ inconnu ; il y a dip_res (dipôle résiduel"},
        {"p_demand[2]=1", "--champ p_demand[2] : éléments p_demand[0] à p_demand[1]"},
    };
    for (const auto& [champ, raison] : fautes) {
        const auto r = lance_batch(std::string("panneaux --champ '") + champ + "'");
        EXPECT_EQ(r.statut, 2);
        EXPECT_NE(r.erreurs.find(raison), std::string::npos) << r.erreurs;
    }
    const dossier_essai d;
    ecrit(d / "e.kestrel", "{\"energie\": {\"bat_c\": 0}}");
    const auto r = lance_batch("batterie --etude e.kestrel", d.chemin.string());
    EXPECT_EQ(r.statut, 1);
    EXPECT_NE(r.erreurs.find("e.kestrel: energie.bat_c : 0 n'est pas permis (supérieur à 0)"),
              std::string::npos)
        << r.erreurs;
}
