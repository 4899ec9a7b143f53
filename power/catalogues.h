/// The catalogues of cells and accumulators: what choosing an entry writes into the power record.
#pragma once

#include "power/power.h"

inline constexpr int nb_cellules_catalogue = 2;
inline constexpr int nb_batteries_catalogue = 4;
inline constexpr int batterie_generique = 3; ///< the entry whose values are the user's own

/// Cells 0 "AsGa", 1 "Silicium": currents, voltages, their slopes and the area; ratios, counts, reference
/// temperature and incidences stay. Another number changes nothing.
void choisit_cellule(power_record& p, int type);

/// Accumulators 0 "Nickel-Cadmium", 1 "Nickel-Hydrogène", 2 "Lithium-Ion": both curves, the influences of
/// current and temperature, self-discharge, recharge coefficient and maximum charge voltage; counts and
/// capacity stay. 3 "Générique" changes the type alone. Another number changes nothing.
void choisit_batterie(power_record& p, int type);
