#include "analysis/passages.h"
#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "batch/donnees.h"

namespace {

using col = colonne<passage>;

constexpr const char* nom_station = "station";

std::vector<col> table() {
    std::vector<col> t = {{nom_station, [](const passage&, int) { return 0.0; }}};
    for (const colonne_passage& c : colonnes_passage())
        t.push_back({c.nom,
                     [](const passage& p, int i) { return colonnes_passage()[std::size_t(i)].valeur(p); },
                     int(t.size()) - 1});
    return t;
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
                sortie.valeur(c.valeur(p, c.indice));
        sortie.fin_de_ligne();
    }
    return r.faute ? signale_faute("passages", *r.faute) : reussi;
}
