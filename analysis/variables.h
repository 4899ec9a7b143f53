/// The catalogue of variables: everything that a run can tell of a step, by name.
///
/// One entry says what a variable is called, what it means, in which unit it comes and how it is read from
/// the state that a step has left. Columns of the batch program, curves, budget, sweep, report and Python go
/// by it; the lists of the result windows, whose texts are fixed, refer to its entries.
///
/// **To add a variable**, add its line to the table of its subject (`catalogue_orbite.cpp`,
/// `catalogue_energie.cpp`, `catalogue_attitude.cpp`, `catalogue_physique.cpp`). What no record holds yet
/// gets a member in `etat_calcul` and a part in `besoin`.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "attitude/att_resultats.h"
#include "orbit/orbite.h"
#include "power/power.h"

/// Parts of a step; a variable says which it reads, a run (`calcul.h`) computes those that are asked for.
namespace besoin {
inline constexpr unsigned orbite = 1;    ///< `orb_position`
inline constexpr unsigned sol = 2;       ///< `sous_point`
inline constexpr unsigned energie = 4;   ///< the power step, the orbit included
inline constexpr unsigned couples = 8;   ///< disturbance torques at the nominal pointing
inline constexpr unsigned attitude = 16; ///< the record that `att_run` writes: not by dates, but in the
                                         ///< physical model
inline constexpr unsigned physique = 32; ///< the attitude of the physical model
} // namespace besoin

struct ligne_attitude;

/// What the readers see of a step: the records as it left them.
struct etat_calcul {
    const simulation_period& periode; ///< date of the step: `j_courant`
    const orbit_state& orbite;
    const power_record& energie;
    const attitude_record& attitude;
    const enregistrement_att* enregistrement = nullptr; ///< of an attitude run, else none
    const ligne_attitude* physique = nullptr;           ///< of one in the physical model, else none
};

struct variable {
    const char* nom;   ///< name of its column; see `nom_voie` for several elements
    const char* titre; ///< French, for a legend
    const char* unite; ///< of `valeur`; empty without one
    int decimales;     ///< decimals that make sense on a screen
    const char* sens;  ///< meaning, French
    unsigned lit;      ///< `besoin` parts that the reader needs
    /// Value of an element after a step. It may raise a fault's flag: read within the watch of the step.
    double (*valeur)(const etat_calcul& e, int element);
    int elements = 1;
    bool par_panneau = false; ///< as many elements as the mounting has panels; `elements` is the most
    bool entier = false;      ///< flags and whole seconds
};

/// Every variable: date, orbit, energy, torques, attitude.
std::span<const variable> catalogue();
/// The entry of a name without element; null for an unknown one.
const variable* cherche_variable(std::string_view nom);

/// One element of a variable as a column of results.
struct voie {
    std::string nom; ///< heading
    const variable* quoi = nullptr;
    int element = 0;

    double lit(const etat_calcul& e) const { return quoi->valeur(e, element); }
};

/// Elements of a variable with the panels of a record.
int nombre_elements(const variable& v, const power_record& p);
/// `nom` for one element, `nom_x` `nom_y` `nom_z` for three, `nom_0` `nom_1` … for more. A variable by panel
/// has numbers where the mounting tells several panels apart, else its bare name.
std::string nom_voie(const variable& v, int element, const power_record& p);
/// Title of a column: "Position du satellite x", "Température du nœud 8".
std::string titre_voie(const voie& c, const power_record& p);

/// Appends the columns that `nom` stands for: one element by its full name, or all elements by the name of
/// the variable. False for an unknown name.
bool ajoute_voies(std::string_view nom, const power_record& p, std::vector<voie>& voies);
/// The columns of several names, which must be known; "heading=name" gives a column another heading.
std::vector<voie> voies_de(std::span<const char* const> noms, const power_record& p);
/// The parts that some columns read.
unsigned besoins_de(std::span<const voie> voies);
