/// The batch program's own manners: options, columns, dates, and what it says of bad input.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "project/att_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "tests/batch/lance_batch.h"

namespace {

const std::string cas = std::string(DONNEES_TEST) + "/cas";

long lignes(const std::string& t) { return std::count(t.begin(), t.end(), '\n'); }

} // namespace

TEST(batch, columns_come_in_the_order_asked) {
    const auto r = lance_batch("energie --colonnes bat_soc,sim_date,node_t_8 --fin 18707.56");
    EXPECT_EQ(r.statut, 0);
    EXPECT_EQ(r.sortie.substr(0, r.sortie.find('\n')), "bat_soc,sim_date,node_t_8");
    EXPECT_EQ(lance_batch("energie --colonnes bat_soc,nulle").statut, 2);
    const std::string inconnue = lance_batch("energie --colonnes bat_soc,nulle").erreurs;
    EXPECT_NE(inconnue.find("nulle"), std::string::npos);
    EXPECT_NE(inconnue.find("kestrel_batch variables"), std::string::npos);
    EXPECT_EQ(lance_batch("attitude --colonnes bat_soc").statut, 2);
    // Any variable that the run can compute, an element or all of them.
    const auto toutes =
        lance_batch("energie --colonnes sat_alt,sat_pos,albedo_flux,gradient_x --fin 18707.56");
    EXPECT_EQ(toutes.sortie.substr(0, toutes.sortie.find('\n')),
              "sat_alt,sat_pos_x,sat_pos_y,sat_pos_z,albedo_flux,gradient_x");
    EXPECT_EQ(toutes.statut, 0) << toutes.erreurs;
    EXPECT_EQ(lance_batch("variables").sortie.substr(0, 30), "nom,titre,unite,elements,sens\n");
}

TEST(batch, the_default_period_is_one_turn_of_the_orbit_in_use) {
    // 15 turns a day at 120 s: 48 steps and the first row, and the heading.
    EXPECT_EQ(lignes(lance_batch("orbite").sortie), 48 + 1 + 1);
    const auto r = lance_batch("orbite --orb o01_leo.orb --colonnes j", cas);
    EXPECT_EQ(r.sortie.substr(2, 9), "19477.25\n");
}

TEST(batch, dates_as_text_and_as_day_count_are_the_same) {
    const auto texte =
        lance_batch("orbite --debut '2001-03-21 12:00:00' --fin '2001-03-21 13:00:00' --pas 600");
    EXPECT_EQ(lignes(texte.sortie), 8);
    EXPECT_EQ(texte.sortie, lance_batch("orbite --debut 18707.5 --fin 18707.541666666668 --pas 600").sortie);
    for (const char* faux : {"2001-02-29", "1850-01-01", "2100-01-01", "-17897.5", "2001-13-01", "demain",
                             "2001-03-21 25:00:00", "nan"})
        EXPECT_EQ(lance_batch(std::string("orbite --debut '") + faux + "'").statut, 2) << faux;
    EXPECT_EQ(lance_batch("orbite --debut 27107.5").statut, 2); // after the end that stands by default
}

TEST(batch, wrong_usage_is_told_in_one_line) {
    for (const char* faux : {"",
                             "danse",
                             "energie --pas 0",
                             "energie --pas 2.5",
                             "energie --pas x",
                             "orbite --inconnu",
                             "energie --pas",
                             "orbite energie",
                             "orbite --debut 1e16 --fin 1e16",
                             "batterie --tecl inf --temp 20 --k 1 --vmax 2 --ich 1 --ide 1",
                             "energie --roulis nan",
                             "batterie --tecl 1e300 --temp 20 --k 1 --vmax 2 --ich 1 --ide 1",
                             "batterie --tecl 1 --temp 20 --k 1 --vmax 2 --ich 1 --ide 1 --pde 1",
                             "energie --tecl 30",
                             "batterie --tecl 1 --temp -100 --k 1 --vmax 2 --ich 1 --ide 1",
                             "energie --pas 60 --pas 30",
                             "orbite --orb ''",
                             "orbite --fin 1e7",
                             "orbite --debut 'a\nb'",
                             "energie --eol=1"}) {
        const auto r = lance_batch(faux);
        EXPECT_EQ(r.statut, 2) << faux;
        EXPECT_EQ(lignes(r.erreurs), 1) << faux << ": " << r.erreurs;
        for (const char* anglais :
             {"required", "not expected", "Could not", "argument was", "required", "flag"})
            EXPECT_EQ(r.erreurs.find(anglais), std::string::npos) << faux << ": " << r.erreurs;
    }
}

