#include "shell/session.h"

#include <filesystem>
#include <unistd.h>

#include "project/etude_compare.h"

namespace fs = std::filesystem;

void session_init(session& s) {
    static_cast<etude&>(s) = etude{};
    etude_init(s);
    static_cast<provenance&>(s) = {};
    s.gardee = s;
}

void note_gardee(session& s, rubrique r) {
    copie_section(s, s.gardee, r);
    if (r == rubrique::energie) copie_section(s, s.gardee, rubrique::periode);
}

bool modifiee(const session& s, rubrique r) {
    return !meme_section(s, s.gardee, r) ||
           (r == rubrique::energie && !meme_section(s, s.gardee, rubrique::periode));
}

namespace {

/// Copies what is missing or older; a file that the user has changed since is newer and stays.
void remplit(const fs::path& source, const fs::path& dossier) {
    std::error_code erreur;
    if (fs::equivalent(source, dossier, erreur)) return;
    constexpr auto options = fs::copy_options::update_existing;
    for (const char* nom :
         {"flux_solaire.txt", "densite.txt", "igrf14.txt", "stations.txt", "land110m.geojson"})
        if (fs::exists(source / nom, erreur)) fs::copy_file(source / nom, dossier / nom, options, erreur);
    const auto copie = [&](const fs::path& origine, const fs::path& but) {
        if (!fs::exists(origine, erreur)) return;
        fs::create_directories(but.parent_path(), erreur);
        fs::copy(origine, but, options | fs::copy_options::recursive, erreur);
    };
    copie(source / "exemples", dossier / "exemples");
    copie(source / "composants", dossier / "composants");
    // The guide and its pictures: installed beside the data, or in the documents of the sources.
    copie(source / "guide", dossier / "guide");
    copie(source.parent_path() / "docs" / "guide.md", dossier / "guide" / "guide.md");
    copie(source.parent_path() / "docs" / "images", dossier / "guide" / "images");
}

bool inscriptible(const fs::path& dossier) {
    std::error_code erreur;
    return fs::is_directory(dossier, erreur) && access(dossier.c_str(), W_OK) == 0;
}

} // namespace

std::string trouve_dossier_depart(const std::string& dossier_executable,
                                  const std::string& dossier_utilisateur,
                                  const std::vector<std::string>& sources) {
    std::error_code erreur;
    fs::path dossier = fs::path(dossier_executable).lexically_normal();
    if (!inscriptible(dossier)) {
        dossier = dossier_utilisateur;
        fs::create_directories(dossier, erreur);
        if (!inscriptible(dossier)) return {};
    }
    for (const auto& source : sources) // that of the batch program alone holds no examples
        if (fs::is_directory(fs::path(source) / "exemples", erreur)) {
            remplit(source, dossier);
            break;
        }
    std::string texte = dossier.string();
    while (texte.size() > 1 && texte.back() == fs::path::preferred_separator) texte.pop_back();
    return texte;
}
