#include "orbit/station.h"

#include "orbit/orb_projection.h"
#include "shell/formats.h"
#include "shell/lecture.h"

namespace {

constexpr std::size_t taille_max = 4 << 20; ///< [bytes] of a file

constexpr champ_station champs[] = {
    {"latitude", &station::latitude, -90, 90, "deg", "Latitude géodésique"},
    {"longitude", &station::longitude, -180, 360, "deg", "Longitude, vers l'est"},
    {"altitude", &station::altitude, -0.5, 100, "km", "Altitude sur l'ellipsoïde"},
    {"masque", &station::masque, -30, 90, "deg", "Site le plus bas d'un passage"},
};

std::string_view sans_blancs(std::string_view t) {
    const auto debut = t.find_first_not_of(" \t\r");
    if (debut == std::string_view::npos) return {};
    return t.substr(debut, t.find_last_not_of(" \t\r") - debut + 1);
}

} // namespace

std::span<const champ_station> champs_station() { return champs; }

std::string defaut_station(const station& s) {
    if (sans_blancs(s.nom).empty()) return "station sans nom";
    for (const champ_station& c : champs)
        if (const double x = s.*c.valeur; !(x >= c.min && x <= c.max))
            return std::string(c.nom) + " " + format_court(x) + " : de " + format_court(c.min) + " à " +
                   format_court(c.max);
    return {};
}

bool lit_station(std::string_view texte, station& s, std::string& raison) {
    std::vector<std::string_view> mots;
    for (std::size_t debut = 0, fin = 0; fin != std::string_view::npos; debut = fin + 1) {
        fin = texte.find(',', debut);
        mots.push_back(sans_blancs(texte.substr(debut, fin == std::string_view::npos ? fin : fin - debut)));
    }
    if (mots.size() < 3 || mots.size() > 1 + std::size(champs)) {
        raison = "« " + std::string(sans_blancs(texte)) +
                 " » : NOM,LATITUDE,LONGITUDE[,ALTITUDE[,MASQUE]] attendu";
        return false;
    }
    station lue;
    lue.nom = mots[0];
    for (std::size_t i = 1; i < mots.size(); ++i)
        if (!lit_nombre(mots[i], lue.*champs[i - 1].valeur)) {
            raison =
                std::string(champs[i - 1].nom) + " : « " + std::string(mots[i]) + " » n'est pas un nombre";
            return false;
        }
    raison = defaut_station(lue);
    if (raison.empty()) s = lue;
    return raison.empty();
}

std::string station_vers_texte(const station& s) {
    std::string t = s.nom;
    for (const champ_station& c : champs) t += "," + format_court(s.*c.valeur);
    return t;
}

bool lit_stations(std::string_view texte, std::vector<station>& stations, std::string& raison) {
    std::vector<station> lues;
    int numero = 0;
    while (!texte.empty()) {
        const auto fin = texte.find('\n');
        const std::string_view ligne = sans_blancs(texte.substr(0, fin));
        texte.remove_prefix(fin == std::string_view::npos ? texte.size() : fin + 1);
        ++numero;
        if (ligne.empty() || ligne.front() == '#') continue;
        if (!lit_station(ligne, lues.emplace_back(), raison)) {
            raison = "ligne " + std::to_string(numero) + " : " + raison;
            return false;
        }
    }
    stations = std::move(lues);
    return true;
}

bool charge_stations(const std::string& chemin, std::vector<station>& stations, std::string& raison) {
    std::string texte;
    return lit_fichier_court(chemin, taille_max, texte, raison) && lit_stations(texte, stations, raison);
}

repere_station::repere_station(const station& s) {
    const auto [slat, clat] = sincos_de(s.latitude * rad_par_degre);
    const auto [slon, clon] = sincos_de(s.longitude * rad_par_degre);
    pos = geodesique_vers_cart(s.longitude * rad_par_degre, s.latitude * rad_par_degre, s.altitude);
    est = {-slon, clon, 0};
    nord = {-slat * clon, -slat * slon, clat};
    zenith = {clat * clon, clat * slon, slat};
}

visee repere_station::vers(const vec3& p) const {
    const vec3 d = vec_difference(p, pos);
    const double e = vec_scalaire(est, d), n = vec_scalaire(nord, d), z = vec_scalaire(zenith, d);
    double azimut = std::atan2(e, n) / rad_par_degre;
    if (azimut < 0) azimut += 360;
    if (azimut >= 360) azimut = 0; // a negative nothing
    return {std::atan2(z, std::hypot(e, n)) / rad_par_degre, azimut, vec_norme(d)};
}