TEST(batch, the_output_is_replaced_by_a_whole_run_alone) {
    const dossier_essai d;
    const std::string chemin = (d / "res.csv").string();
    const auto energie = [&](const std::string& suite) { return lance_batch("energie " + suite, d.chemin); };
    ecrit(chemin, "avant");
    EXPECT_EQ(energie("-o res.csv --colonnes nulle").statut, 2);
    EXPECT_EQ(lance_batch("batterie -o " + chemin).statut, 2);
    EXPECT_EQ(energie("-o res.csv --pwr " + cas + "/f01_alpha_above_limit.csv").statut, 1);
    EXPECT_EQ(lit(chemin), "avant");
    fs::copy(cas + "/p17_leo_ext_drained.pwr", d / "p.pwr");
    const std::string projet = lit(d / "p.pwr");
    fs::create_symlink("p.pwr", d / "lien.csv");
    EXPECT_EQ(energie("--pwr p.pwr -o lien.csv").statut, 2);
    EXPECT_EQ(lit(d / "p.pwr"), projet);

    // A link and the mode stay; a fault leaves the rows before it.
    fs::permissions(chemin, fs::perms(0640));
    fs::remove(d / "lien.csv");
    fs::create_symlink("res.csv", d / "lien.csv");
    EXPECT_EQ(energie("-o lien.csv --colonnes eclipse --fin 18707.551").statut, 0);
    EXPECT_EQ(lit(chemin), "eclipse\n0\n");
    EXPECT_TRUE(fs::is_symlink(d / "lien.csv"));
    EXPECT_EQ(fs::status(chemin).permissions(), fs::perms(0640));
    const std::string faute = "f06_perigee_inside_shadow_radius";
    EXPECT_EQ(lance_batch("energie --pwr " + faute + ".pwr --orb " + faute + ".orb -o " + chemin, cas).statut,
              3);
    EXPECT_GT(lignes(lit(chemin)), 2);

    // A run without end that is killed leaves the old file, and no other one with the ending of a result.
    ecrit(chemin, "avant");
    const std::string tue =
        "cd '" + d.chemin.string() +
        "'; '" KESTREL_BATCH "' orbite --fin 50000 --pas 1 --colonnes eclipse -o res.csv & "
        "for i in $(seq 500); do ls res.csv.partiel-* > /dev/null 2>&1 && break; sleep 0.01; "
        "done; kill -9 $!; wait";
    EXPECT_EQ(std::system(("( " + tue + " ) 2> /dev/null").c_str()), 0);
    EXPECT_EQ(lit(chemin), "avant");
    for (const auto& f : fs::directory_iterator(d.chemin))
        EXPECT_TRUE(f.path().extension() != ".csv" || f.path().stem() == "res" || f.path().stem() == "lien")
            << f;
}

TEST(batch, an_output_that_cannot_be_written_ends_the_run) {
    const std::string sans_fin = "orbite --fin 50000 --pas 1 --colonnes j"; // 2.7e9 rows
    for (const char* sortie : {" > /dev/full", " -o /dev/full"}) {
        const auto r = lance_batch(sans_fin + sortie);
        EXPECT_EQ(r.statut, 1) << sortie;
        EXPECT_NE(r.erreurs.find("écriture interrompue (le disque est plein)"), std::string::npos)
            << r.erreurs;
    }
    std::FILE* tuyau = popen(("'" KESTREL_BATCH "' " + sans_fin + " 2> /dev/null").c_str(), "r");
    ASSERT_TRUE(tuyau);
    EXPECT_EQ(std::fgetc(tuyau), 'j');
    EXPECT_EQ(WEXITSTATUS(pclose(tuyau)), 1); // the reader has gone
}

