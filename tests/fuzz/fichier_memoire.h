/// A file in memory with a path, so that the readers are fuzzed through the interface that the program uses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

class fichier_memoire {
public:
    fichier_memoire(const uint8_t* donnees, std::size_t taille) : f_(memfd_create("fuzz", 0)) {
        if (write(f_, donnees, taille) != static_cast<ssize_t>(taille)) close(f_), f_ = -1;
    }
    ~fichier_memoire() { close(f_); }
    fichier_memoire(const fichier_memoire&) = delete;
    fichier_memoire& operator=(const fichier_memoire&) = delete;
    std::string chemin() const { return "/proc/self/fd/" + std::to_string(f_); }

private:
    int f_;
};
