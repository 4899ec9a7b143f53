#include "project/enregistrement.h"

#include <bit>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "shell/ecriture.h"

static_assert(std::endian::native == std::endian::little, "the binary files are little-endian");

namespace {

constexpr std::size_t taille_max = 1 << 30; ///< [bytes] of a file whose end is kept

struct ferme {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using fichier = std::unique_ptr<std::FILE, ferme>;

bool echec(std::string& raison) {
    raison = raison_systeme(errno);
    return false;
}

/// The bytes of a file behind the first `debut`; none of a file that is shorter or missing.
bool lit_suite(const std::string& chemin, std::size_t debut, std::string& suite, std::string& raison) {
    std::error_code erreur;
    const auto taille =
        std::filesystem::is_regular_file(chemin, erreur) ? std::filesystem::file_size(chemin, erreur) : 0;
    if (taille <= debut) return true;
    if (taille > taille_max) {
        raison = raison_systeme(EFBIG);
        return false;
    }
    const fichier f(std::fopen(chemin.c_str(), "rb"));
    suite.resize(taille - debut);
    if (f && std::fseek(f.get(), static_cast<long>(debut), SEEK_SET) == 0 &&
        std::fread(suite.data(), 1, suite.size(), f.get()) == suite.size())
        return true;
    return echec(raison);
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
    std::string suite;
    if (garde_suite && !lit_suite(chemin, taille, suite, raison)) return false;
    return remplace_fichier(chemin, std::string(tampon, taille) + suite, raison);
}
