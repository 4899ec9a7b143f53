/// Energy projects: the text written to the byte, the reader's rules, and every kind of damage.
///
/// The reference runs' projects (tests/data/cas) come from an independent writer of the same format.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "power/power_champs.h"
#include "project/pwr_fichier.h"
#include "project/pwr_nombres.h"
#include "tests/fichiers.h"

namespace {

class pwr : public testing::Test {
protected:
    /// The lines of a project written from the defaults, CR LF cut off.
    std::vector<std::string> lignes_par_defaut() {
        EXPECT_TRUE(sauve_energie(fichier, power_record{}, {18707.55001, 18707.616676666667, 0, 120}));
        std::vector<std::string> lignes;
        std::istringstream texte(lit(fichier));
        for (std::string l; std::getline(texte, l);) {
            EXPECT_EQ(l.back(), '\r');
            l.pop_back();
            lignes.push_back(l);
        }
        return lignes;
    }
    bool relit_texte(const std::string& texte) {
        ecrit(fichier, texte);
        return charge_energie(fichier, p, periode, erreur);
    }
    bool relit(const std::vector<std::string>& lignes) {
        std::string texte;
        for (const auto& l : lignes) texte += l + "\r\n";
        return relit_texte(texte);
    }

    const dossier_essai dossier;
    const std::string fichier = (dossier / "projet.pwr").string();
    power_record p;
    simulation_period periode;
    erreur_fichier erreur;
};

} // namespace

TEST_F(pwr, projects_of_another_writer_come_back_to_the_byte) {
    int vus = 0;
    for (const auto& f : fs::directory_iterator(std::string(DONNEES_TEST) + "/cas")) {
        if (f.path().extension() != ".pwr") continue;
        ASSERT_TRUE(charge_energie(f.path().string(), p, periode, erreur)) << erreur.texte();
        ASSERT_TRUE(sauve_energie(fichier, p, periode));
        EXPECT_EQ(lit(f.path()), lit(fichier)) << f.path();
        ++vus;
    }
    EXPECT_GE(vus, 10);
}

TEST_F(pwr, the_defaults_have_279_lines_in_their_places) {
    const auto l = lignes_par_defaut();
    ASSERT_EQ(l.size(), 279u);
    EXPECT_EQ(l[1], "! Syst\xE8me \xE9nergie"); // code page 1252
    EXPECT_EQ(l[7], " .53           Isc");
    EXPECT_EQ(l[11], " 3E-04         dIsc/dT");
    EXPECT_EQ(l[33], " .16 ");
    EXPECT_EQ(l[152], " 1E-03         ");
    EXPECT_EQ(l[182], "3.8000E+26     Flux solaire");
    EXPECT_EQ(l[206], " 0 ");
    EXPECT_EQ(l[229], " .02 "); // last coefficient of the overcharge point
    EXPECT_EQ(l[264], " 255           Option panneaux externes");
    EXPECT_EQ(l[270], " .5            Panneaux externes : Retard r\xE9ponse");
    EXPECT_EQ(l[276], " 18707.55001 ");
    EXPECT_EQ(l[278], " 120 ");
}

TEST(pwr_nombres, written_forms) {
    EXPECT_EQ(ecrit_reel(0, 7), " 0 ");
    EXPECT_EQ(ecrit_reel(.01f, 7), " .01 ");
    EXPECT_EQ(ecrit_reel(.00999f, 7), " 9.99E-03 ");
    EXPECT_EQ(ecrit_reel(-1.234567e-5f, 7), "-1.234567E-05 ");
    EXPECT_EQ(ecrit_reel(9999999, 7), " 9999999 ");
    EXPECT_EQ(ecrit_reel(1e7, 7), " 1E+07 ");
    EXPECT_EQ(ecrit_reel(9999999.9, 7), " 1E+07 "); // the limit applies to the rounded value
    EXPECT_EQ(ecrit_reel(-12.5f, 7), "-12.5 ");
    EXPECT_EQ(ecrit_reel(1e-100, 15), " 1E-100 ");
    EXPECT_EQ(ecrit_reel(123456789012345.0, 15), " 123456789012345 ");
    EXPECT_EQ(ecrit_entier(-3), "-3 ");
    EXPECT_EQ(ecrit_puissance_sun(3.84651e26), "3.8465E+26");
}

