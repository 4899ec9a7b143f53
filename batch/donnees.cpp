#include "batch/donnees.h"

#include <filesystem>

namespace fs = std::filesystem;

std::string dossier_donnees() {
    std::error_code erreur;
    const fs::path executable = fs::read_symlink("/proc/self/exe", erreur).parent_path();
    if (fs::exists(executable / "densite.txt", erreur)) return executable.string();
    return (executable / ".." / "share" / "kestrel" / "data").lexically_normal().string();
}
