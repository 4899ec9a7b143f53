#include "attitude/att_pas.h"

#include <algorithm>

#include "shell/utilitaires.h"

namespace {

constexpr int pas_de_la_liste[] = {2700, 1800, 900, 600, 300, 120, 60, 30, 10, 5, 2, 1}; // [s]
constexpr double essai_max = 20'000;                                                     // steps of a trial

bool convient(attitude_record a, orbit_state o, const simulation_period& periode, atmosphere air,
              double tour_par_pas) {
    double plus_vite2 = 0; // [(deg/s)²]
    att_run_rappels rappels;
    rappels.ecrit = [&](const enregistrement_att& e) {
        plus_vite2 = std::max(plus_vite2, carre(e[1]) + carre(e[2]) + carre(e[3]));
    };
    const double limite2 = carre(tour_par_pas / periode.pas_sim * 180 / pi);
    rappels.progres = [&](float) { return plus_vite2 <= limite2; };
    return att_run(a, o, periode, 1, air, rappels).fin == att_run_fin::terminee && plus_vite2 <= limite2;
}

} // namespace

int pas_conseille(const attitude_record& a, const orbit_state& o, const simulation_period& periode,
                  const atmosphere& air) {
    for (const int pas : pas_de_la_liste) {
        if (pas >= periode.pas_sim) continue;
        simulation_period essai = periode;
        essai.pas_sim = pas;
        essai.j_fin = std::min(periode.j_fin, periode.j_debut + essai_max * pas / secondes_par_jour);
        if (convient(a, o, essai, air, pas == 1 ? tour_par_pas_max : tour_par_pas_conseille)) return pas;
    }
    return 0;
}
