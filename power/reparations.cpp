#include "power/reparations.h"

namespace {

/// x stays above y, which is given; the result is single precision.
void releve(float& x, float y) {
    if (!(x > y)) x = static_cast<float>(y + ecart_courant);
}

void abaisse(float& y, float x) {
    if (!(y < x)) y = static_cast<float>(x - ecart_courant);
}

/// End-of-life products: `ratio_donne` × `donne` was entered, the other ratio follows with a margin.
void suit(double ratio_donne, double donne, float& ratio, double valeur, double marge) {
    if (valeur != 0) ratio = static_cast<float>(ratio_donne * marge * donne / valeur);
}

bool au_dessus(double ratio_haut, double haut, double ratio_bas, double bas) {
    return ratio_haut * haut > ratio_bas * bas;
}

constexpr double marge_basse = .98, marge_haute = 1.02;

} // namespace

void repare_isc(power_record& p) { releve(p.cel_isc, p.cel_imp); }
void repare_imp(power_record& p) { abaisse(p.cel_imp, p.cel_isc); }
void repare_voc(power_record& p) { releve(p.cel_voc, p.cel_vmp); }
void repare_vmp(power_record& p) { abaisse(p.cel_vmp, p.cel_voc); }

void repare_radisc(power_record& p) {
    if (!au_dessus(p.cel_radisc, p.cel_isc, p.cel_radimp, p.cel_imp))
        suit(p.cel_radisc, p.cel_isc, p.cel_radimp, p.cel_imp, marge_basse);
}

void repare_radimp(power_record& p) {
    if (!au_dessus(p.cel_radisc, p.cel_isc, p.cel_radimp, p.cel_imp))
        suit(p.cel_radimp, p.cel_imp, p.cel_radisc, p.cel_isc, marge_haute);
}

void repare_radvoc(power_record& p) {
    if (!au_dessus(p.cel_radvoc, p.cel_voc, p.cel_radvmp, p.cel_vmp))
        suit(p.cel_radvoc, p.cel_voc, p.cel_radvmp, p.cel_vmp, marge_basse);
}

void repare_radvmp(power_record& p) {
    if (!au_dessus(p.cel_radvoc, p.cel_voc, p.cel_radvmp, p.cel_vmp))
        suit(p.cel_radvmp, p.cel_vmp, p.cel_radvoc, p.cel_voc, marge_haute);
}
