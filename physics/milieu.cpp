#include "physics/milieu.h"

#include <numbers>

#include "attitude/att_couples.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "physics/ombre.h"
#include "physics/repere.h"
#include "physics/soleil_almanach.h"

namespace {

constexpr double degre = std::numbers::pi / 180;

} // namespace

void environnement_physique::place(double j, besoins_milieu b, milieu& m) const {
    const vec3 soleil_pos = soleil_almanach(j);
    const orbite_seculaire::point p = orbite_.a_la_date(j);
    m.j = j;
    m.r = p.r;
    m.v = p.v;
    m.anomalie_moy = p.anomalie_moy;
    m.rayon = vec_norme(p.r);
    m.soleil_pos = soleil_pos;
    const vec3 vers = vec_difference(soleil_pos, p.r);
    m.distance_soleil = vec_norme(vers);
    m.vers_soleil = vec_echelle(1 / m.distance_soleil, vers);
    m.part_soleil = part_du_soleil(p.r, soleil_pos);
    if (!b.champ && !b.air && !b.sol) return;

    const tour_terre terre(j);
    const vec3 fixe = terre.vers_terrestre(p.r);
    if (b.champ) m.champ = vec_echelle(1e-9, terre.vers_inertiel(champ_->terrestre(j, fixe)));
    if (b.sol || b.air) cart_vers_geodesique(fixe, m.lon, m.lat, m.alt);
    if (!b.air) return;
    const double taux = facteur_vent(m.alt) * rotation_terre * degre;
    m.vent = {1000 * (p.v[0] + taux * p.r[1]), 1000 * (p.v[1] - taux * p.r[0]), 1000 * p.v[2]};
    m.densite = air_->densite(air_->temperature_exo(j, m.lon, m.lat, m.alt, soleil_pos), m.alt);
}

rotation repere_local(const milieu& m) {
    const vec3 z = vec_echelle(1 / m.rayon, m.r);
    vec3 y = vec_vectoriel(m.r, m.v);
    y = vec_echelle(1 / vec_norme(y), y);
    return {{{vec_vectoriel(y, z), y, z}}};
}

vec3 taux_local(const milieu& m) { return vec_echelle(1 / carre(m.rayon), vec_vectoriel(m.r, m.v)); }

rotation attitude_nominale(const milieu& m, const pointage_record& p, double j_debut) {
    const double tours = p.spin ? p.vspin * 1440 * (m.j - j_debut) : 0;
    const double lacet = (p.lacet + 360 * frac(tours)) * degre;
    return compose(rotation_lacet_tangage_roulis(lacet, p.tangage * degre, p.roulis * degre),
                   repere_local(m));
}

void vers_etat_orbite(const milieu& m, orbit_state& o) {
    o.sat_pos = m.r;
    o.sat_vit = m.v;
    o.soleil_pos = m.soleil_pos;
    o.vec_nadir = vec_echelle(-1 / m.rayon, m.r);
    o.vec_soleil = m.vers_soleil;
    o.anomalie_moy = m.anomalie_moy;
    o.eclipse = m.part_soleil == 0 ? vrai : faux;
    o.sat_lon = m.lon;
    o.sat_lat = m.lat;
    o.sat_alt = m.alt;
}

void elements_de_la_date(double j, const options_modele& modele, record_orbite& o) {
    if (!modele.physique) return;
    const orbite_seculaire e(o, modele.sans_j2);
    const double secondes = (j - e.epoque) * secondes_par_jour;
    const double precession = o.orb_ascension - noeud_1950(o);
    o.orb_ascension = radians_vers_degres(e.noeud + e.taux_noeud * secondes) + precession;
    o.orb_argument = radians_vers_degres(e.perigee + e.taux_perigee * secondes);
}

void place_orbite(double j, const options_modele& modele, orbit_state& o) {
    if (!modele.physique) return orb_position(j, o);
    milieu m;
    environnement_physique(o.orbite, modele.sans_j2, nullptr, nullptr).place(j, {.sol = true}, m);
    vers_etat_orbite(m, o);
}
