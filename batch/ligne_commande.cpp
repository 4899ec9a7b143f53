/// The command line: each command with the options that concern it, and every complaint in French.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "batch/commandes.h"

namespace {

const char* titre(groupe g) {
    switch (g) {
    case g_etude:
    case g_orbite:
    case g_energie:
    case g_attitude: return "Entrées ";
    case g_periode: return "Période ";
    case g_pointage: return "Pointage ";
    case g_modele: return "Modèle ";
    case g_note:
    case g_stations:
    case g_batterie: return "Étude ";
    case g_sortie:
    case g_colonnes:
    case g_ecriture: return "Sortie ";
    default: return "Options ";
    }
}

/// Numbers must be finite: an endless duration, or a date that is none, would never come to an end.
std::string nombre_fini(const std::string& texte) {
    double x = 0;
    return CLI::detail::lexical_cast(texte, x) && std::isfinite(x) ? "" : "valeur non valable : " + texte;
}

std::string non_vide(const std::string& texte) { return texte.empty() ? "valeur vide" : ""; }

void declare(CLI::App& app, const option_batch& x, options& o) {
    const auto ajoute = [&](auto membre) -> CLI::Option* {
        using valeur = std::remove_reference_t<decltype(o.*membre)>;
        if constexpr (std::is_same_v<valeur, bool>)
            return app.add_flag(x.nom, o.*membre, x.aide)->disable_flag_override();
        else {
            auto* option = app.add_option(x.nom, o.*membre, x.aide)->type_name(x.forme);
            if constexpr (std::is_same_v<valeur, std::optional<double>>)
                option->check(nombre_fini);
            else if constexpr (std::is_same_v<valeur, std::vector<std::string>>)
                x.genre == option_batch::repetable ? option->allow_extra_args(false) : option->delimiter(',');
            if constexpr (std::is_same_v<valeur, std::string>) option->check(non_vide);
            return option;
        }
    };
    std::visit(ajoute, x.cible)->group(titre(x.de));
}

/// The library words its help in English.
void parle_francais(CLI::App& app) {
    app.option_defaults()->group("Options "); // a colon follows
    app.set_help_flag("-h,--help", "affiche cette aide");
    app.get_formatter()->label("Usage", "Utilisation ");
    app.get_formatter()->label("OPTIONS", "options");
    app.get_formatter()->label("SUBCOMMAND", "COMMANDE");
}

/// Of words that the command does not know: an option of other commands is told as such.
std::string argument_inconnu(const std::string& mots, const std::string& commande) {
    std::istringstream liste(mots);
    for (std::string mot; liste >> mot;) {
        mot.erase(std::min(mot.find('='), mot.size()));
        for (const option_batch& x : options_batch()) {
            if (mot != x.nom) continue;
            std::string ailleurs;
            for (const auto& c : commandes())
                if (c.groupes & x.de) ailleurs += (ailleurs.empty() ? "" : ", ") + std::string(c.nom);
            return mot + " n'est pas une option de la commande " + commande + " (c'en est une de " +
                   ailleurs + ")";
        }
    }
    return "argument inconnu : " + mots +
           (commande.empty() ? "" : " (" + commande + " --help donne les options)");
}

std::string en_francais(const CLI::ParseError& erreur, const std::string& commande) {
    const std::string texte = erreur.what();
    const size_t p = texte.find(": ");
    const std::string debut = texte.substr(0, p), suite = p < texte.size() ? texte.substr(p + 2) : texte;
    if (dynamic_cast<const CLI::RequiredError*>(&erreur)) return "commande manquante (--help les donne)";
    if (dynamic_cast<const CLI::ExtrasError*>(&erreur)) return argument_inconnu(suite, commande);
    if (dynamic_cast<const CLI::ConversionError*>(&erreur)) return "valeur non valable : " + suite;
    if (texte.ends_with("flag override")) return "option sans valeur : " + texte.substr(0, texte.find(' '));
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&erreur))
        return (suite.starts_with("At Most") ? "option donnée plusieurs fois : " : "valeur manquante : ") +
               debut;
    return debut + " : " + suite;
}

} // namespace

const commande* lit_ligne_commande(int argc, char** argv, options& o, statut& fin) {
    CLI::App app("Simulations KESTREL sans fenêtre", "kestrel_batch");
    app.require_subcommand(1);
    parle_francais(app);
    app.set_version_flag("--version", "kestrel_batch " VERSION_KESTREL, "affiche la version");
    app.footer("État de sortie : 0 réussi, 1 entrée illisible ou sortie impossible, 2 usage incorrect,\n"
               "3 faute numérique (les lignes calculées avant sont écrites).");
    for (const commande& c : commandes()) {
        CLI::App* sous = app.add_subcommand(c.nom, c.aide)->group("Commandes ");
        sous->get_help_ptr()->group("Options ");
        for (const option_batch& x : options_batch())
            if ((c.groupes | g_etude) & x.de) declare(*sous, x, o);
    }
    const auto choisie = [&]() -> const commande* {
        for (const commande& c : commandes())
            if (app.got_subcommand(c.nom)) return &c;
        return nullptr;
    };
    fin = reussi;
    try {
        app.parse(argc, argv);
        o.commande = choisie()->nom;
        return choisie();
    } catch (const CLI::Success& demande) { // help, version
        app.exit(demande);
    } catch (const CLI::ParseError& erreur) {
        signale(en_francais(erreur, choisie() ? choisie()->nom : ""));
        fin = usage_incorrect;
    }
    return nullptr;
}
