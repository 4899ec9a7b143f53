/// kestrel_batch: the models of the program without a window; CSV on standard output or to a file.
#include <csignal>
#include <filesystem>

#include "batch/commandes.h"
#include "batch/reprise.h"

namespace {

constexpr unsigned commun = g_periode | g_modele | g_colonnes | g_sortie;
/// A run by dates gives any column of the catalogue, so all of the session counts.
constexpr unsigned par_dates = g_orbite | g_energie | g_attitude | g_pointage | g_cellules | g_modes | commun;

constexpr commande table[] = {
    {"orbite", "positions du satellite et du Soleil, éclipse, point au sol", par_dates, cmd_orbite},
    {"energie", "simulation du système énergie", par_dates, cmd_energie},
    {"attitude", "simulation de l'attitude",
     g_orbite | g_energie | g_attitude | g_pointage | g_ecriture | commun, cmd_attitude},
    {"couples", "couples perturbateurs à chaque date", par_dates, cmd_couples},
    {"couple", "modèle physique : énergie et attitude ensemble, les panneaux suivent l'attitude", par_dates,
     cmd_couple},
    {"batterie", "décharge puis recharge d'un accumulateur", g_energie | g_batterie | g_colonnes | g_sortie,
     cmd_batterie},
    {"passages", "passages du satellite au-dessus de stations", g_orbite | g_energie | g_stations | commun,
     cmd_passages},
    {"bilan", "bilan d'énergie orbite par orbite : le satellite tient-il ?",
     g_orbite | g_energie | g_pointage | g_cellules | g_bilan | g_orbites | g_modes | commun, cmd_bilan},
    {"balayage", "bilan de chaque variante d'une étude",
     g_orbite | g_energie | g_pointage | g_cellules | g_periode | g_modele | g_orbites | g_modes |
         g_balayage | g_sortie,
     cmd_balayage},
    {"dimensionne", "la plus petite valeur d'un champ qui atteint un but",
     g_orbite | g_energie | g_pointage | g_cellules | g_periode | g_modele | g_orbites | g_modes |
         g_dimension | g_sortie,
     cmd_dimensionne},
    {"panneaux", "températures, puissances et flux des panneaux solaires", par_dates, cmd_panneaux},
    {"etude", "écrit l'étude (.kestrel) que fichiers et options décrivent",
     g_orbite | g_energie | g_attitude | g_pointage | g_cellules | g_periode | g_modes | g_modele |
         g_stations | g_note | g_sortie,
     cmd_etude},
    {"variables", "les variables que --colonnes peut demander : nom, titre, unité, éléments, sens", g_sortie,
     cmd_variables},
};

/// The output would replace a file that the run reads.
bool sortie_sur_entree(const options& o) {
    if (o.sortie.empty()) return false;
    for (const option_batch& x : options_batch()) {
        if (x.genre != option_batch::fichier_lu) continue;
        // An étude is replaced whole, so that it may be rewritten in place.
        if (x.de == g_etude && o.commande == "etude") continue;
        const std::string& entree = o.*std::get<std::string options::*>(x.cible);
        std::error_code erreur;
        if (entree.empty() || !std::filesystem::equivalent(entree, o.sortie, erreur)) continue;
        signale(o.sortie + " : la sortie remplacerait l'entrée " + x.nom);
        return true;
    }
    return false;
}

} // namespace

std::span<const commande> commandes() { return table; }

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone is told like a full disk
    options o;
    statut fin = reussi;
    const commande* c = lit_ligne_commande(argc, argv, o, fin);
    if (!c) return fin;
    if (sortie_sur_entree(o)) return usage_incorrect;

    session s;
    if (const statut pret = prepare(o, s); pret != reussi) return pret;
    // The rows of a sweep stay when it is killed, for --reprise.
    csv sortie(o.sortie.empty() ? o.reprise : o.sortie, c->groupes & g_balayage ? suffixe_partiel : "");
    try {
        fin = c->execute(o, s, sortie);
        // A fault leaves the rows before it; wrong usage and unreadable input leave the old file.
        if (fin != usage_incorrect && fin != entree_illisible) sortie.termine();
    } catch (const echec_ecriture& echec) {
        signale(echec.what());
        return entree_illisible;
    }
    return fin;
}
