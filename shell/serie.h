/// A curve of a run: values against dates that rise. It can be drawn in as many columns of pixels as there
/// are, whatever its length, and tells what lies between two dates.
///
/// A value that is not finite is missing: the curve is interrupted there. An angle that comes back to its
/// start is not joined across the jump.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

/// A piece of a curve within a column of pixels.
struct morceau_serie {
    int colonne;
    double premier, dernier, min, max;
    bool joint; ///< it goes on from the piece before
};

/// What a curve does between two dates; not a number where it has no value there.
struct lecture_serie {
    double debut, fin; ///< values of the steps at the two dates
    double min, max, moyenne;
    double integrale; ///< [unit x hour] each step holding until the next, as in the power budget
};

class serie {
public:
    using dates_serie = std::shared_ptr<const std::vector<double>>;

    serie() = default;
    /// `tour` is what a whole turn of an angle is in its unit; 0: no angle. Dates may be more than values.
    serie(dates_serie dates, std::vector<double> valeurs, double tour = 0);

    std::size_t taille() const { return valeurs_.size(); }
    double date(std::size_t i) const { return (*dates_)[i]; }
    double valeur(std::size_t i) const { return valeurs_[i]; }
    const dates_serie& dates() const { return dates_; }
    const std::vector<double>& valeurs() const { return valeurs_; }
    double tour() const { return tour_; }
    /// Smallest and largest value; min > max without any.
    double min() const { return min_; }
    double max() const { return max_; }

    /// The first step at the date or after it.
    std::size_t depuis(double date) const;
    /// The step nearest to a date, which must lie within the run to half a step; `taille()` for none.
    std::size_t proche(double date) const;
    /// Value of the nearest step; not a number outside of the run.
    double en(double date) const;
    /// Value between two steps, in proportion; that of the step on its date to half a millisecond.
    double entre(double date) const;
    /// The step does not follow from the one before it: first, missing, or across the jump of an angle.
    bool rompu(std::size_t i) const;

    lecture_serie lit(double debut, double fin) const;
    /// Replaces `m` by the pieces of the columns that share [debut, fin] evenly.
    void reduit(double debut, double fin, int colonnes, std::vector<morceau_serie>& m) const;

    /// This curve less another, at its own dates; an angle by the shorter way.
    serie ecart(const serie& autre) const;

private:
    static constexpr std::size_t bloc = 32;
    struct resume {
        double min, max;
        bool rompu;
    };
    /// The first step at the date or after it, which is at or after `i` and likely some `pas` away.
    std::size_t depuis(double date, std::size_t i, std::size_t pas) const;
    /// A step of [i, fin) does not follow from the one before it.
    bool rompu_entre(std::size_t i, std::size_t fin) const;
    void etend(std::size_t i, std::size_t fin, morceau_serie& m) const;

    dates_serie dates_ = std::make_shared<const std::vector<double>>();
    std::vector<double> valeurs_;
    std::vector<resume> blocs_;
    double tour_ = 0, min_ = 1, max_ = 0;
};
