/// Runs the batch program as its user would, through a shell.
#pragma once

#include <array>
#include <cstdio>
#include <string>

#include <sys/wait.h>

#include "tests/fichiers.h"

struct resultat_batch {
    int statut = -1;
    std::string sortie, erreurs;
};

/// A command line as typed in a shell.
inline resultat_batch lance_programme(const std::string& commande) {
    resultat_batch r;
    const auto erreurs =
        std::filesystem::temp_directory_path() / ("kestrel-batch-" + std::to_string(getpid()) + ".err");
    const std::string ligne = commande + " 2> '" + erreurs.string() + "'";
    std::FILE* tuyau = popen(ligne.c_str(), "r");
    if (!tuyau) return r;
    std::array<char, 65536> bloc;
    for (std::size_t n; (n = std::fread(bloc.data(), 1, bloc.size(), tuyau)) > 0;)
        r.sortie.append(bloc.data(), n);
    r.statut = WEXITSTATUS(pclose(tuyau));
    r.erreurs = lit(erreurs);
    std::filesystem::remove(erreurs);
    return r;
}

/// `arguments` of the batch program, from the folder `dossier`.
inline resultat_batch lance_batch(const std::string& arguments, const std::string& dossier = ".") {
    return lance_programme("cd '" + dossier + "' && '" KESTREL_BATCH "' " + arguments);
}
