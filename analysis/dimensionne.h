/// Sizing: the smallest value of a field for which the power budget reaches a goal, by bisection.
#pragma once

#include "analysis/balayage.h"

/// "MEASURE>=X", "<=", ">", "<", or "tient" alone.
struct but_bilan {
    mesure quoi;
    enum { au_moins, au_plus, plus_que, moins_que, vrai } sens = vrai;
    double seuil = 0;
    bool atteint(double x) const; ///< false for what is not a number
};
bool lit_but(const std::string& texte, but_bilan& but, std::string& raison);

struct essai_dimension {
    double valeur = 0; ///< of the field, in the unit that is shown
    double mesure = 0; ///< of the goal; not a number where the run faulted
    bool atteint = false;
};

struct dimensionnement {
    std::vector<essai_dimension> essais;    ///< both ends first
    std::optional<essai_dimension> reponse; ///< none where neither end reaches the goal
    bool aux_deux_bouts = false;            ///< both ends reach it: the answer is the lower one
};

/// Trials between `de` and `a` (de < a), until the answer is known to a millionth of their distance, or to
/// the unit for whole numbers. `essai` gets each trial as it is made.
dimensionnement dimensionne(const etude& base, const element_etude& champ, double de, double a, bool entier,
                            const but_bilan& but, const reglages_bilan& r,
                            const std::function<void(const essai_dimension&)>& essai = {});
