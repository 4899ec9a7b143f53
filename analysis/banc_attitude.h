/// The bench of the attitude: a run of the physical model's attitude as curves, whatever model the étude has
/// chosen, and the time that a quantity takes to settle below a level.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/calcul_courbes.h"

/// Curves that are shown together, by their names in the catalogue.
struct groupe_banc {
    const char* nom; ///< "angles"
    const char* titre;
    std::vector<std::string> voies;
};
std::span<const groupe_banc> groupes_banc();

/// What a level can be put on: read from one or three columns of the run.
struct grandeur_banc {
    const char* nom; ///< "energie"
    const char* titre;
    const char* unite;
    double seuil; ///< what the box shows first
    std::vector<std::string> voies;
    double (*valeur)(std::span<const double> colonnes);
};
std::span<const grandeur_banc> grandeurs_banc();

/// What tells most of a run with a control law, as long as nobody has chosen: groups and a quantity, by name.
struct vue_banc {
    std::vector<std::string> groupes;
    std::string grandeur;
};
vue_banc vue_d_office(loi_controle loi);

/// Rows that the bench keeps of a run at most; a longer one keeps one in so many.
inline constexpr long lignes_max_banc = 100'000;

/// Runs a copy of the étude in the physical model, with every column of the groups, the quantities and the
/// quaternion. Eclipses and saturations come along; the power model does not run.
resultat_courbes calcule_banc(etude e, const std::string& dossier, suivi_courbes& suivi,
                              const std::stop_token& abandon = {});

/// When a quantity falls below a level [days], between two rows in proportion.
struct passage_seuil {
    std::optional<double> premier;   ///< for the first time; the start where it begins below
    std::optional<double> definitif; ///< for good, to the end of the run
};
passage_seuil passe_sous(const resultat_courbes& r, const grandeur_banc& g, double seuil);

/// The attitude at a date of the run: quaternion between two rows, of length 1. Empty outside of it.
std::optional<std::array<double, 4>> attitude_a(const resultat_courbes& r, double date);

/// What the settings of the attitude make impossible ("pas de roue sur l'axe x"), in French.
std::vector<std::string> avertissements_attitude(const etude& e);