TEST_F(pwr, the_reader_keeps_to_places_and_not_to_texts) {
    auto l = lignes_par_defaut();
    for (auto& ligne : l) // neither labels nor comment texts
        ligne = ligne[0] == '!' ? "!, 12, quelconque" : ligne.substr(0, 15);
    l[7] = "! une valeur remplacée";
    l[8] = " .25, .75";         // the rest of the line is the next field,
    l.erase(l.begin() + 9);     // which needs no line of its own
    l[9] = "\" .625 \", perdu"; // a quoted token, and Vmp behind it ...
    EXPECT_FALSE(relit(l));     // ... where a word stands
    EXPECT_EQ(erreur.ligne, 10);
    EXPECT_NE(erreur.raison.find("perdu"), std::string::npos);

    l[9] = "\" .625 \"";
    p = {};
    p.cel_isc = 9;
    ASSERT_TRUE(relit(l)) << erreur.texte();
    EXPECT_EQ(p.cel_isc, 9);
    EXPECT_EQ(p.cel_imp, .25f);
    EXPECT_EQ(p.cel_voc, .75f);
    EXPECT_EQ(p.cel_vmp, .625f);
    EXPECT_EQ(p.cel_disc, .0003f);
    EXPECT_EQ(periode.pas_sim, 120);
}

TEST_F(pwr, numbers_take_the_type_of_their_field) {
    auto l = lignes_par_defaut();
    l[6] = " 2.5";   // to the even integer
    l[19] = " 12.5"; // counts of cells are reals
    l[264] = " 1";
    l[265] = " 1";
    l[268] = "-3";
    l[7] = "+1E-400"; // too small is zero
    l[276] = " 18707.5500123456";
    ASSERT_TRUE(relit(l)) << erreur.texte();
    EXPECT_EQ(p.cel_type, 2);
    EXPECT_EQ(periode.j_debut, 18707.5500123456); // dates are not cut at 14 characters
    EXPECT_EQ(p.cel_ns, 12.5f);
    EXPECT_EQ(p.cel_isc, 0);
    EXPECT_EQ(p.opt_panel_ext, vrai);
    EXPECT_EQ(p.pan_fixed, vrai);
    EXPECT_EQ(p.nb_faces, 6);
    EXPECT_NEAR(p.face_azim[5], 300 * M_PI / 180, 1e-12);

    l[265] = " 7"; // any other option is a cylinder: no faces, the table as it was
    ASSERT_TRUE(relit(l)) << erreur.texte();
    EXPECT_EQ(p.nb_faces, 0);
    EXPECT_NEAR(p.face_azim[5], 300 * M_PI / 180, 1e-12);
}

TEST_F(pwr, every_truncation_is_told_with_its_line) {
    const auto l = lignes_par_defaut();
    for (std::size_t n = 0; n < l.size(); ++n) {
        EXPECT_FALSE(relit({l.begin(), l.begin() + static_cast<std::ptrdiff_t>(n)})) << n;
        EXPECT_EQ(erreur.ligne, static_cast<int>(n) + 1);
    }
    EXPECT_TRUE(relit(l));
}

