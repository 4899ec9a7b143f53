#include "batch/csv.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

#include "shell/mot_csv.h"

void csv::ouvre() {
    ouvert_ = true;
    if (!chemin_.empty() && !fichier_.ouvre(chemin_, suffixe_))
        throw echec_ecriture(chemin_ + " : impossible d'écrire ce fichier (" + fichier_.raison() + ")");
}

void csv::entete(const std::vector<std::string>& noms) {
    for (std::size_t i = 0; i < noms.size(); ++i) {
        if (i > 0) texte(",");
        texte(noms[i]);
    }
    texte("\n");
}

void csv::texte(std::string_view t) {
    if (!ouvert_) ouvre();
    if (reste() < t.size()) vide();
    if (t.size() > tampon_.size()) return ecrit(t);
    std::memcpy(tampon_.data() + plein_, t.data(), t.size());
    plein_ += t.size();
}

void csv::mot(std::string_view t) {
    if (!debut_de_ligne_) texte(",");
    debut_de_ligne_ = false;
    texte(mot_csv(t));
}

void csv::valeur(double x) {
    separe();
    if (rang_ == retenus_.size()) retenus_.emplace_back();
    retenu& r = retenus_[rang_++];
    char* place = tampon_.data() + plein_;
    if (x != r.valeur) {
        r.valeur = x;
        const char* fin = ecrit_nombre_court(r.texte.data(), x + 0.0); // no negative zero
        r.longueur = static_cast<std::size_t>(fin - r.texte.data());
    }
    std::memcpy(place, r.texte.data(), longueur_nombre_court); // what is over is written over
    plein_ += r.longueur;
}

void csv::fin_de_ligne() {
    texte("\n");
    debut_de_ligne_ = true;
    rang_ = 0;
}

void csv::ecrit(std::string_view t) {
    if (!chemin_.empty()) {
        if (fichier_.ecrit(t)) return;
        throw echec_ecriture(chemin_ + " : écriture interrompue (" + fichier_.raison() + ")");
    }
    while (!t.empty()) {
        const ssize_t n = write(STDOUT_FILENO, t.data(), t.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0)
            throw echec_ecriture("sortie standard : écriture interrompue (" + raison_systeme(errno) + ")");
        t.remove_prefix(static_cast<std::size_t>(n));
    }
}

void csv::vide() {
    ecrit({tampon_.data(), plein_});
    plein_ = 0;
}

void csv::termine() {
    if (!ouvert_) return;
    vide();
    if (!chemin_.empty() && !fichier_.pose())
        throw echec_ecriture(chemin_ + " : écriture interrompue (" + fichier_.raison() + ")");
}
