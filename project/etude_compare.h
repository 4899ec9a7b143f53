/// What differs between two études, in words: labels of undo steps, settings that differ from the defaults or
/// from those of a kept run.
#pragma once

#include <string>
#include <vector>

#include "project/etude_champs.h"

struct difference {
    rubrique dans = rubrique::energie;
    std::string nom;          ///< "energie.bat_c"; "modes", "notes" for what is no single number
    std::string sujet;        ///< "Batterie"
    std::string titre;        ///< "capacité nominale"; empty where the subject says all
    std::string avant, apres; ///< "10", "15"; empty where the values are no short texts
    std::string unite;
};

/// The settings that differ, in the order of the file; what follows from others is left out.
std::vector<difference> differences(const etude& avant, const etude& apres);

/// "Batterie : capacité nominale 10 → 15 Ah".
std::string libelle(const difference& d);
/// One line for all that an edit has changed: "Cellules : type de cellule AsGa → Silicium" for a choice with
/// its repairs, "Thermique : 8 réglages".
std::string libelle_etape(const etude& avant, const etude& apres);

/// The value as people read it: "10", "oui", "Lithium-Ion".
std::string texte_valeur(const etude& e, const element_etude& x);

/// The same settings, to the last bit, in one section or in all.
bool meme_section(const etude& a, const etude& b, rubrique r);
bool meme_etude(const etude& a, const etude& b);

/// Copies the settings of one section.
void copie_section(const etude& de, etude& vers, rubrique r);
