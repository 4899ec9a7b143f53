#include "physics/champ_geomagnetique.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <sstream>

#include "shell/lecture.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

constexpr double rayon_reference = 6371.2; // [km]
constexpr double pas_par_jour = 1024;      // steps of time of the coefficients

using harmoniques::place;

/// The numbers of a line, independent of the locale; false for anything else.
bool lit_nombres(std::string_view ligne, std::vector<double>& x) {
    x.clear();
    const char *p = ligne.data(), *fin = p + ligne.size();
    while (true) {
        while (p < fin && (*p == ' ' || *p == '\t' || *p == '\r')) ++p;
        if (p == fin) return true;
        double v = 0;
        const auto r = std::from_chars(p, fin, v);
        if (r.ec != std::errc{} || !std::isfinite(v)) return false;
        x.push_back(v);
        p = r.ptr;
    }
}

/// Degree, order (negative for h), and a value an epoch.
bool est_terme(const std::vector<double>& x, std::size_t epoques) {
    return epoques > 0 && x.size() == epoques + 2 && x[0] >= 1 && x[0] <= champ_geomagnetique::degre &&
           std::fabs(x[1]) <= x[0];
}

} // namespace

champ_geomagnetique::champ_geomagnetique(const std::string& dossier)
    : pas_de_date_(std::numeric_limits<double>::quiet_NaN()) {
    lit(dossier + "/igrf14.txt");
}

bool champ_geomagnetique::prend_epoques(const std::vector<double>& annees) {
    if (!epoques_.empty()) return false;
    for (const double an : annees) {
        if (!(an >= 1800 && an < 2200)) return false;
        epoques_.push_back(date_epoque(static_cast<int>(an), (an - std::floor(an)) * 365.25));
    }
    tables_.resize(epoques_.size());
    return epoques_.size() > 1 &&
           std::adjacent_find(epoques_.begin(), epoques_.end(), std::greater_equal<>()) == epoques_.end();
}

void champ_geomagnetique::lit(const std::string& chemin) {
    constexpr std::size_t taille_max = 1 << 20;
    std::string texte, raison;
    if (!lit_fichier_court(chemin, taille_max, texte, raison)) {
        defaut_ = chemin + " : lecture impossible (" + raison + ")";
        return;
    }
    std::istringstream fichier(texte);
    const auto facteurs = harmoniques::facteurs_schmidt<degre>();
    constexpr int attendus = degre * (degre + 2);
    std::string ligne;
    std::vector<double> x;
    int lus = 0;
    for (int numero = 1; std::getline(fichier, ligne); ++numero) {
        const bool tete = ligne.starts_with("# n m ");
        if (!tete && (ligne.empty() || ligne[0] == '#')) continue;
        const bool nombres = lit_nombres(std::string_view(ligne).substr(tete ? 6 : 0), x);
        if (!nombres || !(tete ? prend_epoques(x) : est_terme(x, epoques_.size()))) {
            defaut_ = chemin + " : ligne " + std::to_string(numero) + " non valable";
            return;
        }
        if (tete) continue;
        const int n = static_cast<int>(x[0]), m = static_cast<int>(x[1]);
        const int k = place(n, std::abs(m));
        for (std::size_t t = 0; t < tables_.size(); ++t)
            tables_[t][static_cast<std::size_t>(k)][m < 0 ? 1 : 0] = x[t + 2] * facteurs[k];
        ++lus;
    }
    if (lus != attendus)
        defaut_ =
            chemin + " : " + std::to_string(lus) + " coefficients au lieu de " + std::to_string(attendus);
}

void champ_geomagnetique::prend_date(double j) {
    if (!defaut_.empty()) {
        faute_ = defaut_;
        leve_faute();
        return;
    }
    const double pas = std::floor(j * pas_par_jour);
    if (pas == pas_de_date_) return;
    const double milieu = (pas + 0.5) / pas_par_jour;
    const auto apres = std::upper_bound(epoques_.begin() + 1, epoques_.end() - 1, milieu);
    const auto k = static_cast<std::size_t>(apres - epoques_.begin());
    const double f = (milieu - epoques_[k - 1]) / (epoques_[k] - epoques_[k - 1]);
    for (std::size_t i = 0; i < gh_.size(); ++i)
        gh_[i] = tables_[k - 1][i] + f * (tables_[k][i] - tables_[k - 1][i]);
    pas_de_date_ = pas;
}

vec3 champ_geomagnetique::spherique(double j, double r, sinus_cosinus colatitude, sinus_cosinus longitude) {
    prend_date(j);
    return harmoniques::synthese<degre>(gh_, rayon_reference / r, colatitude, longitude);
}

vec3 champ_geomagnetique::terrestre(double j, const vec3& p) {
    const double rho = std::sqrt(p[0] * p[0] + p[1] * p[1]), r = vec_norme(p);
    const sinus_cosinus colatitude{rho / r, p[2] / r};
    const sinus_cosinus longitude = rho > 0 ? sinus_cosinus{p[1] / rho, p[0] / rho} : sinus_cosinus{0, 1};
    const auto [radial, sud, est] = spherique(j, r, colatitude, longitude);
    const double horizontal = colatitude.s * radial + colatitude.c * sud;
    return {horizontal * longitude.c - est * longitude.s, horizontal * longitude.s + est * longitude.c,
            colatitude.c * radial - colatitude.s * sud};
}
