#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "power/power_step.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

using col = colonne<session>;

/// A column that shows a field of the power record under the field's own name.
#define REEL(champ)                                                                                          \
    {                                                                                                        \
#champ, [](const session& s, int) -> double { return s.power.champ; }                                \
    }
#define ENTIER(champ)                                                                                        \
    {                                                                                                        \
#champ, [](const session& s, int) -> double { return s.power.champ; }, 0, true                       \
    }

const std::vector<col>& colonnes_par_defaut() {
    static const std::vector<col> t = {
        {"sim_date", [](const session& s, int) { return s.periode.j_courant; }},
        ENTIER(eclipse),
        REEL(flux_sun),
        REEL(flux_alb),
        REEL(flux_ir),
        REEL(sun_z),
        REEL(sun_sxy),
        REEL(sun_az),
        REEL(nad_z),
        REEL(nad_sxy),
        REEL(nad_az),
        REEL(sun_nadir_cos),
        REEL(earth_half),
        REEL(pan_target),
        REEL(pan_angle),
        ENTIER(pan_wait),
        ENTIER(pan_moving),
        REEL(gen_power),
        REEL(bat_soc),
        REEL(bat_v),
        REEL(bat_i),
        REEL(bat_p),
        REEL(p_payload),
        REEL(p_excess),
        REEL(p_loss_ch),
        REEL(p_loss_de),
        REEL(p_loss_gs),
        REEL(p_loss_pl),
        REEL(p_heat),
        ENTIER(bat_state_full),
        ENTIER(t_charge),
        ENTIER(t_discharge),
        REEL(t_bat),
    };
    return t;
}

#undef REEL
#undef ENTIER

std::vector<col> toutes_les_colonnes() {
    std::vector<col> t = colonnes_par_defaut();
    const auto tableau = [&t](const char* nom, int nombre, double (*valeur)(const session&, int)) {
        for (int i = 0; i < nombre; ++i) t.push_back({std::string(nom) + "_" + std::to_string(i), valeur, i});
    };
    tableau("node_t", nb_noeuds, [](const session& s, int i) { return s.power.node_t[i]; });
    tableau("cell_eff", nb_bandes, [](const session& s, int i) -> double { return s.power.cell_eff[i]; });
    tableau("pan_power", nb_bandes, [](const session& s, int i) { return s.power.pan_power[i]; });
    return t;
}

} // namespace

statut cmd_energie(const options& o, session& s, csv& sortie) {
    std::vector<col> choix;
    if (!choisit_colonnes(toutes_les_colonnes(), colonnes_par_defaut().size(), o.colonnes, choix))
        return usage_incorrect;
    ecrit_entete(choix, sortie);

    surveillance veille;
    power_state_init(s.power);
    s.power.t_charge = s.power.t_discharge = 0;
    if (veille.faute()) return signale_faute("energie (état initial)", s.periode.j_debut);
    const double fin = fin_de_periode(s.periode), pas = s.periode.pas_sim / secondes_par_jour;
    double& j = s.periode.j_courant;
    for (j = s.periode.j_debut; j <= fin; j += pas) {
        power_step(s.power, s.orbit, s.periode);
        if (veille.faute()) return signale_faute("energie", j);
        ecrit_ligne(choix, s, sortie);
    }
    if (s.power.courbe_charge_incompatible) signale(message_charge_incompatible);
    return reussi;
}
