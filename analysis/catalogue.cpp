#include <algorithm>
#include <unordered_map>

#include "analysis/catalogue_tables.h"
#include "power/montage.h"

std::span<const variable> catalogue() {
    static const std::vector<variable> toutes = [] {
        std::vector<variable> t;
        for (const auto table :
             {variables_orbite(), variables_puissance(), variables_attitude(), variables_physique()})
            t.insert(t.end(), table.begin(), table.end());
        return t;
    }();
    return toutes;
}

const variable* cherche_variable(std::string_view nom) {
    static const auto index = [] {
        std::unordered_map<std::string_view, const variable*> i;
        for (const variable& v : catalogue()) i.emplace(v.nom, &v);
        return i;
    }();
    const auto v = index.find(nom);
    return v == index.end() ? nullptr : v->second;
}

int nombre_elements(const variable& v, const power_record& p) {
    return v.par_panneau ? nombre_panneaux(p) : v.elements;
}

namespace {

/// What tells one element from the others: "x", "12", or nothing for a lonely one.
std::string indice(const variable& v, int element, const power_record& p) {
    if (nombre_elements(v, p) == 1) return {};
    return v.elements == 3 ? std::string(1, "xyz"[element]) : std::to_string(element);
}

} // namespace

std::string nom_voie(const variable& v, int element, const power_record& p) {
    const std::string i = indice(v, element, p);
    return i.empty() ? v.nom : v.nom + ("_" + i);
}

std::string titre_voie(const voie& c, const power_record& p) {
    const std::string i = indice(*c.quoi, c.element, p);
    return i.empty() ? c.quoi->titre : c.quoi->titre + (" " + i);
}

bool ajoute_voies(std::string_view nom, const power_record& p, std::vector<voie>& voies) {
    if (const variable* v = cherche_variable(nom)) {
        for (int i = 0; i < nombre_elements(*v, p); ++i) voies.push_back({nom_voie(*v, i, p), v, i});
        return true;
    }
    const auto tiret = nom.rfind('_');
    const variable* v = tiret == nom.npos ? nullptr : cherche_variable(nom.substr(0, tiret));
    if (!v) return false;
    for (int i = 0; i < nombre_elements(*v, p); ++i)
        if (nom_voie(*v, i, p) == nom) {
            voies.push_back({std::string(nom), v, i});
            return true;
        }
    return false;
}

std::vector<voie> voies_de(std::span<const char* const> noms, const power_record& p) {
    std::vector<voie> c;
    for (const std::string_view nom : noms) {
        const auto egal = nom.find('=');
        ajoute_voies(nom.substr(egal + 1), p, c); // npos + 1 is 0: the whole name
        if (egal != nom.npos) c.back().nom = nom.substr(0, egal);
    }
    return c;
}

unsigned besoins_de(std::span<const voie> voies) {
    unsigned b = 0;
    for (const voie& c : voies) b |= c.quoi->lit;
    return b;
}
