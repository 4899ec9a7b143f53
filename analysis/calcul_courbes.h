/// Runs of an étude kept as curves: the variables that are asked for, by name, as columns of numbers, with
/// eclipses and events.
#pragma once

#include <atomic>
#include <span>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "analysis/variables.h"
#include "project/etude.h"
#include "shell/serie.h"

enum class evenement : uint8_t {
    entree_eclipse,
    sortie_eclipse,
    batterie_pleine,
    batterie_vide,
    manque,
    fin_manque,
    pas_trop_grand,
    saturation,
    passage,
};
inline constexpr int nb_evenements = 9;
/// "Entrée en éclipse".
const char* nom_evenement(evenement e);

struct evenement_date {
    double date; ///< [days]
    evenement quoi;
    std::string detail = {}; ///< which limit, which station
};

struct courbe_calculee {
    voie quoi; ///< its name is that of the batch program's column
    serie valeurs;
};

struct resultat_courbes {
    std::vector<courbe_calculee> courbes; ///< in the order asked for; unknown names are left out
    std::vector<std::pair<double, double>> eclipses;
    std::vector<evenement_date> evenements; ///< by date
    double debut = 0, fin = 0;              ///< [days] first and last step
    long pas = 0;                           ///< steps of the run
    int cadence = 1;                        ///< one step in so many is kept
    double duree = 0;                       ///< [s] that it took
    bool partiel = false;                   ///< stopped, or ended by a fault
    std::string raison;                     ///< of the fault, in French
    std::string alerte;                     ///< what the run has to say of itself

    const courbe_calculee* cherche(const std::string& nom) const;
};

/// Seen from both threads.
struct suivi_courbes {
    std::atomic<bool> arret = false; ///< end the run and keep what it has
    std::atomic<double> part = 0;    ///< done, from 0 to 1
};

/// Steps that are kept of a run at most; a longer one keeps one in so many.
inline constexpr long lignes_max_courbes = 3'000'000;

struct reglages_courbes {
    bool energie = true; ///< the power model runs whether a curve reads it or not: it has events to tell
    long lignes_max = lignes_max_courbes;
};

/// Runs a copy of the étude. The attitude of the reference model comes from its own run, by the same period.
resultat_courbes calcule_courbes(etude e, std::span<const std::string> noms, const std::string& dossier,
                                 suivi_courbes& suivi, const std::stop_token& abandon = {},
                                 const reglages_courbes& reglages = {});

/// Names of a ready-made set, in stacked charts.
struct jeu_courbes {
    const char* titre;
    std::vector<std::vector<std::string>> graphiques;
};
/// Puissances, batterie, températures, flux, orbite, attitude; the last by the étude's model.
std::vector<jeu_courbes> jeux_courbes(const etude& e);

/// What a whole turn of a variable is in its unit; 0 for what is no angle.
double tour_variable(const variable& v);

/// A number in as many digits as make sense on a screen.
std::string nombre_courbe(double x, int decimales);
