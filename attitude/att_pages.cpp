#include "attitude/att_pages.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fstream>

namespace {

constexpr int lignes_tete = 5;

/// Reads the value of a head line: its name in quotes, a comma, a number.
bool lit_tete(const std::string& ligne, const char* nom, double& valeur) {
    const std::string debut = std::string("\"") + nom + "\",";
    if (ligne.compare(0, debut.size(), debut) != 0) return false;
    const char* p = ligne.c_str() + debut.size();
    return std::from_chars(p, ligne.c_str() + ligne.size(), valeur).ec == std::errc();
}

/// Leaves the stream at the first record.
bool lit_tetes(std::istream& f, double& debut, double& fin, double& pas) {
    std::string ligne[lignes_tete];
    for (std::string& l : ligne)
        if (!std::getline(f, l)) return false;
    return lit_tete(ligne[0], "#BeginTime(JulianDays)", debut) &&
           lit_tete(ligne[1], "#EndTime(JulianDays)", fin) && lit_tete(ligne[2], "#TimeStep(s)", pas) &&
           (ligne[3].empty() || ligne[3] == "\r") && ligne[4].starts_with("\"j_courant\",");
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

bool pages_resultats::ouvre(const std::string& chemin) {
    *this = {};
    chemin_ = chemin;
    std::ifstream f(chemin, std::ios::binary);
    if (!f) return refuse("est introuvable ou ne peut pas être lu.");
    if (!lit_tetes(f, debut_, fin_, pas_)) return refuse("n'est pas un fichier de résultats d'attitude.");

    std::vector<char> bloc(1 << 20);
    int64_t position = f.tellg(), debut_ligne = position;
    while (f.read(bloc.data(), static_cast<std::streamsize>(bloc.size())), f.gcount() > 0) {
        const char *p = bloc.data(), *fin = p + f.gcount();
        while (const void* trouve = std::memchr(p, '\n', static_cast<size_t>(fin - p))) {
            if (nombre_++ % lignes_par_page == 0) pages_.push_back(debut_ligne);
            p = static_cast<const char*>(trouve) + 1;
            debut_ligne = position + (p - bloc.data());
        }
        position += f.gcount();
    }
    if (debut_ligne != position)
        refuse("se termine au milieu d'un enregistrement : ce qui précède est montré.");
    return true;
}

bool pages_resultats::lit_page(int64_t page, table_att& t) { return lit(page * lignes_par_page, 1, t); }

bool pages_resultats::lit_ensemble(table_att& t) { return lit(0, std::max<int64_t>(1, pages()), t); }

bool pages_resultats::lit(int64_t premier, int64_t pas_lecture, table_att& t) {
    t = {};
    erreur_.clear();
    std::ifstream f(chemin_, std::ios::binary);
    if (!f) return refuse("est introuvable ou ne peut pas être lu.");
    double debut, fin, pas;
    if (!lit_tetes(f, debut, fin, pas)) return refuse("n'est pas un fichier de résultats d'attitude.");
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
