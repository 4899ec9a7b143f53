/// Random numbers that depend on a seed and two counters alone, so that every variant of a sweep draws the
/// same whoever computes it (SplitMix64: G. L. Steele, D. Lea, C. H. Flood, 2014).
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

class tirage {
public:
    tirage(uint64_t graine, uint64_t variante, uint64_t champ)
        : etat_(melange(melange(melange(graine) ^ variante) ^ champ)) {}

    /// In [0, 1), 53 bits.
    double uniforme() { return static_cast<double>(suivant() >> 11) * 0x1p-53; }
    /// Normal law of mean 0 and standard deviation 1 (Box and Muller, 1958).
    double normale() {
        const double u = 1 - uniforme(), v = uniforme();
        return std::sqrt(-2 * std::log(u)) * std::cos(2 * std::numbers::pi * v);
    }

private:
    static uint64_t melange(uint64_t z) {
        z += 0x9e3779b97f4a7c15;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }
    uint64_t suivant() {
        const uint64_t z = melange(etat_);
        etat_ += 0x9e3779b97f4a7c15;
        return z;
    }
    uint64_t etat_;
};
