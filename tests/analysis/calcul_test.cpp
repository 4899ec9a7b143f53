/// The run by dates and the catalogue: what every consumer of the models reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "analysis/calcul.h"
#include "analysis/calcul_courbes.h"
#include "analysis/environnement_pas.h"
#include "analysis/listes_resultats.h"
#include "attitude/att_couples.h"
#include "power/power_step.h"

namespace {

/// Records of an inclined orbit and a battery that cycles, two hours of it.
struct essai {
    simulation_period periode;
    orbit_state o;
    power_record p;
    attitude_record a;

    essai() {
        o.orbite.orb_inclinaison = 51.6;
        o.pointage.lacet = 12;
        p.cel_ns = 20;
        p.cel_np = 6;
        p.opt_panel_ext = faux;
        p.opt_faces = 2;
        bilan_masses(a);
        periode = periode_par_defaut(o.orbite);
        periode.pas_sim = 60;
    }
    modeles records() { return {periode, o, p, a}; }
};

using lignes = std::vector<std::vector<double>>;

lignes deroule(calcul& c) {
    lignes l;
    while (c.suivant()) l.push_back(c.ligne());
    return l;
}

constexpr const char* noms[] = {"sim_date", "bat_soc", "p_demande", "node_t", "pan_power", "eclipse"};

} // namespace

TEST(catalogue, every_name_is_found_once_and_every_element_by_its_own) {
    std::set<std::string> noms;
    essai e;
    for (const variable& v : catalogue()) {
        EXPECT_TRUE(noms.insert(v.nom).second) << v.nom;
        std::vector<voie> toutes, une;
        ASSERT_TRUE(ajoute_voies(v.nom, e.p, toutes)) << v.nom;
        EXPECT_EQ(toutes.size(), static_cast<std::size_t>(nombre_elements(v, e.p))) << v.nom;
        ASSERT_TRUE(ajoute_voies(toutes.back().nom, e.p, une)) << toutes.back().nom;
        EXPECT_EQ(une.back().element, toutes.back().element) << v.nom;
    }
    std::vector<voie> v;
    for (const char* faux : {"", "_", "node_t_39", "node_t_x", "bat_soc_0", "sat_pos_0", "sat_pos_w"})
        EXPECT_FALSE(ajoute_voies(faux, e.p, v)) << faux;
}

TEST(catalogue, the_lists_of_the_result_windows_keep_their_order_and_their_own_spellings) {
    const auto ext = liste_energie(montage::externes), cyl = liste_energie(montage::cylindre),
               pri = liste_energie(montage::faces);
    ASSERT_EQ(ext.size(), 36u);
    ASSERT_EQ(cyl.size(), 25u);
    ASSERT_EQ(pri.size(), 28u);
    EXPECT_STREQ(ext[15].texte, "Angle d'incidence Solaire (°)");
    EXPECT_STREQ(pri[15].texte, "Angle d'incidence solaire (°)");
    for (std::size_t i = 0; i < pri.size(); ++i) {
        EXPECT_EQ(pri[i].avec_selecteur, i >= 15 && i < 25) << pri[i].texte;
        if (i < nb_variables_communes) {
            EXPECT_STREQ(ext[i].texte, cyl[i].texte);
            EXPECT_STREQ(ext[i].texte, pri[i].texte);
        }
    }
    for (const auto liste : {ext, cyl, pri, liste_couples()})
        for (const variable_liste& v : liste)
            for (int position = 0; position < (v.avec_selecteur ? 4 : 1); ++position)
                EXPECT_NE(v.quoi(position).quoi, nullptr) << v.texte;
}

TEST(calcul, a_run_is_the_power_step_at_every_date_of_the_period) {
    essai e, temoin;
    calcul c(e.records(), voies_de(noms, e.p));
    power_state_init(temoin.p);
    double j = temoin.periode.j_debut;
    while (c.suivant()) {
        temoin.periode.j_courant = j;
        power_step(temoin.p, temoin.o, temoin.periode);
        ASSERT_EQ(c.date(), j);
        ASSERT_EQ(c.ligne()[1], temoin.p.bat_soc);
        ASSERT_EQ(c.ligne()[3 + 17], temoin.p.node_t[17]);
        j += 60 / 86400.0;
    }
    EXPECT_EQ(c.lignes(), 97);
    EXPECT_GT(j, e.periode.j_fin + 0.1 / 86400);
    EXPECT_FALSE(c.faute());
}

TEST(calcul, an_environment_kept_from_one_run_gives_the_same_numbers_to_another) {
    essai e;
    std::vector<environnement_pas> gardes;
    calcul premier(e.records(), voies_de(noms, e.p));
    lignes attendues;
    while (premier.suivant()) {
        gardes.push_back(releve_environnement(e.p, e.o));
        attendues.push_back(premier.ligne());
    }
    essai f;
    f.o.orbite.orb_inclinaison = 3; // an orbit that must not be looked at
    reglages_calcul r;
    std::size_t n = 0;
    r.environnement = [&](double, power_record& p, orbit_state& o, const simulation_period&) {
        pose_environnement(gardes[n++], p, o);
    };
    calcul second(f.records(), voies_de(noms, f.p), r);
    EXPECT_EQ(deroule(second), attendues);
}

