#include "analysis/dimensionne.h"

#include <charconv>
#include <cmath>
#include <limits>

bool but_bilan::atteint(double x) const {
    switch (sens) {
    case au_moins: return x >= seuil;
    case au_plus: return x <= seuil;
    case plus_que: return x > seuil;
    case moins_que: return x < seuil;
    default: return x == -1;
    }
}

bool lit_but(const std::string& texte, but_bilan& but, std::string& raison) {
    const auto p = texte.find_first_of("<>");
    if (!lit_mesure(texte.substr(0, p), but.quoi, raison)) return false;
    if (p == std::string::npos) {
        if (!but.quoi.colonne) return true; // "tient"
        raison = "« " + texte + " » : une comparaison est attendue, comme soc_min>=0.7";
        return false;
    }
    const bool egal = p + 1 < texte.size() && texte[p + 1] == '=';
    const char* debut = texte.data() + p + (egal ? 2 : 1);
    const auto lu = std::from_chars(debut, texte.data() + texte.size(), but.seuil);
    if (lu.ec != std::errc() || lu.ptr != texte.data() + texte.size() || !std::isfinite(but.seuil)) {
        raison = "« " + std::string(debut) + " » n'est pas un nombre";
        return false;
    }
    but.sens = texte[p] == '>' ? (egal ? but_bilan::au_moins : but_bilan::plus_que)
                               : (egal ? but_bilan::au_plus : but_bilan::moins_que);
    return true;
}

dimensionnement dimensionne(const etude& base, const element_etude& champ, double de, double a, bool entier,
                            const but_bilan& but, const reglages_bilan& r,
                            const std::function<void(const essai_dimension&)>& dit) {
    dimensionnement d;
    const auto essaie = [&](double valeur) {
        etude e = base;
        std::string raison;
        essai_dimension x{valeur, std::numeric_limits<double>::quiet_NaN(), false};
        if (change_champ(e, champ, valeur, raison)) {
            x.mesure = but.quoi.de(calcule_bilan(std::move(e), r));
            x.atteint = but.atteint(x.mesure);
        }
        d.essais.push_back(x);
        if (dit) dit(x);
        return x;
    };
    const essai_dimension bas = essaie(de), haut = essaie(a);
    if (bas.atteint) {
        d.reponse = bas;
        d.aux_deux_bouts = haut.atteint;
        return d;
    }
    if (!haut.atteint) return d;
    // The goal is missed at `manque` and reached at the answer: halve what lies between.
    double manque = de;
    d.reponse = haut;
    const double assez = entier ? 1 : (a - de) * 1e-6;
    while (d.reponse->valeur - manque > assez && !r.arret.stop_requested()) {
        double milieu = (manque + d.reponse->valeur) / 2;
        if (entier) milieu = std::floor(milieu);
        if (milieu <= manque || milieu >= d.reponse->valeur) break;
        if (const essai_dimension x = essaie(milieu); x.atteint)
            d.reponse = x;
        else
            manque = milieu;
    }
    return d;
}
