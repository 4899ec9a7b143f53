/// Passes against a second computation by other formulas, from the rows of `kestrel_batch orbite`.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "analysis/passages.h"
#include "orbit/orb_trajecto.h"
#include "shell/mot_csv.h"
#include "tests/batch/lance_batch.h"
#include "tests/lecture_csv.h"
#include "tests/releve.h"

namespace {

constexpr double deg = 3.14159265358979323846 / 180, a = 6378.137, b = 6356.752314245; // WGS 84
constexpr double seconde = 1 / 86400.0;

std::vector<std::vector<double>> nombres(const std::string& csv) {
    std::vector<std::vector<double>> lignes;
    std::istringstream f(csv);
    std::string ligne;
    for (std::getline(f, ligne); std::getline(f, ligne);) {
        lignes.emplace_back();
        std::istringstream mots(ligne);
        for (std::string mot; std::getline(mots, mot, ',');) lignes.back().push_back(nombre_csv(mot));
    }
    return lignes;
}

/// A point by its parametric latitude, raised along the normal of the ellipsoid's equation.
vec3 point(double lon, double lat, double alt, vec3& normale) {
    const double beta = std::atan2(b * std::sin(lat), a * std::cos(lat));
    const vec3 p = {a * std::cos(beta) * std::cos(lon), a * std::cos(beta) * std::sin(lon),
                    b * std::sin(beta)};
    normale = {p[0] / (a * a), p[1] / (a * a), p[2] / (b * b)};
    const double n = vec_norme(normale);
    for (double& x : normale) x /= n;
    return {p[0] + alt * normale[0], p[1] + alt * normale[1], p[2] + alt * normale[2]};
}

/// The look at the satellite from its ground point: angles between directions.
visee second_regard(const station& s, double lon, double lat, double alt) {
    vec3 n, ignore;
    const vec3 p = point(s.longitude * deg, s.latitude * deg, s.altitude, n);
    const vec3 d = vec_difference(point(lon, lat, alt, ignore), p);
    visee v;
    v.distance = vec_norme(d);
    v.elevation = 90 - std::acos(vec_scalaire(n, d) / v.distance) / deg;
    // Angle between the vertical planes of the satellite and of the north pole.
    const vec3 plan_pole = vec_vectoriel(n, {0, 0, 1}), plan_sat = vec_vectoriel(n, d);
    v.azimut =
        std::acos(vec_scalaire(plan_pole, plan_sat) / vec_norme(plan_pole) / vec_norme(plan_sat)) / deg;
    if (vec_scalaire(plan_pole, d) > 0) v.azimut = 360 - v.azimut;
    return v;
}

struct ligne {
    double j;
    visee v;
};

/// Where the elevation passes the mask between two rows a second apart: along a straight line.
double passe(const ligne& x, const ligne& y, double masque) {
    return x.j + (y.j - x.j) * (masque - x.v.elevation) / (y.v.elevation - x.v.elevation);
}

/// Passes found by walking through rows: start, end, highest, its date, least distance.
std::vector<passage> second_calcul(const std::vector<ligne>& l, double masque) {
    std::vector<passage> r;
    for (std::size_t i = 0; i < l.size(); ++i) {
        if (l[i].v.elevation < masque) continue;
        passage p;
        p.debut = i == 0 ? l[0].j : passe(l[i - 1], l[i], masque);
        p.a_debut = l[i].v;
        p.distance_min = 1e9;
        const std::size_t premier = i;
        std::size_t haut = i;
        for (; i < l.size() && l[i].v.elevation >= masque; ++i) {
            if (l[i].v.elevation > l[haut].v.elevation) haut = i;
            p.distance_min = std::min(p.distance_min, l[i].v.distance);
        }
        // Between the rows at an end, along a straight line again.
        const auto distance = [&](std::size_t k, double j) {
            return l[k].v.distance +
                   (j - l[k].j) / (l[k + 1].j - l[k].j) * (l[k + 1].v.distance - l[k].v.distance);
        };
        p.fin = i == l.size() ? l[i - 1].j : passe(l[i - 1], l[i], masque);
        p.a_fin = l[i - 1].v;
        if (i < l.size()) p.distance_min = std::min(p.distance_min, distance(i - 1, p.fin));
        if (premier > 0) p.distance_min = std::min(p.distance_min, distance(premier - 1, p.debut));
        p.date_max = l[haut].j;
        p.au_max = l[haut].v;
        if (haut > 0 && haut + 1 < l.size()) { // top of the parabola of sines through three rows
            const double u = std::sin(l[haut - 1].v.elevation * deg), v = std::sin(l[haut].v.elevation * deg),
                         w = std::sin(l[haut + 1].v.elevation * deg);
            p.date_max += 0.5 * (u - w) / (u - 2 * v + w) * seconde;
        }
        r.push_back(p);
    }
    return r;
}

double ecart_angle(double x, double y) { return std::remainder(x - y, 360.0); }

} // namespace

