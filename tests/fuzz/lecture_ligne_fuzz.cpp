/// Any text through the line reader, field type by field type: each call moves on, ends, and stores only
/// numbers that its type holds.
#include <cmath>
#include <cstdlib>

#include "project/pwr_lecteur.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, std::size_t taille) {
    if (taille == 0) return 0;
    constexpr type_champ types[] = {type_champ::commentaire, type_champ::i16, type_champ::i32,
                                    type_champ::u8,          type_champ::f32, type_champ::f64,
                                    type_champ::booleen,     type_champ::pas};
    pwr_lecteur lecteur({reinterpret_cast<const char*>(donnees) + 1, taille - 1});
    for (std::size_t n = 0; n <= taille; ++n) {
        const type_champ type = types[(donnees[0] + n) % std::size(types)];
        double x = 0;
        bool stocke = false;
        if (!lecteur.lecture_ligne(type, x, stocke)) {
            if (lecteur.raison().empty()) abort();
            continue;
        }
        if (stocke && !std::isfinite(x)) abort();
        if (stocke && type == type_champ::u8 && (x < 0 || x > 255 || x != std::floor(x))) abort();
    }
    // Every token takes at least a byte, so by now the text is at its end.
    double x = 0;
    bool stocke = false;
    if (lecteur.lecture_ligne(type_champ::f64, x, stocke)) abort();
    return 0;
}
