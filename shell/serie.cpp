#include "shell/serie.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double rien = std::numeric_limits<double>::quiet_NaN();
constexpr double meme_date = 0.0005 / 86400; // [days]

} // namespace

serie::serie(dates_serie dates, std::vector<double> valeurs, double tour)
    : dates_(std::move(dates)), valeurs_(std::move(valeurs)), tour_(tour) {
    blocs_.reserve(valeurs_.size() / bloc + 1);
    double bas = inf, haut = -inf;
    for (std::size_t i = 0; i < valeurs_.size();) {
        resume r{inf, -inf, false};
        for (const std::size_t fin = std::min(i + bloc, valeurs_.size()); i < fin; ++i) {
            r.rompu = r.rompu || rompu(i);
            if (!std::isfinite(valeurs_[i])) continue;
            r.min = std::min(r.min, valeurs_[i]);
            r.max = std::max(r.max, valeurs_[i]);
        }
        bas = std::min(bas, r.min);
        haut = std::max(haut, r.max);
        blocs_.push_back(r);
    }
    if (bas <= haut) min_ = bas, max_ = haut;
}

std::size_t serie::depuis(double date) const {
    const auto debut = dates_->begin();
    return static_cast<std::size_t>(
        std::lower_bound(debut, debut + static_cast<std::ptrdiff_t>(taille()), date) - debut);
}

std::size_t serie::depuis(double j, std::size_t i, std::size_t pas) const {
    std::size_t fin = std::min(i + pas, taille());
    for (; fin < taille() && date(fin) < j; fin = std::min(fin + pas, taille())) i = fin, pas *= 2;
    const auto debut = dates_->begin();
    return static_cast<std::size_t>(std::lower_bound(debut + static_cast<std::ptrdiff_t>(i),
                                                     debut + static_cast<std::ptrdiff_t>(fin), j) -
                                    debut);
}

std::size_t serie::proche(double j) const {
    const std::size_t n = taille();
    if (n == 0) return n;
    std::size_t i = depuis(j);
    if (i == n || (i > 0 && j - date(i - 1) < date(i) - j)) --i;
    const double pas = n < 2 ? meme_date : i > 0 ? date(i) - date(i - 1) : date(1) - date(0);
    return std::fabs(date(i) - j) <= pas / 2 + meme_date ? i : n;
}

double serie::en(double j) const {
    const std::size_t i = proche(j);
    return i < taille() ? valeurs_[i] : rien;
}

double serie::entre(double j) const {
    const std::size_t i = depuis(j);
    if (i < taille() && date(i) - j <= meme_date) return valeurs_[i];
    if (i > 0 && j - date(i - 1) <= meme_date) return valeurs_[i - 1];
    if (i == 0 || i == taille() || rompu(i)) return rien;
    const double t = (j - date(i - 1)) / (date(i) - date(i - 1));
    return valeurs_[i - 1] + t * (valeurs_[i] - valeurs_[i - 1]);
}

bool serie::rompu(std::size_t i) const {
    if (i == 0 || !std::isfinite(valeurs_[i]) || !std::isfinite(valeurs_[i - 1])) return true;
    return tour_ > 0 && std::fabs(valeurs_[i] - valeurs_[i - 1]) > tour_ / 2;
}

bool serie::rompu_entre(std::size_t i, std::size_t fin) const {
    while (i < fin) {
        if (!blocs_[i / bloc].rompu)
            i = (i / bloc + 1) * bloc;
        else if (rompu(i))
            return true;
        else
            ++i;
    }
    return false;
}

void serie::etend(std::size_t i, std::size_t fin, morceau_serie& m) const {
    double min = m.min, max = m.max;
    while (i < fin) {
        if (i % bloc == 0 && i + bloc <= fin) {
            min = std::min(min, blocs_[i / bloc].min);
            max = std::max(max, blocs_[i / bloc].max);
            i += bloc;
            continue;
        }
        for (const std::size_t bout = std::min(fin, (i / bloc + 1) * bloc); i < bout; ++i) {
            min = std::min(min, valeurs_[i]);
            max = std::max(max, valeurs_[i]);
        }
    }
    m.min = min;
    m.max = max;
}

void serie::reduit(double debut, double fin, int colonnes, std::vector<morceau_serie>& m) const {
    m.clear();
    std::size_t i = depuis(debut);
    if (i > 0) --i;      // the curve comes in from the left
    std::size_t pas = 1; // of the column before: the next one's end is not far from there
    for (int c = 0; c < colonnes && i < taille(); ++c) {
        const double bord = debut + (fin - debut) * (c + 1) / colonnes;
        const std::size_t suivant =
            c + 1 == colonnes ? std::min(depuis(bord) + 1, taille()) : depuis(bord, i, pas);
        if (suivant == i) continue;
        pas = suivant - i;
        const auto commence = [&](std::size_t k) {
            const double v = valeurs_[k];
            m.push_back({c, v, v, v, v, !m.empty() && !rompu(k)});
        };
        if (std::isfinite(valeurs_[i]) && !rompu_entre(i + 1, suivant)) {
            commence(i);
            etend(i, suivant, m.back());
            m.back().dernier = valeurs_[suivant - 1];
        } else
            for (std::size_t k = i, n = 1; k < suivant; k += n) {
                const bool suivi = k > i && !blocs_[k / bloc].rompu;
                n = suivi ? std::min((k / bloc + 1) * bloc, suivant) - k : 1;
                if (n == 1 && !std::isfinite(valeurs_[k])) continue;
                if (n == 1 && (k == i || rompu(k))) {
                    commence(k);
                    continue;
                }
                etend(k, k + n, m.back());
                m.back().dernier = valeurs_[k + n - 1];
            }
        i = suivant;
    }
}

lecture_serie serie::lit(double debut, double fin) const {
    lecture_serie l{en(debut), en(fin), inf, -inf, rien, rien};
    double somme = 0, duree = 0;
    std::size_t i = depuis(debut);
    if (i > 0 && (i == taille() || date(i) - debut > meme_date)) --i;
    for (; i < taille() && date(i) < fin - meme_date; ++i) {
        if (!std::isfinite(valeurs_[i])) continue;
        const double pas = i + 1 < taille() ? date(i + 1) - date(i) : i > 0 ? date(i) - date(i - 1) : 0;
        const double tenue = std::min(fin, date(i) + pas) - std::max(debut, date(i));
        if (tenue <= 0) continue;
        l.min = std::min(l.min, valeurs_[i]);
        l.max = std::max(l.max, valeurs_[i]);
        somme += valeurs_[i] * tenue;
        duree += tenue;
    }
    if (duree <= 0) {
        l.min = l.max = rien;
        return l;
    }
    l.moyenne = somme / duree;
    l.integrale = somme * 24;
    return l;
}

serie serie::ecart(const serie& autre) const {
    std::vector<double> d(taille());
    for (std::size_t i = 0; i < taille(); ++i) {
        // Runs of the same period have the same dates.
        const bool memes = i < autre.taille() && std::fabs(autre.date(i) - date(i)) <= meme_date;
        const double a = memes ? autre.valeurs_[i] : autre.entre(date(i));
        d[i] = valeurs_[i] - a;
        if (tour_ > 0) d[i] = std::remainder(d[i], tour_);
    }
    return {dates_, std::move(d), tour_};
}
