/// The rotation of the satellite against closed solutions.
#include <gtest/gtest.h>

#include "physics/controle.h"
#include "tests/releve.h"

namespace {

constexpr double deg = 180 / 3.141592653589793;

struct scene {
    attitude_record a;
    options_modele o;
    etat_mouvement e;

    scene(double x, double y, double z) { a.I = mat_diagonale(x, y, z); }
    corps_mobile corps() const { return {a, o}; }
    /// Free motion for `duree` seconds by steps of h.
    void libre(double duree, double h) {
        const corps_mobile c = corps();
        const long n = std::lround(duree / h);
        for (long i = 0; i < n; ++i) pas_rk4(c, e, duree / static_cast<double>(n), sans_action);
    }
    vec3 omega() const { return vitesses_de(corps(), e, rotation_de(e.q)).omega; }
    static actions sans_action(int, const rotation&, const vitesses_corps&, const etat_mouvement&) {
        return {};
    }
};

/// sn, cn, dn of u for the parameter m = k^2, by the arithmetic-geometric mean (Abramowitz and Stegun 16.4).
vec3 jacobi(double u, double m) {
    std::array<double, 12> a{1}, c{std::sqrt(m)};
    double b = std::sqrt(1 - m), phi;
    int n = 0;
    for (; n < 10 && c[n] > 1e-17; ++n) {
        a[n + 1] = (a[n] + b) / 2;
        c[n + 1] = (a[n] - b) / 2;
        b = std::sqrt(a[n] * b);
    }
    phi = std::ldexp(a[n] * u, n);
    for (; n > 0; --n) phi = (phi + std::asin(c[n] * std::sin(phi) / a[n])) / 2;
    const double s = std::sin(phi);
    return {s, std::cos(phi), std::sqrt(1 - m * s * s)};
}

} // namespace

/// L. D. Landau and E. M. Lifshitz, Mechanics, 37: the body rates are Jacobi's functions when H^2 > 2 E I2.
TEST(mouvement, asymmetric_body_follows_jacobi) {
    scene s(2, 3, 4.5);
    const double I1 = 2, I2 = 3, I3 = 4.5;
    lance_mouvement(s.corps(), s.e, {.1, 0, .2});
    const double E2 = I1 * .01 + I3 * .04, M2 = I1 * I1 * .01 + I3 * I3 * .04;
    const double vitesse = std::sqrt((I3 - I2) * (M2 - E2 * I1) / (I1 * I2 * I3));
    const double m = (I2 - I1) * (E2 * I3 - M2) / ((I3 - I2) * (M2 - E2 * I1));
    const double A = std::sqrt((E2 * I3 - M2) / (I1 * (I3 - I1))),
                 B = std::sqrt((E2 * I3 - M2) / (I2 * (I3 - I2))),
                 C = std::sqrt((M2 - E2 * I1) / (I3 * (I3 - I1)));
    for (int k = 1; k <= 40; ++k) {
        s.libre(10, .02 / .2236);
        const auto [sn, cn, dn] = jacobi(vitesse * 10 * k, m);
        const vec3 w = s.omega();
        const double exact[] = {A * cn, B * sn, C * dn};
        for (int i = 0; i < 3; ++i) RELEVE("mouvement.jacobi", w[i], exact[i], 2e-7) << k;
    }
}

/// A symmetric body: its axis goes round H at the rate H / It, at a constant angle (Landau and Lifshitz, 33).
TEST(mouvement, precession_of_a_symmetric_body) {
    scene s(3, 3, 1);
    s.a.JR = {0, 0, .01};
    lance_mouvement(s.corps(), s.e, {.06, 0, .5});
    const vec3 h0 = vec_echelle(1 / vec_norme(s.e.H), s.e.H);
    const auto phase = [&] { // of the body's z axis about H
        const vec3 z = rotation_de(s.e.q).l[2], u = vec_vectoriel(h0, {0, 1, 0}), v = vec_vectoriel(h0, u);
        return std::atan2(vec_scalaire(z, v) / vec_norme(v), vec_scalaire(z, u) / vec_norme(u));
    };
    const double depart = phase(), inclinaison = vec_scalaire(rotation_de(s.e.q).l[2], h0);
    const double duree = 1000;
    s.libre(duree, .02 / .5);
    const double tours = vec_norme(s.e.H) / 3 * duree;
    RELEVE("mouvement.precession", std::remainder(phase() - depart - tours, 2 * pi), 0, 1e-6);
    EXPECT_NEAR(vec_scalaire(rotation_de(s.e.q).l[2], h0), inclinaison, 1e-10);
}

