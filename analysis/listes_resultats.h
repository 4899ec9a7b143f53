/// The variables that the result windows and the study of the generator offer: texts and pictures of their
/// own, which are fixed, over entries of the catalogue.
#pragma once

#include <span>
#include <vector>

#include "analysis/variables.h"
#include "power/montage.h"

/// From the unit of the catalogue to that of a list.
enum class conversion {
    aucune,
    degres,
    degres_etude, ///< with the pi of the study of the generator, 3.14159265358979
    celsius,
    minutes,
    milliemes
};
double convertit(double x, conversion c);

struct variable_liste {
    const char* texte; ///< of the list; the spellings of the lists differ from each other on purpose
    const char* nom;   ///< in the catalogue
    int decimales;
    conversion vers = conversion::aucune;
    int element = 0;             ///< of the variable, where it stands alone
    bool avec_selecteur = false; ///< the selector of the window gives the element: panel or axis, from 0
    const char* sens = nullptr;  ///< in the place of the catalogue's meaning

    /// The column for a position of the selector.
    voie quoi(int position = 0) const;
    const char* signification() const { return sens ? sens : cherche_variable(nom)->sens; }
};

/// The list of a mounting; its first 15 entries are common to all.
std::span<const variable_liste> liste_energie(montage m);
inline constexpr int nb_variables_communes = 15;

/// The torques [mN·m]; positions X, Y, Z and Total. Their picture is "0.000E+00".
std::span<const variable_liste> liste_couples();

/// The columns of the study of the generator, panel by panel; those of a panel have no text.
enum class grandeur_panneaux { temperature, puissance, flux, angles };
std::vector<variable_liste> liste_panneaux(grandeur_panneaux g, const power_record& p);
