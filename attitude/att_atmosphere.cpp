#include "attitude/att_atmosphere.h"

#include <charconv>
#include <cmath>
#include <sstream>
#include <string_view>

#include "orbit/soleil.h"
#include "shell/lecture.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

constexpr int longueur_enregistrement = 15;
constexpr int premiere_annee = 1991, derniere_annee = 2007;

/// A number that fills the text but for blanks around it.
bool lit_reel(std::string_view texte, double& x) {
    constexpr std::string_view blancs = " \t\r\n";
    const size_t debut = texte.find_first_not_of(blancs);
    if (debut == std::string_view::npos) return false;
    texte = texte.substr(debut, texte.find_last_not_of(blancs) - debut + 1);
    const char* fin = texte.data() + texte.size();
    const auto r = std::from_chars(texte.data(), fin, x);
    return r.ec == std::errc{} && r.ptr == fin && std::isfinite(x);
}

/// Columns `premiere` to `derniere`, counted from 1, as far as the text goes.
std::string_view colonnes(std::string_view texte, size_t premiere, size_t derniere) {
    if (texte.size() < premiere) return {};
    return texte.substr(premiere - 1, derniere - premiere + 1);
}

/// The whole file; on failure false and the reason.
bool lit(const std::string& chemin, std::string& contenu, std::string& raison) {
    constexpr std::size_t taille_max = 1 << 20;
    if (lit_fichier_court(chemin, taille_max, contenu, raison)) return true;
    raison = chemin + " : lecture impossible (" + raison + ")";
    return false;
}

} // namespace

atmosphere::atmosphere(const std::string& dossier) : chemin_flux_(dossier + "/flux_solaire.txt") {
    lit(chemin_flux_, flux_, defaut_flux_);
    lit_densite(dossier + "/densite.txt");
}

void atmosphere::lit_densite(const std::string& chemin) {
    std::string contenu;
    if (!lit(chemin, contenu, defaut_densite_)) return;
    // What follows a bad line is unknown; a run that stays below it is not concerned.
    std::istringstream texte(contenu);
    std::string l;
    for (int numero = 1; std::getline(texte, l); ++numero) {
        if (l.find_first_not_of(" \t\r\n") == std::string::npos) continue;
        ligne valeurs;
        const bool nombres =
            lit_reel(colonnes(l, 1, 4), valeurs.alt) && lit_reel(colonnes(l, 6, 13), valeurs.d[0]) &&
            lit_reel(colonnes(l, 15, 22), valeurs.d[1]) && lit_reel(colonnes(l, 24, 31), valeurs.d[2]);
        if (!nombres || (!table_.empty() && valeurs.alt <= table_.back().alt)) {
            defaut_densite_ = chemin + " : ligne " + std::to_string(numero) +
                              (nombres ? " : altitude qui ne croît pas" : " : nombre non valable");
            return;
        }
        table_.push_back(valeurs);
    }
    if (table_.size() < 2) defaut_densite_ = chemin + " : moins de deux lignes";
}

double atmosphere::signale(const std::string& raison) {
    faute_ = raison;
    leve_faute();
    return 0;
}

double atmosphere::flux_du_mois(int an, int mois) {
    if (!defaut_flux_.empty()) return signale(defaut_flux_);
    const size_t debut = static_cast<size_t>((an - premiere_annee) * 12 + mois - 1) * longueur_enregistrement;
    std::string_view enregistrement;
    if (debut < flux_.size()) enregistrement = std::string_view(flux_).substr(debut, longueur_enregistrement);
    double F = 0;
    if (!lit_reel(colonnes(enregistrement, 9, 21), F))
        return signale(chemin_flux_ + " : pas de flux valable pour " + std::to_string(mois) + "/" +
                       std::to_string(an));
    return F;
}

double atmosphere::flux_solaire(double date) {
    // Year and month depend on the whole day alone.
    if (const double jour = std::floor(date); jour != jour_) {
        const date_record d = jour_vers_date(date);
        au_fichier_ = d.an >= premiere_annee && d.an <= derniere_annee;
        if (au_fichier_) flux_mois_ = flux_du_mois(d.an, d.mois);
        jour_ = faute_.empty() ? jour : -1;
    }
    if (au_fichier_) return flux_mois_;
    return 135 + 65 * std::sin(((date - 17712) / 36525 + (date - 17712) / 36525) * pi);
}

double atmosphere::temperature_exo(double date, double lon, double lat, double alt) {
    return temperature_exo(date, lon, lat, alt, soleil_position(date));
}

double atmosphere::temperature_exo(double date, double lon, double lat, double alt, const vec3& soleil) {
    const double F = flux_solaire(date);

    // Latitude and right ascension of the Sun; z over the length in the equator, not the distance: meant.
    const auto [x, y, z] = soleil;
    const double rho = std::sqrt(x * x + y * y);
    const double delta = arcsin_v(z / rho);
    const double alpha = atan_quad(y / rho, x / rho);

    const double eta = std::fabs(lat - delta) * 0.5;
    const double theta = std::fabs(lat + delta) * 0.5;
    const double H = lon - alpha;
    const double tau = H - 0.6457718232379013 + 0.10471975511965967 * std::sin(H + 0.750491578357561);

    const double A = 379 + 3.24 * F;
    const double s = std::pow(std::sin(theta), 2.2);
    const double c = std::pow(std::cos(eta), 2.2);
    const double c3 = std::cos(tau / 2);
    const double nuit = 1 + 0.3 * s;
    const double T = A * nuit * (1 + c3 * c3 * c3 * 0.3 * (c - s) / nuit);

    // Geomagnetic heating at the index 0: the small constant stays.
    return T + (alt < 200 ? 0.02 : 0.03);
}

double atmosphere::densite(double T, double alt) {
    if (table_.empty()) return signale(defaut_densite_);
    if (alt < 100) return 3.43e-06;
    if (alt >= 2500) return 0;
    const size_t n = table_.size();
    if (!(alt <= table_.back().alt && n >= 2) && !defaut_densite_.empty()) return signale(defaut_densite_);

    // The bracket whose upper line is the first at or above alt; beyond the table the last one.
    size_t k = tranche_;
    while (k > 0 && alt <= table_[k].alt) --k;
    while (k + 2 < n && alt > table_[k + 1].alt) ++k;
    tranche_ = k;

    const ligne &bas = table_[k], &haut = table_[k + 1];
    const double f = (alt - bas.alt) / (haut.alt - bas.alt);
    const auto r = [&](int i) { return bas.d[i] + f * (haut.d[i] - bas.d[i]); };
    if (T <= 1000) return r(0) + (r(1) - r(0)) * (T - 500) / 500;
    return r(1) + (r(2) - r(1)) * (T - 1000) / 1000;
}
