#include "attitude/att_couples.h"

#include "attitude/att_igrf.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "shell/surveillance.h"

namespace {

constexpr double trois_mu = 1195803.9;         // [km3/s2] three times the Earth's parameter
constexpr double pression_soleil = -2.322e-06; // [N/m2], towards the face
constexpr double seuil_aero = 1e-10;           // [N m]

/// Area of the face on an axis [m2].
double aire(const attitude_record& a, int axe) {
    switch (axe) {
    case 0: return a.dim[2] * a.dim[1];
    case 1: return a.dim[2] * a.dim[0];
    default: return a.dim[1] * a.dim[0];
    }
}

double coupe(double x) { return std::fabs(x) <= seuil_aero ? 0 : x; }

constexpr int axe_de(int face) { return face % 3; }
constexpr double sens_de(int face) { return face < 3 ? 1 : -1; }

} // namespace

vec3 couple_gradient(const attitude_record& a, const orbit_state& o, const tour_inertiel_corps& tour) {
    const double r = vec_norme(o.sat_pos);
    const vec3 n = tour.inertiel_vers_corps({o.sat_pos[0] / r, o.sat_pos[1] / r, o.sat_pos[2] / r});
    const double xy = a.I(0, 1), xz = a.I(0, 2), yz = a.I(1, 2);
    const vec3 Jn = {a.I(0, 0) * n[0] - xy * n[1] - xz * n[2], -xy * n[0] + a.I(1, 1) * n[1] - yz * n[2],
                     -xz * n[0] - yz * n[1] + a.I(2, 2) * n[2]};
    return vec_echelle(trois_mu / (r * r * r), vec_vectoriel(n, Jn));
}

double facteur_vent(double alt) {
    if (alt < 400) return (alt - 100) * 0.4 / 300 + 1;
    if (alt <= 600) return 1.4;
    return 1.4 - (alt - 600) * 0.4 / 200;
}

vec3 couple_aero(const attitude_record& a, const orbit_state& o, const tour_inertiel_corps& tour, double date,
                 atmosphere& air) {
    const double rotation = facteur_vent(o.sat_alt) * rotation_terre * rad_par_degre;
    const vec3& p = o.sat_pos;
    const vec3 relative = {o.sat_vit[0] + rotation * p[1], o.sat_vit[1] - rotation * p[0], o.sat_vit[2]};
    const vec3 V = tour.inertiel_vers_corps(relative);
    const double v = vec_norme(V);
    const double T = air.temperature_exo(date, o.sat_lon, o.sat_lat, o.sat_alt, o.soleil_pos);
    const double q = air.densite(T, o.sat_alt) * 0.5 * v * v * 1e7;

    vec3 couple{};
    const vec3 u = {V[0] / v, V[1] / v, V[2] / v};
#pragma GCC unroll 6
    for (int face = 0; face < 6; ++face) {
        const int axe = axe_de(face);
        const double sens = sens_de(face), c = sens * u[axe];
        if (!(c > 0)) continue; // turned away
        const double c2 = c * c;
        vec3 force{};
        force[axe] = -2 * q * (2 - a.sn[face]) * c2 * sens;
        vec3 w = V; // tangential velocity
        w[axe] -= v * c * sens;
        if (const double norme = vec_norme(w); norme != 0)
            force = vec_somme(force, vec_echelle(-2 * q * c * std::sqrt(1 - c2) * a.st[face] / norme, w));
        // The area multiplies the lever.
        const vec3 levier = vec_echelle(aire(a, axe), a.face_c[face]);
        couple = vec_somme(couple, vec_vectoriel(levier, force));
        couple = {coupe(couple[0]), coupe(couple[1]), coupe(couple[2])};
    }
    return couple;
}

vec3 couple_solaire(const attitude_record& a, const orbit_state& o, const tour_inertiel_corps& tour) {
    vec3 couple{};
    if (o.eclipse) return couple;
    const vec3 S = tour.inertiel_vers_corps(o.vec_soleil);
#pragma GCC unroll 6
    for (int face = 0; face < 6; ++face) {
        const int axe = axe_de(face);
        const double sens = sens_de(face), c = sens * S[axe];
        if (!(c > 0)) continue; // turned away
        vec3 P = vec_echelle(1 - a.cr[face], S);
        P[axe] += 2 * (a.cd[face] / 3 + a.cr[face]) * sens; // no second cosine: meant
        P = vec_echelle(aire(a, axe) * pression_soleil * c, P);
        couple = vec_somme(couple, vec_vectoriel(a.face_c[face], P));
    }
    return couple;
}

vec3 couple_magnetique(const attitude_record& a, orbit_state& o, const tour_inertiel_corps& tour,
                       double date) {
    // The geodetic latitude stands for the geocentric one, in the synthesis and in the turn back: meant.
    const sinus_cosinus colatitude = sincos_de(demi_pi - o.sat_lat);
    const sinus_cosinus longitude = sincos_de(o.sat_lon);
    const vec3 nT = champ_igrf(date).synthese(vec_norme(o.sat_pos), colatitude, longitude);
    const vec3 B = vec_echelle(1e-9, nT);
    const double horizontal = colatitude.s * B[0] + colatitude.c * B[1];
    const vec3 terrestre = {horizontal * longitude.c - longitude.s * B[2],
                            horizontal * longitude.s + longitude.c * B[2],
                            colatitude.c * B[0] - colatitude.s * B[1]};
    vec3 D;
    for (int i = 0; i < 3; ++i) D[i] = a.dip_cmd[i] * a.dip_act[i] + a.dip_res[i];
    return vec_vectoriel(D, tour.inertiel_vers_corps(vers_inertiel(date, o, terrestre)));
}

void total_torque(attitude_record& a, orbit_state& o, double date, atmosphere& air) {
    const tour_inertiel_corps tour(o);
    a.c_gradient = couple_gradient(a, o, tour);
    a.c_aero = couple_aero(a, o, tour, date, air);
    a.c_solaire = couple_solaire(a, o, tour);
    a.c_magnetique = couple_magnetique(a, o, tour, date);
    for (int i = 0; i < 3; ++i)
        a.ctot[i] = a.c_magnetique[i] + a.c_aero[i] + a.c_solaire[i] + a.c_gradient[i];
}

void couples_a_la_date(attitude_record& a, orbit_state& o, double date, double j_debut, atmosphere& air) {
    orb_position(date, o);
    sous_point(date, o);
    pointage_du_spin(date, j_debut, o.pointage);
    couples_sur_place(a, o, date, air);
}

void couples_sur_place(attitude_record& a, orbit_state& o, double date, atmosphere& air) {
    total_torque(a, o, date, air);
    for (int i = 0; i < 3; ++i) // summed in the order of this entry
        a.ctot[i] = a.c_aero[i] + a.c_magnetique[i] + a.c_solaire[i] + a.c_gradient[i];
    // A NaN of a damaged file goes through the sums without raising a flag.
    if (!std::isfinite(a.ctot[0] + a.ctot[1] + a.ctot[2])) leve_faute();
}
