/// The attitude project file: every offset by a file made by hand, byte-exact round trips, short, foreign and
/// unreadable files.
///
/// Offsets, types and orders are typed here from the format's description. The reference runs' projects
/// (tests/data/cas) come from an independent writer of the same format.
#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "attitude/att_champs.h"
#include "project/att_fichier.h"
#include "tests/fichiers.h"

namespace {

const std::string essai = testing::TempDir() + "/kestrel-essai-" + std::to_string(getpid()) + ".att";

/// A value that tells its offset.
double marque(int decalage) { return decalage + 0.25; }
int16_t marque16(int decalage) { return static_cast<int16_t>(-decalage); }

std::string fichier_marque() {
    std::string octets(820, '\0');
    for (int p = 0; p < 820;) {
        if ((p >= 272 && p < 278) || (p >= 302 && p < 308)) {
            const int16_t x = marque16(p);
            std::memcpy(octets.data() + p, &x, 2);
            p += 2;
        } else {
            const double x = marque(p);
            std::memcpy(octets.data() + p, &x, 8);
            p += 8;
        }
    }
    return octets;
}

} // namespace

TEST(att, every_field_stands_at_its_offset) {
    ecrit(essai, fichier_marque());
    attitude_record a;
    std::string raison;
    ASSERT_TRUE(charge_attitude(essai, a, raison)) << raison;
    for (int j = 0; j < 3; ++j)
        for (int i = 0; i < 3; ++i) { // row i, column j at position 3 j + i
            EXPECT_EQ(a.I_corps(i, j), marque(8 * (3 * j + i)));
            EXPECT_EQ(a.I(i, j), marque(484 + 8 * (3 * j + i)));
        }
    const struct {
        int decalage;
        const vec3& v;
    } vecteurs[] = {{72, a.dim},      {104, a.cm},      {128, a.dext}, {152, a.mext}, {200, a.dip_tot},
                    {224, a.dip_res}, {248, a.dip_act}, {278, a.jets}, {308, a.JR},   {332, a.OM_init},
                    {356, a.md},      {380, a.ld},      {404, a.c},    {428, a.k},    {460, a.cm_total}};
    for (const auto& [decalage, v] : vecteurs)
        for (int i = 0; i < 3; ++i) EXPECT_EQ(v[i], marque(decalage + 8 * i)) << decalage;
    EXPECT_EQ(a.Masse, marque(96));
    EXPECT_EQ(a.Mt, marque(452));
    EXPECT_EQ(a.omega_init[1], marque(176)); // theta, phi, psi
    EXPECT_EQ(a.omega_init[2], marque(184));
    EXPECT_EQ(a.omega_init[0], marque(192));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(a.dip_cmd[i], marque16(272 + 2 * i));
        EXPECT_EQ(a.jet_cmd[i], marque16(302 + 2 * i));
    }
    for (int f = 0; f < 6; ++f) {
        EXPECT_EQ(a.sn[f], marque(628 + 8 * f));
        EXPECT_EQ(a.st[f], marque(676 + 8 * f));
        EXPECT_EQ(a.cr[f], marque(724 + 8 * f));
        EXPECT_EQ(a.cd[f], marque(772 + 8 * f));
    }
    // The face table is made anew from dimensions and centre of mass, not from what the file held.
    EXPECT_EQ(a.face_c[1][1], a.dim[1] / 2 - a.cm[1]);
    EXPECT_EQ(a.face_c[5][0], -a.cm[0]);
}

TEST(att, saves_byte_for_byte_with_the_faces_computed) {
    std::string attendu = fichier_marque();
    ecrit(essai, attendu);
    attitude_record a;
    std::string raison;
    ASSERT_TRUE(charge_attitude(essai, a, raison));
    ASSERT_TRUE(sauve_attitude(essai, a, raison));
    for (int j = 0; j < 3; ++j)
        for (int face = 0; face < 3; ++face) { // coordinate j of face i at position 3 j + i
            const double x = a.face_c[face][j];
            std::memcpy(attendu.data() + 556 + 8 * (3 * j + face), &x, 8);
        }
    EXPECT_EQ(lit(essai), attendu);
    fs::remove(essai);
}

