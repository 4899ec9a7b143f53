#include "shell/utilitaires.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>

namespace {

/// Days before each month of a common year; the 13th entry closes the year.
constexpr std::array<double, 14> table = {0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

/// Days from 1900-01-01 to 1950-01-01 where 1900 is a leap year.
constexpr double origine = 18263.0;

} // namespace

double date_vers_jour(const date_record& d) {
    const int k = d.an - 1900;
    double t = (k / 4) * 1461.0;
    t = t + table[d.mois] + d.jour - 1.0 - origine;
    if (k % 4 != 0)
        t += (k % 4) * 365 + 1.0;
    else if (d.mois >= 3)
        t += 1.0;
    return t + (((d.ms / 1000.0 + d.seconde) / 60.0 + d.minute) / 60.0 + d.heure) / 24.0;
}

date_record jour_vers_date(double j) {
    constexpr double jour_max = 1e7; // beyond it a year does not fit its type; no number is one as well
    if (!(std::fabs(j) < jour_max)) j = j > 0 ? jour_max : -jour_max;
    date_record d;
    const double jours = std::floor(j) + origine + 1.0;
    const double heures = frac(j) * 24;
    const double minutes = frac(heures) * 60;
    d.heure = static_cast<int16_t>(std::floor(heures));
    d.minute = static_cast<int16_t>(std::floor(minutes));
    d.seconde = static_cast<int16_t>(std::floor(frac(minutes) * 60));
    d.ms = static_cast<int32_t>(std::floor(frac(frac(j) * secondes_par_jour) * 1000.0));

    d.an = static_cast<int16_t>(std::floor((jours - 1.0) / 365.25) + 1900);
    const int k = d.an - 1900;
    const bool bissextile = k % 4 == 0;
    const double q = (k / 4) * 4;
    const double r = bissextile ? jours - q * 365.25 : jours - q * 365.25 - (k % 4) * 365 - 1.0;

    int mois = 1;
    while (mois < 13 && r - table[mois] > 0) ++mois;
    --mois;
    int jour = static_cast<int>(std::floor(r - table[mois]));
    if (bissextile && mois >= 3) {
        --jour;
        if (jour == 0) {
            --mois;
            jour = static_cast<int>(std::floor(mois == 2 ? r - table[2] : r - table[mois] - 1.0));
        }
    }
    d.mois = static_cast<int16_t>(mois);
    d.jour = static_cast<int16_t>(jour);
    return d;
}

double date_epoque(int an, double jour) {
    const double q = ((an - 1900) / 4) * 4;
    if (an % 4 == 0) return q * 365.25 + jour - origine;
    return q * 365.25 + ((an - 1900) % 4) * 365 + 1.0 + jour - origine;
}

std::string date_vers_texte(const date_record& d) {
    char texte[48];
    std::snprintf(texte, sizeof texte, "%02d/%02d/%04d %02d:%02d:%02d", d.jour, d.mois, d.an, d.heure,
                  d.minute, d.seconde);
    return texte;
}

bool texte_vers_jour(std::string_view texte, double& jour) {
    const char* fin = texte.data() + texte.size();
    double nombre = 0;
    if (const auto r = std::from_chars(texte.data(), fin, nombre); r.ec == std::errc{} && r.ptr == fin) {
        if (!std::isfinite(nombre)) return false;
        jour = nombre;
        return true;
    }
    const std::string copie(texte);
    int an = 0, mois = 0, j = 0, heure = 0, minute = 0, seconde = 0, lus = 0;
    const int n = std::sscanf(copie.c_str(), "%4d-%2d-%2d%n %2d:%2d:%2d%n", &an, &mois, &j, &lus, &heure,
                              &minute, &seconde, &lus);
    if ((n != 3 && n != 6) || lus != static_cast<int>(copie.size())) return false;
    if (an < 1901 || mois < 1 || mois > 12 || j < 1 || heure < 0 || heure > 23 || minute < 0 || minute > 59 ||
        seconde < 0 || seconde > 59)
        return false;
    const bool fevrier_29 = an % 4 == 0 && mois == 2;
    if (j > table[mois + 1] - table[mois] + (fevrier_29 ? 1 : 0)) return false;
    date_record d;
    d.an = static_cast<int16_t>(an);
    d.mois = static_cast<int16_t>(mois);
    d.jour = static_cast<int16_t>(j);
    d.heure = static_cast<int16_t>(heure);
    d.minute = static_cast<int16_t>(minute);
    d.seconde = static_cast<int16_t>(seconde);
    jour = date_vers_jour(d);
    return true;
}

bool est_dossier(const std::string& chemin) {
    std::error_code erreur;
    return std::filesystem::is_directory(chemin, erreur);
}

double borne(double x, double min, double max) {
    if (x > max) return max;
    if (x < min) return min;
    return x;
}

std::string_view ligne_valeur(std::string_view ligne) {
    if (!ligne.empty() && ligne.front() == '!') return ligne;
    return ligne.substr(0, 14);
}
