/// The power budget against sums made here from the rows of the energy run, by its definition.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <sstream>

#include "project/orb_fichier.h"
#include "shell/formats.h"
#include "tests/batch/lance_batch.h"
#include "tests/lecture_csv.h"
#include "tests/releve.h"

namespace {

const std::string exemples = DOSSIER_DATA "/exemples";

using table = std::map<std::string, std::vector<double>>;

table lit_csv(const std::string& texte) {
    std::istringstream flux(texte);
    std::string ligne, mot;
    std::getline(flux, ligne);
    std::vector<std::string> noms;
    for (std::istringstream tete(ligne); std::getline(tete, mot, ',');) noms.push_back(mot);
    table t;
    while (std::getline(flux, ligne)) {
        std::istringstream mots(ligne);
        for (const std::string& nom : noms) {
            std::getline(mots, mot, ',');
            t[nom].push_back(mot.empty() ? NAN : nombre_csv(mot));
        }
    }
    return t;
}

struct sommes {
    double gen = 0, demande = 0, manque = 0, excedent = 0, charge = 0, decharge = 0, pertes_bus = 0,
           soc_min = 2;
    long pas = 0, nuits = 0;
};

/// Length of a turn [s].
double tour_s(double demi_axe) {
    return 2 * std::numbers::pi * std::sqrt(demi_axe * demi_axe * demi_axe / 398601.3);
}

/// Sums by turn of the rows of `energie`, dates counted in steps of `pas` seconds from the first row.
std::vector<sommes> par_orbite(const table& t, double pas, double demi_axe) {
    const double tour = tour_s(demi_axe);
    std::vector<sommes> s;
    for (std::size_t i = 0; i < t.at("gen_power").size(); ++i) {
        const auto k = static_cast<std::size_t>(std::floor(static_cast<double>(i) * pas / tour + 1e-9));
        s.resize(std::max(s.size(), k + 1));
        sommes& x = s[k];
        const auto wh = [&](const char* nom) { return t.at(nom)[i] * pas / 3600; };
        ++x.pas;
        x.nuits += t.at("eclipse")[i] != 0;
        x.gen += wh("gen_power");
        x.demande += wh("p_demande");
        x.manque += std::max(-wh("p_excess"), 0.0);
        x.excedent += std::max(wh("p_excess"), 0.0);
        x.charge += std::max(-wh("bat_p"), 0.0);
        x.decharge += std::max(wh("bat_p"), 0.0);
        x.pertes_bus += wh("p_loss_de") + wh("p_loss_gs") + wh("p_loss_ch");
        x.soc_min = std::min(x.soc_min, t.at("bat_soc")[i]);
    }
    return s;
}

void compare(const std::string& projet, const std::string& plus) {
    record_orbite orbite;
    std::string raison;
    ASSERT_TRUE(charge_orbite(exemples + "/" + projet + ".orb", orbite, raison)) << raison;
    const std::string base = "--orb " + exemples + "/" + projet + ".orb --pwr " + exemples + "/" + projet +
                             ".pwr --pas 60 --debut 27107.5 " + plus;
    const auto lignes =
        lance_batch("energie " + base +
                    " --fin 27107.8 --colonnes sim_date,eclipse,gen_power,p_demande,p_excess,bat_p,"
                    "p_loss_de,p_loss_gs,p_loss_ch,bat_soc");
    ASSERT_EQ(lignes.statut, 0) << lignes.erreurs;
    const auto attendu = par_orbite(lit_csv(lignes.sortie), 60, orbite.orb_demi);
    const auto sortie = lance_batch("bilan " + base + " --orbites 3");
    ASSERT_EQ(sortie.statut, 0) << sortie.erreurs;
    const table b = lit_csv(sortie.sortie);
    ASSERT_EQ(b.at("orbite").size(), 3u);
    for (std::size_t k = 0; k < 3; ++k) {
        const sommes& x = attendu[k];
        EXPECT_EQ(b.at("duree")[k], 60.0 * static_cast<double>(x.pas));
        EXPECT_EQ(b.at("eclipse")[k], 60.0 * static_cast<double>(x.nuits));
        const auto proche = [&](const char* nom, double y) {
            RELEVE("bilan.sommes", b.at(nom)[k] / (1 + y), y / (1 + y), 1e-10) << nom;
        };
        proche("e_gen", x.gen);
        proche("e_demande", x.demande);
        proche("e_manque", x.manque);
        proche("e_excedent", x.excedent);
        proche("e_charge", x.charge);
        proche("e_decharge", x.decharge);
        proche("e_pertes", x.pertes_bus);
        EXPECT_EQ(b.at("soc_min")[k], x.soc_min);
        EXPECT_NEAR(b.at("dod")[k], 100 * (1 - x.soc_min), 1e-12);
        EXPECT_NEAR(b.at("marge")[k], 100 * (x.excedent - x.manque) / x.demande, 1e-9);
    }
}

} // namespace

