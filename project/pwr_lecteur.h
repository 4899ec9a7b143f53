/// The line reader of the `.pwr` file: tokens, comments, conversion to the type of a field.
#pragma once

#include <string>
#include <string_view>

#include "power/power_champs.h"

class pwr_lecteur {
public:
    /// The text of a whole file; it must outlive the reader.
    explicit pwr_lecteur(std::string_view texte) : texte_(texte) {}

    /// Reads one token for a field of a type into `x`. A token that starts with "!" consumes its whole line
    /// and stores nothing; so does any token for a comment line of the format. `stocke` tells whether x was
    /// written. False on a failure: `ligne` and `raison` tell it.
    bool lecture_ligne(type_champ type, double& x, bool& stocke);

    /// Reads one whole token, which no comment may stand for, into x.
    bool lecture_date(double& x);

    /// Line of the last token, counted from 1.
    int ligne() const { return ligne_; }
    /// Why the last reading failed.
    const std::string& raison() const { return raison_; }

private:
    /// Leading blanks skipped, up to a comma or the end of the line; a token that starts with a double quote
    /// runs to the closing one. False at the end of the file.
    bool jeton(std::string_view& resultat);
    void fin_de_ligne();

    std::string_view texte_;
    std::string raison_;
    std::size_t place_ = 0;
    int ligne_ = 1;
    bool ligne_finie_ = false; ///< the last token ended its line
};
