/// The commands of the batch program. Each fills its rows into `sortie` and returns the exit status.
#pragma once

#include <span>

#include "batch/csv.h"
#include "batch/options.h"

struct commande {
    const char* nom;
    const char* aide;
    unsigned groupes; ///< of options
    statut (*execute)(const options&, session&, csv&);
};
std::span<const commande> commandes();

/// Reads the command line. Null when there is nothing to run: `fin` is then the exit status, and what was
/// asked for (help, version) or is wrong has been written.
const commande* lit_ligne_commande(int argc, char** argv, options& o, statut& fin);

statut cmd_orbite(const options& o, session& s, csv& sortie);
statut cmd_energie(const options& o, session& s, csv& sortie);
statut cmd_batterie(const options& o, session& s, csv& sortie);
statut cmd_panneaux(const options& o, session& s, csv& sortie);
statut cmd_attitude(const options& o, session& s, csv& sortie);
statut cmd_couple(const options& o, session& s, csv& sortie);
statut cmd_couples(const options& o, session& s, csv& sortie);
statut cmd_passages(const options& o, session& s, csv& sortie);
statut cmd_etude(const options& o, session& s, csv& sortie);
statut cmd_balayage(const options& o, session& s, csv& sortie);
statut cmd_dimensionne(const options& o, session& s, csv& sortie);
statut cmd_bilan(const options& o, session& s, csv& sortie);
statut cmd_rapport(const options& o, session& s, csv& sortie);
statut cmd_variables(const options& o, session& s, csv& sortie);
