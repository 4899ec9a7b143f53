/// The budget in words, in French.
#pragma once

#include <string>
#include <vector>

#include "analysis/bilan.h"

/// "Le satellite tient : marge 23 %, profondeur de décharge 18 % (limite 25 %)."
std::string phrase_bilan(const bilan& b, const criteres_valeurs& c);

/// One criterion that is not kept: "profondeur de décharge 45 % (limite 25 %)".
std::string texte_raison(const raison_bilan& r);

/// A criterion beside what the budget has found.
struct critere_juge {
    const char* texte; ///< "Profondeur de décharge"
    const char* unite; ///< with its space
    int decimales;
    double valeur, limite; ///< no value where nothing is asked for
    bool au_plus;          ///< the limit is a largest value
    bool tenu;
};
/// All of them, those that no entry changes first; none without a whole turn.
std::vector<critere_juge> juge_criteres(const bilan& b, const criteres_valeurs& c);

/// What would mend it, to first order: "Environ 8 chaînes de cellules en parallèle au lieu de 6 …".
std::vector<std::string> conseils(const bilan& b, const etude& e);

/// What makes the verdict itself doubtful: a step too long for the orbit, where panels follow the Sun and
/// temperatures follow the flux a step late. Empty where it is short enough.
std::string avis_pas(const etude& e);

/// A number with a decimal comma, as sentences have it.
std::string nombre_fr(double x, int decimales);
