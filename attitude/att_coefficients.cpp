#include "attitude/att_coefficients.h"

namespace {

double cube(double x) { return x * x * x; }

/// The total mass as a divisor: one division a step, the tables below keep their form.
struct masse_totale {
    double inverse;
    friend double operator/(double x, masse_totale Mt) { return x * Mt.inverse; }
};

// The tables keep one entry a line, long ones in groups: body, dampers, wheels and springs, recoil of the
// total mass. They are one routine for the compiler, so that their products are formed once.
// clang-format off

/// Mass matrix. M(1,1) has z0 z1 and M(2,2) has z1 alone where squares would be expected: meant.
[[gnu::always_inline]] inline void matrice_de_masse(const attitude_record& a, masse_totale Mt, double (&M)[6][6]) {
    const double Ixx = a.I(0, 0), Iyy = a.I(1, 1), Izz = a.I(2, 2);
    const double Ixy = a.I(0, 1), Ixz = a.I(0, 2), Iyz = a.I(1, 2);
    const auto [md0, md1, md2] = a.md;
    const auto [ld0, ld1, ld2] = a.ld;
    const auto [z0, z1, z2] = a.z;

    M[0][0] = Ixx
                + md0 * carre(z0) + md2 * carre(z2)
                - carre(md0) * carre(z0) / Mt - carre(md2) * carre(z2) / Mt;
    M[0][1] = -Ixy - md1 * ld1 * z1 + md1 * md2 * z1 * z2 / Mt;
    M[0][2] = -Ixz - md0 * ld0 * z0 + md0 * md1 * z0 * z1 / Mt;
    M[0][3] = -md0 * md2 * z2 / Mt;
    M[0][5] = -md2 * ld2 + md0 * md2 * z0 / Mt;
    M[1][0] = -Ixy - md1 * ld1 * z1 + md1 * md2 * z1 * z2 / Mt;
    M[1][1] = Iyy
                + md0 * carre(z0) + md1 * carre(z1)
                - carre(md0) * z0 * z1 / Mt - carre(md1) * carre(z1) / Mt;
    M[1][2] = -Iyz - md2 * ld2 * z2 + md0 * md2 * z0 * z2 / Mt;
    M[1][3] = -md0 * ld0 + md0 * md1 * z1 / Mt;
    M[1][4] = -md0 * md1 * z0 / Mt;
    M[2][0] = -Ixz - md0 * ld0 * z0 + md0 * md1 * z0 * z1 / Mt;
    M[2][1] = -Iyz - md2 * ld2 * z2 + md0 * md2 * z0 * z2 / Mt;
    M[2][2] = Izz + md1 * carre(z1) + md2 * carre(z2) - carre(md1) * z1 / Mt - carre(md2) * carre(z2) / Mt;
    M[2][4] = -md1 * ld1 + md1 * md2 * z2 / Mt;
    M[2][5] = -md1 * md2 * z1 / Mt;
    M[3][1] = md0 * z0 + md2 * ld2 - carre(md0) * z0 / Mt;
    M[3][2] = -md2 * z2 - md1 * ld1 + carre(md2) * z2 / Mt;
    M[3][4] = md1 - carre(md1) / Mt;
    M[4][0] = -md0 * z0 - md2 * ld2 + carre(md0) * z0 / Mt;
    M[4][2] = md1 * z1 + md0 * ld0 - carre(md1) * z1 / Mt;
    M[4][5] = md2 - carre(md2) / Mt;
    M[5][0] = md2 * z2 + md1 * ld1 - carre(md2) * z2 / Mt;
    M[5][1] = -md1 * z1 - md0 * ld0 + carre(md1) * z1 / Mt;
    M[5][3] = md0 - carre(md0) / Mt;
}

/// Velocity coefficients, the factors of zd0, zd1, zd2. B(2,1) has no wy in its first term: meant.
[[gnu::always_inline]] inline void coefficients_de_vitesse(const attitude_record& a, masse_totale Mt, double (&B)[6][3]) {
    const auto [md0, md1, md2] = a.md;
    const auto [ld0, ld1, ld2] = a.ld;
    const auto [c0, c1, c2] = a.c;
    const auto [z0, z1, z2] = a.z;
    const double wx = a.omega[0], wy = a.omega[1], wz = a.omega[2];

    B[0][0] = 2 * md0 * z0 * wx - 2 * carre(md0) * z0 * wx / Mt;
    B[1][0] = md0 * z0 * wy - 2 * carre(md0) * z0 * wy / Mt;
    B[2][0] = -2 * md0 * ld0 * wx + 2 * md0 * md1 * z1 * wx / Mt + 2 * md0 * md2 * z2 * wy / Mt;
    B[3][0] = 2 * md0 * wy - 2 * carre(md0) * wy / Mt;
    B[4][0] = -2 * md0 * wx + 2 * carre(md0) * wx / Mt;
    B[5][0] = c0;
    B[0][1] = -2 * md1 * ld1 * wy + 2 * md0 * md1 * z0 * wz / Mt + 2 * md1 * md2 * z2 * wy / Mt;
    B[1][1] = md1 * z1 * wy - 2 * carre(md1) * z1 * wy / Mt;
    B[2][1] = md1 * z1 - 2 * carre(md1) * z1 * wy / Mt;
    B[3][1] = c1;
    B[4][1] = 2 * md1 * wz - 2 * carre(md1) * wz / Mt;
    B[5][1] = -2 * md1 * wy + 2 * carre(md1) * wy / Mt;
    B[0][2] = md2 * z2 * wx - 2 * carre(md2) * z2 * wx / Mt;
    B[1][2] = -2 * md2 * ld2 * wz + 2 * md0 * md2 * z0 * wz / Mt + 2 * md1 * md2 * z1 * wx / Mt;
    B[2][2] = md2 * z2 * wz - 2 * carre(md2) * z2 * wz / Mt;
    B[3][2] = -2 * md2 * wz + 2 * carre(md2) * wz / Mt;
    B[4][2] = c2;
    B[5][2] = 2 * md2 * wx - 2 * carre(md2) * wx / Mt;
}

/// Free terms. Meant as they stand: md2 z2^3 in L(0); md0^2 wx wz and md2 wy^2 in L(5).
[[gnu::always_inline]] inline void termes_libres(const attitude_record& a, masse_totale Mt, double (&L)[6]) {
    const double Ixx = a.I(0, 0), Iyy = a.I(1, 1), Izz = a.I(2, 2);
    const double Ixy = a.I(0, 1), Ixz = a.I(0, 2), Iyz = a.I(1, 2);
    const auto [md0, md1, md2] = a.md;
    const auto [ld0, ld1, ld2] = a.ld;
    const auto [k0, k1, k2] = a.k;
    const auto [JR0, JR1, JR2] = a.JR;
    const auto [om0, om1, om2] = a.om;
    const auto [z0, z1, z2] = a.z;
    const double wx = a.omega[0], wy = a.omega[1], wz = a.omega[2];

    L[0] = -Iyy * wy * wz + Izz * wy * wz + Ixy * wx * wz - Ixz * wx * wy - Iyz * carre(wy)
             + Iyz * carre(wz)
             - md0 * carre(z0) * wy * wz + md2 * cube(z2) * wy * wz - md0 * ld0 * z0 * wx * wy
             + md1 * ld1 * z1 * wx * wz - md2 * ld2 * z2 * carre(wy) + md2 * ld2 * z2 * carre(wz)
             + wy * JR2 * om2 - wz * JR1 * om1
             + md0 * md1 * z0 * z1 * wx * wy / Mt + md0 * md2 * z0 * z2 * carre(wy) / Mt
             - md0 * md2 * z0 * z2 * carre(wz) / Mt + carre(md0) * carre(z0) * wy * wz / Mt
             - md1 * md2 * z1 * z2 * wx * wz / Mt - carre(md2) * z0 * z2 * wy * wz / Mt;

    L[1] = Ixx * wx * wz - Izz * wx * wz - Ixy * wy * wz + Ixz * carre(wx) - Ixz * carre(wz)
             + Iyz * wx * wy
             + md0 * carre(z0) * wx * wz - md1 * carre(z1) * wx * wz + md0 * ld0 * z0 * carre(wx)
             - md0 * ld0 * z0 * carre(wz) - md1 * ld1 * z1 * wy * wz + md2 * ld2 * z2 * wx * wy
             - wx * JR2 * om2 + wz * JR0 * om0
             - md0 * md1 * z0 * z1 * carre(wx) / Mt + md0 * md1 * z0 * z1 * carre(wz) / Mt
             - md0 * md2 * z0 * z2 * wx * wy / Mt - carre(md0) * carre(z0) * wx * wz / Mt
             + md1 * md2 * z1 * z2 * wy * wz / Mt + carre(md1) * z1 * z2 * wx * wz / Mt;

    L[2] = -Ixx * wx * wy + Iyy * wx * wy - Ixy * carre(wx) + Ixy * carre(wy) + Ixz * wy * wz
             - Iyz * wx * wz
             + md1 * carre(z1) * wx * wy - md2 * carre(z2) * wx * wy + md0 * ld0 * z0 * wy * wz
             - md1 * ld1 * z1 * carre(wx) + md1 * ld1 * z1 * carre(wy) - md2 * ld2 * z2 * wx * wz
             + wx * JR1 * om1 - wy * JR0 * om0
             - md0 * md1 * z0 * z1 * wy * wz / Mt + md0 * md2 * z0 * z2 * wx * wz / Mt
             + md1 * md2 * z1 * z2 * carre(wx) / Mt - md1 * md2 * z1 * z2 * carre(wy) / Mt
             - carre(md1) * carre(z1) * wx * wy / Mt + carre(md2) * carre(z2) * wx * wy / Mt;

    L[3] = md0 * z0 * wx * wz - md1 * z1 * carre(wy) - md1 * z1 * carre(wz) + md2 * z2 * wx * wy
             - md0 * ld0 * carre(wy) - md0 * ld0 * carre(wz) + md1 * ld1 * wx * wy + md2 * ld2 * wx * wz
             + z1 * k1
             - carre(md0) * z0 * wx * wz / Mt + carre(md1) * z1 * carre(wy) / Mt
             + carre(md1) * z1 * carre(wz) / Mt - carre(md2) * z2 * wx * wy / Mt;

    L[4] = md0 * z0 * wy * wz + md1 * z1 * wx * wy - md2 * z2 * carre(wx) - md2 * z2 * carre(wz)
             + md0 * ld0 * wx * wy
             - md1 * ld1 * carre(wx) - md1 * ld1 * carre(wz) + md2 * ld2 * wy * wz
             + z2 * k2
             - carre(md0) * z0 * wy * wz / Mt - carre(md1) * z1 * wx * wy / Mt
             + carre(md2) * z2 * carre(wx) / Mt + carre(md2) * z2 * carre(wz) / Mt;

    L[5] = -md0 * z0 * carre(wx) - md0 * z0 * carre(wy) + carre(md0) * wx * wz + md1 * z1 * wx * wz
             + md2 * z2 * wy * wz - md2 * carre(wy) + md1 * ld1 * wy * wz - md2 * ld2 * carre(wx)
             + z0 * k0
             + carre(md0) * z0 * carre(wx) / Mt + carre(md0) * z0 * carre(wy) / Mt
             - carre(md1) * z1 * wx * wz / Mt - carre(md2) * z2 * wy * wz / Mt;
}

// clang-format on

} // namespace

void coefficients_attitude(const attitude_record& a, systeme_attitude& s) {
    const masse_totale Mt{1 / a.Mt};
    matrice_de_masse(a, Mt, s.M);
    coefficients_de_vitesse(a, Mt, s.B);
    termes_libres(a, Mt, s.L);
}
