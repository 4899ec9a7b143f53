/// Scalar and vector functions. Expected values: the standard library's atan2, acos, asin; identities of
/// vector algebra; the values told for the odd cases.
#include "orbit/math.h"

#include <gtest/gtest.h>

#include <random>

#include "shell/surveillance.h"

TEST(math, quadrants_around_a_circle) {
    for (int deg = -179; deg < 180; deg += 2) {
        const double a = deg * rad_par_degre, y = std::sin(a), x = std::cos(a);
        EXPECT_NEAR(atan2_v(y, x), std::atan2(y, x), 2e-14) << deg;
        double attendu = std::atan2(y, x);
        if (attendu < -pi / 2) attendu += 2 * pi;
        EXPECT_NEAR(atan_quad(y, x), attendu, 2e-14) << deg;
    }
    EXPECT_EQ(atan_quad(0, 0), 9.42477796076937 / 2);
    EXPECT_EQ(atan_quad(-1, 0), 9.42477796076937 / 2);
    EXPECT_EQ(atan_quad(1, 0), demi_pi);
    // On the y axis atan2_v gives a quarter turn whatever the sign of y.
    EXPECT_EQ(atan2_v(-1, 1e-10), demi_pi);
    EXPECT_EQ(atan2_v(-1, -1e-10), demi_pi);
}

TEST(math, arc_functions_and_their_ends) {
    const surveillance watch;
    for (double x = -0.999; x < 1; x += 0.037) {
        EXPECT_NEAR(arccos_v(x), std::acos(x), 2e-9) << x;
        EXPECT_NEAR(arcsin_v(x), std::asin(x), 1e-14) << x;
    }
    EXPECT_EQ(arccos_v(1), 0);
    EXPECT_EQ(arccos_v(-1), pi);
    EXPECT_EQ(arcsin_v(1), demi_pi);
    EXPECT_EQ(arcsin_v(-1), -demi_pi);
    EXPECT_NEAR(arccos_v(1 + 2e-16), 0, 1.1e-5) << "rounding just outside the range";
    EXPECT_NEAR(arccos_v(-1 - 2e-16), pi, 1.1e-5);
    EXPECT_FALSE(watch.faute());
    EXPECT_NEAR(arccos_p(0.3), std::acos(0.3), 1e-14);
    arccos_p(1);
    EXPECT_TRUE(watch.faute());
}

TEST(math, modulo_folds_both_signs) {
    EXPECT_EQ(modulo(0, deux_pi), 0);
    EXPECT_EQ(modulo(-1, deux_pi), 5.28318530717958);
    EXPECT_EQ(modulo(-deux_pi, deux_pi), deux_pi) << "the upper end belongs to the negative side";
    EXPECT_EQ(modulo(deux_pi, deux_pi), 0);
    for (double x = -400.3; x < 400; x += 7.7) {
        const double r = modulo(x, deux_pi);
        EXPECT_NEAR(std::sin(r), std::sin(x), 2e-12) << x;
        EXPECT_TRUE(r >= 0 && r <= deux_pi) << x;
    }
}

TEST(math, vectors_and_matrices_obey_algebra) {
    std::mt19937 alea(7);
    std::uniform_real_distribution<double> u(-2, 2);
    for (int essai = 0; essai < 50; ++essai) {
        vec3 a, b, c;
        mat3 A, B;
        for (int i = 0; i < 3; ++i) a[i] = u(alea), b[i] = u(alea), c[i] = u(alea);
        for (int i = 0; i < 9; ++i) A.e[i] = u(alea), B.e[i] = u(alea);
        const vec3 ab = vec_vectoriel(a, b);
        EXPECT_NEAR(vec_scalaire(ab, a), 0, 1e-14);
        // Lagrange: |a x b|^2 = |a|^2 |b|^2 - (a.b)^2; Jacobi: the triple product turns.
        EXPECT_NEAR(vec_scalaire(ab, ab), vec_scalaire(a, a) * vec_scalaire(b, b) - carre(vec_scalaire(a, b)),
                    1e-12);
        EXPECT_NEAR(vec_scalaire(ab, c), vec_scalaire(vec_vectoriel(b, c), a), 1e-13);
        const vec3 gauche = mat_vecteur(mat_produit(A, B), a), droite = mat_vecteur(A, mat_vecteur(B, a));
        const double x = vec_scalaire(mat_vecteur(A, a), b),
                     y = vec_scalaire(a, mat_vecteur(mat_transposee(A), b));
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(gauche[i], droite[i], 1e-12);
        EXPECT_NEAR(x, y, 1e-12);
    }
    mat3 m;
    m(0, 1) = 5;
    EXPECT_EQ(m.e[3], 5) << "the first index runs fastest";
}
