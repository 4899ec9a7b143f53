/// The line reader of the `.pwr` file: tokens, comments, and the number of the line in hand.
#pragma once

#include <string>
#include <string_view>

class pwr_lecteur {
public:
    /// The text of a whole file; it must outlive the reader.
    explicit pwr_lecteur(std::string_view texte) : texte_(texte) {}

    /// Reads one token: leading blanks skipped, up to a comma or the end of the line; a token that starts
    /// with a double quote runs to the closing one. A token that starts with "!" consumes its whole line,
    /// commas included. False at the end of the file.
    bool jeton(std::string_view& resultat);

    /// Line of the last token, counted from 1.
    int ligne() const { return ligne_; }

private:
    void fin_de_ligne();

    std::string_view texte_;
    std::size_t place_ = 0;
    int ligne_ = 1;
    bool ligne_finie_ = false; ///< the last token ended its line
};
