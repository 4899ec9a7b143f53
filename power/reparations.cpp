#include "power/reparations.h"

namespace {

/// A value at no load or in short circuit, which must stay above the one at the maximum power point, and
/// their end-of-life ratios.
struct couple_cellule {
    float power_record::*haut, power_record::*bas, power_record::*ratio_haut, power_record::*ratio_bas;
};

using P = power_record;
constexpr couple_cellule courants = {&P::cel_isc, &P::cel_imp, &P::cel_radisc, &P::cel_radimp};
constexpr couple_cellule tensions = {&P::cel_voc, &P::cel_vmp, &P::cel_radvoc, &P::cel_radvmp};

constexpr double marge_basse = .98, marge_haute = 1.02;

void releve_haut(P& p, const couple_cellule& c) {
    if (!(p.*c.haut > p.*c.bas)) p.*c.haut = static_cast<float>(p.*c.bas + ecart_cellule);
}

void abaisse_bas(P& p, const couple_cellule& c) {
    if (!(p.*c.bas < p.*c.haut)) p.*c.bas = static_cast<float>(p.*c.haut - ecart_cellule);
}

double produit(const P& p, float P::*ratio, float P::*valeur) {
    return static_cast<double>(p.*ratio) * p.*valeur;
}

bool fin_de_vie_ordonnee(const P& p, const couple_cellule& c) {
    return produit(p, c.ratio_haut, c.haut) > produit(p, c.ratio_bas, c.bas);
}

void suit_bas(P& p, const couple_cellule& c) {
    if (fin_de_vie_ordonnee(p, c) || p.*c.bas == 0) return;
    p.*c.ratio_bas = static_cast<float>(p.*c.ratio_haut * marge_basse * p.*c.haut / p.*c.bas);
}

void suit_haut(P& p, const couple_cellule& c) {
    if (fin_de_vie_ordonnee(p, c) || p.*c.haut == 0) return;
    p.*c.ratio_haut = static_cast<float>(p.*c.ratio_bas * marge_haute * p.*c.bas / p.*c.haut);
}

} // namespace

void repare_isc(P& p) { releve_haut(p, courants); }
void repare_imp(P& p) { abaisse_bas(p, courants); }
void repare_voc(P& p) { releve_haut(p, tensions); }
void repare_vmp(P& p) { abaisse_bas(p, tensions); }

void repare_radisc(P& p) { suit_bas(p, courants); }
void repare_radimp(P& p) { suit_haut(p, courants); }
void repare_radvoc(P& p) { suit_bas(p, tensions); }
void repare_radvmp(P& p) { suit_haut(p, tensions); }
