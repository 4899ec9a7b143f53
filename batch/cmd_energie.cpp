#include "batch/commandes.h"
#include "batch/deroule.h"

std::vector<const char*> colonnes_energie(const session& s) {
    std::vector<const char*> c = {"sim_date",  "eclipse",       "flux_sun",   "flux_alb",   "flux_ir",
                                  "sun_z",     "sun_sxy",       "sun_az",     "nad_z",      "nad_sxy",
                                  "nad_az",    "sun_nadir_cos", "earth_half", "pan_target", "pan_angle",
                                  "pan_wait",  "pan_moving",    "gen_power",  "bat_soc",    "bat_v",
                                  "bat_i",     "bat_p",         "p_payload",  "p_excess",   "p_loss_ch",
                                  "p_loss_de", "p_loss_gs",     "p_loss_pl",  "p_heat",     "bat_state_full",
                                  "t_charge",  "t_discharge",   "t_bat"};
    if (s.modele.physique) c.push_back("part_soleil");
    return c;
}

std::vector<const char*> colonnes_energie_plus() { return {"node_t", "cell_eff", "pan_power"}; }

statut cmd_energie(const options& o, session& s, csv& sortie) {
    return deroule({.nom = "energie", .defaut = colonnes_energie(s), .plus = colonnes_energie_plus()}, o, s,
                   sortie);
}
