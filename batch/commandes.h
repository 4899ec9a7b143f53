/// The commands of the batch program. Each fills its rows into `sortie` and returns the exit status.
#pragma once

#include "batch/csv.h"
#include "batch/options.h"

statut cmd_orbite(const options& o, session& s, csv& sortie);
statut cmd_energie(const options& o, session& s, csv& sortie);
statut cmd_batterie(const options& o, session& s, csv& sortie);
statut cmd_panneaux(const options& o, session& s, csv& sortie);
statut cmd_attitude(const options& o, session& s, csv& sortie);
statut cmd_couples(const options& o, session& s, csv& sortie);
statut cmd_passages(const options& o, session& s, csv& sortie);