TEST(batch, unreadable_input_names_file_line_and_reason) {
    const std::string tmp = testing::TempDir() + "/abime.pwr";
    std::ofstream(tmp) << "!\n!\n!\n!\n!\n!\n 0\n mot            Isc\n";
    const auto r = lance_batch("energie --pwr " + tmp);
    EXPECT_EQ(r.statut, 1);
    EXPECT_NE(r.erreurs.find("abime.pwr : ligne 8 : « mot » n'est pas un nombre"), std::string::npos)
        << r.erreurs;
    EXPECT_EQ(lance_batch("energie --pwr absent.pwr").statut, 1);
    EXPECT_EQ(lance_batch("orbite --orb .").statut, 1);
    std::ofstream(tmp, std::ios::trunc).close();
    EXPECT_EQ(lance_batch("orbite --orb " + tmp).statut, 1);
    record_orbite o;
    std::string raison;
    o.orb_jour = 1e51;
    ASSERT_TRUE(sauve_orbite(tmp, o, raison));
    EXPECT_EQ(lance_batch("orbite --fin 18707.6 --orb " + tmp).statut, 1);
    EXPECT_EQ(lance_batch("orbite -o /nulle/part/x.csv").statut, 1);
    std::remove(tmp.c_str());
}

TEST(batch, what_a_run_has_to_say_is_told_once_and_faults_by_the_status) {
    const dossier_essai d;
    const auto energie = [&](power_record p, const std::string& options = {}) {
        EXPECT_TRUE(sauve_energie((d / "p.pwr").string(), p, {18707.55001, 18707.75, 0, 60}));
        return lance_batch("energie --pwr p.pwr --colonnes eclipse " + options, d.chemin);
    };
    power_record p;
    p.cel_ns = 40;
    p.cel_np = 30; // it charges by day
    EXPECT_EQ(energie(p).erreurs, "");
    auto incompatible = p;
    incompatible.ch_pt[2] = incompatible.ch_pt[1];
    const auto charge = energie(incompatible);
    EXPECT_EQ(charge.statut, 0);
    EXPECT_EQ(charge.erreurs, std::string("kestrel_batch : ") + message_charge_incompatible + "\n");
    p.cel_ns = 1; // no power, so that nothing warms it
    p.bat_tmin = 40;
    const auto froid = energie(p);
    EXPECT_EQ(froid.statut, 0);
    EXPECT_EQ(lignes(froid.erreurs), 1) << froid.erreurs;
    EXPECT_NE(froid.erreurs.find("au-delà de 100 %"), std::string::npos) << froid.erreurs;
    EXPECT_NE(froid.erreurs.find("température minimale de la batterie : 40 °C"), std::string::npos);

    p.bat_tmin = power_record().bat_tmin;
    p.cel_ns = 40;
    p.cel_radisc = .5f; // at end of life below Imp: the setting is named
    const auto cellules = energie(p, "--eol");
    EXPECT_EQ(cellules.statut, 3);
    EXPECT_EQ(lignes(cellules.erreurs), 1) << cellules.erreurs;
    EXPECT_NE(cellules.erreurs.find("rapports de fin de vie"), std::string::npos) << cellules.erreurs;

    for (const char* champ : {"sun_power=1e-30", "sun_power=1e30", "bat_c=1e30", "bat_c=1e-30"}) {
        const std::string dit = lance_batch(std::string("energie --champ ") + champ).erreurs;
        EXPECT_NE(dit.find("c'est sans doute la cause"), std::string::npos) << champ << dit;
    }
    for (const char* champ : {"ext_cp[0]=0.001", "int_cp=0.001 --champ opt_panel_ext=0"}) {
        const auto chaud = lance_batch(std::string("energie --champ ") + champ);
        EXPECT_NE(chaud.erreurs.find("Les échanges thermiques divergent"), std::string::npos)
            << chaud.erreurs;
    }

    const auto diverge = lance_batch("attitude --fin 18709");
    EXPECT_EQ(diverge.statut, 3);
    EXPECT_GT(lignes(diverge.sortie), 2);
    // A setting that is not a number: no row, and a told fault.
    attitude_record damage;
    damage.omega_init[0] = std::nan("");
    std::string raison;
    ASSERT_TRUE(sauve_attitude(d / "nan.att", damage, raison)) << raison;
    const auto nan = lance_batch("attitude --att '" + (d / "nan.att").string() + "'");
    EXPECT_NE(nan.statut, 0);
    EXPECT_LE(lignes(nan.sortie), 1) << nan.sortie;
    EXPECT_EQ(lignes(nan.erreurs), 1) << nan.erreurs;
    // A program without its data files.
    fs::copy_file(KESTREL_BATCH, d / "kestrel_batch");
    for (const char* commande : {"attitude", "couples"})
        EXPECT_EQ(
            WEXITSTATUS(std::system(
                ("'" + (d / "kestrel_batch").string() + "' " + commande + " > /dev/null 2>&1").c_str())),
            1);
}

