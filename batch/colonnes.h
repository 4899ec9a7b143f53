/// Named columns of a command: each takes its value from the command's state.
#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "batch/options.h"

template <class Etat>
struct colonne {
    std::string nom;
    double (*valeur)(const Etat&, int indice);
    int indice = 0;
    bool entier = false; ///< flags and whole seconds
};

/// The columns asked for by name, in their order; `defaut` (the first so many of the table) when none is
/// asked for, and the whole table for "toutes". False, with a line on standard error, for an unknown name.
template <class Etat>
bool choisit_colonnes(const std::vector<colonne<Etat>>& table, std::size_t defaut,
                      const std::vector<std::string>& demande, std::vector<colonne<Etat>>& choix) {
    if (demande.empty()) {
        choix.assign(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(defaut));
        return true;
    }
    if (demande.size() == 1 && demande[0] == "toutes") {
        choix = table;
        return true;
    }
    for (const std::string& nom : demande) {
        bool trouve = false;
        for (const auto& c : table) {
            if (c.nom != nom) continue;
            choix.push_back(c);
            trouve = true;
            break;
        }
        if (!trouve) {
            std::string connues;
            for (const auto& c : table) connues += (connues.empty() ? "" : ", ") + c.nom;
            signale("colonne inconnue : « " + nom + " » ; il y a " + connues);
            return false;
        }
    }
    return true;
}

template <class Etat, class Csv>
void ecrit_entete(const std::vector<colonne<Etat>>& choix, Csv& sortie) {
    std::vector<std::string> noms;
    for (const auto& c : choix) noms.push_back(c.nom);
    sortie.entete(noms);
}

template <class Etat, class Csv>
void ecrit_ligne(const std::vector<colonne<Etat>>& choix, const Etat& etat, Csv& sortie) {
    for (const auto& c : choix) {
        const double x = c.valeur(etat, c.indice);
        c.entier ? sortie.valeur(static_cast<long>(x)) : sortie.valeur(x);
    }
    sortie.fin_de_ligne();
}
