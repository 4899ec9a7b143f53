#include "attitude/att_run.h"

#include <algorithm>
#include <cmath>

#include "attitude/att_defin_attitude.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

constexpr double seuil_roue = 0.0001; // [rad/s]
constexpr long pas_par_progres = 256;

float pourcentage(double j, const simulation_period& p) {
    if (p.j_debut == p.j_fin) return 100;
    return static_cast<float>(100 * (j - p.j_debut) / (p.j_fin - p.j_debut));
}

/// Angle turned in a step [rad]. The check itself must not overflow where the state has not.
double tour_du_pas(const attitude_record& a, double dt) {
    const double x = std::fabs(a.omega[0]), y = std::fabs(a.omega[1]), z = std::fabs(a.omega[2]);
    if (x + y + z < 1e100) return std::sqrt(x * x + y * y + z * z) * dt;
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(z) ? 1e100 : NAN;
}

/// A value that is not a number raises no flag by itself, and infinities only where they meet.
bool fini(const enregistrement_att& e) {
    return std::all_of(e.begin(), e.end(), [](double x) { return std::isfinite(x); });
}

/// What the watch has seen, the data file first.
std::string raison_de(const atmosphere& air) {
    return air.faute().empty() ? surveillance::description() : air.faute();
}

/// Tells the caller of a run. What a call-back does, in a window as a rule, raises flags of its own.
struct messager {
    attitude_record& a;
    const simulation_period& periode;
    const att_run_rappels& rappels;
    surveillance& veille;
    bool roues = roues_actives(a);

    void ecrit(double j) {
        if (!rappels.ecrit) return;
        quat_refresh(a);
        rappels.ecrit(enregistrement_de(a, j, roues));
        veille.efface();
    }
    /// False when the caller ends the run.
    bool poursuit(double j) {
        const bool oui = !rappels.progres || rappels.progres(pourcentage(j, periode));
        veille.efface();
        return oui;
    }
    void diverge(double j) {
        if (rappels.diverge) rappels.diverge(j);
        veille.efface();
    }
};

/// The initial state; the fault of one that is no number, or of a step that would not move the date on.
void prend_depart(attitude_record& a, const orbit_state& o, const simulation_period& periode) {
    attitude_init(a, o.pointage);
    for (double& c : a.ctot) // left by a run that ended in a fault
        if (!std::isfinite(c)) c = 0;
    const double j = periode.j_debut;
    const bool avance = j + periode.pas_sim / secondes_par_jour > j;
    if (!avance || !fini(enregistrement_de(a, j, roues_actives(a)))) leve_faute();
}

} // namespace

bool roues_actives(const attitude_record& a) {
    return std::fabs(a.OM_init[0]) >= seuil_roue || std::fabs(a.OM_init[1]) >= seuil_roue ||
           std::fabs(a.OM[2]) >= seuil_roue;
}

att_run_bilan att_run(attitude_record& a, orbit_state& o, const simulation_period& periode,
                      double pas_ecriture, atmosphere& air, const att_run_rappels& rappels) {
    att_run_bilan bilan;
    surveillance veille;
    messager dit{a, periode, rappels, veille};
    prend_depart(a, o, periode);
    const double pas = periode.pas_sim / secondes_par_jour, dt = pas * secondes_par_jour;
    const double cadence = std::max(1.0, std::nearbyint(pas_ecriture));
    double j = bilan.date = periode.j_debut;
    bool faute = veille.faute();
    if (!faute) dit.ecrit(j);
    long compteur = 0;
    double date_orbite = NAN; // date of the orbit state, which a step leaves at the next one
    for (; dans_la_periode(j, periode, regle_fin::exacte) && !faute; j += pas) {
        bilan.date = j;
        if (date_orbite != j) {
            orb_position(j, o);
            sous_point(j, o);
        }
        const bool avance = avance_attitude(a, o, dt, j, air);
        date_orbite = avance ? dt / secondes_par_jour + j : j;
        const double tour = tour_du_pas(a, dt);
        if (!std::isfinite(tour)) leve_faute();
        faute = veille.faute();
        if (faute) break;
        ++bilan.pas;
        if (tour > tour_par_pas_max && !bilan.divergence) {
            bilan.divergence = true;
            dit.diverge(j);
        }
        if (++compteur == cadence) {
            compteur = 0;
            dit.ecrit(j);
        }
        if (bilan.pas % pas_par_progres == 0 && !dit.poursuit(j)) {
            bilan.fin = att_run_fin::arretee;
            break;
        }
    }
    quat_refresh(a);
    if (faute) {
        bilan.fin = att_run_fin::faute;
        bilan.raison = raison_de(air);
    } else if (bilan.fin == att_run_fin::terminee) {
        dit.poursuit(bilan.date);
    }
    return bilan;
}

std::string texte_faute(const att_run_bilan& b) {
    return "Simulation d'attitude interrompue le " + date_vers_texte(jour_vers_date(b.date)) + " : " +
           b.raison + ".";
}
