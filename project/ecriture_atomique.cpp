#include "project/ecriture_atomique.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A descriptor that closes itself.
struct descripteur {
    int n = -1;
    explicit descripteur(int n) : n(n) {}
    descripteur(const descripteur&) = delete;
    descripteur& operator=(const descripteur&) = delete;
    ~descripteur() {
        if (n >= 0) close(n);
    }
    /// Close, with its failure: some systems tell only here that the disk is full.
    bool ferme() {
        const int d = n;
        n = -1;
        return close(d) == 0;
    }
};

bool ecrit_tout(int f, std::string_view t) {
    while (!t.empty()) {
        const ssize_t n = write(f, t.data(), t.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return false;
        t.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

/// The permissions of the file to replace, or those of a new file.
mode_t droits(const fs::path& but) {
    struct stat etat {};
    if (stat(but.c_str(), &etat) == 0) return etat.st_mode & 07777;
    const mode_t masque = umask(0);
    umask(masque);
    return 0666 & ~masque;
}

} // namespace

bool ecrit_atomique(const std::string& chemin, std::string_view texte, std::string& raison) {
    const auto echec = [&raison](int erreur) {
        raison = std::strerror(erreur);
        return false;
    };
    std::error_code erreur;
    const bool existe = fs::exists(chemin, erreur);
    const fs::path but = existe ? fs::canonical(chemin, erreur) : fs::path(chemin);
    if (existe && fs::is_directory(but, erreur)) return echec(EISDIR);
    if (existe && access(but.c_str(), W_OK) != 0) return echec(errno);
    const fs::path dossier = but.has_parent_path() ? but.parent_path() : fs::path(".");

    std::string nom = (dossier / ("." + but.filename().string() + ".XXXXXX")).string();
    const mode_t mode = droits(but);
    descripteur f(mkstemp(nom.data()));
    if (f.n < 0) return echec(errno);
    if (ecrit_tout(f.n, texte) && fchmod(f.n, mode) == 0 && fsync(f.n) == 0 && f.ferme() &&
        std::rename(nom.c_str(), but.c_str()) == 0) {
        // The renaming itself reaches the disk with the folder; a folder that cannot be flushed is no
        // failure.
        const descripteur d(open(dossier.c_str(), O_RDONLY | O_DIRECTORY));
        if (d.n >= 0) fsync(d.n);
        return true;
    }
    const int cause = errno;
    unlink(nom.c_str());
    return echec(cause);
}
