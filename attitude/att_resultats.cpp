#include "attitude/att_resultats.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <string_view>

const std::array<const char*, nb_colonnes_resultats> colonnes_resultats = {
    "j_courant",
    "omega(0) * (180 / pi)",
    "omega(1) * (180 / pi)",
    "omega(2) * (180 / pi)",
    "omega(3) * (180 / pi)",
    "omega(4) * (180 / pi)",
    "omega(5) * (180 / pi)",
    "yd(0) * (180 / pi)",
    "yd(2) * (180 / pi)",
    "yd(1) * (180 / pi)",
    "yd(3) * (30 / pi)",
    "yd(4) * (30 / pi)",
    "yd(5) * (30 / pi)",
    "yi(0) * (180 / pi)",
    "yi(1) * (180 / pi)",
    "yi(2) * (180 / pi)",
    "yi(3) * (30 / pi)",
    "yi(4) * (30 / pi)",
    "yi(5) * (30 / pi)",
    "om(0) * (180 / pi)",
    "om(1) * (180 / pi)",
    "om(2) * (180 / pi)",
    "ctot(0)",
    "ctot(1)",
    "ctot(2)",
};

enregistrement_att enregistrement_de(const attitude_record& a, double j, bool roues_actives) {
    constexpr double deg = 180.0 / pi, tr_min = 30.0 / pi;
    enregistrement_att e{};
    e[0] = j;
    for (int i = 0; i < 6; ++i) e[1 + i] = a.omega[i] * deg;
    e[7] = a.yd[0] * deg;
    e[8] = a.yd[2] * deg;
    e[9] = a.yd[1] * deg;
    for (int i = 0; i < 3; ++i) {
        e[10 + i] = a.yd[3 + i] * tr_min;
        e[13 + i] = a.yi[i] * deg;
        e[16 + i] = a.yi[3 + i] * tr_min;
        if (roues_actives) e[19 + i] = a.om[i] * deg;
        e[22 + i] = a.ctot[i];
    }
    return e;
}

std::string chemin_resultats(const std::string& dossier_depart) {
    return (std::filesystem::path(dossier_depart) / "temp" / "temp.tmp").string();
}

bool ecrivain_resultats::ouvre(const std::string& chemin, double j_debut, double j_fin, double pas_s,
                               std::string& raison) {
    ferme();
    echec_ = false;
    std::error_code erreur;
    std::filesystem::create_directories(std::filesystem::path(chemin).parent_path(), erreur);
    fichier_ = std::fopen(chemin.c_str(), "wb");
    if (!fichier_) {
        raison = std::strerror(errno);
        return false;
    }
    const auto tete = [this](const char* nom, double x) {
        texte(nom);
        texte(",");
        nombre(x);
        texte("\r\n");
    };
    tete("\"#BeginTime(JulianDays)\"", j_debut);
    tete("\"#EndTime(JulianDays)\"", j_fin);
    tete("\"#TimeStep(s)\"", pas_s);
    texte("\r\n");
    for (int i = 0; i < nb_colonnes_resultats; ++i) {
        texte(i == 0 ? "\"" : ",\"");
        texte(colonnes_resultats[i]);
        texte("\"");
    }
    texte("\r\n");
    return true;
}

void ecrivain_resultats::ecrit(const enregistrement_att& e) {
    for (int i = 0; i < nb_colonnes_resultats; ++i) {
        if (i > 0) texte(",");
        nombre(e[i]);
    }
    texte("\r\n");
}

bool ecrivain_resultats::ferme() {
    if (fichier_ && std::fclose(fichier_) != 0) echec_ = true;
    fichier_ = nullptr;
    return !echec_;
}

void ecrivain_resultats::texte(const char* t) {
    if (fichier_ && std::fputs(t, fichier_) < 0) echec_ = true;
}

void ecrivain_resultats::nombre(double x) {
    char tampon[40];
    if (x == 0) x = 0; // no sign
    const auto r = std::to_chars(tampon, tampon + sizeof tampon - 1, x, std::chars_format::general, 15);
    *r.ptr = 0;
    if (char* e = std::strchr(tampon, 'e')) *e = 'E';
    texte(tampon);
}

ligne_page ligne_de_page(const enregistrement_att& e) {
    return {e[0],  e[1],  e[2],  e[3], // date, body rates
            e[10], e[11], e[12],       // rates of roll, pitch, yaw
            e[19], e[20], e[21],       // wheels
            e[7],  e[8],  e[9]};       // roll, pitch, yaw
}

lecteur_resultats::~lecteur_resultats() {
    if (fichier_) std::fclose(fichier_);
}

bool lecteur_resultats::ouvre(const std::string& chemin, std::string& raison) {
    if (fichier_) std::fclose(fichier_);
    pages_.clear();
    endommage_ = false;
    fichier_ = std::fopen(chemin.c_str(), "rb");
    if (!fichier_) {
        raison = std::strerror(errno);
        return false;
    }
    std::string l;
    for (int i = 0; i < 5; ++i) {
        if (!ligne(l)) {
            raison = "l'en-tête est incomplet";
            return false;
        }
        const auto virgule = l.find(',');
        if (i < 3 &&
            (virgule == std::string::npos ||
             std::from_chars(l.data() + virgule + 1, l.data() + l.size(), tete_[i]).ec != std::errc{})) {
            raison = "ce n'est pas un fichier de résultats d'attitude";
            return false;
        }
    }
    pages_.push_back(std::ftell(fichier_));
    return true;
}

bool lecteur_resultats::ligne(std::string& l) {
    l.clear();
    char tampon[1024];
    while (std::fgets(tampon, sizeof tampon, fichier_)) {
        l += tampon;
        if (l.back() == '\n') break;
    }
    if (l.empty()) return false;
    while (!l.empty() && (l.back() == '\n' || l.back() == '\r')) l.pop_back();
    return true;
}

bool lecteur_resultats::suivant(enregistrement_att& e) {
    std::string l;
    if (!ligne(l)) return false;
    const char *p = l.data(), *fin = p + l.size();
    for (int i = 0; i < nb_colonnes_resultats; ++i) {
        const auto r = std::from_chars(p, fin, e[i]);
        const bool derniere = i == nb_colonnes_resultats - 1;
        if (r.ec != std::errc{} || (derniere ? r.ptr != fin : r.ptr == fin || *r.ptr != ',')) {
            endommage_ = true;
            return false;
        }
        p = r.ptr + 1;
    }
    return true;
}

std::vector<enregistrement_att> lecteur_resultats::page(int n) {
    std::vector<enregistrement_att> lignes;
    if (!fichier_ || pages_.empty() || n < 0) return lignes;
    int courante = std::min(n, static_cast<int>(pages_.size()) - 1);
    std::fseek(fichier_, pages_[courante], SEEK_SET);
    for (; courante <= n; ++courante) {
        lignes.clear();
        enregistrement_att e;
        while (lignes.size() < lignes_par_page && suivant(e)) lignes.push_back(e);
        if (lignes.size() < lignes_par_page) {
            if (courante < n) lignes.clear();
            break;
        }
        if (courante + 1 == static_cast<int>(pages_.size())) pages_.push_back(std::ftell(fichier_));
    }
    return lignes;
}
