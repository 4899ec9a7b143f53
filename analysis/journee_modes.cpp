#include "analysis/journee_modes.h"

#include <cmath>

#include "analysis/modes.h"
#include "analysis/reglages_etude.h"
#include "shell/utilitaires.h"

journee_de_modes premiere_journee(etude e, const std::stop_token& arret) {
    const modes_en_vigueur modes(e);
    journee_de_modes j(e.modes.size());
    e.periode.j_fin = e.periode.j_debut + 1;
    const double debut = e.periode.j_debut, pas = e.periode.pas_sim / secondes_par_jour;
    calcul c(modeles_de(e), {}, reglages_de(e, {.besoins = besoin::energie | besoin::sol}));
    while (c.suivant() && !arret.stop_requested())
        for (std::size_t m = 0; m < j.size(); ++m) {
            if (!modes.en_vigueur(m, c.etat())) continue;
            const double t = c.date() - debut;
            if (!j[m].empty() && std::fabs(j[m].back().second - t) < pas / 2)
                j[m].back().second = t + pas;
            else
                j[m].emplace_back(t, t + pas);
        }
    return j;
}
