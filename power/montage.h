/// What carries the solar panels, and where each of them points.
///
/// Panels are the external one (both external panels are alike), the 4 or 6 lateral faces, or the 36 strips
/// of the cylinder.
#pragma once

#include "power/power.h"

/// What carries the panels; it selects the sequence of a power step too.
enum class montage { externes = 1, cylindre = 2, faces = 3 };

montage montage_de(const power_record& p);
/// Panels that are told apart: 1, 36, or nb_faces.
int nombre_panneaux(const power_record& p);
/// Direction of a panel's normal: elevation and azimuth [rad].
struct direction {
    double a = 0, b = 0;
};
direction normale_panneau(const power_record& p, int panneau);
