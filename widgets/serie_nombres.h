/// A column of results: numbers kept as they are shown, packed.
///
/// A number is rounded to the text that shows it when it comes in, so that table, graph, scale and files
/// agree on it. Blocks of rows are held as whole multiples of the last decimal, in as few bytes as their
/// range needs: a year of steps of two minutes takes some 2 bytes a number.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// The texts of a column: so many decimals, or a picture of `format_image` in their place.
struct ecriture_nombre {
    int decimales = 2; ///< 0 to 9
    const char* image = nullptr;

    /// The number that the text of x shows.
    double arrondi(double x) const;
    std::string texte(double x) const;
};

class serie_nombres {
public:
    serie_nombres() = default;
    explicit serie_nombres(ecriture_nombre e) : ecriture_(e) {}

    /// Makes room for one more number; it may fail for want of memory, `ajoute` after it does not.
    void prevoit();
    /// A number as `arrondi` gives it.
    void ajoute(double arrondi) noexcept { ouvert_.push_back(arrondi); }
    void vide();

    const ecriture_nombre& ecriture() const { return ecriture_; }
    std::size_t taille() const { return blocs_.size() * par_bloc + ouvert_.size(); }
    double operator[](std::size_t i) const;
    /// Least and greatest of the rows from `debut` to before `fin`, at least one.
    std::pair<double, double> extremes(std::size_t debut, std::size_t fin) const;

private:
    static constexpr std::size_t par_bloc = 1024;
    /// `largeur` bytes a number: its distance to `base` in units of the last decimal; 8: the number itself.
    struct bloc {
        double base = 0;
        std::size_t largeur = 0;
        std::unique_ptr<unsigned char[]> octets;
    };
    bloc ferme() const;
    double dans_bloc(const bloc& b, std::size_t i) const;

    ecriture_nombre ecriture_;
    std::vector<bloc> blocs_;
    std::vector<double> ouvert_; ///< the last rows, fewer than a block
};
