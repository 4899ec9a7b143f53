#include "analysis/environnement_pas.h"

environnement_pas releve_environnement(const power_record& p, const orbit_state& o) {
    environnement_pas e;
    e.sat_pos = o.sat_pos;
    e.sun_z = p.sun_z, e.sun_sxy = p.sun_sxy, e.sun_az = p.sun_az;
    e.nad_z = p.nad_z, e.nad_sxy = p.nad_sxy, e.nad_az = p.nad_az;
    e.flux_sun = p.flux_sun, e.flux_alb = p.flux_alb, e.flux_ir = p.flux_ir;
    e.earth_half = p.earth_half, e.sun_nadir_cos = p.sun_nadir_cos;
    e.part_soleil = p.part_soleil, e.eclipse = p.eclipse;
    return e;
}

void pose_environnement(const environnement_pas& e, power_record& p, orbit_state& o) {
    o.sat_pos = e.sat_pos;
    p.sun_z = e.sun_z, p.sun_sxy = e.sun_sxy, p.sun_az = e.sun_az;
    p.nad_z = e.nad_z, p.nad_sxy = e.nad_sxy, p.nad_az = e.nad_az;
    p.flux_sun = e.flux_sun, p.flux_alb = e.flux_alb, p.flux_ir = e.flux_ir;
    p.earth_half = e.earth_half, p.sun_nadir_cos = e.sun_nadir_cos;
    p.part_soleil = e.part_soleil, p.eclipse = e.eclipse;
}
