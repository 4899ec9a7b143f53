#include "power/power_step.h"

#include "orbit/matrices.h"
#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "power/montage.h"
#include "power/power_bat.h"
#include "power/power_cellules.h"
#include "power/power_gestion.h"
#include "power/power_panneaux.h"
#include "power/power_thermique.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

/// Complement of a z component, 0 where the direction stands on the axis.
double complement(double z) { return std::fabs(z) >= 1.0 ? 0 : std::sqrt(1 - z * z); }

double kelvin(float celsius) { return static_cast<double>(celsius) + zero_celsius; }

} // namespace

double flux_solaire(double sun_power, double d) { return sun_power / 4 / pi / d / d / 1e6; }

void power_state_init(power_record& p) {
    p.courbe_charge_incompatible = false;
    // Kept from the last step, but not what a numerical fault left in it: no run could begin any more.
    if (!std::isfinite(p.t_bat)) p.t_bat = 0;
    p.bat_soc = static_cast<double>(p.gst_charge_init) / 100;
    p.bat_i = static_cast<double>(p.bat_c) * 1e-6;
    p.bat_v = bat_v_charge(p, p.bat_i / p.bat_c, p.int_t_init, p.bat_soc);

    const montage m = montage_de(p);
    if (m == montage::externes) {
        p.pan_moving = faux;
        p.pan_wait = -1;
        p.pan_angle = static_cast<double>(p.pan_angle_init) * rad_par_degre;
        for (int i = 0; i < 9; ++i)
            if (i != 1) p.node_t[i] = kelvin(p.ext_t_init[i]); // 1, the rear side, has no temperature
    } else {
        const bool cyl = m == montage::cylindre;
        const int lateraux = cyl ? nb_bandes : p.nb_faces, dessus = cyl ? nb_bandes : 8;
        for (int i = 0; i < lateraux; ++i) p.node_t[i] = kelvin(p.fac_t_init[0]);
        p.node_t[dessus] = kelvin(p.fac_t_init[1]);
        p.node_t[dessus + 1] = kelvin(p.fac_t_init[2]);
        p.node_t[dessus + 2] = kelvin(p.int_t_init);
    }
}

int rang_du_mois(double date) {
    const int mois = jour_vers_date(date).mois;
    if (mois >= 1 && mois <= 12) return mois - 1;
    leve_faute(); // a date before 1901, refused at entry
    return 0;
}

void environment_update(double date, power_record& p, orbit_state& o, const simulation_period& periode) {
    orb_position(date, o);

    pointage_record& pointage = o.pointage;
    pointage_du_spin(date, periode.j_debut, pointage);
    const tour_plan plan(o.orbite);
    const vec3 sat_plan = plan.vers_plan(o.sat_pos);
    const tour_local local(sat_plan);
    const tour_corps corps(pointage.psi, pointage.theta, pointage.phi);
    const vec3 sat = corps.vers_corps(local.plan_vers_local(sat_plan));
    const vec3 soleil = corps.vers_corps(local.plan_vers_local(plan.vers_plan(o.soleil_pos)));

    const double r = vec_norme(sat);
    p.earth_half = arcsin_v(rayon_terre / r);

    // Albedo below the satellite: full under the Sun, none from 100 degrees on.
    const double d_terre = vec_norme(soleil);
    const double angle = arccos_v(vec_scalaire(sat, soleil) / (r * d_terre));
    double w = std::cos(0.9 * angle);
    w = w < 0 ? 0 : std::sqrt(w * w * w);

    vec3 vers_soleil = vec_difference(soleil, sat);
    const double d = vec_norme(vers_soleil);
    for (double& x : vers_soleil) x /= d;
    const vec3 nadir = {-sat[0] / r, -sat[1] / r, -sat[2] / r};

    const auto mois = static_cast<std::size_t>(rang_du_mois(date));
    p.flux_sun = static_cast<float>(flux_solaire(p.sun_power, d));
    p.flux_alb = flux_solaire(p.sun_power, d_terre) * static_cast<double>(p.albedo[mois]) * w;
    p.flux_ir = p.earth_ir[mois];

    p.sun_nadir_cos = vec_scalaire(vers_soleil, nadir);
    p.eclipse = p.sun_nadir_cos > std::cos(p.earth_half) ? vrai : faux;
    p.part_soleil = p.eclipse == vrai ? 0 : 1;
    p.sun_z = vers_soleil[2];
    p.sun_az = atan_quad(vers_soleil[1], vers_soleil[0]);
    p.sun_sxy = complement(p.sun_z);
    p.nad_z = nadir[2];
    p.nad_az = atan_quad(nadir[1], nadir[0]);
    p.nad_sxy = complement(p.nad_z);
}

void power_step(power_record& p, orbit_state& o, const simulation_period& periode) {
    environment_update(periode.j_courant, p, o, periode);
    power_step_suite(p, o, periode, demande_reference(p));
}

void power_step_suite(power_record& p, const orbit_state& o, const simulation_period& periode,
                      double demande) {
    const double date = periode.j_courant;
    const int32_t pas = periode.pas_sim;
    const vue_terre vue(p, o);
    const montage m = montage_de(p);
    if (m == montage::externes) {
        const azimuts_lateraux az(p);
        panel_target_update(p, vue, az.panneaux());
        panel_drive_update(p, pas);
        const incidence panneau = incidence_de(p, sincos_de(p.pan_angle), az.panneaux());
        generator_ext_panels(p, panneau);
        power_management(p, pas, demande);
        thermal_ext_panels(p, vue, az, panneau, date, pas);
        return;
    }
    if (m == montage::cylindre) {
        const incidences_corps vues(p, forme_corps::cylindre);
        generator_cylinder(p, vues);
        power_management(p, pas, demande);
        thermal_cylinder(p, vue, vues, date, pas);
    } else {
        const incidences_corps vues(p, forme_corps::prisme);
        generator_faces(p, vues);
        power_management(p, pas, demande);
        thermal_faces(p, vue, vues, date, pas);
    }
}
