/// The parts of the étude's file that are no tables of numbers: model, modes, stations, criteria.
#pragma once

#include "project/etude.h"
#include "project/json_texte.h"

/// What a text says wrongly: where, and the reason.
struct refus_etude {
    std::string chemin, raison;
    std::string texte() const { return chemin.empty() ? raison : chemin + " : " + raison; }
};

/// Walks through an object's keys: each is taken once, what is left over is unknown.
class lecteur_objet {
public:
    /// Throws `refus_etude` unless `j` is an object.
    lecteur_objet(const json& j, std::string chemin);

    /// The value of a key, or null where it is missing; it counts as known from now on.
    const json* prend(std::string_view cle);
    std::string chemin(std::string_view cle) const;
    /// The keys that nobody has asked for, as JSON text; empty for none.
    std::string reste() const;

    // Values of one type; the default stays where the key is missing.
    void texte(std::string_view cle, std::string& x);
    void nombre(std::string_view cle, double& x, double min, double max);
    void booleen(std::string_view cle, bool& x);
    /// The place of the value in a list of names.
    template <class E, std::size_t n>
    void choix(std::string_view cle, E& x, const char* const (&noms)[n]) {
        x = static_cast<E>(choix_parmi(cle, static_cast<int>(x), noms, n));
    }

private:
    int choix_parmi(std::string_view cle, int x, const char* const* noms, std::size_t nombre);

    const json& objet_;
    std::string chemin_;
    std::vector<std::string> connus_;
};

/// A number, whatever its form, or throws.
double nombre_de(const json& j, const std::string& chemin);
/// Puts the unknown keys (JSON text of an object) behind those of an object.
void remet_inconnus(json& objet, const std::string& inconnus);

json json_modele(const options_modele& m);
json json_modes(const std::vector<mode_conso>& modes);
json json_stations(const std::vector<station>& stations);
json json_criteres(const criteres_etude& c);

/// They throw `refus_etude`. Unknown keys of the model and the criteria come back as JSON text.
options_modele lit_modele(const json& j, std::string& inconnus);
std::vector<mode_conso> lit_modes(const json& j, const std::string& chemin);
std::vector<station> lit_stations(const json& j);
criteres_etude lit_criteres(const json& j, std::string& inconnus);
