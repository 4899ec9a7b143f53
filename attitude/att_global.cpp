#include "attitude/att_global.h"

void bilan_masses(attitude_record& a) {
    const vec3 &m = a.mext, &d = a.dext, &cm = a.cm, &md = a.md, &ld = a.ld;
    a.Mt = m[0] + m[1] + m[2] + a.Masse + 2 * md[0] + 2 * md[1] + 2 * md[2];

    // Steiner terms of the body and of the paired masses about the offset centre, then each pair on its axis.
    const double A = 2 * m[1] + a.Masse + 2 * m[2] + 2 * m[0];
    const auto paire = [&](int i) { return 2 * carre(d[i]) * m[i]; };
    const auto amortisseur = [&](int i) { return 2 * carre(ld[i]) * md[i]; };
    a.I(0, 0) = A * (carre(cm[2]) + carre(cm[1])) + paire(1) + a.I_corps(0, 0) + paire(2) + amortisseur(1) +
                amortisseur(2);
    a.I(1, 1) = A * (carre(cm[0]) + carre(cm[2])) + paire(0) + a.I_corps(1, 1) + paire(2) + amortisseur(0) +
                amortisseur(2);
    a.I(2, 2) = A * (carre(cm[0]) + carre(cm[1])) + paire(0) + a.I_corps(2, 2) + paire(1) + amortisseur(0) +
                amortisseur(1);
    const auto produit = [&](int i, int j) {
        const double cc = cm[i] * cm[j];
        return cc * a.Masse + a.I_corps(i, j) + 2 * m[0] * cc + 2 * m[1] * cc + 2 * m[2] * cc;
    };
    a.I(0, 1) = a.I(1, 0) = produit(0, 1);
    a.I(0, 2) = a.I(2, 0) = produit(0, 2);
    a.I(1, 2) = a.I(2, 1) = produit(1, 2);
    a.cm_total = a.cm;
    faces_recalcul(a);
}

void faces_recalcul(attitude_record& a) {
    for (int face = 0; face < 6; ++face) {
        const int axe = face % 3;
        for (int j = 0; j < 3; ++j) a.face_c[face][j] = -a.cm[j];
        a.face_c[face][axe] += (face < 3 ? 1 : -1) * a.dim[axe] / 2;
    }
}
