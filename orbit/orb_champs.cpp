#include "orbit/orb_champs.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "shell/formats.h"
#include "shell/octets.h"

namespace {

using enum type_orb;

constexpr champ_orb table[] = {
    {.nom = "orb_nom",
     .type = texte,
     .nombre = 24,
     .place = offsetof(record_orbite, orb_nom),
     .decalage = 0,
     .sens = "Nom enregistré dans le fichier d'orbite"},
    {.nom = "orb_inclinaison",
     .type = f64,
     .place = offsetof(record_orbite, orb_inclinaison),
     .decalage = 24,
     .titre = "Inclinaison",
     .unite = "deg",
     .min = -180,
     .max = 180,
     .image = "#0.0000000000",
     .sens = "Angle du plan de l'orbite avec l'équateur",
     .controles = {"norad_inclinaison"}},
    {.nom = "orb_ascension",
     .type = f64,
     .place = offsetof(record_orbite, orb_ascension),
     .decalage = 32,
     .titre = "Asc. dr. noeud ascendant ",
     .unite = "deg",
     .min = 0,
     .max = 360,
     .image = "##0.0000000000",
     .sens = "Ascension droite du nœud ascendant, équinoxe de l'époque",
     .controles = {"norad_ascension"}},
    {.nom = "orb_excentricite",
     .type = f64,
     .place = offsetof(record_orbite, orb_excentricite),
     .decalage = 40,
     .titre = "Excentricité ",
     .min = 0,
     .max = 1,
     .image = "0.0000000000",
     .sens = "0 pour un cercle",
     .controles = {"norad_excentricite"}},
    {.nom = "orb_argument",
     .type = f64,
     .place = offsetof(record_orbite, orb_argument),
     .decalage = 48,
     .titre = "Argument du périgée ",
     .unite = "deg",
     .min = 0,
     .max = 360,
     .image = "##0.0000000000",
     .sens = "Angle du nœud ascendant au périgée",
     .controles = {"norad_argument"}},
    {.nom = "orb_anomalie",
     .type = f64,
     .place = offsetof(record_orbite, orb_anomalie),
     .decalage = 56,
     .titre = "Anomalie Moyenne ",
     .unite = "deg",
     .min = 0,
     .max = 360,
     .image = "##0.0000000000",
     .sens = "Place du satellite sur l'orbite à l'époque, comptée du périgée",
     .controles = {"norad_anomalie"}},
    {.nom = "orb_moy_mvt",
     .type = f64,
     .place = offsetof(record_orbite, orb_moy_mvt),
     .decalage = 64,
     .titre = "Moyen mouvement ",
     .unite = "Rév/jour",
     .min = 0.1,
     .max = 18,
     .image = "#0.0000000000",
     .sens = "Tours par jour ; lié au demi-grand axe",
     .controles = {"norad_moy_mvt"}},
    {.nom = "orb_demi",
     .type = f64,
     .place = offsetof(record_orbite, orb_demi),
     .decalage = 82,
     .titre = "Demi-grand axe",
     .unite = "kms",
     .min = 3200,
     .max = 300000,
     .image = "#0.0000000000",
     .sens = "Demi-grand axe ; lié au moyen mouvement",
     .controles = {"norad_demi"}},
    {.nom = "orb_an",
     .type = i16,
     .place = offsetof(record_orbite, orb_an),
     .decalage = 72,
     .titre = "Année ",
     .min = 0,
     .max = 9999,
     .image = "###0",
     .sens = "Année de l'époque",
     .controles = {"norad_an"}},
    {.nom = "orb_jour",
     .type = f64,
     .place = offsetof(record_orbite, orb_jour),
     .decalage = 74,
     .titre = "Jour ",
     .min = 0,
     .max = 366,
     .image = "###0.0000",
     .sens = "Jour de l'année de l'époque, avec sa fraction ; 1.0 est le 1er janvier à 0 h",
     .controles = {"norad_jour"}},
    {.nom = "reserve",
     .type = f64,
     .nombre = 3,
     .place = offsetof(record_orbite, reserve),
     .decalage = 90,
     .sens = "Conservé tel que le fichier le donne"},
    {.pointage = true,
     .nom = "orbital",
     .type = drapeau,
     .place = offsetof(pointage_record, orbital),
     .titre = "Pointage repère orbital local",
     .sens = "Angles donnés par rapport à l'orbite : X le long de la trace, Y normal au plan, Z radial "
             "(sinon, repère inertiel)",
     .controles = {"opt_att"}},
    {.pointage = true,
     .nom = "roulis",
     .type = f64,
     .place = offsetof(pointage_record, roulis),
     .titre = "Roulis",
     .unite = "deg",
     .min = -180,
     .max = 180,
     .image = "#0.00",
     .sens = "Roulis initial",
     .controles = {"txt_attx"}},
    {.pointage = true,
     .nom = "tangage",
     .type = f64,
     .place = offsetof(pointage_record, tangage),
     .titre = "Tangage",
     .unite = "deg",
     .min = -90,
     .max = 90,
     .image = "#0.00",
     .sens = "Tangage initial",
     .controles = {"txt_atty"}},
    {.pointage = true,
     .nom = "lacet",
     .type = f64,
     .place = offsetof(pointage_record, lacet),
     .titre = "Lacet",
     .unite = "deg",
     .min = 0,
     .max = 360,
     .image = "#0.00",
     .sens = "Lacet initial",
     .controles = {"txt_attz"}},
    {.pointage = true,
     .nom = "inertiel",
     .type = f64,
     .nombre = 3,
     .place = offsetof(pointage_record, inertiel),
     .titre = "Angle inertiel",
     .unite = "deg",
     .min = -360,
     .max = 360,
     .image = "#0.00",
     .sens = "Angle d'Euler inertiel autour de l'axe",
     .controles = {"txt_inerx", "txt_inery", "txt_inerz"},
     .degres = true},
    {.pointage = true,
     .nom = "yi_init",
     .type = f64,
     .nombre = 6,
     .place = offsetof(pointage_record, yi_init),
     .unite = "deg",
     .sens = "Angles d'Euler inertiels au départ, et leurs dérivées",
     .degres = true},
    {.pointage = true,
     .nom = "yd_init",
     .type = f64,
     .nombre = 6,
     .place = offsetof(pointage_record, yd_init),
     .unite = "deg",
     .sens = "Roulis, lacet et tangage au départ, et leurs dérivées",
     .degres = true},
    {.pointage = true,
     .nom = "spin",
     .type = drapeau,
     .place = offsetof(pointage_record, spin),
     .titre = "Spin",
     .sens = "Fait tourner le satellite depuis le début de la simulation",
     .controles = {"Chk_spin"}},
    {.pointage = true,
     .nom = "vspin",
     .type = f64,
     .place = offsetof(pointage_record, vspin),
     .titre = "Vitesse",
     .unite = "tr/mn",
     .min = -100,
     .max = 100,
     .image = "#0.000",
     .sens = "Vitesse de rotation",
     .controles = {"txt_vspin"}},
    {.pointage = true,
     .nom = "axe_spin",
     .type = i16,
     .place = offsetof(pointage_record, axe_spin),
     .titre = "Autour de",
     .min = 0,
     .max = 2,
     .sens = "Axe de rotation : 0 X, 1 Y, 2 Z ; le modèle tourne autour du lacet seul",
     .controles = {"Cmb_Spin"}},
    {.pointage = true,
     .nom = "mode_pointage",
     .type = i16,
     .place = offsetof(pointage_record, mode_pointage),
     .titre = "Face",
     .min = 1,
     .max = 6,
     .sens = "La face qui pointe : 1 +X, 2 +Y, 3 +Z, 4 -X, 5 -Z",
     .controles = {"cmb_pointage"}},
};

template <class Etat>
auto* octet(Etat& o, const champ_orb& c, int element) {
    auto* debut =
        c.pointage ? reinterpret_cast<const char*>(&o.pointage) : reinterpret_cast<const char*>(&o.orbite);
    return debut + c.place + c.taille() / c.nombre * element;
}

} // namespace

