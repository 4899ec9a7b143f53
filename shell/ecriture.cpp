#include "shell/ecriture.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::string raison_systeme(int numero) {
    switch (numero) {
    case ENOENT: return "fichier ou dossier introuvable";
    case EACCES:
    case EPERM: return "accès refusé";
    case EROFS: return "le disque est en lecture seule";
    case EISDIR: return "c'est un dossier";
    case ENOTDIR: return "le chemin passe par un fichier qui n'est pas un dossier";
    case ENOSPC: return "le disque est plein";
    case EDQUOT: return "le quota du disque est atteint";
    case EFBIG: return "fichier trop grand";
    case EPIPE: return "le programme qui lit s'est arrêté";
    case EIO: return "erreur d'entrée-sortie";
    case ENAMETOOLONG: return "nom trop long";
    case ELOOP: return "trop de liens";
    case EBUSY:
    case ETXTBSY: return "fichier en cours d'utilisation";
    case EMFILE:
    case ENFILE: return "trop de fichiers ouverts";
    default: return std::strerror(numero);
    }
}

namespace {

/// The file that a path stands for, links followed even where the last one leads nowhere.
fs::path sans_liens(fs::path p) {
    std::error_code erreur;
    for (int i = 0; i < 40 && fs::is_symlink(p, erreur); ++i)
        p = p.parent_path() / fs::read_symlink(p, erreur);
    return p;
}

int ouvre_nouveau(const std::string& chemin, bool unique) {
    return open(chemin.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | (unique ? O_EXCL : O_TRUNC), 0666);
}

void sur_disque_dossier(const fs::path& fichier) {
    const fs::path dossier = fichier.has_parent_path() ? fichier.parent_path() : fs::path(".");
    const int fd = open(dossier.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    fsync(fd);
    close(fd);
}

} // namespace

bool ecriture_sure::ouvre(const std::string& chemin, const std::string& suffixe) {
    abandonne();
    raison_.clear();
    reste_ = !suffixe.empty();
    struct stat ancien {};
    const bool existe = stat(chemin.c_str(), &ancien) == 0;
    if (existe && S_ISDIR(ancien.st_mode)) return echec(EISDIR);
    destination_ = chemin;
    if (existe && !S_ISREG(ancien.st_mode)) {
        fd_ = open(chemin.c_str(), O_WRONLY | O_CLOEXEC);
        return fd_ >= 0 || echec(errno);
    }
    // No write bit at all counts for the superuser too.
    if (existe && (ancien.st_mode & 0222) == 0) return echec(EACCES);
    if (existe && access(chemin.c_str(), W_OK) != 0) return echec(errno);
    destination_ = sans_liens(chemin).string();
    if (suffixe.empty()) {
        const std::string base = destination_ + ".partiel-" + std::to_string(getpid());
        provisoire_ = base;
        fd_ = ouvre_nouveau(provisoire_, true);
        for (int i = 1; fd_ < 0 && errno == EEXIST && i < 100; ++i) {
            provisoire_ = base + "-" + std::to_string(i);
            fd_ = ouvre_nouveau(provisoire_, true);
        }
    } else {
        provisoire_ = destination_ + suffixe;
        fd_ = ouvre_nouveau(provisoire_, false);
    }
    if (fd_ < 0) {
        const int numero = errno;
        provisoire_.clear();
        return echec(numero);
    }
    if (existe) {
        if (fchown(fd_, ancien.st_uid, ancien.st_gid) != 0) {
        } // another owner's file becomes ours
        fchmod(fd_, ancien.st_mode & 07777);
    }
    return true;
}

bool ecriture_sure::ecrit(std::string_view octets) {
    while (!octets.empty()) {
        const ssize_t n = write(fd_, octets.data(), octets.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return echec(errno);
        octets.remove_prefix(static_cast<std::size_t>(n));
    }
    return fd_ >= 0;
}

bool ecriture_sure::ferme_sur_disque() {
    if (!provisoire_.empty() && fsync(fd_) != 0) return echec(errno);
    return ferme();
}

bool ecriture_sure::pose() {
    if (fd_ >= 0 && !ferme()) return false;
    if (provisoire_.empty()) return true;
    if (std::rename(provisoire_.c_str(), destination_.c_str()) != 0) {
        const int numero = errno;
        if (reste_) provisoire_.clear();
        return echec(numero);
    }
    provisoire_.clear();
    sur_disque_dossier(destination_);
    return true;
}

void ecriture_sure::abandonne() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
    if (!provisoire_.empty()) unlink(provisoire_.c_str());
    provisoire_.clear();
}

bool ecriture_sure::ferme() {
    const int fd = fd_;
    fd_ = -1;
    return close(fd) == 0 || echec(errno);
}

bool ecriture_sure::echec(int numero) {
    raison_ = raison_systeme(numero);
    abandonne();
    return false;
}

bool remplace_fichier(const std::string& chemin, std::string_view contenu, std::string& raison) {
    ecriture_sure f;
    if (f.ouvre(chemin) && f.ecrit(contenu) && f.ferme_sur_disque() && f.pose()) return true;
    raison = f.raison();
    return false;
}
