#include "physics/repere.h"

#include <numbers>

#include "shell/utilitaires.h"

double temps_sideral_1982(double j) {
    const double d = j - jour_j2000, T = d / 36525;
    // The whole turns of the uniform part are taken out first: nothing is lost by large numbers.
    const double secondes = 67310.54841 + T * (8640184.812866 + T * (0.093104 - T * 6.2e-6));
    return frac(frac(d) + secondes / secondes_par_jour) * 2 * std::numbers::pi;
}
