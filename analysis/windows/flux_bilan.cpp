#include "analysis/windows/flux_bilan.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <numeric>

#include "analysis/phrase_bilan.h"

namespace {

constexpr double part_negligeable = 0.002; // of the whole: a band that would not be seen

QString wh(double x) { return QString::fromStdString(nombre_fr(x, x < 99.95 ? 1 : 0)) + " Wh"; }

/// A band from a height on the left to one on the right, as wide all along.
QPainterPath ruban(double x0, double y0, double x1, double y1, double largeur) {
    const double m = (x0 + x1) / 2;
    QPainterPath c(QPointF(x0, y0));
    c.cubicTo(m, y0, m, y1, x1, y1);
    c.lineTo(x1, y1 + largeur);
    c.cubicTo(m, y1 + largeur, m, y0 + largeur, x0, y0 + largeur);
    c.closeSubpath();
    return c;
}

} // namespace

flux_bilan::flux_bilan(QWidget* parent) : QWidget(parent) {
    setObjectName("flux_bilan");
    setAccessibleName("Flux d'énergie d'une orbite");
}

QSize flux_bilan::sizeHint() const { return {style::espace(130), style::espace(60)}; }
QSize flux_bilan::minimumSizeHint() const { return {style::espace(90), style::espace(44)}; }

void flux_bilan::montre(const tour_bilan& t) {
    tour_ = t;
    vide_ = false;
    setAccessibleDescription("Générateur " + wh(t.e_gen) + ", décharge " + wh(t.e_decharge) +
                             ", charge utile " + wh(t.e_utile) + ", recharge " + wh(t.e_charge) +
                             ", pertes " + wh(t.e_pertes) + ", excédent " + wh(t.e_excedent));
    update();
}

void flux_bilan::vide() {
    vide_ = true;
    setAccessibleDescription({});
    update();
}

void flux_bilan::dessine_colonne(QPainter& p, const QList<bande>& bandes, bool entree, double echelle,
                                 const QRectF& bus) const {
    const double somme = std::accumulate(bandes.begin(), bandes.end(), 0.0,
                                         [](double s, const bande& b) { return s + std::max(b.wh, 0.0); });
    const double ligne = fontMetrics().height() * 1.15, bord = style::espace(34);
    const double x = entree ? bord : width() - bord; // outer end of the bands
    double attache = bus.center().y() - somme * echelle / 2;
    // Outer ends far enough from each other for their words.
    double besoin = 0;
    for (const bande& b : bandes) besoin += std::max(b.wh * echelle, 2 * ligne);
    const double ecart = std::max(2.0, (height() - besoin) / (double(bandes.size()) + 1));
    double y = std::max(0.0, std::min(ecart, (height() - besoin) / 2));
    for (const bande& b : bandes) {
        const double largeur = std::max(b.wh, 0.0) * echelle, place = std::max(largeur, 2 * ligne);
        const double bout = y + (place - largeur) / 2;
        const double interieur = entree ? bus.left() : bus.right();
        if (b.wh > part_negligeable * somme) {
            const QPainterPath c = entree ? ruban(x, bout, interieur, attache, largeur)
                                          : ruban(interieur, attache, x, bout, largeur);
            QColor clair = style::couleur(b.role);
            clair.setAlphaF(0.45F);
            p.fillPath(c, clair);
            if (b.motif != Qt::SolidPattern) p.fillPath(c, QBrush(style::couleur(b.role), b.motif));
            p.setPen(style::couleur(b.role));
            p.drawPath(c);
        }
        attache += largeur;
        const QRectF mots = entree ? QRectF(0, y, bord - style::espace(2), place)
                                   : QRectF(x + style::espace(2), y, bord - style::espace(2), place);
        p.setPen(palette().color(QPalette::WindowText));
        p.drawText(mots, int(Qt::AlignVCenter) | int(entree ? Qt::AlignRight : Qt::AlignLeft),
                   b.nom + "\n" + wh(b.wh));
        y += place + ecart;
    }
}

void flux_bilan::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    if (vide_) {
        p.setPen(palette().color(QPalette::PlaceholderText));
        p.drawText(rect(), Qt::AlignCenter, "Ici viendra ce qu'une orbite apporte et consomme.");
        return;
    }
    using enum style::role;
    const QList<bande> entrees = {{"Générateur", tour_.e_gen, generateur, Qt::SolidPattern},
                                  {"Décharge batterie", tour_.e_decharge, batterie, Qt::FDiagPattern}};
    const QList<bande> sorties = {
        {"Charge utile", tour_.e_utile, charge_utile, Qt::SolidPattern},
        {"Recharge batterie", tour_.e_charge - tour_.e_perte_charge, batterie, Qt::BDiagPattern},
        {"Pertes", tour_.e_pertes, perte, Qt::Dense6Pattern},
        {"Excédent", tour_.e_excedent, perte, Qt::CrossPattern}};
    const double arrivee = tour_.e_gen + tour_.e_decharge;
    const double depart =
        tour_.e_utile + tour_.e_charge - tour_.e_perte_charge + tour_.e_pertes + tour_.e_excedent;
    const double plus = std::max({arrivee, depart, 1e-9});
    const double haut = height() * 0.62, echelle = haut / plus;
    const QRectF bus(width() / 2.0 - style::espace(2), (height() - haut) / 2, style::espace(4), haut);
    dessine_colonne(p, entrees, true, echelle, bus);
    dessine_colonne(p, sorties, false, echelle, bus);
    p.setPen(Qt::NoPen);
    p.setBrush(palette().color(QPalette::Mid));
    p.drawRoundedRect(bus, 2, 2);
    p.setPen(palette().color(QPalette::WindowText));
    p.drawText(QRectF(bus.center().x() - style::espace(20), bus.bottom() + 2, style::espace(40),
                      fontMetrics().height()),
               Qt::AlignHCenter, "bus");
}
