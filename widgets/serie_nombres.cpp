#include "widgets/serie_nombres.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "shell/formats.h"

namespace {

constexpr double puissances[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

double unites(const ecriture_nombre& e) { return puissances[e.decimales]; }

bool pareils(double a, double b) { return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b); }

/// Whole multiples of the last decimal that divide back to the very numbers: least and greatest of them.
bool en_unites(const ecriture_nombre& e, const std::vector<double>& x, double& min, double& max) {
    if (e.image) return false;
    const double u = unites(e);
    min = max = std::nearbyint(x[0] * u);
    for (const double v : x) {
        const double k = std::nearbyint(v * u);
        if (!(std::fabs(k) < 2e9) || !pareils(k / u, v)) return false;
        min = std::min(min, k);
        max = std::max(max, k);
    }
    return true;
}

std::size_t octets_pour(double etendue) {
    std::size_t n = 0;
    for (double portee = 1; portee <= etendue; portee *= 256) ++n;
    return n;
}

void range_entier(unsigned char* place, std::size_t largeur, uint32_t k) {
    for (std::size_t o = 0; o < largeur; ++o) place[o] = static_cast<unsigned char>(k >> (8 * o));
}

template <std::size_t largeur>
uint32_t lit_entier(const unsigned char* place) {
    uint32_t k = 0;
    for (std::size_t o = 0; o < largeur; ++o) k |= uint32_t{place[o]} << (8 * o);
    return k;
}

template <std::size_t largeur>
std::pair<uint32_t, uint32_t> extremes_entiers(const unsigned char* octets, std::size_t debut,
                                               std::size_t fin) {
    uint32_t min = lit_entier<largeur>(octets + debut * largeur), max = min;
    for (std::size_t i = debut + 1; i < fin; ++i) {
        const uint32_t k = lit_entier<largeur>(octets + i * largeur);
        min = std::min(min, k);
        max = std::max(max, k);
    }
    return {min, max};
}

} // namespace

double ecriture_nombre::arrondi(double x) const {
    if (!image) {
        // The product is a hair off the true one at most: away from the middle between two multiples it
        // cannot round to another one than the text does.
        const double r = x * unites(*this);
        if (std::fabs(r) < 1e9) {
            const double k = std::nearbyint(r);
            if (std::fabs(std::fabs(r - k) - 0.5) > 1e-6) return k / unites(*this) + 0.0; // no negative zero
        }
    }
    const std::string t = texte(x);
    double arrondi = 0;
    std::from_chars(t.data(), t.data() + t.size(), arrondi);
    return arrondi;
}

std::string ecriture_nombre::texte(double x) const {
    return image ? format_image(x, image) : texte_fixe(x, decimales);
}

void serie_nombres::prevoit() {
    if (ouvert_.size() < par_bloc) {
        ouvert_.reserve(par_bloc);
        return;
    }
    blocs_.push_back(ferme());
    ouvert_.clear();
}

void serie_nombres::vide() {
    std::vector<bloc>().swap(blocs_);
    std::vector<double>().swap(ouvert_);
}

serie_nombres::bloc serie_nombres::ferme() const {
    const std::vector<double>& x = ouvert_;
    bloc b;
    double max = 0;
    if (std::all_of(x.begin(), x.end(), [&](double v) { return pareils(v, x[0]); })) {
        b.base = x[0];
        return b;
    }
    if (!en_unites(ecriture_, x, b.base, max)) {
        b.largeur = sizeof(double);
        b.octets = std::make_unique_for_overwrite<unsigned char[]>(x.size() * sizeof(double));
        std::memcpy(b.octets.get(), x.data(), x.size() * sizeof(double));
        return b;
    }
    b.largeur = octets_pour(max - b.base);
    b.octets = std::make_unique_for_overwrite<unsigned char[]>(x.size() * b.largeur);
    for (std::size_t i = 0; i < x.size(); ++i)
        range_entier(b.octets.get() + i * b.largeur, b.largeur,
                     static_cast<uint32_t>(std::nearbyint(x[i] * unites(ecriture_)) - b.base));
    return b;
}

double serie_nombres::dans_bloc(const bloc& b, std::size_t i) const {
    const unsigned char* place = b.octets.get() + i * b.largeur;
    const auto nombre = [&](uint32_t k) { return (b.base + k) / unites(ecriture_); };
    switch (b.largeur) {
    case 0: return b.base;
    case 1: return nombre(lit_entier<1>(place));
    case 2: return nombre(lit_entier<2>(place));
    case 3: return nombre(lit_entier<3>(place));
    case 4: return nombre(lit_entier<4>(place));
    default: {
        double x;
        std::memcpy(&x, place, sizeof x);
        return x;
    }
    }
}

double serie_nombres::operator[](std::size_t i) const {
    const std::size_t n = i / par_bloc;
    return n < blocs_.size() ? dans_bloc(blocs_[n], i % par_bloc) : ouvert_[i % par_bloc];
}

std::pair<double, double> serie_nombres::extremes(std::size_t debut, std::size_t fin) const {
    double min = (*this)[debut], max = min;
    const auto etend = [&](double a, double b) {
        min = std::min(min, a);
        max = std::max(max, b);
    };
    while (debut < fin) {
        const std::size_t n = debut / par_bloc, i = debut % par_bloc;
        const std::size_t j = std::min(par_bloc, i + (fin - debut));
        const bloc* b = n < blocs_.size() ? &blocs_[n] : nullptr;
        const auto entiers = [&](std::pair<uint32_t, uint32_t> k) {
            etend((b->base + k.first) / unites(ecriture_), (b->base + k.second) / unites(ecriture_));
        };
        switch (b ? b->largeur : sizeof(double)) {
        case 0: etend(b->base, b->base); break;
        case 1: entiers(extremes_entiers<1>(b->octets.get(), i, j)); break;
        case 2: entiers(extremes_entiers<2>(b->octets.get(), i, j)); break;
        case 3: entiers(extremes_entiers<3>(b->octets.get(), i, j)); break;
        case 4: entiers(extremes_entiers<4>(b->octets.get(), i, j)); break;
        default:
            for (std::size_t l = i; l < j; ++l) {
                const double x = b ? dans_bloc(*b, l) : ouvert_[l];
                etend(x, x);
            }
        }
        debut += j - i;
    }
    return {min, max};
}
