#include "physics/energie_physique.h"

#include <algorithm>

#include "orbit/orb_trajecto.h"
#include "physics/soleil_almanach.h"
#include "power/power_step.h"

namespace {

struct direction {
    double z, xy, azimut;
};
direction direction_de(const vec3& v) {
    return {v[2], std::fabs(v[2]) >= 1 ? 0 : std::sqrt(1 - v[2] * v[2]), atan_quad(v[1], v[0])};
}

} // namespace

void environnement_energie(const milieu& m, const rotation& A, power_record& p) {
    const double distance_terre = vec_norme(m.soleil_pos);
    const double cosinus = vec_scalaire(m.r, m.soleil_pos) / (m.rayon * distance_terre);
    const double w = std::max(0.0, std::cos(0.9 * std::acos(std::clamp(cosinus, -1.0, 1.0))));
    const auto mois = static_cast<std::size_t>(rang_du_mois(m.j));
    p.flux_sun = static_cast<float>(m.part_soleil * lumiere_soleil(m.distance_soleil));
    p.flux_alb = lumiere_soleil(distance_terre) * static_cast<double>(p.albedo[mois]) * std::sqrt(w * w * w);
    p.flux_ir = p.earth_ir[mois];
    p.part_soleil = m.part_soleil;
    p.eclipse = m.part_soleil == 0 ? vrai : faux;
    p.earth_half = std::asin(rayon_terre / m.rayon);

    const vec3 nadir = vec_echelle(-1 / m.rayon, m.r);
    p.sun_nadir_cos = vec_scalaire(m.vers_soleil, nadir);
    const direction s = direction_de(A.vers_corps(m.vers_soleil)), n = direction_de(A.vers_corps(nadir));
    p.sun_z = s.z, p.sun_sxy = s.xy, p.sun_az = s.azimut;
    p.nad_z = n.z, p.nad_sxy = n.xy, p.nad_az = n.azimut;
}
