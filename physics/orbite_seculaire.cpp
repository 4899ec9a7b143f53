#include "physics/orbite_seculaire.h"

#include <numbers>

#include "shell/surveillance.h"
#include "shell/utilitaires.h"

orbite_seculaire::orbite_seculaire(const record_orbite& o, bool sans_j2)
    : a(o.orb_demi), e(o.orb_excentricite), epoque(date_epoque(o.orb_an, o.orb_jour - 1.0)) {
    constexpr double degre = std::numbers::pi / 180;
    noeud = o.orb_ascension * degre;
    perigee = o.orb_argument * degre;
    anomalie = o.orb_anomalie * degre;
    inclinaison = sincos_de(o.orb_inclinaison * degre);

    const double n = std::sqrt(mu_physique / a) / a, ci = inclinaison.c;
    const double facteur = sans_j2 ? 0 : 0.75 * j2_terre * carre(rayon_terre / (a * (1 - e * e))) * n;
    moyen_mouvement = n;
    taux_noeud = -2 * facteur * ci;
    taux_perigee = facteur * (5 * ci * ci - 1);
    taux_anomalie = n + facteur * std::sqrt(1 - e * e) * (3 * ci * ci - 1);
}

sinus_cosinus kepler(double m, double e) {
    double angle = e < 0.8 ? m : std::numbers::pi; // from the far end where the rule could jump
    sinus_cosinus E = sincos_de(angle);
    for (int passe = 0;; ++passe) {
        const double ecart = (m - angle + e * E.s) / (1 - e * E.c);
        angle += ecart;
        if (std::fabs(ecart) < 1e-5) { // its cube is nothing
            const double q = ecart * ecart / 2;
            E = {E.s + ecart * E.c - q * E.s, E.c - ecart * E.s - q * E.c};
        } else {
            E = sincos_de(angle);
        }
        if (std::fabs(ecart) < 1e-8) return E;
        if (passe == 100 || !std::isfinite(angle)) {
            leve_faute();
            return E;
        }
    }
}

orbite_seculaire::point orbite_seculaire::a_la_date(double j) const {
    constexpr double tour = 2 * std::numbers::pi;
    const double t = (j - epoque) * secondes_par_jour;
    const double m = frac((anomalie + taux_anomalie * t) / tour) * tour;
    const auto [so, co] = sincos_de(noeud + taux_noeud * t);
    const auto [sw, cw] = sincos_de(perigee + taux_perigee * t);
    const auto [si, ci] = inclinaison;
    const vec3 P = {cw * co - sw * so * ci, cw * so + sw * co * ci, sw * si};
    const vec3 Q = {-sw * co - cw * so * ci, -sw * so + cw * co * ci, cw * si};

    const auto [sE, cE] = kepler(m, e);
    const double k = std::sqrt(1 - e * e), vitesse = a * moyen_mouvement / (1 - e * cE);
    point p;
    p.anomalie_moy = m;
    for (int i = 0; i < 3; ++i) {
        p.r[i] = a * ((cE - e) * P[i] + k * sE * Q[i]);
        p.v[i] = vitesse * (k * cE * Q[i] - sE * P[i]);
    }
    return p;
}