TEST(batch, an_orbit_without_a_period_is_told) {
    record_orbite o;
    o.orb_moy_mvt = 0;
    const std::string tmp = testing::TempDir() + "/immobile.orb";
    std::string raison;
    ASSERT_TRUE(sauve_orbite(tmp, o, raison)) << raison;
    const auto r = lance_batch("orbite --orb " + tmp);
    EXPECT_EQ(r.statut, 2);
    EXPECT_NE(r.erreurs.find("inf"), std::string::npos) << r.erreurs;
    EXPECT_EQ(lance_batch("orbite --fin 18707.6 --orb " + tmp).statut, 0);
    std::remove(tmp.c_str());
}

TEST(batch, the_physical_model_is_an_option_and_the_reference_the_default) {
    EXPECT_EQ(lance_batch("energie --modele reference").sortie, lance_batch("energie").sortie);
    const auto tete = [](const std::string& commande) {
        const auto r = lance_batch(commande);
        EXPECT_EQ(r.statut, 0) << r.erreurs;
        return r.sortie.substr(0, r.sortie.find('\n'));
    };
    EXPECT_EQ(tete("couple"),
              tete("energie --modele physique") + ",roulis,tangage,lacet,omega_x,omega_y,omega_z");
    EXPECT_EQ(tete("attitude --modele physique"), tete("attitude --pas 1"));
    const std::string colonnes = "j,q0,h_norme,energie,angle_nadir_z,gradient_x,omega_y,champ_z,part_soleil";
    const auto attitude = lance_batch("attitude --modele physique --ecriture 4 --colonnes " + colonnes);
    EXPECT_EQ(attitude.sortie.substr(0, colonnes.size()), colonnes);
    EXPECT_EQ(lignes(attitude.sortie), 48 / 4 + 1 + 1);
    EXPECT_NE(lance_batch("orbite --modele physique --sans-j2").sortie,
              lance_batch("orbite --modele physique").sortie);
    const auto muet =
        lance_batch("attitude --modele physique --sans gradient,aero,solaire,magnetique "
                    "--champ omega_init[0]=1 --champ omega_init[2]=2 --colonnes h_x,h_y,h_z,energie");
    const std::string l = muet.sortie.substr(muet.sortie.find('\n') + 1);
    const std::string premiere = l.substr(0, l.find(',', l.find(',', l.find(',') + 1) + 1));
    for (std::size_t k = 0; k < l.size(); k = l.find('\n', k) + 1) // momentum to the last digit
        EXPECT_EQ(l.compare(k, premiere.size(), premiere), 0);

    for (const char* immobile : {"--sans gradient,aero,solaire,magnetique", "--controle b_dot,gain=0"})
        EXPECT_EQ(lance_batch(std::string("attitude --modele physique ") + immobile).statut, 0) << immobile;

    for (const char* faux :
         {"energie --modele vrai", "energie --sans aero", "attitude --modele physique --sans vent",
          "couple --modele reference", "attitude --modele physique --controle pid",
          "attitude --modele physique --controle pd,gain=-1",
          "attitude --modele physique --controle pd,cible=lune",
          "energie --modele physique --colonnes roulis", "attitude --colonnes q0"})
        EXPECT_EQ(lance_batch(faux).statut, 2) << faux;
    const std::string sature = lance_batch("attitude --modele physique --champ JR[1]=0.001 --champ "
                                           "omega_init[1]=5 --controle pd,couple_max=1e-4")
                                   .erreurs;
    EXPECT_NE(sature.find("Roue y : couple maximal"), std::string::npos) << sature;
}
