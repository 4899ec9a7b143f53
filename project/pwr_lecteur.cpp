#include "project/pwr_lecteur.h"

#include <algorithm>

#include "project/pwr_nombres.h"
#include "shell/utilitaires.h"

void pwr_lecteur::fin_de_ligne() {
    place_ = std::min(texte_.find_first_of("\r\n", place_), texte_.size());
    if (place_ + 1 < texte_.size() && texte_[place_] == '\r' && texte_[place_ + 1] == '\n') ++place_;
    if (place_ < texte_.size()) ++place_;
    ligne_finie_ = true;
}

bool pwr_lecteur::jeton(std::string_view& resultat) {
    if (ligne_finie_) ++ligne_;
    ligne_finie_ = false;
    place_ = std::min(texte_.find_first_not_of(" \t", place_), texte_.size());
    if (place_ == texte_.size()) {
        raison_ = "fin de fichier inattendue";
        return false;
    }

    const bool guillemet = texte_[place_] == '"';
    const std::size_t debut = guillemet ? place_ + 1 : place_;
    const bool commentaire = texte_[debut < texte_.size() ? debut : place_] == '!';
    std::size_t fin = texte_.find_first_of(guillemet ? "\"\r\n" : commentaire ? "\r\n" : ",\r\n", debut);
    fin = std::min(fin, texte_.size());
    resultat = texte_.substr(debut, fin - debut);

    // Up to the separator: what stands behind a comma is the next token, unless the line is a comment.
    place_ = std::min(texte_.find_first_of(commentaire ? "\r\n" : ",\r\n", fin), texte_.size());
    if (place_ < texte_.size() && texte_[place_] == ',')
        ++place_;
    else
        fin_de_ligne();
    return true;
}

bool pwr_lecteur::lecture_ligne(type_champ type, double& x, bool& stocke) {
    std::string_view texte;
    stocke = false;
    if (!jeton(texte)) return false;
    if (type == type_champ::commentaire || (!texte.empty() && texte.front() == '!')) return true;
    stocke = lit_jeton(ligne_valeur(texte), type, x, raison_);
    return stocke;
}

bool pwr_lecteur::lecture_date(double& x) {
    std::string_view texte;
    return jeton(texte) && lit_jeton(texte, type_champ::f64, x, raison_);
}
