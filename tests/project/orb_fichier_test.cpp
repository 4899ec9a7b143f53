/// Orbit files: the record to the byte, short and foreign files, and names cut from paths.
///
/// The reference runs' orbits (tests/data/cas) come from an independent writer of the same format.
#include <gtest/gtest.h>

#include <cstring>

#include "project/orb_fichier.h"
#include "tests/fichiers.h"

namespace {

const std::string essai = testing::TempDir() + "/kestrel-essai-" + std::to_string(getpid()) + ".orb";

} // namespace

TEST(orb, orbits_of_another_writer_come_back) {
    int vus = 0;
    std::string raison;
    for (const auto& f : fs::directory_iterator(std::string(DONNEES_TEST) + "/cas")) {
        if (f.path().extension() != ".orb") continue;
        record_orbite o;
        ASSERT_TRUE(charge_orbite(f.path().string(), o, raison)) << raison;
        ASSERT_TRUE(sauve_orbite(essai, o, raison)) << raison;
        EXPECT_EQ(lit(f.path()), lit(essai)) << f.path();
        ++vus;
    }
    EXPECT_GE(vus, 10);
    fs::remove(essai);
}

TEST(orb, fields_stand_at_their_offsets) {
    record_orbite o;
    std::string raison;
    o.orb_an = 2004;
    o.orb_jour = 12.25;
    o.orb_demi = 7000.5;
    o.reserve = {1, 2, 3};
    ASSERT_TRUE(sauve_orbite(essai, o, raison));
    const std::string octets = lit(essai);
    ASSERT_EQ(octets.size(), 128u);
    const auto reel = [&](int place) {
        double x;
        std::memcpy(&x, octets.data() + place, 8);
        return x;
    };
    EXPECT_EQ(octets.substr(0, 24), std::string(24, ' '));
    EXPECT_EQ(reel(64), 15);
    EXPECT_EQ(static_cast<unsigned char>(octets[72]) + 256 * octets[73], 2004);
    EXPECT_EQ(reel(74), 12.25);
    EXPECT_EQ(reel(82), 7000.5);
    EXPECT_EQ(reel(106), 3);
    EXPECT_EQ(octets.substr(114), std::string(14, '\0'));
    fs::remove(essai);
}

TEST(orb, a_short_file_reads_as_zeros_and_a_directory_fails) {
    record_orbite o;
    std::string raison;
    std::ofstream(essai, std::ios::binary) << std::string(30, ' ');
    EXPECT_TRUE(charge_orbite(essai, o, raison));
    EXPECT_EQ(o.orb_demi, 0);
    EXPECT_EQ(o.orb_an, 0);
    fs::remove(essai);
    EXPECT_FALSE(charge_orbite(testing::TempDir(), o, raison));
    EXPECT_FALSE(raison.empty());
    EXPECT_FALSE(charge_orbite(essai, o, raison));
    EXPECT_FALSE(sauve_orbite(testing::TempDir() + "/absent/x.orb", o, raison));
}

TEST(orb, the_name_is_cut_from_its_path) {
    EXPECT_EQ(extrait_nom_fichier("/a.b/c.d/geo.haute.orb"), "geo.haute");
    EXPECT_EQ(extrait_nom_fichier("C:\\un.dossier\\orbite.orb"), "orbite");
    EXPECT_EQ(extrait_nom_fichier("  orbite "), "orbite");
    EXPECT_EQ(extrait_nom_fichier("   "), "");
}
