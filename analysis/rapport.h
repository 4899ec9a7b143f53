/// The report of an étude: what it is, whether it holds, and how far the models can be believed for it.
///
/// The content is a list of blocks, made once; the writers (`rapport_html`, and the program's PDF) only lay
/// it out. Texts and numbers are French.
#pragma once

#include <cstdint>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

#include "analysis/bilan.h"
#include "project/etude.h"

struct bloc_titre {
    int niveau; ///< 1 that of the report, 2 a section
    std::string texte;
};
enum class ton_texte : uint8_t { normal, discret, alerte };
struct bloc_texte {
    std::string texte;
    ton_texte ton = ton_texte::normal;
};
enum class signe_rapport : uint8_t { tient, tient_pas, inconnu };
struct bloc_verdict {
    signe_rapport signe;
    std::string texte;
};
struct bloc_liste {
    std::vector<std::string> lignes;
    ton_texte ton = ton_texte::normal;
};
struct bloc_tableau {
    std::vector<std::string> entete; ///< empty: no head
    std::vector<std::vector<std::string>> lignes;
    std::vector<bool> nombre;   ///< of each column: numbers, put to the right
    std::string legende;        ///< over the table
    bool dense = false;         ///< many columns: in small letters
    std::vector<int> marques{}; ///< of each row: 1 kept, 0 not kept; empty without marks
};
struct bloc_figure {
    std::string svg;         ///< a whole element
    double largeur, hauteur; ///< [px]
    std::string legende;
};
using bloc_rapport =
    std::variant<bloc_titre, bloc_texte, bloc_verdict, bloc_liste, bloc_tableau, bloc_figure>;

struct rapport {
    std::string titre;
    std::vector<bloc_rapport> blocs;
    bilan resultat; ///< the budget that it tells
};

struct reglages_rapport {
    std::string titre = "Étude sans nom"; ///< name of the étude
    std::string date;                     ///< of the report, as it is to be written
    std::string version;                  ///< of the program
    int orbites = 0;                      ///< turns of the budget, as there
    std::string dossier_donnees;          ///< coasts, air, field; what is missing there is left out
    std::stop_token arret{};
};

rapport fait_rapport(const etude& e, const reglages_rapport& r);

/// One file that holds everything; well-formed XML, laid out for A4 when it is printed.
std::string rapport_html(const rapport& r);

/// The model's limits that matter for this étude, in whole sentences.
std::vector<std::string> limites_du_modele(const etude& e, const bilan& b);
