#include "project/enregistrement.h"

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

static_assert(std::endian::native == std::endian::little, "the binary files are little-endian");

namespace {

struct ferme {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using fichier = std::unique_ptr<std::FILE, ferme>;

bool echec(std::string& raison) {
    raison = std::strerror(errno);
    return false;
}

} // namespace

bool lit_enregistrement(const std::string& chemin, char* tampon, std::size_t taille, std::string& raison) {
    const fichier f(std::fopen(chemin.c_str(), "rb"));
    if (!f) return echec(raison);
    std::fread(tampon, 1, taille, f.get());
    return std::ferror(f.get()) ? echec(raison) : true; // a directory opens, and fails here
}

bool ecrit_enregistrement(const std::string& chemin, const char* tampon, std::size_t taille, bool garde_suite,
                          std::string& raison) {
    fichier f(garde_suite ? std::fopen(chemin.c_str(), "r+b") : nullptr);
    if (!f) f.reset(std::fopen(chemin.c_str(), "wb"));
    if (!f) return echec(raison);
    if (std::fwrite(tampon, 1, taille, f.get()) != taille) return echec(raison);
    return std::fclose(f.release()) == 0 ? true : echec(raison);
}
