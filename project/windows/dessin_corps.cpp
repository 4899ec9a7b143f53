#include "project/windows/dessin_corps.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "orbit/orbite.h"
#include "widgets/style.h"

namespace {

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

QColor melange(const QColor& a, const QColor& b, double part) {
    return QColor::fromRgbF(a.redF() * part + b.redF() * (1 - part),
                            a.greenF() * part + b.greenF() * (1 - part),
                            a.blueF() * part + b.blueF() * (1 - part));
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
    const QColor encre = palette().color(QPalette::WindowText), fond = palette().color(QPalette::Window);
    const QColor cellules = style::couleur(style::role::generateur);

    // The drawing keeps the proportions up to a slenderness at which the small side would vanish.
    const double s = largeur_ > 0 ? largeur_ : 1;
    const double rapport = std::clamp(hauteur_ > 0 ? hauteur_ / s : 1.0, .35, 3.0);
    const bool cylindre = cotes_ == 0;
    const int n = cylindre ? 48 : cotes_;
    const double rayon = cylindre ? .5 : .5 / std::sin(pi / n), h = rapport / 2;
    auto sommet = [&](int i, double z) {
        const double b = (2 * i - 1) * pi / n; // the normal of face i points to 2 pi i / n
        return point3{rayon * std::cos(b), rayon * std::sin(b), z};
    };

    // Two panels along y, turned about it; at 0 their cells face -x.
    const double a = angle_ * rad_par_degre, demi = .5, aile = 1.5, ecart = .3;
    const double pied = cotes_ == 4 ? .5 : rayon; // where the mast meets the body
    auto panneau = [&](double cote_y) {
        const double y0 = cote_y * (rayon + ecart), y1 = cote_y * (rayon + ecart + aile);
        const point3 v{demi * std::sin(a), 0, demi * std::cos(a)};
        return QVector<point3>{{v.x, y0, v.z}, {v.x, y1, v.z}, {-v.x, y1, -v.z}, {-v.x, y0, -v.z}};
    };
    const bool face_avant = -std::cos(a) * ca * ch + std::sin(a) * sh > 0;

    QVector<point3> tout;
    for (int i = 0; i < n; ++i) tout << sommet(i, h) << sommet(i, -h);
    if (externes_) tout << panneau(1) << panneau(-1);
    QRectF boite = projette(tout).boundingRect();
    const double marge = style::espace(7);
    const double echelle = std::min((width() - 2 * marge - style::espace(16)) / boite.width(),
                                    (height() - 2.4 * marge) / boite.height());
    d.translate(width() / 2.0 - style::espace(6), height() / 2.0 - style::espace(2));
    auto ecran = [&](const QPolygonF& p) {
        QPolygonF r;
        for (QPointF q : p) r << (q - boite.center()) * echelle;
        return r;
    };
    const QPen contour(encre, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    auto aile_dessinee = [&](double cote_y) {
        d.setPen(contour);
        const QPolygonF p = ecran(projette(panneau(cote_y)));
        const QPolygonF bras = ecran(projette({{0, cote_y * pied, 0}, {0, cote_y * (rayon + ecart), 0}}));
        d.setPen(QPen(encre, 3, Qt::SolidLine, Qt::RoundCap));
        d.drawLine(bras[0], bras[1]);
        d.setPen(contour);
        d.setBrush(face_avant ? melange(cellules, fond, .75) : melange(encre, fond, .35));
        d.drawPolygon(p);
        d.setPen(QPen(melange(encre, cellules, .4), .8));
        for (int i = 1; i < 4; ++i) d.drawLine(p[0] + (p[1] - p[0]) * i / 4., p[3] + (p[2] - p[3]) * i / 4.);
        d.drawLine((p[0] + p[3]) / 2, (p[1] + p[2]) / 2);
    };

    if (externes_) aile_dessinee(1);
    int avant = 0;
    double meilleur = -2;
    for (int i = 0; i < n; ++i) {
        const double b = 2 * pi * i / n, vue = std::cos(b) * ca + std::sin(b) * sa;
        if (vue > meilleur) meilleur = vue, avant = i;
        if (vue <= 0) continue;
        const QColor couleur =
            externes_ ? melange(encre, fond, .12 + .14 * (1 - vue)) : melange(cellules, fond, .35 + .4 * vue);
        d.setBrush(couleur);
        d.setPen(cylindre ? QPen(couleur, 1) : contour);
        d.drawPolygon(ecran(projette({sommet(i, h), sommet(i + 1, h), sommet(i + 1, -h), sommet(i, -h)})));
    }
    QVector<point3> dessus, dessous;
    for (int i = 0; i < n; ++i) dessus << sommet(i, h), dessous << sommet(i, -h);
    d.setPen(contour);
    d.setBrush(melange(encre, fond, .10));
    d.drawPolygon(ecran(projette(dessus)));
    const point3 bord{-sa * rayon, ca * rayon, 0}; // the silhouette's edge, to the right
    if (cylindre) {
        d.setBrush(Qt::NoBrush);
        for (double c : {1., -1.}) {
            const QPolygonF l = ecran(projette({{c * bord.x, c * bord.y, h}, {c * bord.x, c * bord.y, -h}}));
            d.drawLine(l[0], l[1]);
        }
        QPolygonF bas;
        for (int i = 0; i <= n / 2; ++i) {
            const double b = azimut - pi / 2 + pi * i / (n / 2);
            bas << projette({rayon * std::cos(b), rayon * std::sin(b), -h});
        }
        d.drawPolyline(ecran(bas));
    }
    if (externes_) aile_dessinee(-1);

    // Dimensions: the height at the right, the side (or the diameter) under the front.
    d.setPen(QPen(encre, 1));
    d.setFont(style::police_nombres(this));
    const QRectF corps = ecran(projette(dessus + dessous)).boundingRect();
    int droite = 0; // the edge that stands out most to the right
    for (int i = 1; i < n; ++i)
        if (projette(sommet(i, 0)).x() > projette(sommet(droite, 0)).x()) droite = i;
    const QPolygonF arete = ecran(projette({sommet(droite, h), sommet(droite, -h)}));
    const double y_haut = arete[0].y(), y_bas = arete[1].y();
    const double x = style::espace(4) + (externes_ ? boite.width() / 2 * echelle : corps.right());
    if (externes_) { // beyond the near panel: thin lines lead to the body's edge
        d.setPen(QPen(melange(encre, fond, .5), 1, Qt::DotLine));
        for (double y : {y_haut, y_bas}) d.drawLine(QPointF(corps.right(), y), QPointF(x, y));
        d.setPen(QPen(encre, 1));
    }
    cote(d, {x, y_haut}, {x, y_bas}, QString("%1 m").arg(hauteur_, 0, 'g', 4), Qt::AlignLeft);
    QPolygonF base = cylindre ? ecran(projette({{-bord.x, -bord.y, -h}, {bord.x, bord.y, -h}}))
                              : ecran(projette({sommet(avant, -h), sommet(avant + 1, -h)}));
    const double bas =
        corps.bottom() + style::espace(3) - (cylindre ? base[0].y() : std::max(base[0].y(), base[1].y()));
    base.translate(0, bas);
    cote(d, base[0], base[1], QString("%1%2 m").arg(cylindre ? "Ø " : "").arg(largeur_, 0, 'g', 4),
         Qt::AlignHCenter);
}
