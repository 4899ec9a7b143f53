#include "attitude/att_pages.h"

#include <algorithm>
#include <charconv>
#include <fstream>

namespace {

/// Leaves the stream at the first record; false for a file of another kind.
bool passe_tetes(std::istream& f) {
    std::string ligne;
    for (const char* debut : {"\"#BeginTime(JulianDays)\",", "\"#EndTime(JulianDays)\",", "\"#TimeStep(s)\",",
                              "", "\"j_courant\","})
        if (!std::getline(f, ligne) || !ligne.starts_with(debut)) return false;
    return true;
}

bool lit_enregistrement(const std::string& ligne, ligne_page& rang) {
    enregistrement_att valeurs;
    const char *p = ligne.data(), *fin = p + ligne.size();
    for (size_t i = 0; i < valeurs.size(); ++i) {
        if (i > 0 && (p == fin || *p++ != ',')) return false;
        const auto [suite, ec] = std::from_chars(p, fin, valeurs[i]);
        if (ec == std::errc::result_out_of_range)
            valeurs[i] = 0; // below the smallest number
        else if (ec != std::errc())
            return false;
        p = suite;
    }
    if (p != fin && *p != '\r') return false;
    rang = ligne_de_page(valeurs);
    return true;
}

} // namespace

bool pages_resultats::refuse(const std::string& raison) {
    erreur_ = "Le fichier de résultats " + chemin_ + " " + raison;
    return false;
}

void pages_resultats::ouvre(const std::string& chemin, const ecrivain_resultats& ecrivain) {
    chemin_ = chemin;
    nombre_ = ecrivain.enregistrements();
    pages_ = ecrivain.pages();
}

bool pages_resultats::lit_page(int64_t page, table_att& t) { return lit(page * lignes_par_page, 1, t); }

bool pages_resultats::lit_ensemble(table_att& t) { return lit(0, std::max<int64_t>(1, pages()), t); }

bool pages_resultats::lit(int64_t premier, int64_t pas_lecture, table_att& t) {
    t = {};
    erreur_.clear();
    std::ifstream f(chemin_, std::ios::binary);
    if (!f) return refuse("est introuvable ou ne peut pas être lu.");
    if (!passe_tetes(f)) return refuse("n'est pas un fichier de résultats d'attitude.");
    if (premier / lignes_par_page >= pages()) return refuse("ne contient pas cette page.");
    f.seekg(pages_[static_cast<size_t>(premier / lignes_par_page)]);
    std::string ligne;
    for (int64_t n = premier; n < nombre_ && t.lignes < lignes_par_page; ++n) {
        const bool lu = static_cast<bool>(std::getline(f, ligne)) && !f.eof();
        if (lu && (n - premier) % pas_lecture != 0) continue;
        if (!lu || !lit_enregistrement(ligne, t.rangs[static_cast<size_t>(t.lignes)]))
            return refuse("est coupé ou abîmé à l'enregistrement " + std::to_string(n + 1) + " sur " +
                          std::to_string(nombre_) + " : relancez le calcul.");
        ++t.lignes;
    }
    return true;
}
