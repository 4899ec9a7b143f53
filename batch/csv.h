/// CSV output: rows of numbers in the shortest form that reads back to the same value, through a buffer of
/// its own.
#pragma once

#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

class csv {
public:
    csv() = default;
    csv(const csv&) = delete;
    csv& operator=(const csv&) = delete;
    ~csv();

    /// Opens a file, or standard output for an empty path; false when it cannot be written.
    bool ouvre(const std::string& chemin);
    void entete(const std::vector<std::string>& noms);

    /// A value of the row in hand.
    template <class T>
    void valeur(T x) {
        if (reste() < 40) vide();
        if (!debut_de_ligne_) tampon_[plein_++] = ',';
        debut_de_ligne_ = false;
        const auto r = std::to_chars(tampon_.data() + plein_, tampon_.data() + tampon_.size(), x);
        plein_ = static_cast<std::size_t>(r.ptr - tampon_.data());
    }
    /// A text of the row in hand, between quotes where it holds a comma, a quote or a line end.
    void mot(std::string_view t);
    void fin_de_ligne();
    /// Writes what is left; false when something could not be written.
    bool ferme();

private:
    std::size_t reste() const { return tampon_.size() - plein_; }
    void vide();
    void texte(std::string_view t);

    std::FILE* sortie_ = nullptr;
    std::vector<char> tampon_ = std::vector<char>(1 << 16);
    std::size_t plein_ = 0;
    bool debut_de_ligne_ = true;
    bool echec_ = false;
};