TEST(bilan, is_the_sum_of_the_rows_of_the_run) {
    compare("microsatellite", "");
    compare("cylindre", "");
}

TEST(bilan, consumption_modes_add_to_the_demand_of_their_steps) {
    const auto dossier =
        std::filesystem::temp_directory_path() / ("kestrel-modes-" + std::to_string(getpid()));
    std::filesystem::create_directories(dossier);
    const std::string fichier = (dossier / "modes.json").string();
    ecrit(fichier, R"([{"nom": "charge", "puissance": 12, "quand": {"nuit": true}},
                       {"nom": "radar", "puissance": 30, "quand": {"periode": 3600, "debut": 600, "duree": 300}},
                       {"nom": "antenne", "puissance": 7, "quand": {"une_orbite_sur": 2}},
                       {"nom": "image", "puissance": 3, "quand": {"latitude": [-20, 40]}}])");
    compare("microsatellite", "--modes " + fichier);

    // The demand itself: 75 W by day and 60 W by night as set, 12 W more by night, 30 W in five steps an
    // hour, 7 W in the first turn and not in the second, 3 W over a belt of latitudes.
    record_orbite orbite;
    std::string raison;
    ASSERT_TRUE(charge_orbite(exemples + "/microsatellite.orb", orbite, raison)) << raison;
    const auto r = lance_batch("energie --orb " + exemples + "/microsatellite.orb --pwr " + exemples +
                               "/microsatellite.pwr --pas 60 --debut 27107.5 --fin 27107.6 --modes " +
                               fichier + " --colonnes eclipse,p_demande,sat_lat");
    const table t = lit_csv(r.sortie);
    for (std::size_t i = 0; i < t.at("eclipse").size(); ++i) {
        const double s = 60.0 * static_cast<double>(i) - 600;
        const bool radar = s >= 0 && std::fmod(s, 3600) < 300;
        const bool antenne = 60.0 * static_cast<double>(i) < tour_s(orbite.orb_demi);
        const double latitude = t.at("sat_lat")[i] * 180 / std::numbers::pi;
        const bool image = latitude >= -20 && latitude <= 40;
        EXPECT_EQ(t.at("p_demande")[i], (t.at("eclipse")[i] == 0 ? 75 : 60 + 12) + (radar ? 30 : 0) +
                                            (antenne ? 7 : 0) + (image ? 3 : 0))
            << i;
    }

    // In view of a station: the steps within its passes, over its mask.
    ecrit(fichier, R"([{"nom": "TX", "puissance": 12, "quand": {"station": "Toulouse"}}])");
    const std::string etude = (dossier / "e.kestrel").string(), periode = " --debut 27107.5 --fin 27108 ";
    ASSERT_EQ(lance_batch("etude --orb " + exemples + "/microsatellite.orb --pwr " + exemples +
                          "/microsatellite.pwr --modes " + fichier +
                          " --station Toulouse,43.6,1.44,0.15,20 -o " + etude)
                  .statut,
              0);
    const table passes =
        lit_csv(lance_batch("passages --etude " + etude + periode + "--colonnes debut,fin").sortie);
    const table tx =
        lit_csv(lance_batch("energie --etude " + etude + periode + "--colonnes j,eclipse,p_demande").sortie);
    ASSERT_FALSE(passes.at("debut").empty());
    for (std::size_t i = 0; i < tx.at("j").size(); ++i) {
        bool vue = false;
        for (std::size_t k = 0; k < passes.at("debut").size(); ++k)
            vue = vue || (passes.at("debut")[k] <= tx.at("j")[i] && tx.at("j")[i] <= passes.at("fin")[k]);
        EXPECT_EQ(tx.at("p_demande")[i], (tx.at("eclipse")[i] == 0 ? 75 : 60) + (vue ? 12 : 0)) << i;
    }

    // A station that is not there would never be in view: the name is told, and nothing runs.
    ecrit(fichier, R"([{"nom": "TX", "puissance": 12, "quand": {"station": "Nulle part"}}])");
    for (const char* commande : {"energie", "bilan", "couple --modele physique"}) {
        const auto refus = lance_batch(std::string(commande) + " --modes " + fichier);
        EXPECT_EQ(refus.statut, 2) << commande;
        EXPECT_EQ(refus.sortie, "") << commande;
        EXPECT_NE(refus.erreurs.find("mode « TX » : la station « Nulle part » n'est pas dans l'étude"),
                  std::string::npos)
            << refus.erreurs;
    }
    std::filesystem::remove_all(dossier);
}

