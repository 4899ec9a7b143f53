/// Date, orbit and ground point.
#include "analysis/catalogue_tables.h"

namespace {

using E = etat_calcul;

constexpr variable table[] = {
    {"sim_date", "Date", "j", 6, "date du pas, en jours depuis le 1er janvier 1950", 0,
     [](const E& e, int) { return e.periode.j_courant; }},
    {"j", "Date", "j", 6, "date du pas, en jours depuis le 1er janvier 1950", 0,
     [](const E& e, int) { return e.periode.j_courant; }},
    {"sat_pos", "Position du satellite", "km", 3, "dans le repère inertiel de 1950", besoin::orbite,
     [](const E& e, int i) { return e.orbite.sat_pos[i]; }, 3},
    {"sat_vit", "Vitesse du satellite", "km/s", 6, "dans le repère inertiel de 1950", besoin::orbite,
     [](const E& e, int i) { return e.orbite.sat_vit[i]; }, 3},
    {"soleil_pos", "Position du Soleil", "km", 0, "depuis le centre de la Terre, repère inertiel de 1950",
     besoin::orbite, [](const E& e, int i) { return e.orbite.soleil_pos[i]; }, 3},
    {"vec_nadir", "Direction du nadir", "", 6, "vecteur unité du satellite vers le centre de la Terre",
     besoin::orbite, [](const E& e, int i) { return e.orbite.vec_nadir[i]; }, 3},
    {"vec_soleil", "Direction du Soleil", "", 6, "vecteur unité du satellite vers le Soleil", besoin::orbite,
     [](const E& e, int i) { return e.orbite.vec_soleil[i]; }, 3},
    {"anomalie_moy", "Anomalie moyenne", "rad", 6, "de 0 à 2 pi", besoin::orbite,
     [](const E& e, int) { return e.orbite.anomalie_moy; }},
    {"eclipse_orbite", "Éclipse (orbite)", "", 0,
     "-1 dans l'ombre d'une Terre de 6428 km, 0 sinon : celle du couple solaire", besoin::orbite,
     [](const E& e, int) -> double { return e.orbite.eclipse; }, 1, false, true},
    {"sat_lon", "Longitude", "rad", 6, "point au sol du satellite, vers l'est", besoin::sol,
     [](const E& e, int) { return e.orbite.sat_lon; }},
    {"sat_lat", "Latitude", "rad", 6, "point au sol du satellite, géodésique", besoin::sol,
     [](const E& e, int) { return e.orbite.sat_lat; }},
    {"sat_alt", "Altitude", "km", 3, "au-dessus de l'ellipsoïde", besoin::sol,
     [](const E& e, int) { return e.orbite.sat_alt; }},
};

} // namespace

std::span<const variable> variables_orbite() { return table; }
