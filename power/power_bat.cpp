#include "power/power_bat.h"

#include <algorithm>
#include <cfenv>

#include "shell/surveillance.h"

namespace {

constexpr double courant_plancher = 1e-06; ///< [C] the solvers keep the current positive
constexpr double tolerance = 1e-5;         ///< on the voltage or the power
constexpr double t_reference = 25;         ///< [degC] of the curves

/// The point of a curve at a temperature [degC] and l, the decimal logarithm of the current.
double abscisse(const point_courbe& c, double dT, double l) { return (c[0] + c[1] * dT + c[2] * l) / 100; }
double ordonnee(const point_courbe& c, double dT, double l) { return c[3] + c[4] * dT + c[5] * l; }

/// The straight middle part of a curve and what the two ends need of it.
struct courbe {
    const courbe_batterie& pt;
    double dT, l;
    double x1, x2, v1, v2, s;

    courbe(const courbe_batterie& points, double i, double T)
        : pt(points), dT(T - t_reference), l(std::log10(i)) {
        x1 = std::clamp(abscisse(pt[1], dT, l), 0.0, 1.0);
        x2 = std::clamp(abscisse(pt[2], dT, l), 0.0, 1.0);
        v1 = ordonnee(pt[1], dT, l);
        v2 = ordonnee(pt[2], dT, l);
        s = (v2 - v1) / (x2 - x1);
    }

    double droite(double x) const { return (x - x1) * s + v1; }

    /// Parabola through (0, v0) that joins the straight part at x1.
    double debut(double x) const {
        const double v0 = ordonnee(pt[0], dT, l);
        const double a = ((x1 * s + v0) - v1) / x1 / x1;
        const double b = s - 2 * x1 * a;
        return a * x * x + b * x + v0;
    }

    /// Discharge: parabola from the straight part to (1, v3).
    double fin_decharge(double x) const {
        const double v3 = ordonnee(pt[3], dT, l);
        const double a = ((v2 - v3) + (1 - x2) * s) / ((2 * x2 - 1) - x2 * x2);
        const double b = s - 2 * x2 * a;
        const double c = ((2 * x2 - 1) * a - s) + v3;
        return a * x * x + b * x + c;
    }

    /// Charge: cubic from the straight part, flat at (x3, v3), written about x3; not limited beyond it.
    double fin_charge(double x) const {
        const double x3 = abscisse(pt[3], dT, l), v3 = ordonnee(pt[3], dT, l);
        const double h = x2 - x3, dv = v2 - v3;
        const double a3 = (s * h - 2 * dv) / (h * h * h);
        const double a2 = (3 * dv - s * h) / (h * h);
        const double u = x - x3;
        return v3 + u * u * (a2 + a3 * u);
    }
};

/// Apart and opaque to the optimiser, so that all its arithmetic stands between the two looks at the status.
[[gnu::noipa]] double evalue_charge(const courbe_batterie& pt, double i, double T, double x) {
    const courbe c(pt, i, T);
    if (x < c.x1) return c.debut(x);
    if (!(x > c.x2)) return c.droite(x);
    return c.fin_charge(x);
}

/// Secant on g(i) = cible, i_a the newest point and i_b the one before.
template <class F>
double secante(F g, double cible, double i0, double rapport_second) {
    double i_a = i0 > 0 ? i0 : courant_plancher; // an empty battery can be charged again
    double i_b = i_a * rapport_second;
    double g_a = g(i_a);
    if (!(std::fabs(g_a - cible) > tolerance) && std::isfinite(g_a)) return i_a;
    double g_b = g(i_b);
    for (int passe = 0;; ++passe) {
        if (!std::isfinite(g_a) || !std::isfinite(g_b) || passe == passes_max) {
            leve_faute();
            return i_a;
        }
        if (!(std::fabs(g_a - cible) > tolerance)) return i_a;
        // Both at the floor, or a curve that fails at every current.
        if (i_a == i_b || g_a == g_b) return i_a;
        double suivant = i_a + (cible - g_a) * (i_b - i_a) / (g_b - g_a);
        if (!(suivant > 0)) suivant = courant_plancher;
        i_b = i_a;
        g_b = g_a;
        i_a = suivant;
        g_a = g(i_a);
    }
}

} // namespace

double bat_cap_current(const power_record& p, double i) {
    const double cmax = p.bat_cmax;
    if (!(i > 0.1)) return cmax;
    const double r = 1 - (1 - static_cast<double>(p.bat_c10)) * std::log10(i);
    return r > cmax ? cmax : r;
}

double bat_cap_temp(const power_record& p, double T) {
    const double c = static_cast<double>(p.bat_cmin_pct) / 100, tmin = p.bat_tmin;
    const double k = std::log((1 - c) * 1000) / (p.bat_t999 - tmin);
    return (1 - c) * (1 - std::exp(-(T - tmin) * k)) + c;
}

double bat_v_discharge(const power_record& p, double i, double T, double soc) {
    if (!(soc > 0)) return 0;
    const courbe c(p.de_pt, i, T);
    const double x = 1 - soc;
    if (x < c.x1) return c.debut(x);
    if (!(x > c.x2)) return c.droite(x);
    return c.fin_decharge(x);
}

double bat_v_charge(power_record& p, double i, double T, double soc) {
    const int avant = std::fetestexcept(fautes_surveillees);
    const double v = evalue_charge(p.ch_pt, i, T, soc);
    if (std::isfinite(v) && std::fetestexcept(fautes_surveillees) == avant) return v;

    // A failure: its own flags go, those raised before stay. With a flag already up, look again with none.
    std::feclearexcept(fautes_surveillees);
    const double encore = evalue_charge(p.ch_pt, i, T, soc);
    const bool echec = !std::isfinite(encore) || std::fetestexcept(fautes_surveillees) != 0;
    std::feclearexcept(fautes_surveillees);
    if (avant != 0) std::feraiseexcept(avant);
    if (!echec) return encore;
    p.courbe_charge_incompatible = true;
    return 0;
}

double bat_i_from_v_charge(power_record& p, double soc, double v, double i0, double T) {
    return secante([&](double i) { return bat_v_charge(p, i, T, soc); }, v, i0, 0.99);
}

double bat_i_from_p_charge(power_record& p, double soc, double puissance, double i0, double T) {
    return secante([&](double i) { return i * bat_v_charge(p, i, T, soc); }, puissance, i0, 1.1);
}

double bat_i_from_p_discharge(const power_record& p, double soc, double puissance, double i0, double T) {
    if (!(soc > 0)) return 0;
    return secante([&](double i) { return i * bat_v_discharge(p, i, T, soc); }, puissance, i0, 1.1);
}