TEST(att, projects_of_another_writer_come_back) {
    int vus = 0;
    std::string raison;
    for (const auto& f : fs::directory_iterator(std::string(DONNEES_TEST) + "/cas")) {
        if (f.path().extension() != ".att") continue;
        attitude_record a;
        ASSERT_TRUE(charge_attitude(f.path().string(), a, raison)) << raison;
        ASSERT_TRUE(sauve_attitude(essai, a, raison)) << raison;
        std::string avant = lit(f.path()), apres = lit(essai);
        avant.replace(556, 72, 72, '\0');
        apres.replace(556, 72, 72, '\0'); // overwritten at every load
        EXPECT_EQ(avant, apres) << f.path();
        ++vus;
    }
    EXPECT_GE(vus, 5);
    fs::remove(essai);
}

TEST(att, short_long_and_empty_files) {
    attitude_record a;
    std::string raison;
    // A longer old file keeps its tail and its size.
    ecrit(essai, std::string(820, 'x') + "la suite");
    ASSERT_TRUE(sauve_attitude(essai, a, raison));
    const std::string octets = lit(essai);
    ASSERT_EQ(octets.size(), 828u);
    EXPECT_EQ(octets.substr(820), "la suite");
    fs::remove(essai);
    ASSERT_TRUE(sauve_attitude(essai, a, raison));
    EXPECT_EQ(lit(essai), octets.substr(0, 820));

    // Cut inside a field: its missing bytes are zero, and all that follows.
    ecrit(essai, fichier_marque().substr(0, 100));
    ASSERT_TRUE(charge_attitude(essai, a, raison));
    EXPECT_EQ(a.dim[2], marque(88));
    EXPECT_EQ(a.cm, (vec3{}));
    EXPECT_EQ(a.sn, faces6{});

    ecrit(essai, "");
    a = {};
    a.omega = {1, 2, 3, 4, 5, 6};
    ASSERT_TRUE(charge_attitude(essai, a, raison));
    for (const champ_att& c : att_champs())
        for (int i = 0; i < c.nombre; ++i) EXPECT_EQ(valeur(a, c, i), 0) << c.nom;
    EXPECT_EQ(a.omega[5], 6); // the state of a run is not in the file
    fs::remove(essai);
}

TEST(att, failures_leave_the_configuration) {
    attitude_record a;
    a.Masse = 12;
    std::string raison;
    for (const std::string& chemin : {testing::TempDir(), std::string("/nulle/part/x.att")}) {
        raison.clear();
        EXPECT_FALSE(charge_attitude(chemin, a, raison)) << chemin;
        EXPECT_FALSE(raison.empty());
        EXPECT_FALSE(sauve_attitude(chemin, a, raison)) << chemin;
    }
    EXPECT_EQ(a.Masse, 12);
    EXPECT_EQ(a.I_corps(0, 0), 2.188);
}

TEST(att, table_covers_the_record_without_holes_and_feeds_each_control_once) {
    std::size_t place = 0;
    std::set<std::string> controles;
    for (const champ_att& c : att_champs()) {
        EXPECT_EQ(c.decalage, place) << c.nom;
        place += c.taille();
        for (int i = 0; i < c.nombre; ++i) {
            const char* controle = c.controles[i];
            const std::string nom = c.nom;
            if (!controle || nom == "dext" || nom == "mext") continue; // one box for the axis chosen
            EXPECT_TRUE(controles.insert(controle).second) << controle;
            const champ_att* trouve = nullptr;
            int element = -1;
            ASSERT_TRUE(champ_att_du_controle(controle, trouve, element));
            EXPECT_EQ(trouve, &c);
            EXPECT_EQ(element, i);
        }
    }
    EXPECT_EQ(place, taille_att);
}
