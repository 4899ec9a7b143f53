#include "analysis/jeux.h"

#include <algorithm>

#include "attitude/att_resultats.h"

jeu jeu_orbite(const etude& e) {
    jeu j = {"orbite",
             {"j", "sat_pos", "sat_vit", "soleil_pos", "vec_nadir", "vec_soleil", "anomalie_moy",
              "eclipse=eclipse_orbite", "sat_lon", "sat_lat", "sat_alt"}};
    if (e.modele.physique) j.defaut.push_back("part_soleil");
    return j;
}

jeu jeu_energie(const etude& e) {
    jeu j = {"energie",
             {"sim_date",   "eclipse",     "flux_sun",  "flux_alb",  "flux_ir",    "sun_z",
              "sun_sxy",    "sun_az",      "nad_z",     "nad_sxy",   "nad_az",     "sun_nadir_cos",
              "earth_half", "pan_target",  "pan_angle", "pan_wait",  "pan_moving", "gen_power",
              "bat_soc",    "bat_v",       "bat_i",     "bat_p",     "p_payload",  "p_excess",
              "p_loss_ch",  "p_loss_de",   "p_loss_gs", "p_loss_pl", "p_heat",     "bat_state_full",
              "t_charge",   "t_discharge", "t_bat"},
             {"node_t", "cell_eff", "pan_power"}};
    if (e.modele.physique) j.defaut.push_back("part_soleil");
    return j;
}

jeu jeu_couple(const etude& e) {
    jeu j = jeu_energie(e);
    j.nom = "couple";
    for (const char* nom : {"roulis", "tangage", "lacet", "omega"}) j.defaut.push_back(nom);
    j.attitude = j.couple = true;
    j.lisibles |= besoin::attitude | besoin::physique;
    return j;
}

jeu jeu_attitude(const etude& e) {
    if (!e.modele.physique) {
        jeu j = {"attitude", {colonnes_resultats.begin(), colonnes_resultats.end()}};
        j.lisibles = besoin::attitude;
        return j;
    }
    jeu j = {"attitude",
             {colonnes_resultats.begin(), colonnes_resultats.end()},
             {"j",          "roulis",      "tangage",      "lacet",       "omega",       "q0",
              "q1",         "q2",          "q3",           "h",           "h_norme",     "energie",
              "angle_h",    "angle_nadir", "angle_soleil", "angle_champ", "gradient",    "aero",
              "solaire",    "magnetique",  "champ",        "commande",    "couple_roue", "vitesse_roue",
              "saturation", "part_soleil"}};
    j.attitude = true;
    j.lisibles |= besoin::attitude | besoin::physique;
    return j;
}

std::vector<voie> choisit_voies(const jeu& j, const std::vector<std::string>& colonnes, const power_record& p,
                                std::string& refus) {
    const std::vector<voie> siennes = voies_de(j.defaut, p);
    std::vector<voie> toutes = siennes;
    for (const voie& v : voies_de(j.plus, p)) toutes.push_back(v);
    if (colonnes.empty()) return siennes;
    if (colonnes.size() == 1 && colonnes[0] == "toutes") return toutes;

    std::vector<voie> choix;
    for (const std::string& nom : colonnes) {
        const auto v =
            std::find_if(toutes.begin(), toutes.end(), [&](const voie& x) { return x.nom == nom; });
        if (v != toutes.end()) {
            choix.push_back(*v);
            continue;
        }
        if (!ajoute_voies(nom, p, choix)) {
            refus = "colonne inconnue : « " + nom + " » ; il y a ";
            for (const voie& c : siennes) refus += c.nom + ", ";
            refus += "et celles que donne kestrel_batch variables";
            return {};
        }
        if (choix.back().quoi->lit & ~j.lisibles) {
            refus = "la colonne " + nom + " n'est pas calculée par « " + j.nom + " »";
            return {};
        }
    }
    return choix;
}

bool avance_toujours(const simulation_period& p) {
    const double pas = p.pas_sim / secondes_par_jour;
    return p.j_debut + pas > p.j_debut && p.j_fin + pas > p.j_fin;
}

att_run_bilan deroule_attitude(etude& e, const std::vector<voie>& choix, double cadence, atmosphere& air,
                               const std::function<void(const std::vector<double>&)>& ligne,
                               const std::function<void(double date)>& diverge) {
    etat_calcul etat{e.periode, e.orbit, e.power, e.attitude};
    std::vector<double> valeurs(choix.size());
    att_run_rappels rappels;
    rappels.ecrit = [&](const enregistrement_att& x) {
        etat.enregistrement = &x;
        for (std::size_t c = 0; c < choix.size(); ++c) valeurs[c] = choix[c].lit(etat);
        ligne(valeurs);
    };
    rappels.diverge = diverge;
    return att_run(e.attitude, e.orbit, e.periode, cadence, air, rappels);
}
