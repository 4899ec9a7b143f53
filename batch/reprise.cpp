#include "batch/reprise.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

std::string entete(const plan_balayage& p) {
    std::string t;
    for (const std::string& nom : colonnes_balayage(p)) t += (t.empty() ? "" : ",") + nom;
    return t;
}

/// The row of the variant expected: its number, and the values that the plan gives it.
bool est_la_ligne(const std::string& ligne, const balayage& b, long variante) {
    ligne_balayage l{variante, b.valeurs(variante), {}, false};
    plan_balayage sans_mesures;
    sans_mesures.variations = b.plan().variations;
    std::string debut = texte_ligne(sans_mesures, l);
    debut.resize(debut.size() - 1); // the flag of the fault: "variante,values,"
    const auto virgules = std::count(ligne.begin(), ligne.end(), ',');
    return ligne.starts_with(debut) && virgules == static_cast<long>(colonnes_balayage(b.plan()).size()) - 1;
}

/// The earlier rows: the file itself, or what a run that was killed has left beside it. These are put out of
/// the way of the new output, which bears their name, and stay until it has taken them over.
std::string source(const std::string& nom) {
    const std::string cote = nom + ".reprise", partiel = nom + suffixe_partiel;
    std::error_code erreur; // a folder that may not be looked into holds nothing
    if (fs::exists(nom, erreur)) return nom;
    if (!fs::exists(cote, erreur) && fs::exists(partiel, erreur)) fs::rename(partiel, cote, erreur);
    return cote;
}

} // namespace

statut commence_lignes(const options& o, const balayage& b, csv& sortie, long& depuis) {
    const std::string tete = entete(b.plan());
    depuis = 0;
    if (o.reprise.empty()) {
        sortie.texte(tete + "\n");
        return reussi;
    }
    const std::string chemin = source(o.reprise);
    std::ifstream f(chemin, std::ios::binary);
    std::error_code erreur;
    if (!f || !fs::is_regular_file(chemin, erreur)) { // a device gives a line without end
        signale(o.reprise + " : ce fichier ne peut pas être lu");
        return entree_illisible;
    }
    std::string ligne;
    if (!std::getline(f, ligne) || f.eof() || ligne != tete) {
        signale(chemin + " : ligne 1 : ces colonnes ne sont pas celles du balayage demandé (" + tete + ")");
        return entree_illisible;
    }
    sortie.texte(tete + "\n");
    while (std::getline(f, ligne) && !f.eof()) { // a row without its line end is not whole
        if (depuis >= b.variantes() || !est_la_ligne(ligne, b, depuis)) {
            signale(chemin + " : ligne " + std::to_string(depuis + 2) + " : ce n'est pas la variante " +
                    std::to_string(depuis) + " du balayage demandé");
            return entree_illisible;
        }
        sortie.texte(ligne + "\n");
        ++depuis;
    }
    sortie.pousse();
    if (chemin != o.reprise) fs::remove(chemin, erreur);
    return reussi;
}
