/// A run of the attitude over a period, without a window.
#pragma once

#include <functional>
#include <string>

#include "attitude/att_integrateur.h"
#include "attitude/att_resultats.h"

/// The results are not to be trusted once the satellite turns by more than this in a step [rad].
inline constexpr double tour_par_pas_max = 0.5;
inline constexpr const char* message_divergence =
    "Le satellite tourne de plus de 0,5 rad en un pas : les résultats ne sont pas fiables.";

/// What the run tells its caller while it goes; each may be empty.
struct att_run_rappels {
    /// A record to keep, the one of the initial state first.
    std::function<void(const enregistrement_att&)> ecrit;
    /// Progress in percent, at least once in 256 steps and at the end. False ends the run.
    std::function<bool(float)> progres;
    /// The step is too large for the rates reached, at this date: called once at most.
    std::function<void(double date)> diverge;
};

enum class att_run_fin { terminee, faute, arretee };

struct att_run_bilan {
    att_run_fin fin = att_run_fin::terminee;
    double date = 0;    ///< start of the last step
    std::string raison; ///< what happened, in French, for a fault
    bool divergence = false;
    long pas = 0; ///< steps done
};

/// Runs from j_debut to j_fin with the step of the period, from the initial conditions; every
/// `pas_ecriture`-th step (rounded half to even, at least 1) leaves a record that bears the date of the
/// step's start. Ends early at a numerical fault: the state stays as the fault left it, `raison` says what
/// happened and names the data file where one is at fault. The caller has checked that the step is at least 1
/// s.
att_run_bilan att_run(attitude_record& a, orbit_state& o, const simulation_period& periode,
                      double pas_ecriture, atmosphere& air, const att_run_rappels& rappels);

/// At least one wheel turns. The third test reads the copy of the last run, not the initial speed: meant.
bool roues_actives(const attitude_record& a);

/// "Simulation d'attitude interrompue le 21/03/2001 13:12:00 : division par zéro." for a fault.
std::string texte_faute(const att_run_bilan& b);
