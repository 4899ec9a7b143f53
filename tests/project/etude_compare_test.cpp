/// What differs between two études, in words.
#include <gtest/gtest.h>

#include "power/catalogues.h"
#include "power/reparations.h"
#include "project/etude_compare.h"

namespace {

/// The label of the step that these entries make.
std::string etape(std::vector<std::string> entrees) {
    etude avant = etude_par_defaut();
    avant.power.bat_c = 10;
    etude apres = avant;
    std::string raison;
    EXPECT_TRUE(change_champs(apres, entrees, raison)) << raison;
    EXPECT_FALSE(meme_etude(avant, apres));
    return libelle_etape(avant, apres);
}

} // namespace

TEST(etude_compare, a_step_is_told_in_the_words_of_its_window) {
    EXPECT_EQ(etape({"bat_c=15"}), "Batterie : capacité nominale 10 → 15 Ah");
    EXPECT_EQ(etape({"p_demand[1]=12,5"}), "Gestion : puissance demandée de nuit 50 → 12.5 W");
    EXPECT_EQ(etape({"albedo[2]=0.3"}), "Environnement : albédo de mars 0.38 → 0.3");
    EXPECT_EQ(etape({"orb_demi=8000"}), "Orbite : demi-grand axe 7174 → 8000 kms");
    EXPECT_EQ(etape({"omega_init[1]=2"}), "Attitude : vitesse de rotation initiale theta 0 → 2 deg/s");
    EXPECT_EQ(etape({"I_corps[0][1]=1", "I_corps[1][2]=1"}), "Masses : 4 réglages");
    EXPECT_EQ(etape({"inertiel[2]=90"}), "Pointage : angle d'Euler inertiel autour de l'axe Z 0 → 90 deg");
    EXPECT_EQ(etape({"spin=true", "vspin=2"}),
              "Pointage : rotation non → oui, vitesse de rotation 0 → 2 tr/mn");
    EXPECT_EQ(etape({"opt_faces=2"}), "Panneaux : forme du corps prisme carré → cylindre");
    EXPECT_EQ(etape({"debut=18708"}), "Simulation : début 21/03/2001 13:12:01 → 22/03/2001 00:00:00");
    EXPECT_EQ(etape({"dod_max=40"}), "Critères : profondeur de décharge permise 25 → 40 %");
    EXPECT_EQ(etape({"bat_c=15", "orb_an=2010", "Masse=60"}), "3 réglages (Orbite, Batterie, Masses)");

    etude avant = etude_par_defaut(), apres = avant;
    choisit_batterie(apres.power, 2);
    EXPECT_EQ(libelle_etape(avant, apres), "Batterie : type d'accumulateur Nickel-Cadmium → Lithium-Ion");
    apres = avant;
    apres.power.cel_radisc = .5f;
    repare_radisc(apres.power);
    EXPECT_EQ(libelle_etape(avant, apres).substr(0, 11), "Cellules : ");
    apres = avant;
    apres.modele.physique = true;
    EXPECT_EQ(libelle_etape(avant, apres), "Modèle de référence → physique");
    apres = avant;
    apres.modes.push_back({.nom = "radio", .puissance = 3});
    EXPECT_EQ(libelle_etape(avant, apres), "Modes de consommation");

    // What a run writes is no edit.
    apres = avant;
    apres.power.bat_soc = .5;
    apres.attitude.omega[0] = 1;
    apres.attitude.dip_tot = {};
    apres.orbit.pointage.psi = 3;
    EXPECT_TRUE(meme_etude(avant, apres));
    apres.orbit.orbite.orb_jour = 81;
    EXPECT_FALSE(meme_section(avant, apres, rubrique::orbite));
    EXPECT_TRUE(meme_section(avant, apres, rubrique::energie));
    apres.nom_orbite = "basse";
    copie_section(apres, avant, rubrique::orbite);
    EXPECT_TRUE(meme_etude(avant, apres));
    apres.notes = "à revoir";
    EXPECT_FALSE(meme_etude(avant, apres));
}
