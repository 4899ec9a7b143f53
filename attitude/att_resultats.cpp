#include "attitude/att_resultats.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "shell/ecriture.h"
#include "shell/lecture.h"
#include "shell/nombre15.h"

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

namespace {

constexpr int tenu = -2;

/// Opens a file, made when missing, and locks it; `tenu` while another holder has it, -1 when it cannot be
/// written.
int verrouille(const std::string& chemin) {
    const int fd = open(chemin.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    // A disk without locks gives the file all the same.
    if (fd < 0 || flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return fd;
    close(fd);
    return tenu;
}

/// Files of programs that were killed: nobody holds them.
void efface_abandonnes(const std::filesystem::path& dossier) {
    for (const std::string& chemin : fichiers_du_dossier(dossier.string(), ".tmp")) {
        if (!std::filesystem::path(chemin).filename().string().starts_with("temp-")) continue;
        const int fd = verrouille(chemin);
        if (fd < 0) continue;
        unlink(chemin.c_str());
        close(fd);
    }
}

} // namespace

place_resultats::~place_resultats() { rend(); }

void place_resultats::rend() {
    if (a_effacer_) unlink(chemin_.c_str());
    if (verrou_ >= 0) close(verrou_);
    verrou_ = -1;
    a_effacer_ = false;
}

const std::string& place_resultats::prend(const std::string& dossier_depart) {
    if (verrou_ >= 0 && dossier_ == dossier_depart) return chemin_;
    rend();
    dossier_ = dossier_depart;
    chemin_ = chemin_resultats(dossier_depart);
    const std::filesystem::path dossier = std::filesystem::path(chemin_).parent_path();
    std::error_code erreur;
    std::filesystem::create_directories(dossier, erreur);
    efface_abandonnes(dossier);
    verrou_ = verrouille(chemin_);
    for (int i = 0; verrou_ == tenu; ++i) {
        const std::string nom = "temp-" + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp";
        chemin_ = (dossier / nom).string();
        verrou_ = verrouille(chemin_);
        a_effacer_ = verrou_ >= 0;
    }
    return chemin_;
}

bool ecrivain_resultats::ouvre(const std::string& chemin, double j_debut, double j_fin, double pas_s,
                               std::string& raison) {
    ferme();
    echec_ = false;
    position_ = nombre_ = 0;
    pages_.clear();
    std::error_code erreur;
    std::filesystem::create_directories(std::filesystem::path(chemin).parent_path(), erreur);
    fichier_ = std::fopen(chemin.c_str(), "wb");
    if (!fichier_) {
        raison = raison_systeme(errno);
        return false;
    }
    std::setvbuf(fichier_, nullptr, _IOFBF, 1 << 18);
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
    std::array<char, nb_colonnes_resultats*(taille_15 + 1) + 2> ligne;
    char* p = ligne.data();
    for (const double x : e) {
        p = ecrit_15(p, x);
        *p++ = ',';
    }
    p[-1] = '\r'; // in the place of the last comma
    *p++ = '\n';
    const auto longueur = static_cast<size_t>(p - ligne.data());
    if (nombre_++ % lignes_par_page == 0) pages_.push_back(position_);
    position_ += static_cast<int64_t>(longueur);
    if (fichier_ && std::fwrite(ligne.data(), 1, longueur, fichier_) != longueur) echec_ = true;
}

bool ecrivain_resultats::ferme() {
    if (fichier_ && std::fclose(fichier_) != 0) echec_ = true;
    fichier_ = nullptr;
    return !echec_;
}

void ecrivain_resultats::texte(const char* t) {
    position_ += static_cast<int64_t>(std::strlen(t));
    if (fichier_ && std::fputs(t, fichier_) < 0) echec_ = true;
}

void ecrivain_resultats::nombre(double x) {
    char tampon[taille_15 + 1];
    *ecrit_15(tampon, x) = 0;
    texte(tampon);
}

ligne_page ligne_de_page(const enregistrement_att& e) {
    return {e[0],  e[1],  e[2],  e[3], // date, body rates
            e[10], e[11], e[12],       // rates of roll, pitch, yaw
            e[19], e[20], e[21],       // wheels
            e[7],  e[8],  e[9]};       // roll, pitch, yaw
}