TEST_F(pwr, a_word_or_a_number_out_of_range_is_told_with_its_line) {
    const auto bon = lignes_par_defaut();
    const auto refuse = [&](int ligne, const char* texte) {
        auto l = bon;
        l[ligne - 1] = texte;
        EXPECT_FALSE(relit(l)) << ligne << texte;
        EXPECT_EQ(erreur.ligne, ligne);
        EXPECT_FALSE(erreur.raison.empty());
    };
    for (int i = 0; i < 279; ++i)
        if (bon[i][0] != '!') refuse(i + 1, " mot");
    refuse(203, " 256 ");
    refuse(203, "-1 ");
    refuse(7, " 32768 ");
    refuse(8, " 1E+39 ");
    refuse(8, " nan");
    refuse(8, " inf");
    refuse(8, " +-5");
    refuse(8, "");
    refuse(8, " 1 2");
    refuse(279, " 2147483648 ");
    refuse(277, "! pas ici");
}

TEST_F(pwr, a_project_that_is_no_text_or_cannot_be_read_fails) {
    EXPECT_FALSE(relit_texte(std::string(5000, '\0')));
    EXPECT_FALSE(relit_texte(""));
    EXPECT_EQ(erreur.ligne, 1);
    EXPECT_FALSE(charge_energie(dossier.chemin.string(), p, periode, erreur));
    EXPECT_FALSE(charge_energie((dossier / "absent.pwr").string(), p, periode, erreur));
    EXPECT_NE(erreur.texte().find("absent.pwr"), std::string::npos);
}

TEST_F(pwr, a_save_leaves_one_whole_project_whatever_happens) {
    lignes_par_defaut();
    const std::string avant = lit(fichier), lien = (dossier / "lien.pwr").string();
    fs::permissions(fichier, fs::perms(0640));
    fs::create_symlink("projet.pwr", lien);
    p.bat_c = 15;
    ASSERT_TRUE(sauve_energie(lien, p, periode));
    EXPECT_TRUE(fs::is_symlink(lien));
    EXPECT_EQ(fs::status(fichier).permissions(), fs::perms(0640));
    EXPECT_NE(lit(fichier), avant);

    fs::permissions(fichier, fs::perms(0440));
    EXPECT_FALSE(sauve_energie(fichier, power_record{}, periode)); // write-protected
    ASSERT_TRUE(charge_energie(fichier, p, periode, erreur));
    EXPECT_EQ(p.bat_c, 15);

    // Stopped between the two steps: the copy is offered when it is whole and the project is gone.
    fs::rename(fichier, fichier + ".nouveau");
    EXPECT_TRUE(enregistrement_interrompu(fichier));
    ASSERT_TRUE(acheve_enregistrement(fichier));
    EXPECT_FALSE(enregistrement_interrompu(fichier));
    ecrit(fichier + ".nouveau", avant.substr(0, 3000));
    EXPECT_FALSE(enregistrement_interrompu(fichier));
    fs::remove(fichier);
    EXPECT_FALSE(enregistrement_interrompu(fichier));
}

TEST_F(pwr, a_failed_save_is_told) {
    EXPECT_FALSE(sauve_energie((dossier / "absent" / "x.pwr").string(), p, periode));
    EXPECT_FALSE(sauve_energie(dossier.chemin.string(), p, periode));
}

TEST(power_champs, the_table_fits_the_record) {
    int lignes = 0;
    for (const champ& c : power_champs()) lignes += c.nombre;
    EXPECT_EQ(lignes, 279);
    // Every numeric field takes a value in each of its elements and gives it back, and nothing else moves.
    power_record p;
    for (const champ& c : power_champs()) {
        if (c.type == type_champ::commentaire || c.type >= type_champ::date_debut) continue;
        for (int i = 0; i < c.nombre; ++i) {
            const double avant = valeur(p, c, i), essai = c.type == type_champ::booleen ? -1 : 7;
            change(p, c, essai, i);
            EXPECT_EQ(valeur(p, c, i), essai) << c.nom << i;
            change(p, c, avant, i);
        }
        EXPECT_STRNE(c.sens, "") << c.nom;
    }
    EXPECT_EQ(valeur(p, champ_de("ch_pt_3"), 3), 1.59f);
    EXPECT_EQ(valeur(p, champ_de("p_demand_nuit")), 50);
}
