#include "project/etude.h"

#include <algorithm>

#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "project/etude_champs.h"
#include "shell/utilitaires.h"

namespace {

constexpr champ_critere champs[] = {
    {"dod_max", &criteres_etude::dod_max, &criteres_valeurs::dod_max, 0, 100, "%",
     "Profondeur de décharge permise"},
    {"t_bat_min", &criteres_etude::t_bat_min, &criteres_valeurs::t_bat_min, -273.15, 1000, "°C",
     "Température la plus basse de la batterie"},
    {"t_bat_max", &criteres_etude::t_bat_max, &criteres_valeurs::t_bat_max, -273.15, 1000, "°C",
     "Température la plus haute de la batterie"},
    {"marge_min", &criteres_etude::marge_min, &criteres_valeurs::marge_min, -100, 10000, "%",
     "Marge d'énergie demandée"},
};

} // namespace

std::span<const champ_critere> champs_criteres() { return champs; }

criteres_valeurs criteres_usuels(int bat_type) {
    switch (bat_type) {
    case 0: return {25, -10, 40, 10};  // Nickel-Cadmium
    case 1: return {50, -10, 30, 10};  // Nickel-Hydrogen
    case 2: return {30, 0, 45, 10};    // Lithium-Ion
    default: return {30, -20, 60, 10}; // generic
    }
}

criteres_valeurs criteres_en_vigueur(const etude& e) {
    criteres_valeurs v = criteres_usuels(e.power.bat_type);
    for (const champ_critere& c : champs) v.*c.valeur = (e.criteres.*c.place).value_or(v.*c.valeur);
    return v;
}

void etude_init(etude& e) {
    recalcule_faces(e.power);
    faces_recalcul(e.attitude);
    e.periode = periode_par_defaut(e.orbit.orbite);
}

const etude& etude_par_defaut() {
    static const etude e = [] {
        etude neuve;
        etude_init(neuve);
        return neuve;
    }();
    return e;
}

namespace {

orbit_state place_a_l_epoque(const orbit_state& o) {
    orbit_state copie = o;
    orb_position(date_epoque(o.orbite.orb_an, o.orbite.orb_jour - 1.0), copie);
    return copie;
}

/// The initial attitude of the integrator, as the last entry of angles left it.
void recalcule_pointage(orbit_state& o) {
    pointage_record& p = o.pointage;
    const bool orbitale = p.orbital && (p.roulis != 0 || p.tangage != 0 || p.lacet != 0);
    const bool inertielle =
        !p.orbital && std::any_of(p.inertiel.begin(), p.inertiel.end(), [](double x) { return x != 0; });
    p.yi_init = p.yd_init = {};
    if (orbitale) saisie_orbitale(o);
    if (inertielle) saisie_inertielle(o);
    p.psi = p.lacet;
    p.theta = p.tangage;
    p.phi = p.roulis;
}

} // namespace

void saisie_orbitale(orbit_state& o) {
    orbit_state a_l_epoque = place_a_l_epoque(o);
    const pointage_record& p = o.pointage;
    pointage_orbital(a_l_epoque, p.roulis, p.tangage, p.lacet);
    o.pointage = a_l_epoque.pointage;
}

void saisie_inertielle(orbit_state& o) {
    orbit_state a_l_epoque = place_a_l_epoque(o);
    pointage_inertiel(a_l_epoque);
    o.pointage = a_l_epoque.pointage;
}

void recalcule(etude& e) {
    recalcule_faces(e.power);
    bilan_masses(e.attitude);
    e.attitude.dip_tot = e.attitude.dip_res;
    e.attitude.dip_cmd = e.attitude.jet_cmd = {};
    recalcule_pointage(e.orbit);
}

void copie_reglages(const etude& de, etude& vers) {
    for (const champ_etude& c : etude_champs()) {
        if (!c.de_table()) continue;
        for (int i = 0; i < c.nombre(); ++i) pose(vers, {&c, 0, i}, valeur(de, {&c, 0, i}));
    }
    vers.orbit.orbite.orb_nom = de.orbit.orbite.orb_nom;
    recalcule_faces(vers.power);
    faces_recalcul(vers.attitude);
    pointage_record& p = vers.orbit.pointage;
    p.psi = p.lacet;
    p.theta = p.tangage;
    p.phi = p.roulis;
    vers.modele = de.modele;
    vers.modes = de.modes;
    vers.stations = de.stations;
    vers.criteres = de.criteres;
    vers.courbes = de.courbes;
    vers.notes = de.notes;
    vers.nom_orbite = de.nom_orbite;
    vers.inconnus = de.inconnus;
}
