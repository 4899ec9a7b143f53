/// kestrel_batch: the models of the program without a window; CSV on standard output or to a file.
#include <CLI/CLI.hpp>

#include <cmath>

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
    {"passages", "passages du satellite au-dessus de stations", cmd_passages},
};

/// Numbers must be finite: an endless duration, or a date that is none, would never come to an end.
std::string nombre_fini(const std::string& texte) {
    double x = 0;
    return CLI::detail::lexical_cast(texte, x) && std::isfinite(x) ? "" : "valeur non valable : " + texte;
}

/// All commands share one set of options; each reads those that concern it.
void declare_options(CLI::App& app, options& o) {
    app.get_help_ptr()->group("Options ");
    app.add_option("--orb", o.orb, "orbite (.orb)");
    app.add_option("--tle", o.tle, "orbite en éléments à deux lignes");
    app.add_option("--station", o.stations, "passages : NOM,LATITUDE,LONGITUDE[,ALTITUDE_KM[,MASQUE]]")
        ->allow_extra_args(false);
    app.add_option("--pwr", o.pwr, "projet énergie (.pwr)");
    app.add_option("--att", o.att, "projet attitude (.att)");
    app.add_option("-o", o.sortie, "fichier de sortie (sinon la sortie standard)");
    app.add_option("--debut", o.debut, "début, en jours depuis 1950 ou \"AAAA-MM-JJ hh:mm:ss\"");
    app.add_option("--fin", o.fin, "fin, de même");
    app.add_flag("--eol", o.eol, "cellules en fin de vie");
    app.add_option("--colonnes", o.colonnes, "NOM,NOM… ou toutes")->delimiter(',');
    app.add_option("--ecriture", o.ecriture, "attitude : une ligne tous les N pas");
    const struct {
        const char* nom;
        std::optional<double>& valeur;
        const char* aide;
    } nombres[] = {
        {"--pas", o.pas, "pas, s"},
        {"--roulis", o.roulis, "pointage : roulis, degrés"},
        {"--tangage", o.tangage, "pointage : tangage, degrés"},
        {"--lacet", o.lacet, "pointage : lacet, degrés"},
        {"--spin", o.spin, "pointage : rotation en lacet, tours par minute"},
        {"--tecl", o.tecl, "batterie : durée d'éclipse, min"},
        {"--temp", o.temp, "batterie : température, °C"},
        {"--k", o.k, "batterie : coefficient de recharge"},
        {"--vmax", o.vmax, "batterie : tension maximale, V"},
        {"--ich", o.ich, "batterie : courant de charge, C"},
        {"--pde", o.pde, "batterie : puissance de décharge, V/h"},
        {"--ide", o.ide, "batterie : courant de décharge, C"},
    };
    for (const auto& n : nombres) app.add_option(n.nom, n.valeur, n.aide)->check(nombre_fini);
}

/// The library words its help and its complaints in English.
void parle_francais(CLI::App& app) {
    app.option_defaults()->group("Options "); // a colon follows
    app.set_help_flag("-h,--help", "affiche cette aide");
    const std::pair<const char*, const char*> mots[] = {{"Usage", "Utilisation "},
                                                        {"SUBCOMMAND", "COMMANDE"},
                                                        {"FLOAT", "NOMBRE"},
                                                        {"INT", "ENTIER"},
                                                        {"TEXT", "TEXTE"}};
    for (const auto& [anglais, francais] : mots) app.get_formatter()->label(anglais, francais);
}

std::string en_francais(const CLI::ParseError& erreur) {
    const std::string texte = erreur.what();
    const size_t p = texte.find(": ");
    const std::string debut = texte.substr(0, p), suite = p < texte.size() ? texte.substr(p + 2) : texte;
    if (dynamic_cast<const CLI::RequiredError*>(&erreur)) return "commande manquante (--help les donne)";
    if (dynamic_cast<const CLI::ExtrasError*>(&erreur)) return "argument inconnu : " + suite;
    if (dynamic_cast<const CLI::ConversionError*>(&erreur)) return "valeur non valable : " + suite;
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&erreur)) return "valeur manquante : " + debut;
    return debut + " : " + suite;
}

} // namespace

int main(int argc, char** argv) {
    options o;
    CLI::App app("Simulations KESTREL sans fenêtre", "kestrel_batch");
    app.require_subcommand(1);
    parle_francais(app);
    for (const commande& c : commandes)
        declare_options(*app.add_subcommand(c.nom, c.aide)->group("Commandes "), o);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& aide) {
        return app.exit(aide);
    } catch (const CLI::ParseError& erreur) {
        signale(en_francais(erreur));
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
