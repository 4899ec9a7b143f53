#include "orbit/orb_projection.h"

namespace {

constexpr double a_terre = 6378.137;               // [km] equatorial radius
constexpr double b_terre = 6356.752;               // [km] polar radius
constexpr double e2_terre = 0.0066943799901413165; // square of the first eccentricity
constexpr double rapport_axes2 = 0.9966471893352525;

double longitude(double X, double Y) {
    if (X == 0) return Y > 0 ? demi_pi : -demi_pi;
    if (Y == 0) return X > 0 ? 0 : pi;
    const double lon = std::atan(Y / X);
    if (X < 0) return Y >= 0 ? lon + pi : lon - pi;
    return lon;
}

} // namespace

double temps_sideral(double j) {
    const double d = j - 11689.0;
    const double f = d - std::floor(d);
    double theta = d * 0.017202179573701 + 1.74664770861787 + f * deux_pi;
    theta = theta - std::floor(theta / deux_pi) * deux_pi;
    theta = theta + 0.0143472072435316;
    if (theta < 0) theta += deux_pi;
    if (deux_pi < theta) theta -= deux_pi;
    return theta;
}

vec3 vers_terrestre(double j, const vec3& v) {
    const auto [s, c] = sincos_de(temps_sideral(j));
    return {c * v[0] + s * v[1], -s * v[0] + c * v[1], v[2]};
}

vec3 vers_inertiel(double j, const vec3& v) {
    const auto [s, c] = sincos_de(temps_sideral(j));
    return {c * v[0] - s * v[1], s * v[0] + c * v[1], v[2]};
}

void cart_vers_geodesique(const vec3& P, double& lon, double& lat, double& alt) {
    const auto [X, Y, Z] = P;
    lon = longitude(X, Y);

    const double p2 = X * X + Y * Y;
    if (a_terre * a_terre * 1e-18 > p2) { // polar axis
        if (Z > 0) {
            alt = Z - b_terre;
            lat = demi_pi;
        } else if (Z < 0) {
            alt = -Z - b_terre;
            lat = -demi_pi;
        }
        return;
    }
    const double p = std::sqrt(p2);
    if (Z == 0) { // equator
        lat = 0;
        alt = p - a_terre;
        return;
    }

    static const double racine_rapport = std::sqrt(rapport_axes2);
    double h = std::sqrt(p2 + Z * Z) - racine_rapport * a_terre;
    double N = a_terre;
    const double pente = Z / p;
    double t = pente / (1 - e2_terre * N / (h + N)); // tangent of the latitude
    alt = h;
    for (int passe = 0; passe < 100; ++passe) {
        const double alt_avant = alt, t_avant = t;
        // Sine and cosine from the tangent: sin^2 = t^2 / q, cos = 1 / racine; u = h + N = p / cos.
        const double q = 1 + t * t, racine = std::sqrt(q), u = p * racine;
        N = a_terre * racine / std::sqrt(q - e2_terre * (t * t));
        h = u - N;
        t = pente * u / (u - N * e2_terre);
        alt = h;
        // Angles differ by less than their tangents: where these agree the angles need no comparing.
        const auto meme_angle = [](double a, double b) {
            return std::fabs(a - b) < 0.99e-10 || std::fabs(std::atan(a) - std::atan(b)) < 1e-10;
        };
        if (std::fabs(alt - alt_avant) < 6.378137e-07 && meme_angle(t, t_avant)) break;
    }
    lat = std::atan(t);
}

vec3 geodesique_vers_cart(double lon, double lat, double alt) {
    const auto [slat, clat] = sincos_de(lat);
    const auto [slon, clon] = sincos_de(lon);
    const double N = a_terre / std::sqrt(1 - e2_terre * slat * slat);
    return {(N + alt) * clat * clon, (N + alt) * clat * slon, (N * (1 - e2_terre) + alt) * slat};
}

void sous_point(double j, const vec3& pos, double& lon, double& lat, double& alt) {
    cart_vers_geodesique(vers_terrestre(j, pos), lon, lat, alt);
}

namespace {

const sinus_cosinus& tour_sideral(double j, tours_gardes& tours) {
    if (tours.j_sideral != j) {
        tours.sideral = sincos_de(temps_sideral(j));
        tours.j_sideral = j;
    }
    return tours.sideral;
}

} // namespace

void sous_point(double j, orbit_state& o) {
    const auto [s, c] = tour_sideral(j, o.tours);
    const vec3& v = o.sat_pos;
    cart_vers_geodesique({c * v[0] + s * v[1], -s * v[0] + c * v[1], v[2]}, o.sat_lon, o.sat_lat, o.sat_alt);
}

vec3 vers_inertiel(double j, orbit_state& o, const vec3& v) {
    const auto [s, c] = tour_sideral(j, o.tours);
    return {c * v[0] - s * v[1], s * v[0] + c * v[1], v[2]};
}
