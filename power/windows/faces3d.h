/// The faces of the satellite by a value: flux received or temperature, and the colours that stand for it.
#pragma once

#include <array>

#include "power/power.h"

enum class couleur_faces { images, flux, temperature };

struct valeurs_faces {
    std::array<double, 6> caisse{};        ///< faces X, -X, Y, -Y, Z, -Z of a body with external panels
    double panneau = 0, dos_panneau = 0;   ///< of an external panel
    std::array<double, nb_bandes> cotes{}; ///< lateral faces, or strips of the cylinder
    double dessus = 0, dessous = 0;
    double min = 0, max = 1; ///< of the scale
};

/// Flux received from the Sun, by albedo and from the Earth's infrared [W/m2], at the geometry left by
/// `environment_update`; the scale is fixed.
valeurs_faces faces_par_flux(const power_record& p, const orbit_state& o);
/// Temperature [degC]; the scale is the smallest in steps of 20 degrees that holds them all.
valeurs_faces faces_par_temperature(const power_record& p);
inline valeurs_faces valeurs_de(couleur_faces c, const power_record& p, const orbit_state& o) {
    return c == couleur_faces::flux ? faces_par_flux(p, o) : faces_par_temperature(p);
}

/// Red, green and blue (0 to 1) of a share of the scale, from dark to bright.
std::array<double, 3> couleur_echelle(double part);
