/// Exospheric temperature and density: the edges of their tables, physics, and damaged data files.
///
/// Densities to compare with: U.S. Standard Atmosphere 1976, table I (exospheric temperature 1000 K), which
/// is another model than the table's: they part by up to 32 %, at 500 km.
#include <gtest/gtest.h>

#include <fstream>

#include "attitude/att_atmosphere.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"
#include "tests/fichiers.h"
#include "tests/releve.h"

namespace {

/// The two data files, to be damaged.
struct dossier : dossier_essai {
    dossier() {
        for (const char* nom : {"flux_solaire.txt", "densite.txt"}) copie(nom);
    }
    void ecrit(const char* nom, const std::string& texte) const { ::ecrit(chemin / nom, texte); }
};

constexpr const char* petite_table = " 100 4.00E-07 5.00E-07 7.00E-07\r\n"
                                     " 200 2.00E-10 3.00E-10 5.00E-10\r\n"
                                     " 400 1.00E-12 2.00E-12 4.00E-12\r\n";

double jour(int16_t an, int16_t mois, int16_t j) {
    return date_vers_jour({.an = an, .mois = mois, .jour = j});
}

} // namespace

TEST(densite, table_and_its_edges) {
    dossier d;
    d.ecrit("densite.txt", petite_table);
    atmosphere air(d.chemin.string());
    surveillance veille;
    EXPECT_EQ(air.densite(800, 99.9), 3.43e-06);
    EXPECT_DOUBLE_EQ(air.densite(500, 100), 4e-07);
    EXPECT_DOUBLE_EQ(air.densite(1000, 100), 5e-07);
    EXPECT_NEAR(air.densite(1000.0000001, 100), 5e-07, 1e-15); // the other two columns, without a jump
    EXPECT_DOUBLE_EQ(air.densite(2000, 100), 7e-07);
    EXPECT_NEAR(air.densite(750, 300), (1.005e-10 + 1.51e-10) / 2, 1e-24);
    EXPECT_NEAR(air.densite(1500, 300), (1.51e-10 + 2.52e-10) / 2, 1e-24);
    // The last bracket is carried on beyond the last line.
    EXPECT_NEAR(air.densite(1000, 401), 2e-12 - (3e-10 - 2e-12) / 200, 1e-24);
    EXPECT_EQ(air.densite(1000, 2500), 0);
    // The bracket kept from the last call is no other than the one found from the start.
    for (const double alt : {150., 390., 101., 399., 200., 400., 100.}) {
        atmosphere neuf(d.chemin.string());
        EXPECT_EQ(air.densite(700, alt), neuf.densite(700, alt)) << alt;
    }
    EXPECT_FALSE(veille.faute());
}

TEST(densite, agrees_with_the_standard_atmosphere) {
    atmosphere air(DOSSIER_DATA);
    const struct {
        double alt, rho;
    } norme[] = {{150, 2.076e-9},  {200, 2.541e-10}, {300, 1.916e-11}, {400, 2.803e-12},
                 {500, 5.215e-13}, {700, 3.070e-14}, {1000, 3.561e-15}};
    for (const auto& [alt, rho] : norme) {
        RELEVE("densite.norme", air.densite(1000, alt) / rho, 1, 0.33) << alt;
        releve::point("densite", "modèle", alt, air.densite(1000, alt));
        releve::point("densite", "norme de 1976", alt, rho);
    }
}

TEST(temperature, solar_flux_by_month_and_by_sine) {
    atmosphere air(DOSSIER_DATA);
    EXPECT_EQ(air.flux_solaire(jour(1991, 1, 1)), 229.4);
    EXPECT_EQ(air.flux_solaire(jour(1991, 5, 31) + 0.999), 190.3);
    EXPECT_EQ(air.flux_solaire(jour(1991, 6, 1)), 206.8);
    std::ifstream f(std::string(DOSSIER_DATA) + "/flux_solaire.txt", std::ios::binary);
    f.seekg(203 * 15 + 8);
    double decembre_2007 = 0;
    f >> decembre_2007;
    EXPECT_EQ(air.flux_solaire(jour(2007, 12, 31)), decembre_2007);

    EXPECT_NE(air.flux_solaire(jour(2008, 1, 1)), decembre_2007);
    EXPECT_NEAR(air.flux_solaire(17712 + 36525), 135, 1e-9); // a whole period of the sine after its origin
    EXPECT_NEAR(air.flux_solaire(17712 + 36525. / 4), 200, 1e-9);
    EXPECT_NEAR(air.flux_solaire(17712 - 36525. / 4), 70, 1e-9);
}

TEST(atmosphere, missing_files_are_faults_that_name_them) {
    atmosphere air("/nulle/part");
    surveillance veille;
    EXPECT_NE(air.flux_solaire(jour(2020, 1, 1)), 0); // beyond the file's years nobody asks for it
    EXPECT_FALSE(veille.faute());
    air.flux_solaire(jour(2001, 1, 1));
    EXPECT_TRUE(veille.faute());
    EXPECT_NE(air.faute().find("flux_solaire.txt"), std::string::npos);
    veille.efface();
    air.flux_solaire(jour(2001, 1, 1)); // and again at the next step
    EXPECT_TRUE(veille.faute());
    veille.efface();
    air.densite(1000, 50);
    EXPECT_TRUE(veille.faute());
    EXPECT_NE(air.faute().find("densite.txt"), std::string::npos);
}

TEST(atmosphere, damaged_files_are_faults_where_they_are_used) {
    dossier d;
    d.ecrit("densite.txt", std::string(petite_table) + " 500 1.00E-13 x.00E-13 4.00E-13\r\n");
    d.ecrit("flux_solaire.txt", "1991 01 229.4\r\n1991 02 abcde\r\n1991 03 2");
    atmosphere air(d.chemin.string());
    surveillance veille;
    EXPECT_GT(air.densite(1000, 399), 0);
    EXPECT_EQ(air.flux_solaire(jour(1991, 1, 15)), 229.4);
    EXPECT_EQ(air.flux_solaire(jour(1991, 3, 15)), 2); // a record cut short supplies what it has
    EXPECT_FALSE(veille.faute());
    air.densite(1000, 450);
    EXPECT_TRUE(veille.faute());
    EXPECT_NE(air.faute().find("ligne 4"), std::string::npos) << air.faute();
    for (const auto& [mois, texte] : {std::pair{2, "2/1991"}, std::pair{4, "4/1991"}}) {
        veille.efface();
        air.flux_solaire(jour(1991, static_cast<int16_t>(mois), 1));
        EXPECT_TRUE(veille.faute());
        EXPECT_NE(air.faute().find(texte), std::string::npos) << air.faute();
    }
    for (const char* table : {"", " 100 4.00E-07 5.00E-07 7.00E-07\r\n",
                              " 200 2.00E-10 3.00E-10 5.00E-10\r\n 100 4.00E-07 5.00E-07 7.00E-07\r\n"}) {
        d.ecrit("densite.txt", table);
        atmosphere abime(d.chemin.string());
        veille.efface();
        abime.densite(1000, 150);
        EXPECT_TRUE(veille.faute()) << table;
    }
}
