/// Study of the solar generator: the power step over a period, with what each panel receives.
///
/// Panels are the external one (both external panels are alike), the 4 or 6 lateral faces, or the 36 strips
/// of the cylinder. Angles in radians, fluxes in W/m2, powers in W, temperatures in K.
#pragma once

#include <array>

#include "power/power.h"

/// What carries the panels; it selects the sequence of a power step too.
enum class montage { externes = 1, cylindre = 2, faces = 3 };

montage montage_de(const power_record& p);
/// Panels that the study tells apart: 1, 36, or nb_faces.
int nombre_panneaux(const power_record& p);
/// Direction of a panel's normal: elevation and azimuth [rad].
struct direction {
    double a = 0, b = 0;
};
direction normale_panneau(const power_record& p, int panneau);

/// Start of a run: the working state, the two battery times and the mark of a failed charge curve.
void demarre_energie(power_record& p);

/// The results of one step.
struct ligne_panneaux {
    double date = 0; ///< [days]
    drapeau eclipse = faux;
    int nombre = 0; ///< panels filled in the three arrays
    std::array<double, nb_bandes> temperature{}, puissance{}, flux_cellules{};

    // External panels only, at the panel's angle
    double incidence_soleil = 0, incidence_terre = 0;
    double flux_solaire = 0, flux_albedo = 0, flux_total = 0;
    double angle = 0;          ///< pan_angle
    double meilleur_angle = 0; ///< panel_target_refined; 1000.0 without a target
};

/// The run: `power_state_init` and the times zeroed at the construction, then one step a call.
class etude_panneaux {
public:
    etude_panneaux(power_record& p, orbit_state& o, simulation_period& periode);

    /// False once the date has passed the end by more than 0.1 s.
    bool reste() const;
    /// The step at the date in hand, its results into `l`, then the next date. The caller brackets it with a
    /// `surveillance` and drops the line of a step that faulted.
    void pas(ligne_panneaux& l);

private:
    power_record& p_;
    orbit_state& o_;
    simulation_period& periode_;
};
