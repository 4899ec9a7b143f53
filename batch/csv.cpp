#include "batch/csv.h"

#include <cstring>

csv::~csv() { ferme(); }

bool csv::ouvre(const std::string& chemin) {
    sortie_ = chemin.empty() ? stdout : std::fopen(chemin.c_str(), "wb");
    return sortie_ != nullptr;
}

void csv::entete(const std::vector<std::string>& noms) {
    for (std::size_t i = 0; i < noms.size(); ++i) {
        if (i > 0) texte(",");
        texte(noms[i]);
    }
    texte("\n");
}

void csv::texte(std::string_view t) {
    if (reste() < t.size()) vide();
    std::memcpy(tampon_.data() + plein_, t.data(), t.size());
    plein_ += t.size();
}

void csv::mot(std::string_view t) {
    if (!debut_de_ligne_) texte(",");
    debut_de_ligne_ = false;
    if (t.find_first_of(",\"\r\n") == std::string_view::npos) return texte(t);
    texte("\"");
    for (std::size_t i = 0; i < t.size(); ++i) texte(t[i] == '"' ? "\"\"" : t.substr(i, 1));
    texte("\"");
}

void csv::fin_de_ligne() {
    texte("\n");
    debut_de_ligne_ = true;
}

void csv::vide() {
    if (sortie_ && std::fwrite(tampon_.data(), 1, plein_, sortie_) != plein_) echec_ = true;
    plein_ = 0;
}

bool csv::ferme() {
    if (!sortie_) return !echec_;
    vide();
    if (std::fflush(sortie_) != 0) echec_ = true;
    if (sortie_ != stdout && std::fclose(sortie_) != 0) echec_ = true;
    sortie_ = nullptr;
    return !echec_;
}
