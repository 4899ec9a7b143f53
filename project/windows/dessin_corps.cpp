#include "project/windows/dessin_corps.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "orbit/orbite.h"
#include "widgets/style.h"

namespace {

using style::melange;

struct point3 {
    double x, y, z;
};

/// The viewer stands on the side of the panels' cells, to the left and above.
constexpr double azimut = 218 * rad_par_degre, hauteur_vue = 24 * rad_par_degre;
const double ca = std::cos(azimut), sa = std::sin(azimut);
const double ch = std::cos(hauteur_vue), sh = std::sin(hauteur_vue);

/// Units of the body to the plane of the screen, x to the right and y down.
QPointF projette(point3 p) { return {-sa * p.x + ca * p.y, -(p.z * ch - (ca * p.x + sa * p.y) * sh)}; }

QPolygonF projette(const QVector<point3>& points) {
    QPolygonF r;
    for (const point3& p : points) r << projette(p);
    return r;
}

/// A line with an arrow head at both ends and its length beside the middle.
void cote(QPainter& d, QPointF a, QPointF b, const QString& texte, Qt::Alignment place) {
    d.drawLine(a, b);
    const QPointF u = (b - a) / std::max(1.0, std::hypot(b.x() - a.x(), b.y() - a.y()));
    const QPointF n(-u.y(), u.x());
    const double t = style::espace(2);
    for (auto [p, sens] : {std::pair{a, 1.0}, {b, -1.0}}) {
        d.drawLine(p, p + u * (t * sens) + n * (t * .4));
        d.drawLine(p, p + u * (t * sens) - n * (t * .4));
    }
    const QPointF m = (a + b) / 2;
    const double w = style::espace(24), h = style::espace(5);
    QRectF r(m.x() - w / 2, m.y() + style::espace(1), w, h);
    if (place & Qt::AlignLeft) r = {m.x() + style::espace(2), m.y() - h / 2, w, h};
    d.drawText(r, (place & Qt::AlignLeft ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter, texte);
}

struct encres {
    QColor encre, fond, cellules;
    QPen contour() const { return {encre, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin}; }
};

/// The body in units of its width, and where it stands on the screen.
class maquette {
public:
    maquette(int cotes, double hauteur, double largeur, bool externes, double angle, const QSize& place)
        : cylindre(cotes == 0), externes(externes), n(cylindre ? 48 : cotes),
          rayon(cylindre ? .5 : .5 / std::sin(pi / n)), pied(cotes == 4 ? .5 : rayon),
          angle_(angle * rad_par_degre) {
        // The drawing keeps the proportions up to a slenderness at which the small side would vanish.
        const double s = largeur > 0 ? largeur : 1;
        h = std::clamp(hauteur > 0 ? hauteur / s : 1.0, .35, 3.0) / 2;
        QVector<point3> tout;
        for (int i = 0; i < n; ++i) tout << sommet(i, h) << sommet(i, -h);
        if (externes) tout << panneau(1) << panneau(-1);
        boite = projette(tout).boundingRect();
        const double marge = style::espace(7);
        echelle = std::min((place.width() - 2 * marge - style::espace(16)) / boite.width(),
                           (place.height() - 2.4 * marge) / boite.height());
    }

    /// A corner at a height; the normal of face i points to 2 pi i / n.
    point3 sommet(int i, double z) const {
        const double b = (2 * i - 1) * pi / n;
        return {rayon * std::cos(b), rayon * std::sin(b), z};
    }
    /// Of two panels along y, turned about it; at 0 their cells face -x.
    QVector<point3> panneau(double cote_y) const {
        constexpr double demi = .5, aile = 1.5;
        const double y0 = cote_y * (rayon + ecart), y1 = cote_y * (rayon + ecart + aile);
        const point3 v{demi * std::sin(angle_), 0, demi * std::cos(angle_)};
        return {{v.x, y0, v.z}, {v.x, y1, v.z}, {-v.x, y1, -v.z}, {-v.x, y0, -v.z}};
    }
    bool cellules_en_vue() const { return -std::cos(angle_) * ca * ch + std::sin(angle_) * sh > 0; }
    QPolygonF ecran(const QVector<point3>& points) const {
        QPolygonF r;
        for (const QPointF& q : projette(points)) r << (q - boite.center()) * echelle;
        return r;
    }
    /// Upper or lower end of the body.
    QVector<point3> bout(double z) const {
        QVector<point3> r;
        for (int i = 0; i < n; ++i) r << sommet(i, z);
        return r;
    }
    /// The silhouette's edge, to the right (1) or to the left (-1), at a height.
    point3 bord(double cote, double z) const { return {-cote * sa * rayon, cote * ca * rayon, z}; }
    /// How much of face i is turned to the viewer, from -1 to 1.
    double vue(int i) const {
        const double b = 2 * pi * i / n;
        return std::cos(b) * ca + std::sin(b) * sa;
    }

    static constexpr double ecart = .3; ///< from the body to a panel
    bool cylindre, externes;
    int n;
    double rayon, pied; ///< of the corners; where the mast of a panel meets the body
    double h = .5;      ///< half height
    QRectF boite;       ///< all of it, in the plane of the screen
    double echelle = 1; ///< [px]

private:
    double angle_;
};

void peint_aile(QPainter& d, const maquette& m, const encres& e, double cote_y) {
    const QPolygonF p = m.ecran(m.panneau(cote_y));
    const QPolygonF bras = m.ecran({{0, cote_y * m.pied, 0}, {0, cote_y * (m.rayon + m.ecart), 0}});
    d.setPen(QPen(e.encre, 3, Qt::SolidLine, Qt::RoundCap));
    d.drawLine(bras[0], bras[1]);
    d.setPen(e.contour());
    d.setBrush(m.cellules_en_vue() ? melange(e.cellules, e.fond, .75) : melange(e.encre, e.fond, .35));
    d.drawPolygon(p);
    d.setPen(QPen(melange(e.encre, e.cellules, .4), .8));
    for (int i = 1; i < 4; ++i) d.drawLine(p[0] + (p[1] - p[0]) * i / 4., p[3] + (p[2] - p[3]) * i / 4.);
    d.drawLine((p[0] + p[3]) / 2, (p[1] + p[2]) / 2);
}

void peint_corps(QPainter& d, const maquette& m, const encres& e) {
    for (int i = 0; i < m.n; ++i) {
        const double vue = m.vue(i);
        if (vue <= 0) continue;
        const QColor couleur = m.externes ? melange(e.encre, e.fond, .12 + .14 * (1 - vue))
                                          : melange(e.cellules, e.fond, .35 + .4 * vue);
        d.setBrush(couleur);
        d.setPen(m.cylindre ? QPen(couleur, 1) : e.contour());
        d.drawPolygon(
            m.ecran({m.sommet(i, m.h), m.sommet(i + 1, m.h), m.sommet(i + 1, -m.h), m.sommet(i, -m.h)}));
    }
    d.setPen(e.contour());
    d.setBrush(melange(e.encre, e.fond, .10));
    d.drawPolygon(m.ecran(m.bout(m.h)));
    if (!m.cylindre) return;
    d.setBrush(Qt::NoBrush);
    for (const double cote : {1., -1.}) {
        const QPolygonF l = m.ecran({m.bord(cote, m.h), m.bord(cote, -m.h)});
        d.drawLine(l[0], l[1]);
    }
    QVector<point3> bas;
    for (int i = 0; i <= m.n / 2; ++i) {
        const double b = azimut - pi / 2 + pi * i / (m.n / 2);
        bas << point3{m.rayon * std::cos(b), m.rayon * std::sin(b), -m.h};
    }
    d.drawPolyline(m.ecran(bas));
}

/// The height at the right, the side (or the diameter) under the front.
void peint_cotes(QPainter& d, const maquette& m, const encres& e, double hauteur, double largeur) {
    d.setPen(QPen(e.encre, 1));
    const QRectF corps = m.ecran(m.bout(m.h) + m.bout(-m.h)).boundingRect();
    int droite = 0, avant = 0; // the edge that stands out most to the right, the face in front
    for (int i = 1; i < m.n; ++i) {
        if (projette(m.sommet(i, 0)).x() > projette(m.sommet(droite, 0)).x()) droite = i;
        if (m.vue(i) > m.vue(avant)) avant = i;
    }
    const QPolygonF arete = m.ecran({m.sommet(droite, m.h), m.sommet(droite, -m.h)});
    const double x = style::espace(4) + (m.externes ? m.boite.width() / 2 * m.echelle : corps.right());
    if (m.externes) { // beyond the near panel: thin lines lead to the body's edge
        d.setPen(QPen(melange(e.encre, e.fond, .5), 1, Qt::DotLine));
        for (const QPointF& p : arete) d.drawLine(QPointF(corps.right(), p.y()), QPointF(x, p.y()));
        d.setPen(QPen(e.encre, 1));
    }
    cote(d, {x, arete[0].y()}, {x, arete[1].y()}, QString("%1 m").arg(hauteur, 0, 'g', 4), Qt::AlignLeft);
    QPolygonF base = m.cylindre ? m.ecran({m.bord(-1, -m.h), m.bord(1, -m.h)})
                                : m.ecran({m.sommet(avant, -m.h), m.sommet(avant + 1, -m.h)});
    base.translate(0, corps.bottom() + style::espace(3) -
                          (m.cylindre ? base[0].y() : std::max(base[0].y(), base[1].y())));
    cote(d, base[0], base[1], QString("%1%2 m").arg(m.cylindre ? "Ø " : "").arg(largeur, 0, 'g', 4),
         Qt::AlignHCenter);
}

} // namespace

dessin_corps::dessin_corps(int cotes, QWidget* parent) : QWidget(parent), cotes_(cotes) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void dessin_corps::montre(double hauteur, double largeur, bool panneaux_externes, double angle) {
    hauteur_ = hauteur;
    largeur_ = largeur;
    externes_ = panneaux_externes;
    angle_ = angle;
    update();
}

QSize dessin_corps::sizeHint() const { return {style::espace(80), style::espace(70)}; }
QSize dessin_corps::minimumSizeHint() const { return {style::espace(45), style::espace(40)}; }

void dessin_corps::paintEvent(QPaintEvent*) {
    QPainter d(this);
    d.setRenderHint(QPainter::Antialiasing);
    d.translate(width() / 2.0 - style::espace(6), height() / 2.0 - style::espace(2));
    const encres e{palette().color(QPalette::WindowText), palette().color(QPalette::Window),
                   style::couleur(style::role::generateur)};
    const maquette m(cotes_, hauteur_, largeur_, externes_, angle_, size());
    if (externes_) peint_aile(d, m, e, 1);
    peint_corps(d, m, e);
    if (externes_) peint_aile(d, m, e, -1);
    d.setFont(style::police_nombres(this));
    peint_cotes(d, m, e, hauteur_, largeur_);
}
