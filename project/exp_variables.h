/// The variables that the result windows offer: names, value texts of the step in hand, meaning.
#pragma once

#include <span>
#include <string>

#include "attitude/att_global.h"
#include "power/etude_panneaux.h"
#include "power/power.h"

/// A variable of the energy results.
struct variable_energie {
    const char* nom;  ///< text of the list; the spellings of the lists differ from each other on purpose
    int decimales;    ///< of the table's number picture: 2 is "0.00"
    const char* sens; ///< meaning, in French, for the tooltip
    /// Value after a power step; `panneau` counts for the variables that exist once per panel.
    double (*valeur)(power_record& p, const orbit_state& o, int panneau);
    bool par_panneau = false;
};

/// The list of a mounting; its first 15 entries are common to all.
std::span<const variable_energie> variables_energie(montage m);
inline constexpr int nb_variables_communes = 15;

/// x in the picture "0.", "0.0", "0.00" ... of so many decimals: `format_image` for the hundred thousands of
/// texts of a table.
std::string texte_fixe(double x, int decimales);

/// A variable of the attitude results: one of the torques, in mN.m.
struct variable_couple {
    const char* nom;
    const char* sens;
    vec3 attitude_record::*couple;
};

std::span<const variable_couple> variables_couples();
/// Component 0 to 2 of a torque [N.m], or its magnitude for 3, as text in mN.m.
std::string texte_couple(const vec3& couple, int axe);
