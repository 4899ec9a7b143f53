#include "batch/options_etude.h"

#include "project/etude_champs.h"
#include "project/etude_fichier.h"

namespace {

statut pose_champs(const options& o, session& s) {
    std::string raison;
    std::vector<std::string> entrees = o.champs;
    // A name alone is the field that the command sizes.
    if (o.commande == "dimensionne")
        std::erase_if(entrees, [](const std::string& e) { return e.find('=') == e.npos; });
    if (change_champs(s, entrees, raison)) return reussi;
    signale("--champ " + raison);
    return usage_incorrect;
}

} // namespace

statut lit_etude(const options& o, session& s) {
    std::string raison;
    if (o.etude.empty() || charge_etude(o.etude, s, raison)) return reussi;
    signale(raison);
    return entree_illisible;
}

statut applique_etude(const options& o, session& s) {
    if (!o.stations.empty()) s.stations.clear();
    for (const std::string& texte : o.stations)
        if (std::string raison; !lit_station(texte, s.stations.emplace_back(), raison)) {
            signale("--station : " + raison);
            return usage_incorrect;
        }
    if (!o.note.empty()) s.notes = o.note;
    if (const statut pose = pose_champs(o, s); pose != reussi) return pose;
    if (!o.etude.empty() || !o.pwr.empty()) return reussi;
    // The period is that of the orbit in use, and entries of the period itself stand over it.
    s.periode = periode_par_defaut(s.orbit.orbite);
    return pose_champs(o, s);
}
