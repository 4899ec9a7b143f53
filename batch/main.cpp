/// kestrel_batch: the models of the program without a window; CSV on standard output or to a file.
#include <CLI/CLI.hpp>

#include "batch/commandes.h"

namespace {

struct commande {
    const char* nom;
    const char* aide;
    statut (*execute)(const options&, session&, csv&);
};

constexpr commande commandes[] = {
    {"orbite", "positions du satellite et du Soleil, éclipse, point au sol", cmd_orbite},
    {"energie", "simulation du système énergie", cmd_energie},
    {"attitude", "simulation de l'attitude", cmd_attitude},
    {"couples", "couples perturbateurs à chaque date", cmd_couples},
    {"batterie", "décharge puis recharge d'un accumulateur", cmd_batterie},
    {"panneaux", "températures, puissances et flux des panneaux solaires", cmd_panneaux},
};

/// All commands share one set of options; each reads those that concern it.
void declare_options(CLI::App& app, options& o) {
    app.add_option("--orb", o.orb, "orbite (.orb)");
    app.add_option("--pwr", o.pwr, "projet énergie (.pwr)");
    app.add_option("--att", o.att, "projet attitude (.att)");
    app.add_option("-o", o.sortie, "fichier de sortie");
    app.add_option("--debut", o.debut, "jours depuis 1950 ou \"AAAA-MM-JJ hh:mm:ss\"");
    app.add_option("--fin", o.fin, "de même");
    app.add_option("--pas", o.pas, "pas, s");
    app.add_option("--roulis", o.roulis, "degrés");
    app.add_option("--tangage", o.tangage, "degrés");
    app.add_option("--lacet", o.lacet, "degrés");
    app.add_option("--spin", o.spin, "tours par minute");
    app.add_flag("--eol", o.eol, "cellules en fin de vie");
    app.add_option("--colonnes", o.colonnes, "NOM,NOM… ou toutes")->delimiter(',');
    app.add_option("--ecriture", o.ecriture, "attitude : une ligne tous les N pas");
    app.add_option("--tecl", o.tecl, "batterie : durée d'éclipse, min");
    app.add_option("--temp", o.temp, "batterie : température, °C");
    app.add_option("--k", o.k, "batterie : coefficient de recharge");
    app.add_option("--vmax", o.vmax, "batterie : tension maximale, V");
    app.add_option("--ich", o.ich, "batterie : courant de charge, C");
    app.add_option("--pde", o.pde, "batterie : puissance de décharge, V/h");
    app.add_option("--ide", o.ide, "batterie : courant de décharge, C");
}

} // namespace

int main(int argc, char** argv) {
    options o;
    CLI::App app("Simulations KESTREL sans fenêtre", "kestrel_batch");
    app.require_subcommand(1);
    for (const commande& c : commandes) declare_options(*app.add_subcommand(c.nom, c.aide), o);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& aide) {
        return app.exit(aide);
    } catch (const CLI::ParseError& erreur) {
        signale(erreur.what());
        return usage_incorrect;
    }

    session s;
    if (const statut pret = prepare(o, s); pret != reussi) return pret;
    csv sortie;
    if (!sortie.ouvre(o.sortie)) {
        signale(o.sortie + " : impossible d'écrire ce fichier");
        return entree_illisible;
    }
    statut fin = reussi;
    for (const commande& c : commandes)
        if (app.got_subcommand(c.nom)) fin = c.execute(o, s, sortie);
    if (!sortie.ferme() && fin == reussi) {
        signale((o.sortie.empty() ? "sortie standard" : o.sortie) + " : écriture interrompue");
        return entree_illisible;
    }
    return fin;
}
