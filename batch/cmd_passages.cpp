#include "analysis/passages.h"
#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "batch/donnees.h"

namespace {

using col = colonne<passage>;

constexpr const char* nom_station = "station";

std::vector<col> table() {
    return {{nom_station, [](const passage& p, int) { return static_cast<double>(p.station); }},
            {"debut", [](const passage& p, int) { return p.debut; }},
            {"fin", [](const passage& p, int) { return p.fin; }},
            {"duree", [](const passage& p, int) { return p.duree(); }},
            {"elevation_max", [](const passage& p, int) { return p.au_max.elevation; }},
            {"date_max", [](const passage& p, int) { return p.date_max; }},
            {"azimut_debut", [](const passage& p, int) { return p.a_debut.azimut; }},
            {"azimut_max", [](const passage& p, int) { return p.au_max.azimut; }},
            {"azimut_fin", [](const passage& p, int) { return p.a_fin.azimut; }},
            {"distance_min", [](const passage& p, int) { return p.distance_min; }}};
}

/// The stations of the étude; without any, those of the program's data.
statut stations_en_vigueur(const session& s, std::vector<station>& stations) {
    stations = s.stations;
    if (!stations.empty()) return reussi;
    const std::string chemin = dossier_donnees() + "/stations.txt";
    std::string raison;
    if (charge_stations(chemin, stations, raison)) return reussi;
    signale(chemin + " : " + raison);
    return entree_illisible;
}

} // namespace

statut cmd_passages(const options& o, session& s, csv& sortie) {
    const auto toutes = table();
    std::vector<col> choix;
    if (!choisit_colonnes(toutes, toutes.size(), o.colonnes, choix)) return usage_incorrect;
    std::vector<station> stations;
    if (const statut lu = stations_en_vigueur(s, stations); lu != reussi) return lu;

    const auto r = cherche_passages(trajectoire_du_modele(s.orbit.orbite, s.modele), stations,
                                    s.periode.j_debut, s.periode.j_fin);
    ecrit_entete(choix, sortie);
    for (const passage& p : r.passages) {
        for (const col& c : choix)
            if (c.nom == nom_station)
                sortie.mot(stations[p.station].nom);
            else
                sortie.valeur(c.valeur(p, 0));
        sortie.fin_de_ligne();
    }
    return r.faute ? signale_faute("passages", *r.faute) : reussi;
}
