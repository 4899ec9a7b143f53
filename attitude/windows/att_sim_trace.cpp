/// The drawing of the attitude simulation: a page of the results file as two charts.
#include <QCheckBox>
#include <QScrollBar>
#include <QSpinBox>
#include <algorithm>
#include <cmath>

#include "attitude/windows/att_sim.h"
#include "shell/utilitaires.h"
#include "widgets/graphe.h"
#include "widgets/style.h"

namespace {

constexpr double hors_dessin = 1e12; // deg or deg/s: what a chart does not draw
const style::role role_axe[] = {style::role::axe_x, style::role::axe_y, style::role::axe_z};
constexpr Qt::PenStyle trait_axe[] = {Qt::SolidLine, Qt::DashLine, Qt::DashDotLine};

/// A column of the page as a curve; what no chart can show becomes a gap.
QVector<double> colonne(const table_att& t, int lignes, int c) {
    QVector<double> x(lignes);
    for (int i = 0; i < lignes; ++i) {
        const double y = t.rangs[size_t(i)][size_t(c)];
        x[i] = c == 0 || std::fabs(y) < hors_dessin ? y : NAN;
    }
    return x;
}

/// The dates of a chart; a single date stands in the middle of two minutes.
void limite_dates(graphe* g, double debut, double fin) {
    const double marge = fin > debut ? 0 : 60 / secondes_par_jour;
    g->limites_x(debut - marge, std::max(debut, fin) + marge);
}

} // namespace

void att_sim::att_trace() {
    if (fichier_temp_.isEmpty() || pages_.pages() == 0) return;
    {
        const QSignalBlocker muet_barre(scr_diagr_), muet_page(txt_page_);
        txt_page_->setValue(int(page_) + 1);
        const double part = double(page_) / std::max<double>(1, double(pages_.pages() - 1));
        scr_diagr_->setValue(int(std::lround(part * scr_diagr_->maximum())));
    }
    const bool ensemble = chk_periode_->isChecked() && pages_.pages() > 1;
    txt_page_->setEnabled(!ensemble && pages_.pages() > 1);
    scr_diagr_->setEnabled(!ensemble && pages_.pages() > 1);
    table_att t;
    const bool lue = ensemble ? pages_.lit_ensemble(t) : pages_.lit_page(page_, t);
    if (!lue) montre_bandeau(QString::fromStdString(pages_.erreur()));
    int lignes = t.lignes;
    // Where a fault ended the run, the explosion before it would flatten the curves: they stop short of it.
    if (date_explosion_ > 0)
        while (lignes > 0 && t.rangs[size_t(lignes) - 1][0] >= date_explosion_) --lignes;
    if (lignes > 0)
        for (graphe* g : {att_graph_, att_graph_v_})
            limite_dates(g, t.rangs[0][0], t.rangs[size_t(lignes) - 1][0]);
    trace_angles(t, lignes);
    trace_vitesses(t, lignes);
    // The records of the first two steps hold the rates of a start from nothing: tens of turns a minute, next
    // to which the rest would be flat.
    const double lance = debut_ + 1.5 * pas_;
    if (lignes > 2 && t.rangs[size_t(lignes) - 1][0] > lance)
        for (graphe* g : {att_graph_, att_graph_v_}) g->echelle_depuis(lance);
    for (graphe* g : {att_graph_, att_graph_v_}) g->retrace();
}

void att_sim::vide_graphes() {
    att_graph_->efface();
    att_graph_->titre("Angles d'attitude");
    att_graph_->axes({}, "deg");
    att_graph_->abscisses_dates();
    att_graph_v_->efface();
    att_graph_v_->titre("Vitesses");
    att_graph_v_->axes({}, "deg/s");
    att_graph_v_->axe_droit("tr/min");
    att_graph_v_->abscisses_dates();
    for (graphe* g : {att_graph_, att_graph_v_}) {
        g->legende(true, 3);
        limite_dates(g, s_.periode.j_debut, s_.periode.j_fin);
        g->retrace();
    }
}

void att_sim::trace_angles(const table_att& t, int lignes) {
    att_graph_->efface();
    const QVector<double> dates = colonne(t, lignes, 0);
    const char* noms[] = {"Roulis (deg)", "Tangage (deg)", "Lacet (deg)"};
    for (int i = 0; i < 3; ++i) {
        const int c = att_graph_->courbe(noms[i], style::couleur(role_axe[i]), trait_axe[i]);
        att_graph_->angulaire(c);
        att_graph_->donnees(c, dates, colonne(t, lignes, 10 + i));
    }
}

void att_sim::trace_vitesses(const table_att& t, int lignes) {
    att_graph_v_->efface();
    const QVector<double> dates = colonne(t, lignes, 0);
    struct serie {
        const char* nom;
        int colonne;
        double epaisseur; ///< tells rates, rates of the angles and wheels apart
        bool droit, visible;
    };
    const bool taux = chk_taux_->isChecked(), roues = roues_actives_ && chk_roues_->isChecked();
    const serie series[] = {
        {"ω X (deg/s)", 1, 1.8, false, true},          {"ω Y (deg/s)", 2, 1.8, false, true},
        {"ω Z (deg/s)", 3, 1.8, false, true},          {"Taux roulis (tr/min)", 4, 0.9, true, taux},
        {"Taux tangage (tr/min)", 5, 0.9, true, taux}, {"Taux lacet (tr/min)", 6, 0.9, true, taux},
        {"Roue X (deg/s)", 7, 3, false, roues},        {"Roue Y (deg/s)", 8, 3, false, roues},
        {"Roue Z (deg/s)", 9, 3, false, roues},
    };
    for (int i = 0; i < 9; ++i) {
        if (!series[i].visible) continue;
        const int c = att_graph_v_->courbe(series[i].nom, style::couleur(role_axe[i % 3]), trait_axe[i % 3],
                                           series[i].droit, series[i].epaisseur);
        att_graph_v_->donnees(c, dates, colonne(t, lignes, series[i].colonne));
    }
}
