#include "shell/etude_recuperation.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "project/etude_fichier.h"
#include "project/json_texte.h"
#include "shell/ecriture.h"
#include "shell/lecture.h"

namespace fs = std::filesystem;

namespace {

/// Key of the copy that tells of the étude's own file.
constexpr const char* cle = "recuperation";

std::string nom_verrou(const std::string& copie) { return copie + ".verrou"; }

/// Takes the lock of a copy; -1 when another program holds it.
int prend_verrou(const std::string& copie) {
    const int f = open(nom_verrou(copie).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (f >= 0 && flock(f, LOCK_EX | LOCK_NB) == 0) return f;
    if (f >= 0) close(f);
    return -1;
}

bool lit_copie(const fs::path& chemin, etude_recuperation::trouvee& t) {
    std::string texte, raison;
    json j;
    if (!lit_fichier(chemin, json_taille_max, texte, raison) || !lit_json(texte, j, raison) || !j.is_object())
        return false;
    if (const auto i = j.find(cle); i != j.end() && i->is_string()) t.chemin_etude = i->get<std::string>();
    j.erase(cle);
    return lit_texte_etude(ecrit_json(j), t.e, raison, lecture::toute_valeur);
}

} // namespace

etude_recuperation::etude_recuperation(std::string dossier) : dossier_(std::move(dossier)) {}

etude_recuperation::~etude_recuperation() {
    if (verrou_ >= 0) close(verrou_);
}

bool etude_recuperation::verrouille() {
    if (verrou_ >= 0) return true;
    std::error_code erreur;
    fs::create_directories(dossier_, erreur);
    for (int n = 0; n < 100; ++n) {
        copie_ = dossier_ + "/etude-" + std::to_string(getpid()) + "-" + std::to_string(n) + ".kestrel";
        if (fs::exists(copie_, erreur)) continue; // of a program of the same number that is gone
        verrou_ = prend_verrou(copie_);
        if (verrou_ >= 0) return true;
    }
    return false;
}

bool etude_recuperation::ecrit(const etude& e, const std::string& chemin_etude) {
    const std::scoped_lock un_seul(un_seul_);
    if (!verrouille()) return false;
    json j;
    std::string raison;
    if (!lit_json(texte_etude(e), j, raison)) return false;
    j[cle] = chemin_etude;
    return remplace_fichier(copie_, ecrit_json(j), raison);
}

void etude_recuperation::efface() {
    const std::scoped_lock un_seul(un_seul_);
    if (verrou_ < 0) return;
    std::remove(copie_.c_str());
    std::remove(nom_verrou(copie_).c_str());
    close(verrou_);
    verrou_ = -1;
}

std::vector<etude_recuperation::trouvee> etude_recuperation::trouve(const std::string& dossier) {
    std::vector<trouvee> liste;
    for (const std::string& copie : fichiers_du_dossier(dossier, ".kestrel")) {
        const int verrou = prend_verrou(copie);
        if (verrou < 0) continue;
        close(verrou);
        std::error_code erreur;
        const auto ecrite = fs::last_write_time(copie, erreur);
        if (erreur) continue;
        const std::chrono::duration<double> age = fs::file_time_type::clock::now() - ecrite;
        trouvee t{copie, {}, {}, age.count()};
        if (lit_copie(copie, t)) liste.push_back(std::move(t));
    }
    std::sort(liste.begin(), liste.end(), [](const trouvee& a, const trouvee& b) { return a.age < b.age; });
    return liste;
}

void etude_recuperation::jette(const std::string& copie) {
    std::remove(copie.c_str());
    std::remove(nom_verrou(copie).c_str());
}
