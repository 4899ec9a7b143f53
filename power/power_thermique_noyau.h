/// The two inner loops of the thermal models, on plain arrays, in wide registers where the processor has
/// them (chosen at run time; the results are the same on every machine).
#pragma once

#include <array>
#include <cstdint>

#include "power/power.h"

/// Up to eight surfaces around an internal node. An unused place is all zeros and stays at 0 K.
/// For each place: dT = (Q - E T^4 + f) inv, with f = C (T_int - T) + R (T_int^4 - T^4) the flux that comes
/// from the internal node; and dT_int = (chaleur - sum of W f) inv_int.
struct modele_surfaces {
    alignas(32) std::array<double, 8> T{};   ///< [K]
    alignas(32) std::array<double, 8> Q{};   ///< [W/m2] absorbed flux, less the electrical power
    alignas(32) std::array<double, 8> E{};   ///< [W/m2/K4] emissivity times Stefan's constant
    alignas(32) std::array<double, 8> C{};   ///< [W/m2/K] conduction to the internal node
    alignas(32) std::array<double, 8> R{};   ///< [W/m2/K4] radiation to the internal node
    alignas(32) std::array<double, 8> W{};   ///< [m2] area that faces the internal node
    alignas(32) std::array<double, 8> inv{}; ///< [m2 K/J] one second over the heat capacity
    double T_int = 0;                        ///< [K]
    double chaleur = 0;                      ///< [W]
    double inv_int = 0;                      ///< [K/J]
};
void integre_surfaces(modele_surfaces& m, int32_t passes);

/// A disc that closes the cylinder; symbols as above.
struct disque_cylindre {
    double T = 0, Q = 0, E = 0, C = 0, R = 0, W = 0, inv = 0;
};

/// The cylinder: 36 strips alike around the internal node, conduction from strip to strip, two discs.
struct modele_cylindre {
    std::array<double, nb_bandes> T{}, Q{};
    double E = 0, C = 0, R = 0, W = 0, inv = 0; ///< of every strip
    double tour = 0;                            ///< [W/m2/K] conduction to each neighbour
    std::array<disque_cylindre, 2> disques{};   ///< top, bottom
    double T_int = 0, chaleur = 0, inv_int = 0;
};
void integre_cylindre(modele_cylindre& m, int32_t passes);
