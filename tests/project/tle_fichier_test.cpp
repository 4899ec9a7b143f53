/// Two-line elements: published sets, and every way in which a set can be wrong.
#include <gtest/gtest.h>

#include "orbit/orb_trajecto.h"
#include "project/tle_fichier.h"
#include "shell/utilitaires.h"
#include "tests/releve.h"

namespace {

// Hoots and Roehrich, Spacetrack Report 3 (1980), with the checksums of Vallado et al., "Revisiting
// Spacetrack Report #3", AIAA 2006-6753.
const std::string rapport3 = "1 88888U          80275.98708465  .00073094  13844-3  66816-4 0    87\n"
                             "2 88888  72.8435 115.9689 0086731  52.6988 110.5714 16.05824518  1058\n";

/// With the checksum put right after a change.
std::string refait(std::string ligne) {
    int somme = 0;
    for (const char c : ligne.substr(0, 68)) somme += c >= '0' && c <= '9' ? c - '0' : c == '-' ? 1 : 0;
    ligne[68] = static_cast<char>('0' + somme % 10);
    return ligne;
}

} // namespace

TEST(tle, a_published_set_gives_the_published_place) {
    std::vector<elements_tle> lus;
    std::string raison;
    ASSERT_TRUE(lit_tle("  SPACETRACK 3 \r\n" + rapport3 + "\n", lus, raison)) << raison;
    ASSERT_EQ(lus.size(), 1u);
    const record_orbite& o = lus[0].orbite;
    EXPECT_EQ(lus[0].nom, "SPACETRACK 3");
    EXPECT_EQ(std::string(o.orb_nom.data(), o.orb_nom.size()), "SPACETRACK 3            ");
    EXPECT_EQ(o.orb_an, 1980);
    EXPECT_EQ(o.orb_jour, 275.98708465);
    EXPECT_EQ(o.orb_inclinaison, 72.8435);
    EXPECT_EQ(o.orb_ascension, 115.9689);
    EXPECT_EQ(o.orb_excentricite, 0.0086731);
    EXPECT_EQ(o.orb_argument, 52.6988);
    EXPECT_EQ(o.orb_anomalie, 110.5714);
    EXPECT_EQ(o.orb_moy_mvt, 16.05824518);
    EXPECT_NEAR(moy_mvt_de_demi(o.orb_demi), o.orb_moy_mvt, 1e-12);

    // The report's own position at the epoch, in the equator and equinox of date. The model's node is counted
    // from the equinox of 1950; the two theories differ by the short-period terms.
    orbit_state e;
    e.orbite = o;
    orb_position(date_epoque(o.orb_an, o.orb_jour - 1), e);
    const double p = (o.orb_ascension - noeud_1950(o)) * rad_par_degre;
    const vec3 v = {std::cos(p) * e.sat_pos[0] - std::sin(p) * e.sat_pos[1],
                    std::sin(p) * e.sat_pos[0] + std::cos(p) * e.sat_pos[1], e.sat_pos[2]};
    RELEVE("tle.place", vec_norme(vec_difference(v, {2328.97048951, -5995.22076416, 1719.97067261})), 0,
           20); // [km]
}

TEST(tle, a_file_may_hold_several_sets_with_or_without_names) {
    std::vector<elements_tle> lus;
    std::string raison;
    const std::string iss = "0 ISS (ZARYA)\n"
                            "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927\n"
                            "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537\n";
    ASSERT_TRUE(lit_tle("# deux\n\n" + rapport3 + iss, lus, raison)) << raison;
    ASSERT_EQ(lus.size(), 2u);
    EXPECT_EQ(lus[0].nom, "88888");
    EXPECT_EQ(lus[1].nom, "ISS (ZARYA)");
    EXPECT_EQ(lus[1].orbite.orb_an, 2008);
    EXPECT_NEAR(lus[1].orbite.orb_demi - rayon_terre, 352, 3); // its altitude in September 2008
    // Two digits of the year: from the first launch on.
    for (const auto& [chiffres, an] : {std::pair{"57", 1957}, {"56", 2056}}) {
        std::string l1 = rapport3.substr(0, 69);
        ASSERT_TRUE(lit_tle(refait(l1.replace(18, 2, chiffres)) + rapport3.substr(69), lus, raison))
            << raison;
        EXPECT_EQ(lus[0].orbite.orb_an, an);
    }
}

TEST(tle, what_is_wrong_is_told_with_its_line) {
    const std::string l1 = rapport3.substr(0, 69), l2 = rapport3.substr(70, 69);
    const auto avec = [](std::string l, std::size_t colonne, const char* texte) {
        return l.replace(colonne - 1, std::string(texte).size(), texte);
    };
    const struct {
        std::string texte;
        const char *ligne, *mot;
    } cas[] = {
        {"", "", "pas d'éléments"},
        {"NOM\n", "", "pas d'éléments"},
        {"NOM\nAUTRE\n" + rapport3, "ligne 2 : ", "ligne 1 des éléments"},
        {l1 + "\n", "", "manque"},
        {l2 + "\n", "ligne 1 : ", "ligne 1 des éléments"},
        {l1 + "\n" + l1 + "\n", "ligne 2 : ", "ligne 2 des éléments"},
        {l1 + "\n" + avec(l2, 69, "3"), "ligne 2 : ", "somme de contrôle 3 au lieu de 8"},
        {avec(l1, 30, "9") + "\n" + l2, "ligne 1 : ", "somme de contrôle"},
        {l1.substr(0, 68) + "\n" + l2, "ligne 1 : ", "68 caractères au lieu de 69"},
        {"NOM\n" + l1 + "\n" + refait(avec(l2, 3, "88887")),
         "ligne 3 : ", "satellite 88887 au lieu de 88888"},
        {l1 + "\n" + refait(avec(l2, 9, "182.0000")), "ligne 2 : ", "inclinaison 182"},
        {l1 + "\n" + refait(avec(l2, 18, "11x.9689")), "ligne 2 : ", "« 11x.9689 » n'est pas un nombre"},
        {l1 + "\n" + refait(avec(l2, 27, "9999999")), "ligne 2 : ", "périgée"},
        {l1 + "\n" + refait(avec(l2, 53, "-6.05824518")), "ligne 2 : ", "moyen mouvement"},
        {refait(avec(l1, 21, "400")) + "\n" + l2, "ligne 1 : ", "jour de l'époque 400"},
    };
    for (const auto& c : cas) {
        std::vector<elements_tle> lus(1);
        std::string raison;
        EXPECT_FALSE(lit_tle(c.texte, lus, raison)) << c.texte;
        EXPECT_TRUE(raison.starts_with(c.ligne)) << c.texte << ": " << raison;
        EXPECT_NE(raison.find(c.mot), std::string::npos) << c.texte << ": " << raison;
        EXPECT_EQ(lus.size(), 1u); // left as it was
    }
}
