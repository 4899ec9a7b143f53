#include "orbit/windows/dessin_orbite.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

#include "orbit/orb_trajecto.h"
#include "widgets/style.h"

namespace {

/// The orbit and its plane on the widget: x towards the ascending node, y 90 degrees ahead.
struct cadre {
    double a, e, w; ///< [km], [-], [rad]
    QPointF centre; ///< of the Earth
    double echelle; ///< pixels per km

    QPointF point(double x, double y) const { return centre + QPointF(x * echelle, -y * echelle); }
    /// The place of an eccentric anomaly [rad].
    QPointF sur_orbite(double E) const {
        const double x = a * (std::cos(E) - e), y = a * std::sqrt(1 - e * e) * std::sin(E);
        return point(x * std::cos(w) - y * std::sin(w), x * std::sin(w) + y * std::cos(w));
    }
    /// Eccentric anomaly of the ascending node.
    double noeud() const { return 2 * std::atan(std::sqrt((1 - e) / (1 + e)) * std::tan(-w / 2)); }
    bool sous_terre() const { return a * (1 - e) < rayon_terre; }
};

/// Around the ellipse's centre, so that an eccentric orbit fills the picture.
cadre cadre_de(double a, double e, double w, const QSize& place) {
    const double b = a * std::sqrt(1 - e * e);
    const QPointF centre_ellipse(-a * e * std::cos(w), -a * e * std::sin(w));
    const double demi_x = std::hypot(a * std::cos(w), b * std::sin(w));
    const double demi_y = std::hypot(a * std::sin(w), b * std::cos(w));
    const double marge_x = style::espace(18), marge_y = style::espace(12); // names stand in them
    const double echelle = std::min((place.width() / 2. - marge_x) / std::max(demi_x, rayon_terre),
                                    (place.height() / 2. - marge_y) / std::max(demi_y, rayon_terre));
    const QPointF milieu(place.width() / 2., place.height() / 2.);
    return {a, e, w, milieu - QPointF(centre_ellipse.x() * echelle, -centre_ellipse.y() * echelle), echelle};
}

/// A named point; its name stands outside of the orbit, `rang` lines beyond another name there.
void repere(QPainter& p, const cadre& c, const QPointF& ou, const QString& texte, const QColor& couleur,
            int rang = 0) {
    p.setPen(QPen(couleur, 1.5));
    p.setBrush(couleur);
    p.drawEllipse(ou, 3.5, 3.5);
    const QPointF dehors = ou - c.centre;
    const double n = std::hypot(dehors.x(), dehors.y());
    // Far enough for the text's own width.
    const double largeur = p.fontMetrics().horizontalAdvance(texte) / 2. + 8, hauteur = 15;
    const QPointF u = n > 0 ? dehors / n : QPointF(0, -1);
    const double lignes = (u.y() < 0 ? -rang : rang) * p.fontMetrics().height(); // away from the point
    const QPointF ancre = ou + QPointF(u.x() * largeur, u.y() * hauteur + lignes);
    const QRectF boite(ancre.x() - 50, ancre.y() - 10, 100, 20);
    if (texte.isEmpty()) return;
    QColor fond = QApplication::palette().color(QPalette::Window); // no line runs through a name
    fond.setAlpha(220);
    p.fillRect(p.boundingRect(boite, Qt::AlignCenter, texte).adjusted(-2, 0, 2, 0), fond);
    p.setPen(style::en_texte(couleur));
    p.drawText(boite, Qt::AlignCenter, texte);
}

void peint_terre(QPainter& p, const cadre& c) {
    const double rayon = std::max(rayon_terre * c.echelle, 2.0);
    const QColor terre = style::couleur(style::role::terre);
    QRadialGradient degrade(c.centre - QPointF(rayon / 3, rayon / 3), rayon * 1.3);
    degrade.setColorAt(0, terre.lighter(135));
    degrade.setColorAt(1, terre.darker(130));
    p.setPen(Qt::NoPen);
    p.setBrush(degrade);
    p.drawEllipse(c.centre, rayon, rayon);
}

/// The ellipse, the line of nodes and the line of apsides.
void peint_lignes(QPainter& p, const cadre& c) {
    QPainterPath chemin(c.sur_orbite(0));
    for (int i = 1; i <= 180; ++i) chemin.lineTo(c.sur_orbite(i * deux_pi / 180));
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(style::couleur(c.sous_terre() ? style::role::alerte : style::role::charge_utile), 2));
    p.drawPath(chemin);
    p.setPen(QPen(style::couleur(style::role::discret), 1, Qt::DashLine));
    p.drawLine(c.centre, c.sur_orbite(c.noeud()));
    p.drawLine(c.sur_orbite(0), c.sur_orbite(pi));
}

/// The node may fall on the perigee or the apogee: one name for both.
void peint_reperes(QPainter& p, const cadre& c, const QPointF& satellite) {
    const QPointF noeud = c.sur_orbite(c.noeud()), perigee = c.sur_orbite(0), apogee = c.sur_orbite(pi);
    const auto voisins = [](const QPointF& a, const QPointF& b) { return (a - b).manhattanLength() < 20; };
    const auto proche = [&](const QPointF& q) { return voisins(q, noeud); };
    const QColor fort = style::couleur(style::role::trait);
    repere(p, c, noeud, proche(perigee) || proche(apogee) ? QString() : "nœud",
           style::couleur(style::role::axe_x));
    repere(p, c, apogee, proche(apogee) ? "A, nœud" : "A", fort);
    repere(p, c, perigee, proche(perigee) ? "P, nœud" : "P", fort);
    const bool sous_un_nom = proche(satellite) || voisins(satellite, perigee) || voisins(satellite, apogee);
    repere(p, c, satellite, "satellite", style::couleur(style::role::generateur), sous_un_nom ? 1 : 0);
}

} // namespace

dessin_orbite::dessin_orbite(const record_orbite& o, QWidget* parent) : QWidget(parent), orbite_(o) {
    setObjectName("pict_orbite");
    setMinimumSize(style::espace(60), style::espace(60));
    setToolTip(
        "L'orbite dans son plan, la Terre à l'échelle : périgée P, apogée A, nœud ascendant et place du "
        "satellite à l'époque");
}

QSize dessin_orbite::sizeHint() const { return {style::espace(95), style::espace(90)}; }

void dessin_orbite::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const double a = orbite_.orb_demi, e = std::min(orbite_.orb_excentricite, 0.999);
    if (!(a > 0) || !(e >= 0)) return;
    const cadre c = cadre_de(a, e, orbite_.orb_argument * rad_par_degre, size());
    peint_terre(p, c);
    peint_lignes(p, c);
    peint_reperes(p, c, c.sur_orbite(anomalie_excentrique(orbite_.orb_anomalie * rad_par_degre, e)));
    if (!c.sous_terre()) return;
    p.setPen(style::couleur(style::role::alerte));
    p.drawText(rect().adjusted(4, 4, -4, -4), Qt::AlignBottom | Qt::AlignHCenter,
               "Le périgée est sous la surface de la Terre.");
}
