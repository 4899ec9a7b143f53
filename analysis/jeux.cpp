#include "analysis/jeux.h"

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
    return j;
}

jeu jeu_attitude() {
    return {"attitude",
            {colonnes_resultats.begin(), colonnes_resultats.end()},
            {"j",          "roulis",      "tangage",      "lacet",       "omega",       "q0",
             "q1",         "q2",          "q3",           "h",           "h_norme",     "energie",
             "angle_h",    "angle_nadir", "angle_soleil", "angle_champ", "gradient",    "aero",
             "solaire",    "magnetique",  "champ",        "commande",    "couple_roue", "vitesse_roue",
             "saturation", "part_soleil"},
            true};
}
