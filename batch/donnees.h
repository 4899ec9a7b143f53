/// Where the batch program finds the data files that it reads.
#pragma once

#include <string>

/// The folder of flux_solaire.txt and densite.txt: that of the executable, or the share folder beside its own
/// (build tree and installation alike).
std::string dossier_donnees();
