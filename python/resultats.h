/// Runs that give whole columns, for the Python module: the same rows as the batch program's commands.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/balayage.h"
#include "analysis/jeux.h"
#include "analysis/passages.h"

/// Columns by name, in order. Whole numbers (flags, seconds) are marked.
struct resultats {
    std::vector<std::string> noms;
    std::vector<bool> entiers;
    std::vector<std::vector<double>> colonnes;
    std::optional<faute_calcul> faute; ///< ended the run; the rows before it are good
    std::string avertissements;        ///< lines for the user, empty for none
};

/// Something that the caller has asked for wrongly, in French.
struct demande_fausse {
    std::string raison;
};

/// A named run over the étude's period; `colonnes` empty for its own, {"toutes"} for all. Throws
/// `demande_fausse`.
resultats deroule_jeu(etude e, const jeu& j, const std::vector<std::string>& colonnes, int cadence,
                      const std::string& donnees);
/// The attitude of the reference model.
resultats deroule_attitude_reference(etude e, const std::vector<std::string>& colonnes, int cadence,
                                     const std::string& donnees);
resultats resultats_bilan(const std::vector<tour_bilan>& tours);
