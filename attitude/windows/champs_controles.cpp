#include "attitude/windows/champs_controles.h"

#include <cmath>
#include <vector>

#include "attitude/windows/boite_att.h"
#include "shell/formats.h"

namespace {

struct champ {
    QString controle;
    double& (*valeur)(attitude_record&, int);
    int element;
    QString sens, unite;
    double min = -INFINITY, max = INFINITY;
    bool degres = false;
};

#define CHAMP(nom) [](attitude_record& a, int i) -> double& { return a.nom[i]; }

std::vector<champ> table() {
    std::vector<champ> t;
    const auto axes = [&](const QString& avant, const QString& apres, const QStringList& noms, auto valeur,
                          const QString& sens, const QString& unite, double min, double max) {
        const char* axe[] = {"X", "Y", "Z"};
        for (int i = 0; i < 3; ++i)
            t.push_back({avant + noms[i] + apres, valeur, i, sens + QString(" ") + axe[i], unite, min, max});
    };
    const QStringList xyz = {"x", "y", "z"}, n123 = {"1", "2", "3"};
    const double inf = INFINITY;
    t.push_back({"Masse", [](attitude_record& a, int) -> double& { return a.Masse; }, 0,
                 "Masse du corps central", "kg", -100, 100});
    axes("dimens", "", n123, CHAMP(dim), "Dimension du corps central suivant", "m", 0, 90);
    axes("cm", "", xyz, CHAMP(cm), "Position du centre de gravité du corps central suivant", "m", -inf, inf);
    const char* inerties[] = {"I_xx", "I_yy", "I_zz", "I_xy", "I_xz", "I_yz"};
    const int position[] = {0, 4, 8, 3, 6, 7};
    for (int i = 0; i < 6; ++i)
        t.push_back({inerties[i], [](attitude_record& a, int k) -> double& { return a.I_corps.e[k]; },
                     position[i],
                     QString(i < 3 ? "Moment d'inertie" : "Produit d'inertie") + " du corps central", "kg m²",
                     -100, 100});
    axes("dip_", "", xyz, CHAMP(dip_res), "Dipôle résiduel suivant", "A m²", -10, 10);
    axes("dip_", "_act", xyz, CHAMP(dip_act), "Dipôle du magnétocoupleur suivant", "A m²", -10, 10);
    axes("txt_jets_", "", xyz, CHAMP(jets), "Couple constant des tuyères suivant", "N m", -10, 10);
    axes("txt_JR", "", n123, CHAMP(JR), "Inertie de la roue d'axe", "kg m²", -inf, inf);
    axes("txt_OM", "", n123, CHAMP(OM_init), "Vitesse initiale de la roue d'axe", "deg/s", -inf, inf);
    for (int i = 0; i < 3; ++i) t[t.size() - 1 - i].degres = true;
    axes("txt_md", "", n123, CHAMP(md), "Masse de l'amortisseur d'axe", "kg", -inf, inf);
    axes("txt_ld", "", n123, CHAMP(ld), "Bras de levier de l'amortisseur d'axe", "m", -inf, inf);
    axes("txt_c", "", n123, CHAMP(c), "Viscosité de l'amortisseur d'axe", "N s/m", -inf, inf);
    axes("txt_k", "", n123, CHAMP(k), "Raideur de l'amortisseur d'axe", "N/m", -inf, inf);
    const QStringList faces = {"x", "y", "z"};
    struct coefficient {
        const char *avant, *apres, *sens;
        double& (*valeur)(attitude_record&, int);
    };
    for (const coefficient& c : {coefficient{"s", "", "Coefficient aérodynamique normal", CHAMP(sn)},
                                 coefficient{"s", "t", "Coefficient aérodynamique tangentiel", CHAMP(st)},
                                 coefficient{"cr", "", "Coefficient de réflexion de la lumière", CHAMP(cr)},
                                 coefficient{"cd", "", "Coefficient de diffusion de la lumière", CHAMP(cd)}})
        for (int f = 0; f < 6; ++f)
            t.push_back({c.avant + faces[f % 3] + c.apres + (f < 3 ? "_pos" : "_neg"), c.valeur, f,
                         QString("%1 de la face %2%3").arg(c.sens, f < 3 ? "+" : "-", faces[f % 3].toUpper()),
                         "", 0, 10});
    return t;
}

} // namespace

void relie_champ(boite_att& b, attitude_record& a) {
    static const std::vector<champ> champs = table();
    for (const champ& c : champs) {
        if (c.controle != b.objectName()) continue;
        if (std::isfinite(c.max)) b.limites(c.min, c.max);
        if (c.degres) b.en_degres();
        QString aide = c.sens;
        if (!c.unite.isEmpty()) aide += ", en " + c.unite;
        if (std::isfinite(c.max)) aide += QString(" ; de %1 à %2").arg(c.min).arg(c.max);
        b.setToolTip(aide);
        b.relie(c.valeur(a, c.element));
        return;
    }
}
