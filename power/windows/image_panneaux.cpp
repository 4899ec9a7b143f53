#include "power/windows/image_panneaux.h"

#include <QPainter>
#include <QPolygonF>

#include <cmath>

#include "widgets/style.h"

namespace {

QPointF polaire(double r, double degres) {
    const double a = degres * M_PI / 180;
    return {r * std::cos(a), -r * std::sin(a)};
}

void texte_centre(QPainter& p, const QPointF& centre, const QString& t) {
    const QSizeF place(40, 20);
    p.drawText(QRectF(centre - QPointF(place.width() / 2, place.height() / 2), place), Qt::AlignCenter, t);
}

void axe(QPainter& p, const QPointF& bout, const QString& nom, style::role r) {
    const QPointF u = bout / std::hypot(bout.x(), bout.y()), v(-u.y(), u.x());
    p.setPen(QPen(style::couleur(r), 1.5));
    p.drawLine(QPointF(), bout);
    p.drawPolyline(QPolygonF{bout - u * 5 + v * 3, bout, bout - u * 5 - v * 3});
    texte_centre(p, bout + u * 9, nom);
}

} // namespace

image_panneaux::image_panneaux(int panneaux, const QString& nom, QWidget* parent)
    : QWidget(parent), panneaux_(panneaux) {
    setObjectName(nom);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip(panneaux == 1 ? "Deux panneaux externes identiques, qui tournent ensemble"
                             : "Le corps vu de dessus : place et numéro des panneaux");
}

QSize image_panneaux::sizeHint() const { return {style::espace(48), style::espace(44)}; }

void image_panneaux::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QFont f = font();
    f.setPixelSize(style::espace(3));
    p.setFont(f);
    p.translate(width() / 2.0, height() / 2.0);
    const double rayon = std::min(width(), height()) * 0.28;
    panneaux_ == 1 ? dessine_externes(p, rayon) : dessine_corps(p, rayon);
}

/// `rayon`: distance of the panels from the axis.
void image_panneaux::dessine_corps(QPainter& p, double rayon) const {
    QPolygonF corps;
    const double pas = 360.0 / panneaux_, vers_sommet = 1 / std::cos(pas / 2 * M_PI / 180);
    for (int i = 0; i < panneaux_; ++i) corps << polaire(rayon * vers_sommet, (i - 0.5) * pas);
    p.setPen(QPen(style::couleur(style::role::trait), 1));
    p.setBrush(palette().color(QPalette::Base));
    p.drawPolygon(corps);
    axe(p, polaire(rayon * 0.55, 0), "X", style::role::axe_x);
    axe(p, polaire(rayon * 0.55, 90), "Y", style::role::axe_y);
    const bool cylindre = panneaux_ == 36;
    for (int i = 0; i < panneaux_; ++i) {
        // Strips of the cylinder stand half a step further, and only every ninth bears its number.
        const double centre = cylindre ? (i + 0.5) * pas : i * pas;
        const double r = (rayon + 3) * vers_sommet;
        const QPointF u = polaire(r, centre - pas / 2), v = polaire(r, centre + pas / 2),
                      milieu = (u + v) / 2;
        p.setPen(QPen(style::couleur(style::role::generateur), 4));
        p.drawLine(milieu + (u - milieu) * 0.85, milieu + (v - milieu) * 0.85);
        if (cylindre && i % 9 != 0) continue;
        p.setPen(style::couleur(style::role::trait));
        texte_centre(p, polaire(rayon + 15, centre), QString::number(i + 1));
    }
}

void image_panneaux::dessine_externes(QPainter& p, double rayon) const {
    const double c = rayon * 0.5, l = rayon * 0.95;
    p.setPen(QPen(style::couleur(style::role::trait), 1));
    p.drawLine(QPointF(-c - l - 6, 0), QPointF(c + l + 6, 0));
    p.setBrush(palette().color(QPalette::Base));
    p.drawRect(QRectF(-c, -c, 2 * c, 2 * c));
    p.setPen(QPen(style::couleur(style::role::generateur), 2));
    for (const double x : {-c - l - 3, c + 3}) {
        p.drawRect(QRectF(x, -c * 0.8, l, c * 1.6));
        for (int i = 1; i < 3; ++i)
            p.drawLine(QPointF(x + l * i / 3, -c * 0.8), QPointF(x + l * i / 3, c * 0.8));
    }
    p.setPen(style::couleur(style::role::trait));
    texte_centre(p, {-c - l / 2, c * 0.8 + 12}, "1");
    texte_centre(p, {c + l / 2, c * 0.8 + 12}, "1");
}
