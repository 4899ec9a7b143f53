#include "orbit/windows/dessin_pointage.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

#include "orbit/matrices.h"
#include "widgets/style.h"

namespace {

/// Projection of the local orbital frame on the widget: the track runs to the right and a little towards the
/// viewer, the radial points up.
struct vue {
    QPointF centre;
    double echelle;
    QPointF point(const vec3& v) const {
        return centre + echelle * QPointF(.85 * v[0] + .45 * v[1], .28 * v[0] - .42 * v[1] - .9 * v[2]);
    }
    /// Distance towards the viewer.
    static double pres(const vec3& v) { return .45 * v[0] - .8 * v[1] + .3 * v[2]; }
};

void fleche(QPainter& p, const QPointF& de, const QPointF& a, const QColor& couleur, const QString& nom,
            double largeur) {
    p.setPen(QPen(couleur, largeur));
    p.drawLine(de, a);
    const QPointF d = a - de;
    const double n = std::hypot(d.x(), d.y());
    if (n < 4) return;
    const QPointF u = d / n, w(-u.y(), u.x());
    p.setBrush(couleur);
    p.setPen(Qt::NoPen);
    p.drawPolygon(QPolygonF({a + u * 7, a + w * 3.5, a - w * 3.5}));
    p.setPen(couleur);
    const QPointF t = a + u * 18;
    p.drawText(QRectF(t.x() - 50, t.y() - 10, 100, 20), Qt::AlignCenter, nom);
}

constexpr style::role roles[] = {style::role::axe_x, style::role::axe_y, style::role::axe_z};
constexpr double demi_cube = .42;

/// The local frame behind, and the Earth below.
void peint_repere(QPainter& p, const vue& v, const QSizeF& place) {
    const vec3 origine{};
    const QColor discret = style::couleur(style::role::discret);
    p.setPen(QPen(style::couleur(style::role::terre), 2));
    p.drawArc(QRectF(-place.width() * .5, place.height() * .93, place.width() * 2., place.height() * .8),
              40 * 16, 100 * 16);
    fleche(p, v.point(origine), v.point({1.5, 0, 0}), discret, "trace", 1);
    fleche(p, v.point(origine), v.point({0, 1.5, 0}), discret, "normale", 1);
    fleche(p, v.point(origine), v.point({0, 0, 1.35}), discret, "radiale", 1);
}

/// The six faces of a cube, far ones first; those of the axes bear their colour.
void peint_cube(QPainter& p, const vue& v, const tour_corps& tour) {
    constexpr double c = demi_cube;
    struct face {
        int axe, signe;
        double pres;
    };
    face faces[6];
    for (int i = 0; i < 6; ++i) {
        vec3 n{};
        n[i % 3] = i < 3 ? 1 : -1;
        faces[i] = {i % 3, i < 3 ? 1 : -1, vue::pres(tour.depuis_corps(n))};
    }
    std::sort(faces, faces + 6, [](const face& a, const face& b) { return a.pres < b.pres; });
    for (const face& f : faces) {
        QPolygonF contour;
        for (const auto& [a, b] : {std::pair{-c, -c}, {c, -c}, {c, c}, {-c, c}}) {
            vec3 coin{};
            coin[f.axe] = f.signe * c;
            coin[(f.axe + 1) % 3] = a;
            coin[(f.axe + 2) % 3] = b;
            contour << v.point(tour.depuis_corps(coin));
        }
        QColor fond = style::couleur(roles[f.axe]);
        fond.setAlpha(f.signe > 0 ? 190 : 70);
        p.setPen(QPen(style::couleur(style::role::trait), 1));
        p.setBrush(fond);
        p.drawPolygon(contour);
    }
}

void peint_axes(QPainter& p, const vue& v, const tour_corps& tour) {
    for (int axe = 0; axe < 3; ++axe) {
        vec3 pied{}, bout{};
        pied[axe] = demi_cube;
        bout[axe] = 1.05;
        fleche(p, v.point(tour.depuis_corps(pied)), v.point(tour.depuis_corps(bout)),
               style::couleur(roles[axe]), QString("+%1").arg("XYZ"[axe]), 2.5);
    }
}

} // namespace

dessin_pointage::dessin_pointage(const pointage_record& p, QWidget* parent) : QWidget(parent), pointage_(p) {
    setObjectName("pict_pointage");
    setMinimumSize(style::espace(60), style::espace(55));
    setToolTip("Le corps et ses axes (X rouge, Y vert, Z bleu) dans le repère orbital local");
}

QSize dessin_pointage::sizeHint() const { return {style::espace(95), style::espace(85)}; }

void dessin_pointage::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const vue v{QPointF(width() / 2., height() * .52), std::min(width(), height()) * .3};
    const tour_corps tour(pointage_.lacet, pointage_.tangage, pointage_.roulis);
    peint_repere(p, v, size());
    peint_cube(p, v, tour);
    peint_axes(p, v, tour);
}
