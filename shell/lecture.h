/// Reading of small files, whole, never without end, and of folders.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Puts what the file holds into `texte`, at most `taille_max` bytes and one more, so that the caller sees a
/// file that is too long (a device gives bytes without end). False with the system's reason, in French.
bool lit_fichier(const std::string& chemin, std::size_t taille_max, std::string& texte, std::string& raison);

/// The same, where a longer file is refused too.
bool lit_fichier_court(const std::string& chemin, std::size_t taille_max, std::string& texte,
                       std::string& raison);

/// Paths of what a folder holds that ends so (".kestrel"), in no order; none of a folder that cannot be read.
std::vector<std::string> fichiers_du_dossier(const std::string& dossier, const std::string& fin);