std::size_t champ_orb::taille() const {
    return nombre * (type == type_orb::texte ? 1 : type == type_orb::f64 ? 8 : 2);
}

std::span<const champ_orb> orb_champs() { return table; }

const champ_orb& champ_orb_de(std::string_view nom) {
    for (const champ_orb& c : table)
        if (nom == c.nom) return c;
    std::fprintf(stderr, "champ inconnu : %.*s\n", static_cast<int>(nom.size()), nom.data());
    std::abort();
}

double valeur(const orbit_state& o, const champ_orb& c, int element) {
    const char* place = octet(o, c, element);
    if (c.type == type_orb::texte) return 0;
    return c.type == type_orb::f64 ? lit_octets<double>(place) : lit_octets<int16_t>(place);
}

void change(orbit_state& o, const champ_orb& c, double x, int element) {
    char* place = const_cast<char*>(octet(o, c, element));
    switch (c.type) {
    case type_orb::f64: return ecrit_octets<double>(place, x);
    case type_orb::drapeau: return ecrit_octets<int16_t>(place, x != 0 ? vrai : faux);
    case type_orb::i16: return ecrit_octets<int16_t>(place, x);
    case type_orb::texte: return;
    }
}

std::string infobulle(const champ_orb& c) {
    std::string t = c.sens;
    if (std::isfinite(c.min))
        t += " (de " + format_court(c.min) + " à " + format_court(c.max) +
             (*c.unite ? std::string(" ") + c.unite : std::string()) + ")";
    return t;
}
