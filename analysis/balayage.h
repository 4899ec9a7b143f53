/// Sweeps: the power budget of every variant of an étude, the varied fields taking their values from lists,
/// ranges or random draws.
///
/// Variants are numbered from 0. Lists form a grid, the last varying fastest; draws vary together, `tirages`
/// of them at each point of the grid. A variant's row depends on the étude, the plan and its number alone:
/// the same bytes on one core, on many, or on many machines.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

#include "analysis/bilan.h"
#include "analysis/environnement_pas.h"
#include "project/etude_champs.h"

/// A field that varies.
struct variation {
    enum class genre { liste, uniforme, normale };
    std::string nom; ///< as it was written
    element_etude element;
    genre loi = genre::liste;
    std::vector<double> valeurs; ///< liste: in the unit that is shown
    double a = 0, b = 0;         ///< uniforme: the ends; normale: mean and standard deviation
};

/// From "NAME=a:b:step", "NAME=v1,v2", "NAME~U(a,b)" or "NAME~N(mean,sd)". Each value of a list, and both
/// ends of a uniform law, must be within the field's limits. False with the reason, which names field and
/// limits.
bool lit_variation(const std::string& texte, const etude& base, variation& v, std::string& raison);

/// What a row tells of a variant: a column of the budget, or whether the satellite holds.
struct mesure {
    std::string nom;
    const colonne_bilan* colonne = nullptr; ///< null for "tient"
    /// Of the last turn; not a number without one.
    double de(const bilan& b) const;
};
/// False for an unknown name, with the known ones as the reason.
bool lit_mesure(const std::string& nom, mesure& m, std::string& raison);
inline constexpr const char* mesures_par_defaut[] = {"marge", "dod", "soc_min", "t_bat_max", "tient"};

struct plan_balayage {
    std::vector<variation> variations;
    std::vector<mesure> mesures;
    long tirages = 1; ///< at each point of the grid; 1 without draws
    uint64_t graine = 0;
    reglages_bilan bilan;
};

struct ligne_balayage {
    long variante = 0;
    std::vector<double> valeurs; ///< of the varied fields, in the unit that is shown
    std::vector<double> mesures; ///< not a number where the variant faulted
    bool faute = false;
};

/// A sweep ready to run; its members may be called from several threads at once.
class balayage {
public:
    balayage(const etude& base, plan_balayage plan);

    long variantes() const { return variantes_; }
    const plan_balayage& plan() const { return plan_; }
    /// The values of a variant, and its étude; false when a draw falls outside the field's limits.
    std::vector<double> valeurs(long variante) const;
    bool etude_de(long variante, etude& e) const;
    ligne_balayage calcule(long variante, const std::stop_token& arret = {}) const;
    /// True when all variants share orbit, pointing and period: their environment is computed once.
    bool environnement_partage() const { return !environnement_.empty(); }

private:
    void partage_environnement();

    etude base_;
    plan_balayage plan_;
    long grille_ = 1, variantes_ = 1;
    std::vector<environnement_pas> environnement_;
};

/// The largest number of variants of a plan.
inline constexpr long variantes_max = 1'000'000'000'000;
/// Variants of a plan; -1 beyond the largest number.
long nombre_variantes(const plan_balayage& p);

/// Names of the columns of a row: variante, the fields, the measures, faute.
std::vector<std::string> colonnes_balayage(const plan_balayage& p);
/// A row as text, without its line end.
std::string texte_ligne(const plan_balayage& p, const ligne_balayage& l);

/// Runs the variants from `depuis` on over `coeurs` threads (0: all cores). `ligne` gets the rows one at a
/// time and in order; false ends the sweep. At most a few hundred rows wait for their turn.
void deroule_balayage(const balayage& b, long depuis, int coeurs,
                      const std::function<bool(ligne_balayage&&)>& ligne, const std::stop_token& arret = {});
