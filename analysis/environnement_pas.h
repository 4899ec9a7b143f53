/// The environment of a step on its own: what `environment_update` finds and the rest of the step reads. Runs
/// that share orbit, pointing and period share it: it is computed once, kept, and handed to each of them.
///
///     reglages_calcul r;
///     r.environnement = [&, n = size_t{0}](double, power_record& p, orbit_state& o, const auto&) mutable {
///         pose_environnement(gardes[n++], p, o);
///     };
#pragma once

#include "orbit/orbite.h"
#include "power/power.h"

/// Fields of the power record by their names there. It depends on the settings `albedo`, `earth_ir` and
/// `sun_power` too: variants that change these need their own.
struct environnement_pas {
    vec3 sat_pos{};
    double sun_z = 0, sun_sxy = 0, sun_az = 0, nad_z = 0, nad_sxy = 0, nad_az = 0;
    double flux_alb = 0, flux_ir = 0, earth_half = 0, sun_nadir_cos = 0, part_soleil = 1;
    float flux_sun = 0;
    drapeau eclipse = faux;
};

/// After `environment_update`.
environnement_pas releve_environnement(const power_record& p, const orbit_state& o);
/// Instead of it. Of the orbit state only `sat_pos` is set.
void pose_environnement(const environnement_pas& e, power_record& p, orbit_state& o);
