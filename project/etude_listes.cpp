#include "project/etude_listes.h"

#include <algorithm>
#include <cmath>

#include "project/etude_champs.h"
#include "shell/formats.h"

// -- Reading

lecteur_objet::lecteur_objet(const json& j, std::string chemin) : objet_(j), chemin_(std::move(chemin)) {
    if (!j.is_object()) throw refus_etude{chemin_, "un objet est attendu"};
}

const json* lecteur_objet::prend(std::string_view cle) {
    connus_.emplace_back(cle);
    const auto i = objet_.find(connus_.back());
    return i == objet_.end() ? nullptr : &*i;
}

std::string lecteur_objet::chemin(std::string_view cle) const {
    return chemin_.empty() ? std::string(cle) : chemin_ + "." + std::string(cle);
}

std::string lecteur_objet::reste() const {
    json inconnus = json::object();
    for (auto i = objet_.begin(); i != objet_.end(); ++i)
        if (std::find(connus_.begin(), connus_.end(), i.key()) == connus_.end()) inconnus[i.key()] = *i;
    return inconnus.empty() ? std::string() : ecrit_json_court(inconnus);
}

void lecteur_objet::texte(std::string_view cle, std::string& x) {
    const json* j = prend(cle);
    if (!j) return;
    if (!j->is_string()) throw refus_etude{chemin(cle), "un texte est attendu"};
    x = j->get<std::string>();
}

void lecteur_objet::nombre(std::string_view cle, double& x, double min, double max) {
    const json* j = prend(cle);
    if (!j) return;
    const double lu = nombre_de(*j, chemin(cle));
    if (lu < min || lu > max)
        throw refus_etude{chemin(cle), format_court(lu) + " n'est pas permis (" +
                                           texte_bornes({.min = min, .max = max}) + ")"};
    x = lu;
}

void lecteur_objet::booleen(std::string_view cle, bool& x) {
    const json* j = prend(cle);
    if (!j) return;
    if (!j->is_boolean()) throw refus_etude{chemin(cle), "true ou false est attendu"};
    x = j->get<bool>();
}

int lecteur_objet::choix_parmi(std::string_view cle, int x, const char* const* noms, std::size_t nombre) {
    const json* j = prend(cle);
    if (!j) return x;
    std::string permis;
    for (std::size_t i = 0; i < nombre; ++i) {
        if (j->is_string() && j->get_ref<const std::string&>() == noms[i]) return static_cast<int>(i);
        permis += std::string(i ? ", " : "") + "\"" + noms[i] + "\"";
    }
    throw refus_etude{chemin(cle), ecrit_json_court(*j) + " n'est pas permis (" + permis + ")"};
}

double nombre_de(const json& j, const std::string& chemin) {
    if (!j.is_number()) throw refus_etude{chemin, "un nombre est attendu"};
    return j.get<double>();
}

void remet_inconnus(json& objet, const std::string& inconnus) {
    if (inconnus.empty()) return;
    json j;
    std::string raison;
    if (!lit_json(inconnus, j, raison) || !j.is_object()) return;
    for (auto i = j.begin(); i != j.end(); ++i)
        if (!objet.contains(i.key())) objet[i.key()] = *i;
}

namespace {

constexpr double infini = std::numeric_limits<double>::infinity();
constexpr const char* noms_modele[] = {"reference", "physique"};

/// The elements of a list, each with its path.
template <class F>
void chacun(const json& j, const std::string& chemin, F&& f) {
    if (!j.is_array()) throw refus_etude{chemin, "une liste est attendue"};
    std::size_t n = 0;
    for (const json& x : j) f(x, chemin + "[" + std::to_string(n++) + "]");
}

} // namespace

// -- Model

json json_modele(const options_modele& m) {
    const char* nom = noms_modele[m.physique ? 1 : 0];
    options_modele nu;
    nu.physique = m.physique;
    if (m == nu) return nom;
    json j = {{"nom", nom}};
    json sans = json::array();
    for (const partie_modele& p : parties_modele())
        if (m.*p.sans) sans.push_back(p.nom);
    if (!sans.empty()) j["sans"] = sans;
    const controle_attitude& c = m.controle;
    if (c == controle_attitude{}) return j;
    json k = {{"loi", noms_loi[static_cast<int>(c.loi)]}};
    for (const champ_controle& n : champs_controle()) k[n.nom] = nombre_json(c.*n.place);
    k["cible"] = noms_cible[static_cast<int>(c.cible)];
    k["face"] = noms_face[c.face];
    j["controle"] = k;
    return j;
}

options_modele lit_modele(const json& j, std::string& inconnus) {
    options_modele m;
    const json seul = {{"nom", j}};
    lecteur_objet l(j.is_string() ? seul : j, "modele");
    int nom = 0;
    l.choix("nom", nom, noms_modele);
    m.physique = nom == 1;
    if (const json* sans = l.prend("sans"))
        chacun(*sans, "modele.sans", [&m](const json& x, const std::string& chemin) {
            if (!x.is_string() || !retire_partie(m, x.get<std::string>()))
                throw refus_etude{chemin, ecrit_json_court(x) + " n'est pas une partie du modèle"};
        });
    if (const json* c = l.prend("controle")) {
        lecteur_objet k(*c, "modele.controle");
        k.choix("loi", m.controle.loi, noms_loi);
        for (const champ_controle& n : champs_controle()) k.nombre(n.nom, m.controle.*n.place, n.min, n.max);
        k.choix("cible", m.controle.cible, noms_cible);
        k.choix("face", m.controle.face, noms_face);
    }
    inconnus = l.reste();
    return m;
}

// -- Modes

