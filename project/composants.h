/// Components with the source of their figures: cells, accumulators, coatings. The program brings some, the
/// user adds own ones; choosing one writes its figures into the étude.
///
/// A list is a JSON array of {"genre", "nom", "source", "note", "valeurs": {field of the étude: value as the
/// settings window shows it}}. A coating names "alpha0", "alpha_lim", "eps", "t99" of the surface that it is
/// put on.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "project/etude.h"

enum class genre_composant : uint8_t { cellule, batterie, revetement };

struct composant {
    genre_composant genre = genre_composant::cellule;
    std::string nom, source, note;
    std::vector<std::pair<std::string, double>> valeurs;
    bool a_soi = false; ///< of the user's own list
};

struct liste_composants {
    std::vector<composant> composants; ///< the program's, then the user's
    std::string defaut;                ///< what could not be read, in French; the rest is there
};

/// The list of a text.
liste_composants lit_composants(std::string_view texte);
/// The lists of a data folder: those of its "composants", then "mes_composants.json". Entries that are none
/// are left out and told.
liste_composants charge_composants(const std::string& dossier);
/// Adds one to the user's own list, in the place of one of the same kind and name; the file is replaced
/// whole.
bool garde_composant(const std::string& dossier, const composant& c, std::string& raison);
bool retire_composant(const std::string& dossier, const composant& c, std::string& raison);

/// Surfaces that carry a coating in the mounting in force, in the order of their elements.
std::vector<std::string> surfaces_a_revetir(const power_record& p);

/// Writes the component's figures; the surface counts for a coating. False with the reason, the étude
/// unchanged.
bool pose_composant(etude& e, const composant& c, int surface, std::string& raison);
/// The figures in force as a component without name.
composant composant_en_place(const etude& e, genre_composant g, int surface);
/// "Isc 0,52 A · Voc 2,7 V …": the figures that tell it from others.
std::string resume_composant(const composant& c);