TEST(bilan, the_verdict_tells_what_fails_and_the_year_where) {
    const std::string projet =
        "--orb " + exemples + "/microsatellite.orb --pwr " + exemples + "/microsatellite.pwr ";
    const auto tient = lance_batch("bilan --verdict --exige " + projet);
    EXPECT_EQ(tient.statut, 0);
    EXPECT_NE(tient.sortie.find("\"tient\": true"), std::string::npos) << tient.sortie;
    EXPECT_EQ(tient.erreurs, "");
    // The same satellite is found to fail by a step that the panels cannot follow: that is said.
    const auto grossier = lance_batch("bilan --exige --pas 600 " + projet);
    EXPECT_EQ(grossier.statut, 4);
    EXPECT_NE(grossier.erreurs.find("10 points par orbite, et le verdict en dépend : prenez 120 s"),
              std::string::npos)
        << grossier.erreurs;
    const table t_bat = lit_csv(lance_batch("bilan --colonnes t_bat_min,t_bat_max " + projet).sortie);
    const std::string entre = format_court((t_bat.at("t_bat_min").back() + t_bat.at("t_bat_max").back()) / 2);
    for (const char* limite : {"t_bat_min=", "t_bat_max="})
        EXPECT_EQ(lance_batch("bilan --exige --champ criteres." + (limite + entre) + " " + projet).statut, 4)
            << limite;
    // Its own year is worse than its day: the orbit's plane turns away from the Sun's.
    const auto annee = lance_batch("bilan --annee --dates 12 --exige --colonnes marge " + projet);
    EXPECT_EQ(annee.statut, 4);
    const table t = lit_csv(annee.sortie);
    ASSERT_EQ(t.at("date").size(), 12u);
    EXPECT_EQ(t.at("tient")[0], -1);
    EXPECT_EQ(t.at("date")[3] - t.at("date")[0], 3 * 365.25 / 12);
    // The verdict of a date is that of a run begun there.
    const auto seule = lance_batch("bilan " + projet + "--debut " + format_court(t.at("date")[3]));
    EXPECT_EQ(lit_csv(seule.sortie).at("marge").back(), t.at("marge")[3]);
    for (const char* faux :
         {"--orbites 0", "--dates 3", "--annee --verdict", "--orbites x", "--colonnes bat_soc"})
        EXPECT_EQ(lance_batch("bilan " + std::string(faux)).statut, 2) << faux;
}
