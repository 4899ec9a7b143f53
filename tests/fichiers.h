/// Files of the tests: read, written, and a folder that goes with its test.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

inline std::string lit(const fs::path& chemin) {
    std::ifstream f(chemin, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
}
inline void ecrit(const fs::path& chemin, const std::string& octets) {
    std::ofstream(chemin, std::ios::binary) << octets;
}

struct dossier_essai {
    fs::path chemin = fs::temp_directory_path() / ("kestrel-essai-" + std::to_string(getpid()));
    dossier_essai() {
        fs::remove_all(chemin);
        fs::create_directories(chemin);
    }
    ~dossier_essai() { fs::remove_all(chemin); }
    fs::path operator/(const std::string& nom) const { return chemin / nom; }
    /// With a data file of the program.
    void copie(const char* nom) const { fs::copy_file(fs::path(DOSSIER_DATA) / nom, chemin / nom); }
};
