/// The output of a command: CSV rows of numbers in the shortest form that reads back to the same value, or
/// plain text, to standard output or to a file that takes its place once the run is done.
#pragma once

#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "shell/ecriture.h"
#include "shell/nombre_court.h"

/// The output cannot be written: the run ends at once. Thrown by every member of `csv` that writes.
struct echec_ecriture : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class csv {
public:
    /// Standard output for an empty path. Nothing is opened before the first text. With a suffix the file
    /// beside bears it, so that a run that was killed leaves its rows where they can be found.
    explicit csv(std::string chemin = {}, std::string suffixe = {})
        : chemin_(std::move(chemin)), suffixe_(std::move(suffixe)) {}
    csv(const csv&) = delete;
    csv& operator=(const csv&) = delete;

    void entete(const std::vector<std::string>& noms);
    /// A value of the row in hand.
    void valeur(double x);
    void valeur(long x) {
        separe();
        avance(std::to_chars(tampon_.data() + plein_, tampon_.data() + tampon_.size(), x).ptr);
    }
    void valeur(int x) { valeur(static_cast<long>(x)); }
    /// A text of the row in hand, as a word of CSV.
    void mot(std::string_view t);
    void fin_de_ligne();
    /// Text as it stands; the first one opens the output.
    void texte(std::string_view t);
    /// Hands on what has been written so far.
    void pousse() { vide(); }
    /// Writes what is left and puts the file in its place; without it, the file stays as it was.
    void termine();

private:
    /// The last number of a column: many stay the same from row to row, and their text too.
    struct retenu {
        double valeur = std::numeric_limits<double>::quiet_NaN();
        std::size_t longueur = 0;
        std::array<char, place_nombre_court> texte{};
    };

    /// Room for a number, and the comma before it.
    void separe() {
        if (reste() < 40) vide();
        if (!debut_de_ligne_) tampon_[plein_++] = ',';
        debut_de_ligne_ = false;
    }
    void avance(const char* fin) { plein_ = static_cast<std::size_t>(fin - tampon_.data()); }
    std::size_t reste() const { return tampon_.size() - plein_; }
    void ouvre();
    void ecrit(std::string_view t);
    void vide();

    std::string chemin_, suffixe_;
    ecriture_sure fichier_;
    bool ouvert_ = false;
    std::vector<char> tampon_ = std::vector<char>(1 << 16);
    std::size_t plein_ = 0;
    bool debut_de_ligne_ = true;
    std::vector<retenu> retenus_;
    std::size_t rang_ = 0; ///< of the number in its row
};