TEST(passages, agree_with_a_second_computation_from_the_orbit_rows) {
    const std::string cas = std::string(DONNEES_TEST) + "/cas/";
    const station stations[] = {{"Toulouse", 43.5607, 1.4809, 0.207, 5},
                                {"Svalbard", 78.2298, 15.4078, 0.501, 10},
                                {"Équateur", 0, 179.9, 0, 0},
                                {"Sud", -72.006, -100, 2.5, 5}};
    struct {
        const char *orbite, *periode;
    } const essais[] = {{"", " --debut 18707.5 --fin 18708.5"},
                        {"o01_leo.orb", " --debut 19477.25 --fin 19478.25"},
                        {"o05_molniya.orb", " --debut 12784 --fin 12784.5"}};
    int vus = 0;
    for (const auto& e : essais) {
        std::string options = e.periode;
        if (*e.orbite) options += " --orb " + cas + e.orbite;
        std::string demande = "passages" + options;
        for (const station& s : stations) demande += " --station '" + station_vers_texte(s) + "'";
        const auto trouves = nombres(lance_batch(demande).sortie); // a name reads as 0
        const auto rangs =
            nombres(lance_batch("orbite --pas 1 --colonnes j,sat_lon,sat_lat,sat_alt" + options).sortie);
        ASSERT_GT(rangs.size(), 5000u);
        std::size_t attendus = 0;
        for (const station& s : stations) {
            std::vector<ligne> l;
            for (const auto& r : rangs) l.push_back({r[0], second_regard(s, r[1], r[2], r[3])});
            for (const passage& p : second_calcul(l, s.masque)) {
                ++attendus;
                const std::vector<double>* q = nullptr;
                for (const auto& t : trouves)
                    if (std::fabs(t[1] - p.debut) < 0.1 * seconde && std::fabs(t[2] - p.fin) < 0.1 * seconde)
                        q = &t;
                ASSERT_TRUE(q) << s.nom << ' ' << e.orbite << ' ' << p.debut << ' ' << p.fin;
                EXPECT_NEAR((*q)[3], (p.fin - p.debut) / seconde, 0.2);
                releve::note("passages.bords", ((*q)[1] - p.debut) / seconde, 0.1);
                releve::note("passages.bords", ((*q)[2] - p.fin) / seconde, 0.1);
                RELEVE("passages.sommet", (*q)[5] / seconde, p.date_max / seconde, 0.1)
                    << s.nom << ' ' << p.debut;
                RELEVE("passages.distance", (*q)[9], p.distance_min, 0.05);
                // Rows beside the ends: the satellite has moved for up to a second.
                EXPECT_NEAR(ecart_angle((*q)[6], p.a_debut.azimut), 0, 0.5);
                EXPECT_NEAR(ecart_angle((*q)[8], p.a_fin.azimut), 0, 0.5);
                // Near the zenith the elevation of the row is off by the turn in half a second.
                const bool haut = p.au_max.elevation > 80;
                if (!haut) {
                    RELEVE("passages.elevation", (*q)[4], p.au_max.elevation, 0.02);
                }
                EXPECT_NEAR((*q)[4], p.au_max.elevation, 0.6) << s.nom << ' ' << p.debut;
                EXPECT_NEAR(haut ? 0 : ecart_angle((*q)[7], p.au_max.azimut), 0, 2);
                ++vus;
            }
        }
        EXPECT_EQ(trouves.size(), attendus) << e.orbite;
    }
    EXPECT_GT(vus, 30);
}

TEST(passages, none_is_too_short_or_too_long) {
    // Over the pole, a satellite that turns about it rises to its mask for a moment alone; and one that
    // stands over the equator never leaves.
    record_orbite o;
    o.orb_demi = demi_de_moy_mvt(15);
    o.orb_inclinaison = 60;
    const auto t = trajectoire_reference(o);
    const double debut = 18707.5, fin = debut + 1.0;
    station s = {"Pôle", 90, 0, 0, -30};
    const auto large = cherche_passages(t, {s}, debut, fin).passages;
    ASSERT_GT(large.size(), 10u);
    s.masque = large[3].au_max.elevation - 1e-6; // some tenths of a second
    const auto bref = cherche_passages(t, {s}, debut, fin).passages;
    bool trouve = false;
    for (const passage& p : bref) trouve |= std::fabs(p.date_max - large[3].date_max) < 0.1 * seconde;
    EXPECT_TRUE(trouve);

    o.orb_demi = 42164;
    o.orb_inclinaison = 0;
    const auto fixe = cherche_passages(
        trajectoire_reference(o), {{"Sous", 0, 0, 0, -30}, {"Contre", 0, 180, 0, -30}}, debut, debut + 1);
    ASSERT_EQ(fixe.passages.size(), 1u);
    EXPECT_EQ(fixe.passages[0].debut, debut);
    EXPECT_EQ(fixe.passages[0].fin, debut + 1);
}

TEST(stations, a_text_is_read_back_and_its_faults_are_told) {
    station s;
    std::string raison;
    ASSERT_TRUE(lit_station(" Île d'Ouessant , 48.4719,-5.0983,0.03", s, raison)) << raison;
    EXPECT_EQ(s, (station{"Île d'Ouessant", 48.4719, -5.0983, 0.03, 5}));
    station relue;
    ASSERT_TRUE(lit_station(station_vers_texte(s), relue, raison));
    EXPECT_EQ(relue, s);
    const std::pair<const char*, const char*> faux[] = {
        {"A,91,0", "latitude 91"},    {"A,1", "LATITUDE"},     {",1,2", "nom"},
        {"A,1,400", "longitude 400"}, {"A,1,2,x", "altitude"}, {"A,1,2,0,95", "masque"},
        {"A,1,2,0,5,6", "MASQUE"},    {"A,nan,2", "latitude"}};
    for (const auto& [texte, mot] : faux) {
        EXPECT_FALSE(lit_station(texte, s, raison)) << texte;
        EXPECT_NE(raison.find(mot), std::string::npos) << texte << ": " << raison;
    }
    std::vector<station> liste;
    EXPECT_FALSE(lit_stations("# sites\nA,1,2\n\nB,1,2,3,4,5,6\n", liste, raison));
    EXPECT_NE(raison.find("ligne 4"), std::string::npos) << raison;
    EXPECT_EQ(mot_csv("le \"grand\", là"), "\"le \"\"grand\"\", là\"");
    ASSERT_TRUE(charge_stations(std::string(DOSSIER_DATA) + "/stations.txt", liste, raison)) << raison;
    EXPECT_EQ(liste.size(), 12u);
}