/// Nutation of a spinner with a damper on x that slides along the spin axis, by energy: the mass is driven by
/// l nu (W - lambda) cos(lambda t), lambda = (I3/It - 1) W, and friction takes c z'^2 from the energy
/// It (1 - It/I3) nu^2 / 2 of the nutation (P. C. Hughes, 1986, 7.2).
TEST(mouvement, nutation_damping_rate) {
    const double It = 10, I3 = 14, W = .5, m = .05, l = .4, lambda = (I3 / It - 1) * W;
    scene s(It, It, I3);
    s.a.md = {m, 0, 0}, s.a.ld = {l, 0, 0};
    s.a.k = {m * lambda * lambda * 1.3, 0, 0}, s.a.c = {.01, 0, 0};
    lance_mouvement(s.corps(), s.e, {.01, 0, W});
    const double libre = m * (1 - m / s.a.Mt), raideur = s.a.k[0] - libre * lambda * lambda;
    const double Z = m * l * (W - lambda) / std::hypot(raideur, s.a.c[0] * lambda);
    const double taux = .5 * s.a.c[0] * carre(lambda * Z) / (It * (1 - It / I3));

    const auto nutation = [&] { return std::hypot(s.omega()[0], s.omega()[1]); };
    double E = energie_de(s.corps(), s.e);
    for (int k = 0; k < 100; ++k) {
        s.libre(1, .025);
        const double suivante = energie_de(s.corps(), s.e);
        EXPECT_LE(suivante, E * (1 + 1e-13));
        E = suivante;
    }
    const double a = nutation(), H = vec_norme(s.e.H);
    const double duree = 2 * pi / lambda * 40;
    s.libre(duree, .025);
    RELEVE("mouvement.nutation", std::log(a / nutation()) / duree / taux, 1, .02);
    EXPECT_DOUBLE_EQ(vec_norme(s.e.H), H);
}

/// Over 10,000 turns, wheels on: momentum to the last digits, energy within 1e-7 and never above the start;
/// with three free springs the energy of all parts stays as well.
TEST(mouvement, momentum_and_energy_without_torque) {
    scene s(2, 3, 4.5);
    s.a.I(0, 1) = .2;
    s.a.JR = {.001, .002, .003};
    s.e.hw = {.02, -.01, .03};
    lance_mouvement(s.corps(), s.e, {.3, 1, .2});
    const corps_mobile c = s.corps();
    const vec3 H = s.e.H;
    const double E = energie_de(c, s.e), h = pas_du_mouvement(c, {.3, 1, .2}, s.e.hw, {});
    EXPECT_LE(h, .05);
    double plus_haut = E;
    for (double angle = 0; angle < 2 * pi * 10000; angle += h) {
        pas_rk4(c, s.e, h, scene::sans_action);
        plus_haut = std::max(plus_haut, energie_de(c, s.e));
    }
    RELEVE("mouvement.moment", vec_norme(vec_difference(s.e.H, H)) / vec_norme(H), 0, 1e-14);
    RELEVE("mouvement.energie", energie_de(c, s.e) / E, 1, 2e-7);
    RELEVE("mouvement.energie_haut", plus_haut / E, 1, 4e-10);

    scene r(2, 3, 4.5);
    r.a.Mt = 20;
    r.a.md = {.5, .4, .3}, r.a.ld = {.3, .2, .4}, r.a.k = {.05, .06, .02};
    lance_mouvement(r.corps(), r.e, {.03, .1, .02});
    const double E0 = energie_de(r.corps(), r.e);
    r.libre(2000, .05);
    EXPECT_GT(vec_norme(r.e.z), 1e-4);
    RELEVE("mouvement.ressorts", energie_de(r.corps(), r.e) / E0, 1, 1e-8);
}

