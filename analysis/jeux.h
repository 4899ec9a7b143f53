/// The runs that have a name, and the columns that each gives unless others are asked for: the batch
/// program's commands and the Python module's calls are these.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "analysis/variables.h"
#include "attitude/att_run.h"
#include "project/etude.h"

struct jeu {
    const char* nom;
    std::vector<const char*>
        defaut; ///< its columns, by name in the catalogue; "heading=name" gives another heading
    std::vector<const char*> plus{}; ///< what "toutes" adds
    bool attitude = false;           ///< physical model: the attitude is run and its columns are to be had
    bool couple = false;             ///< and the panels follow it
    /// Parts whose variables may be asked for.
    unsigned lisibles = besoin::orbite | besoin::sol | besoin::energie | besoin::couples;
};

jeu jeu_orbite(const etude& e);
jeu jeu_energie(const etude& e);
jeu jeu_couple(const etude& e);
/// By dates in the physical model; in the reference model the columns of its own run, `deroule_attitude`.
jeu jeu_attitude(const etude& e);

/// The columns that a user asks for: by heading among those of the run, else by name in the catalogue; its
/// own for an empty list, all of them for {"toutes"}. Empty, with the reason in `refus`, for a name that it
/// cannot give.
std::vector<voie> choisit_voies(const jeu& j, const std::vector<std::string>& colonnes, const power_record& p,
                                std::string& refus);

/// Each step moves the date on. It does not where a date is none, or so far from 1950 that a step is lost in
/// its rounding: a run would stand still.
bool avance_toujours(const simulation_period& p);

/// The attitude of the reference model over the étude's period: the values of `choix` (columns of
/// `jeu_attitude`) at every `cadence`-th step, the initial state first.
att_run_bilan deroule_attitude(etude& e, const std::vector<voie>& choix, double cadence, atmosphere& air,
                               const std::function<void(const std::vector<double>&)>& ligne,
                               const std::function<void(double date)>& diverge);
