#include "batch/execution.h"

#include <csignal>
#include <filesystem>

#include "batch/reprise.h"

namespace {

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

int execute(int argc, char** argv, execution_balayage balaye) {
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
        fin = balaye && c->execute == cmd_balayage ? cmd_balayage_par(o, s, sortie, balaye)
                                                   : c->execute(o, s, sortie);
        // A fault leaves the rows before it; wrong usage and unreadable input leave the old file.
        if (fin != usage_incorrect && fin != entree_illisible) sortie.termine();
    } catch (const echec_ecriture& echec) {
        signale(echec.what());
        return entree_illisible;
    }
    return fin;
}

std::unique_ptr<balayage> balayage_de(int argc, char** argv) {
    options o;
    statut fin = reussi;
    session s;
    plan_balayage plan;
    const commande* c = lit_ligne_commande(argc, argv, o, fin);
    if (!c || c->execute != cmd_balayage || prepare(o, s) != reussi || lit_plan(o, s, plan) != reussi)
        return nullptr;
    return std::make_unique<balayage>(s, std::move(plan));
}