TEST(calcul, the_demand_of_a_step_replaces_that_of_day_and_night) {
    essai e, f, g;
    calcul reference(e.records(), voies_de(noms, e.p));
    reglages_calcul r;
    r.demande = [](const etat_calcul& x) { return double{x.energie.p_demand[x.energie.eclipse == vrai]}; };
    calcul meme(f.records(), voies_de(noms, f.p), r);
    const lignes attendues = deroule(reference);
    EXPECT_EQ(deroule(meme), attendues);

    g.p.p_demand = {80, 80};
    calcul regle(g.records(), voies_de(noms, g.p));
    const lignes a_80 = deroule(regle);
    essai h;
    r.demande = [](const etat_calcul&) { return 80.0; };
    calcul donne(h.records(), voies_de(noms, h.p), r);
    EXPECT_EQ(deroule(donne), a_80);
    EXPECT_NE(a_80, attendues);
    EXPECT_EQ(a_80[0][2], 80);
}

TEST(calcul, ground_point_and_torques_come_with_the_energy_as_they_do_alone) {
    essai e, temoin;
    const char* noms[] = {"bat_soc", "sat_lat", "ctot"};
    reglages_calcul r;
    r.dossier_donnees = DOSSIER_DATA;
    e.o.pointage.spin = temoin.o.pointage.spin = vrai;
    e.o.pointage.vspin = temoin.o.pointage.vspin = 0.2;
    calcul c(e.records(), voies_de(noms, e.p), r);
    atmosphere air(DOSSIER_DATA);
    while (c.suivant()) {
        couples_a_la_date(temoin.a, temoin.o, c.date(), e.periode.j_debut, air);
        ASSERT_EQ(c.ligne()[1], temoin.o.sat_lat);
        ASSERT_EQ(c.ligne()[3], temoin.a.ctot[1]);
    }
    EXPECT_EQ(c.lignes(), 97);
}

TEST(courbes, events_stand_where_the_rows_change) {
    etude e = etude_par_defaut();
    e.periode.j_fin = e.periode.j_debut + .15;
    e.periode.pas_sim = 60;
    const std::vector<std::string> noms = {"eclipse", "p_excess"};
    suivi_courbes suivi;
    resultat_courbes r = calcule_courbes(e, noms, DOSSIER_DATA, suivi, {});
    const serie eclipse = r.cherche("eclipse")->valeurs, exces = r.cherche("p_excess")->valeurs;
    std::size_t dernier = 0;
    for (std::size_t i = 1; i < eclipse.taille(); ++i) {
        const auto note = [&](evenement quoi) {
            return std::any_of(r.evenements.begin(), r.evenements.end(), [&](const evenement_date& x) {
                return x.quoi == quoi && x.date == eclipse.date(i);
            });
        };
        const bool avant = eclipse.valeur(i - 1) != 0, ici = eclipse.valeur(i) != 0;
        EXPECT_EQ(note(evenement::entree_eclipse), ici && !avant) << i;
        EXPECT_EQ(note(evenement::sortie_eclipse), avant && !ici) << i;
        const bool manquait = exces.valeur(i - 1) < -.1, manque = exces.valeur(i) < -.1;
        EXPECT_EQ(note(evenement::manque), manque && !manquait) << i;
        EXPECT_EQ(note(evenement::fin_manque), manquait && !manque) << i;
        if (ici) dernier = i;
    }
    e.periode.j_fin = eclipse.date(dernier); // within an eclipse
    r = calcule_courbes(e, noms, DOSSIER_DATA, suivi, {});
    ASSERT_FALSE(r.eclipses.empty());
    EXPECT_EQ(r.eclipses.back().second, r.fin);
}

TEST(calcul, a_fault_ends_the_run_with_its_date_and_the_charge_message_is_told_once) {
    essai e;
    e.p.fac_alpha0[0] = .8f; // above its limit: the logarithm of the ageing
    calcul c(e.records(), voies_de(noms, e.p));
    std::feraiseexcept(FE_OVERFLOW); // the caller's own
    EXPECT_FALSE(c.suivant());
    EXPECT_TRUE(c.faute() && !c.faute_initiale());
    EXPECT_EQ(c.date(), e.periode.j_debut);
    EXPECT_EQ(c.raison(), "opération non valide");
    EXPECT_FALSE(c.suivant());

    essai f;
    f.p.bat_c = 0;
    calcul nul(f.records(), {}, {.besoins = besoin::energie});
    EXPECT_FALSE(nul.suivant());
    EXPECT_TRUE(nul.faute_initiale());

    essai g;
    calcul h(g.records(), voies_de(noms, g.p));
    int dit = 0;
    while (h.suivant()) {
        g.p.courbe_charge_incompatible = true;
        dit += h.charge_a_signaler();
    }
    EXPECT_EQ(dit, 1);
}
