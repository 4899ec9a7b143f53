/// The commands that read variables of the catalogue: their columns, and the rows that a run gives them.
#pragma once

#include "analysis/calcul.h"
#include "analysis/jeux.h"
#include "batch/csv.h"
#include "batch/options.h"

/// The columns that `--colonnes` asks for. False, with a line on standard error, for a name that the command
/// cannot give.
bool choisit_voies(const options& o, const jeu& j, const power_record& p, std::vector<voie>& choix);

void ecrit_noms(const std::vector<voie>& choix, csv& sortie);
void ecrit_valeurs(const std::vector<voie>& choix, const std::vector<double>& valeurs, csv& sortie);

/// A command that runs the models over the period and writes a row a step, or every `cadence`-th one.
statut deroule(const jeu& j, const options& o, session& s, csv& sortie, int cadence = 1);
