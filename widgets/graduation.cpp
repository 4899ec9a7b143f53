#include "widgets/graduation.h"

#include <algorithm>
#include <cmath>

#include "shell/utilitaires.h"

std::vector<graduation> graduations(double min, double max, int nombre) {
    std::vector<graduation> g;
    if (!(max > min) || nombre < 1) return g;
    const double brut = (max - min) / nombre, dix = std::pow(10, std::floor(std::log10(brut)));
    double pas = 10 * dix;
    for (const double f : {1.0, 2.0, 5.0})
        if (f * dix >= brut * (1 - 1e-9)) {
            pas = f * dix;
            break;
        }
    const int decimales = std::max(0, -static_cast<int>(std::floor(std::log10(pas) + 1e-9)));
    const double plus_grand = std::max(std::fabs(min), std::fabs(max));
    const bool exposant = plus_grand >= 1e6 || decimales > 5;
    for (double k = std::ceil(min / pas - 1e-9); k * pas <= max + 1e-9 * pas; ++k) {
        const double v = k * pas;
        g.push_back({v, exposant ? QString::number(k == 0 ? 0 : v, 'g', 4)
                                 : QString::number(k == 0 ? 0 : v, 'f', decimales)});
    }
    return g;
}

std::vector<graduation> graduations_dates(double min, double max, int nombre) {
    static constexpr double pas_s[] = {1,     2,     5,     10,    15,     30,     60,
                                       120,   300,   600,   900,   1800,   3600,   7200,
                                       10800, 21600, 43200, 86400, 172800, 432000, 864000};
    std::vector<graduation> g;
    if (!(max > min) || nombre < 1) return g;
    const double voulu = (max - min) * secondes_par_jour / nombre;
    double pas = std::ceil(voulu / 864000) * 864000;
    for (const double p : pas_s)
        if (p >= voulu) {
            pas = p;
            break;
        }
    QString jour_avant;
    for (double k = std::ceil(min * secondes_par_jour / pas - 1e-6);; ++k) {
        const double j = k * pas / secondes_par_jour;
        if (j > max) break;
        const QString t = texte_instant(j);
        const QString jour = t.left(10);
        if (pas >= secondes_par_jour)
            g.push_back({j, jour});
        else
            g.push_back({j, t.mid(11, pas < 60 ? 8 : 5), jour == jour_avant ? QString() : jour});
        jour_avant = jour;
    }
    return g;
}

QString texte_instant(double j) {
    return QString::fromStdString(date_vers_texte(jour_vers_date(j + 0.5 / secondes_par_jour)));
}
