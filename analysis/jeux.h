/// The runs that have a name, and the columns that each gives unless others are asked for: the batch
/// program's commands and the Python module's calls are these.
#pragma once

#include <vector>

#include "project/etude.h"

struct jeu {
    const char* nom;
    std::vector<const char*>
        defaut; ///< its columns, by name in the catalogue; "heading=name" gives another heading
    std::vector<const char*> plus{}; ///< what "toutes" adds
    bool attitude = false;           ///< physical model: the attitude is run and its columns are to be had
    bool couple = false;             ///< and the panels follow it
};

jeu jeu_orbite(const etude& e);
jeu jeu_energie(const etude& e);
jeu jeu_couple(const etude& e);
/// Of the physical model; the reference model's attitude has the columns of its own run (`att_run`).
jeu jeu_attitude();