namespace {

json json_quand(const quand_mode& q) {
    switch (q.genre) {
    case genre_quand::jour: return {{"jour", true}};
    case genre_quand::nuit: return {{"nuit", true}};
    case genre_quand::latitude:
        return {{"latitude", json::array({nombre_json(q.latitude_min), nombre_json(q.latitude_max)})}};
    case genre_quand::station: return {{"station", q.station}};
    case genre_quand::periode:
        return {{"periode", nombre_json(q.periode)},
                {"debut", nombre_json(q.debut)},
                {"duree", nombre_json(q.duree)}};
    case genre_quand::une_orbite_sur: return {{"une_orbite_sur", q.une_orbite_sur}};
    default: return {{"toujours", true}};
    }
}

quand_mode lit_latitude(const json& j, const std::string& chemin) {
    if (!j.is_array() || j.size() != 2)
        throw refus_etude{chemin, "deux nombres sont attendus : la plus au sud, la plus au nord"};
    quand_mode q{.genre = genre_quand::latitude};
    q.latitude_min = nombre_de(j[0], chemin + "[0]");
    q.latitude_max = nombre_de(j[1], chemin + "[1]");
    if (q.latitude_min < -90 || q.latitude_max > 90 || q.latitude_min > q.latitude_max)
        throw refus_etude{chemin, ecrit_json_court(j) + " n'est pas permis (de -90 à 90, croissantes)"};
    return q;
}

quand_mode lit_quand(const json& j, const std::string& chemin) {
    quand_mode q;
    const json seul = j.is_string() ? json{{j.get<std::string>(), true}} : json();
    lecteur_objet l(j.is_string() ? seul : j, chemin);
    int vus = 0;
    const auto veut = [&](const char* cle, genre_quand genre) {
        const json* x = l.prend(cle);
        if (!x) return x;
        ++vus;
        q.genre = genre;
        return x;
    };
    for (const auto& [cle, genre] :
         {std::pair("toujours", genre_quand::toujours), std::pair("jour", genre_quand::jour),
          std::pair("nuit", genre_quand::nuit)})
        if (const json* x = veut(cle, genre); x && *x != json(true))
            throw refus_etude{l.chemin(cle), "true est attendu"};
    if (const json* x = veut("latitude", genre_quand::latitude)) q = lit_latitude(*x, l.chemin("latitude"));
    if (veut("station", genre_quand::station)) l.texte("station", q.station);
    if (veut("periode", genre_quand::periode)) {
        l.nombre("periode", q.periode, 1e-3, infini);
        l.nombre("debut", q.debut, 0, infini);
        l.nombre("duree", q.duree, 0, infini);
    }
    if (veut("une_orbite_sur", genre_quand::une_orbite_sur)) {
        double n = 1;
        l.nombre("une_orbite_sur", n, 1, 1e6);
        if (n != std::floor(n)) throw refus_etude{l.chemin("une_orbite_sur"), "un nombre entier est attendu"};
        q.une_orbite_sur = static_cast<int>(n);
    }
    if (vus != 1 || !l.reste().empty())
        throw refus_etude{chemin, "un seul est attendu de toujours, jour, nuit, latitude, station, periode "
                                  "(avec debut et duree), une_orbite_sur"};
    return q;
}

} // namespace

json json_modes(const std::vector<mode_conso>& modes) {
    json liste = json::array();
    for (const mode_conso& m : modes) {
        json j = {{"nom", m.nom}, {"puissance", nombre_json(m.puissance)}, {"quand", json_quand(m.quand)}};
        remet_inconnus(j, m.inconnus);
        liste.push_back(std::move(j));
    }
    return liste;
}

std::vector<mode_conso> lit_modes(const json& j, const std::string& chemin) {
    std::vector<mode_conso> modes;
    chacun(j, chemin, [&modes](const json& x, const std::string& ici) {
        mode_conso m;
        lecteur_objet l(x, ici);
        l.texte("nom", m.nom);
        l.nombre("puissance", m.puissance, 0, infini);
        if (const json* q = l.prend("quand")) m.quand = lit_quand(*q, l.chemin("quand"));
        m.inconnus = l.reste();
        modes.push_back(std::move(m));
    });
    return modes;
}

// -- Stations and criteria

json json_stations(const std::vector<station>& stations) {
    json liste = json::array();
    for (const station& s : stations) {
        json j = {{"nom", s.nom}};
        for (const champ_station& c : champs_station()) j[c.nom] = nombre_json(s.*c.valeur);
        liste.push_back(std::move(j));
    }
    return liste;
}

std::vector<station> lit_stations(const json& j) {
    std::vector<station> stations;
    chacun(j, "stations", [&stations](const json& x, const std::string& ici) {
        station s;
        lecteur_objet l(x, ici);
        l.texte("nom", s.nom);
        for (const champ_station& c : champs_station()) l.nombre(c.nom, s.*c.valeur, c.min, c.max);
        if (const std::string defaut = defaut_station(s); !defaut.empty()) throw refus_etude{ici, defaut};
        stations.push_back(std::move(s));
    });
    return stations;
}

json json_criteres(const criteres_etude& c) {
    json j = json::object();
    for (const champ_critere& n : champs_criteres())
        if (const auto& x = c.*n.place) j[n.nom] = nombre_json(*x);
    return j;
}

criteres_etude lit_criteres(const json& j, std::string& inconnus) {
    criteres_etude c;
    lecteur_objet l(j, "criteres");
    for (const champ_critere& n : champs_criteres()) {
        double x = NAN;
        l.nombre(n.nom, x, n.min, n.max);
        if (!std::isnan(x)) c.*n.place = x;
    }
    inconnus = l.reste();
    return c;
}
