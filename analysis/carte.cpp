#include "analysis/carte.h"

#include <algorithm>
#include <cstring>

#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "orbit/soleil.h"
#include "physics/milieu.h"
#include "physics/repere.h"
#include "physics/soleil_almanach.h"
#include "shell/utilitaires.h"

namespace {

double en_degres(double x) { return std::remainder(x / rad_par_degre, 360.0); }

point_trace point_de(double j, const options_modele& modele, orbit_state& o) {
    place_orbite(j, modele, o);
    if (!modele.physique) sous_point(j, o); // the other model brings its ground point along
    point_trace p;
    p.lon = en_degres(o.sat_lon);
    p.lat = o.sat_lat / rad_par_degre;
    p.j = j;
    p.eclipse = o.eclipse == vrai;
    return p;
}

bool fini(const point_trace& p) { return std::isfinite(p.lon) && std::isfinite(p.lat); }

bool memes_elements(const record_orbite& a, const record_orbite& b) {
    return a.orb_inclinaison == b.orb_inclinaison && a.orb_ascension == b.orb_ascension &&
           a.orb_excentricite == b.orb_excentricite && a.orb_argument == b.orb_argument &&
           a.orb_anomalie == b.orb_anomalie && a.orb_an == b.orb_an && a.orb_jour == b.orb_jour &&
           a.orb_demi == b.orb_demi;
}

} // namespace

place_satellite place_au_sol(const record_orbite& o, const options_modele& modele, double j) {
    orbit_state e;
    e.orbite = o;
    place_satellite p;
    static_cast<point_trace&>(p) = point_de(j, modele, e);
    p.alt = e.sat_alt;
    p.distance = vec_norme(e.sat_pos);
    return p;
}

const std::vector<point_trace>& trace_glissante::autour(const record_orbite& o, const options_modele& modele,
                                                        double j, double avant, double apres) {
    if (!memes_elements(o, orbite_) || !(modele == modele_)) grille_.clear();
    orbite_ = o;
    modele_ = modele;
    orbit_state e;
    e.orbite = o;
    const double pas = 1.0 / moy_mvt_de_demi(o.orb_demi) / par_tour_;
    const double epoque = date_epoque(o.orb_an, o.orb_jour - 1.0);
    trace_.clear();
    present_ = 0;
    if (!(pas > 0) || !std::isfinite(pas) || !std::isfinite(j)) return trace_;

    // The grid between the ends; what it held of it already stays.
    const double debut = j - avant * pas * par_tour_, fin = j + apres * pas * par_tour_;
    constexpr double compte_max = 1e15; // beyond, a double counts no single steps
    const double premier = std::ceil((debut - epoque) / pas), dernier = std::floor((fin - epoque) / pas);
    if (!(std::fabs(premier) < compte_max && std::fabs(dernier) < compte_max)) return trace_;
    const long de = static_cast<long>(premier), a = static_cast<long>(dernier);
    std::vector<point_trace> neuve;
    for (long k = de; k <= a; ++k) {
        const long vieille = k - premier_;
        neuve.push_back(vieille >= 0 && vieille < static_cast<long>(grille_.size())
                            ? grille_[static_cast<std::size_t>(vieille)]
                            : point_de(epoque + static_cast<double>(k) * pas, modele, e));
    }
    grille_ = std::move(neuve);
    premier_ = de;

    trace_.push_back(point_de(debut, modele, e));
    const point_trace present = point_de(j, modele, e);
    bool passe = false;
    for (const point_trace& p : grille_) {
        if (!passe && p.j > j) {
            present_ = trace_.size();
            trace_.push_back(present);
            passe = true;
        }
        trace_.push_back(p);
    }
    if (!passe) {
        present_ = trace_.size();
        trace_.push_back(present);
    }
    trace_.push_back(point_de(fin, modele, e));
    trace_.erase(std::find_if_not(trace_.begin(), trace_.end(), fini), trace_.end());
    present_ = std::min(present_, trace_.empty() ? 0 : trace_.size() - 1);
    return trace_;
}

point_sol point_subsolaire(const options_modele& modele, double j) {
    const vec3 s = modele.physique ? tour_terre(j).vers_terrestre(soleil_almanach(j))
                                   : vers_terrestre(j, soleil_position(j));
    return {en_degres(std::atan2(s[1], s[0])), std::asin(s[2] / vec_norme(s)) / rad_par_degre};
}

double heure_solaire(double lon, double lon_soleil) {
    const double h = 12 + std::remainder(lon - lon_soleil, 360.0) / 15;
    return h >= 24 ? h - 24 : h;
}

std::vector<point_sol> bord_calotte(const point_sol& milieu, double rayon) {
    constexpr int points = 180;
    const auto [slat, clat] = sincos_de(milieu.lat * rad_par_degre);
    const auto [sr, cr] = sincos_de(rayon * rad_par_degre);
    std::vector<point_sol> bord;
    double avant = 0;
    for (int i = 0; i <= points; ++i) {
        const auto [sa, ca] = sincos_de(deux_pi * i / points);
        const double s = std::clamp(slat * cr + clat * sr * ca, -1.0, 1.0);
        const double dlon = std::atan2(sa * sr * clat, cr - slat * s) / rad_par_degre;
        avant = i == 0 ? dlon : avant + std::remainder(dlon - avant, 360.0);
        bord.push_back({milieu.lon + avant, std::asin(s) / rad_par_degre});
    }
    if (std::fabs(bord.back().lon - bord.front().lon) > 180) { // around a pole
        const double pole = milieu.lat > 0 ? 90 : -90;
        bord.push_back({bord.back().lon, pole});
        bord.push_back({bord.front().lon, pole});
    }
    return bord;
}

double rayon_visibilite(double distance, double elevation, double rayon_sol) {
    const double e = elevation * rad_par_degre, c = rayon_sol * std::cos(e) / distance;
    if (!(c < 1)) return 0;
    const double rayon = (std::acos(c) - e) / rad_par_degre;
    return rayon > 1e-9 ? rayon : 0;
}

std::vector<point_sol> cercle_station(const station& s, double distance) {
    // The directions from the Earth's centre that stand over the horizon plane lie around the station's
    // normal, not around its place.
    const repere_station repere(s);
    const double rayon = rayon_visibilite(distance, s.masque, vec_scalaire(repere.pos, repere.zenith));
    if (!(rayon > 0)) return {};
    std::vector<point_sol> bord = bord_calotte({s.longitude, s.latitude}, std::min(rayon, 90.0));
    for (point_sol& b : bord) {
        if (std::fabs(b.lat) == 90) continue;
        const auto [sl, cl] = sincos_de(b.lat * rad_par_degre);
        double lon = 0, lat = 0, alt = 0;
        cart_vers_geodesique({distance * cl, 0, distance * sl}, lon, lat, alt);
        b.lat = lat / rad_par_degre;
    }
    return bord;
}