/// With dampers, wheels and a torque: each halving of the step divides the error by 2^4.
TEST(mouvement, fourth_order) {
    const auto angle_final = [](double h) {
        scene s(2, 3, 4.5);
        s.a.md = {.5, .4, .3}, s.a.ld = {.3, .2, .4}, s.a.k = {.05, .06, .02}, s.a.c = {.01, .02, .01};
        s.a.JR = {.01, .01, .01};
        s.e.hw = {.1, .2, -.1};
        const corps_mobile c = s.corps();
        lance_mouvement(c, s.e, {.1, .2, .05});
        double t = 0;
        for (int i = 0; i < std::lround(64 / h); ++i, t += h)
            pas_rk4(c, s.e, h,
                    [&](int instant, const rotation& A, const vitesses_corps& v, const etat_mouvement&) {
                        return actions{vec_echelle(.02 * std::cos(.1 * (t + h * instant / 2)), A.l[2]),
                                       vec_echelle(-.01, v.omega)};
                    });
        return s.e;
    };
    const etat_mouvement juste = angle_final(1. / 128);
    double avant = 0;
    for (const double h : {.5, .25, .125}) {
        const etat_mouvement e = angle_final(h);
        double ecart = 0;
        for (int i = 0; i < 4; ++i) ecart += carre(e.q[i] - juste.q[i]);
        for (int i = 0; i < 3; ++i) ecart += carre(e.H[i] - juste.H[i]) + carre(e.z[i] - juste.z[i]);
        ecart = std::sqrt(ecart);
        releve::point("ordre", "modèle", h, ecart);
        if (avant > 0) {
            RELEVE("mouvement.ordre", std::log2(avant / ecart), 4, .2) << h;
        }
        avant = ecart;
    }
}

/// The acceleration told is the slope of the rate, dampers and driven wheels included.
TEST(mouvement, acceleration_is_the_slope_of_the_rate) {
    scene s(2, 3, 4.5);
    s.a.md = {.5, .4, .3}, s.a.ld = {.3, .2, .4}, s.a.k = {.05, .06, .02}, s.a.c = {.01, .02, .01};
    s.e.hw = {.1, .2, -.1};
    const corps_mobile c = s.corps();
    lance_mouvement(c, s.e, {.1, .2, .05});
    const actions u{{.01, -.02, .03}, {.002, .001, -.003}};
    const auto constante = [&](int, const rotation&, const vitesses_corps&, const etat_mouvement&) {
        return u;
    };
    for (int i = 0; i < 40; ++i) pas_rk4(c, s.e, .1, constante);
    scene avant = s, apres = s;
    pas_rk4(c, avant.e, -1e-3, constante);
    pas_rk4(c, apres.e, 1e-3, constante);
    const rotation A = rotation_de(s.e.q);
    const vec3 a = acceleration_de(c, s.e, A, vitesses_de(c, s.e, A), u);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR((apres.omega()[i] - avant.omega()[i]) / 2e-3, a[i], 1e-8);
}

/// A second-order system: overshoot exp(-pi z / sqrt(1 - z^2)) at pi / (w sqrt(1 - z^2)) (any text on
/// control).
TEST(controle, pd_step_response) {
    controle_attitude c;
    c.loi = loi_controle::pd;
    c.frequence = .1, c.amortissement = .4, c.couple_max = 1, c.vitesse_max = 1e4;
    const double d = std::sqrt(1 - .16), depart = 4 / deg;
    for (int axe = 0; axe < 3; ++axe) {
        scene s(2, 3, 4.5);
        s.a.I(0, 2) = .3;
        s.a.JR = {.01, .01, .01};
        s.e.hw = {.02, .01, -.03}; // their gyroscopic torque is made up for
        s.e.q = {std::cos(depart / 2), 0, 0, 0};
        s.e.q[axe + 1] = std::sin(depart / 2);
        const corps_mobile corps = s.corps();
        lance_mouvement(corps, s.e, {});
        double plus_bas = 0, date = 0;
        saturations sature = 0;
        for (double t = 0; t < 60; t += .1) {
            const double angle = 2 * std::asin(s.e.q[axe + 1]);
            if (angle < plus_bas) plus_bas = angle, date = t;
            pas_rk4(corps, s.e, .1,
                    [&](int, const rotation& A, const vitesses_corps& v, const etat_mouvement& e) {
                        return actions{{},
                                       couple_pd(c, corps, ecart_au_repere(A, {}, {}, v.omega), v.omega,
                                                 A.vers_corps(e.H), e.hw, sature)};
                    });
        }
        RELEVE("controle.depassement", -plus_bas / depart, std::exp(-pi * .4 / d), .003) << axe;
        RELEVE("controle.date", date, pi / (.1 * d), .2) << axe;
        EXPECT_EQ(sature, 0);
    }
    // A wheel at its largest speed takes up no more and can still give back.
    scene s(2, 3, 4.5);
    s.a.JR = {.01, .01, .01};
    c.vitesse_max = 1;
    saturations sature = 0;
    const auto couple = [&](double hw) {
        return couple_pd(c, s.corps(), {{.1, 0, 0}, {}}, {}, {}, {hw, 0, 0}, sature)[0];
    };
    EXPECT_NEAR(couple(-.02), 2 * .01 * .1, 1e-12);
    EXPECT_EQ(couple(.02), 0);
}
