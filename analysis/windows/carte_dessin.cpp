/// How the map is drawn.
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "analysis/windows/carte_terre.h"
#include "widgets/style.h"

namespace {

QColor avec_alpha(QColor c, double alpha) {
    c.setAlphaF(float(alpha));
    return c;
}

/// A text that stands out from whatever is below it.
void ecrit(QPainter& p, const QPointF& ou, const QString& texte, const QColor& encre, const QColor& fond) {
    p.setPen(avec_alpha(fond, 0.8));
    for (const QPointF& d : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
        p.drawText(ou + d, texte);
    p.setPen(encre);
    p.drawText(ou, texte);
}

} // namespace

template <class F>
void carte_terre::par_tour(double lon_min, double lon_max, F f) const {
    const double demi = cadre().width() / 2 / echelle();
    const double gauche = centre_.lon - demi, droite = centre_.lon + demi;
    for (double tour = 360 * std::ceil((gauche - lon_max) / 360); lon_min + tour <= droite; tour += 360)
        f(tour);
}

void carte_terre::paintEvent(QPaintEvent*) {
    const QRectF c = cadre();
    const double finesse = devicePixelRatioF();
    const QString cle = QString("%1 %2 %3 %4 %5 %6 %7")
                            .arg(width())
                            .arg(height())
                            .arg(finesse)
                            .arg(zoom_, 0, 'g', 12)
                            .arg(centre_.lon, 0, 'g', 12)
                            .arg(centre_.lat, 0, 'g', 12)
                            .arg(palette().color(QPalette::Window).rgb());
    if (cle != cle_fond_) {
        fond_ = dessine_fond();
        cle_fond_ = cle;
    }
    QPainter p(this);
    p.drawPixmap(0, 0, fond_);
    p.setClipRect(c);
    p.setRenderHint(QPainter::Antialiasing);
    dessine_nuit(p);
    dessine_stations(p);
    dessine_trace(p);
    dessine_soleil(p);
    dessine_satellite(p);
    p.setClipping(false);
    if (hasFocus()) {
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(palette().color(QPalette::Highlight), 1));
        p.drawRect(c.adjusted(0.5, 0.5, -0.5, -0.5));
    }
}

QPixmap carte_terre::dessine_fond() const {
    const double finesse = devicePixelRatioF();
    QPixmap image(size() * finesse);
    image.setDevicePixelRatio(finesse);
    const QColor fenetre = palette().color(QPalette::Window), encre = palette().color(QPalette::WindowText);
    image.fill(fenetre);
    QPainter p(&image);
    p.setClipRect(cadre());
    const QColor mer =
        style::melange(style::couleur(style::role::terre), palette().color(QPalette::Base), 0.22);
    const QColor terre =
        style::melange(style::melange(style::couleur(style::role::soleil), encre, 0.4), // sand
                       palette().color(QPalette::Base), 0.16);
    p.fillRect(cadre(), mer);
    const double e = echelle();
    const auto cote = avec_alpha(encre, 0.55);
    par_tour(-180, 180, [&](double tour) {
        p.save();
        p.translate(width() / 2.0, height() / 2.0);
        p.scale(e, e);
        p.translate(tour - centre_.lon, centre_.lat);
        p.setPen(Qt::NoPen);
        p.setBrush(terre);
        p.setRenderHint(QPainter::Antialiasing);
        p.drawPath(terres_);
        p.setBrush(Qt::NoBrush);
        QPen trait(cote, 0.8);
        trait.setCosmetic(true);
        p.setPen(trait);
        p.drawPath(cotes_);
        QPen grille(avec_alpha(encre, 0.13), 1);
        grille.setCosmetic(true);
        p.setPen(grille);
        p.setRenderHint(QPainter::Antialiasing, false);
        const int pas = zoom_ > 8 ? 5 : zoom_ > 3 ? 10 : 30;
        for (int lon = -180; lon < 180; lon += pas) p.drawLine(QPointF(lon, -90), QPointF(lon, 90));
        for (int lat = -90 + pas; lat < 90; lat += pas) p.drawLine(QPointF(-180, lat), QPointF(180, lat));
        p.restore();
    });
    return image;
}

/// The rim in pixels, at the turn of longitudes as it stands.
QPolygonF carte_terre::polygone(const std::vector<point_sol>& bord) const {
    const double e = echelle();
    QPolygonF points;
    points.reserve(int(bord.size()));
    for (const point_sol& b : bord)
        points << QPointF(width() / 2.0 + (b.lon - centre_.lon) * e,
                          height() / 2.0 + (centre_.lat - b.lat) * e);
    return points;
}

/// Draws a rim with the painter's pen and brush wherever its turns come in sight. The way around a pole is no
/// line of its own.
void carte_terre::remplit(QPainter& p, const std::vector<point_sol>& bord) const {
    if (bord.empty()) return;
    const auto [min, max] = std::minmax_element(
        bord.begin(), bord.end(), [](const point_sol& a, const point_sol& b) { return a.lon < b.lon; });
    const QPolygonF une = polygone(bord);
    const bool pole = std::fabs(bord.back().lat) == 90;
    par_tour(min->lon, max->lon, [&](double tour) {
        const QPolygonF ici = une.translated(tour * echelle(), 0);
        const QPen trait = p.pen();
        p.setPen(Qt::NoPen);
        p.drawPolygon(ici);
        p.setPen(trait);
        if (trait.style() == Qt::NoPen) return;
        p.drawPolyline(pole ? QPolygonF(ici.mid(0, ici.size() - 2)) : ici);
    });
}

void carte_terre::dessine_nuit(QPainter& p) const {
    const point_sol nuit = {contenu_.soleil.lon + 180, -contenu_.soleil.lat};
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 30, style::sombre() ? 60 : 34));
    // The Sun 0, 6, 12 and 18 degrees below the horizon: the twilights.
    for (const double sous : {0.0, 6.0, 12.0, 18.0}) remplit(p, bord_calotte(nuit, 90 - sous));
}

void carte_terre::dessine_stations(QPainter& p) const {
    const QColor encre = palette().color(QPalette::WindowText), papier = palette().color(QPalette::Base);
    const QColor repos = style::couleur(style::role::batterie),
                 vue = style::couleur(style::role::charge_utile);
    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 0.9);
    p.setFont(f);
    for (const station_carte& s : contenu_.stations) {
        const QColor c = s.en_vue ? vue : repos;
        p.setPen(QPen(avec_alpha(c, s.choisie || s.en_vue ? 0.95 : 0.5), s.choisie || s.en_vue ? 1.8 : 1,
                      s.en_vue ? Qt::SolidLine : Qt::DashLine));
        p.setBrush(s.en_vue ? QBrush(avec_alpha(c, 0.16)) : QBrush(Qt::NoBrush));
        remplit(p, s.cercle);
    }
    const double r = style::espace() * (zoom_ > 2 ? 1.3 : 1.0);
    for (const station_carte& s : contenu_.stations) {
        const QPointF m = pixel(s.place);
        p.setPen(QPen(papier, 1));
        p.setBrush(s.en_vue ? vue : repos);
        p.drawPolygon(QPolygonF({m + QPointF(0, -r), m + QPointF(r, 0.8 * r), m + QPointF(-r, 0.8 * r)}));
        if (s.choisie || s.en_vue || cadre().width() * zoom_ > style::espace(160))
            ecrit(p, m + QPointF(1.5 * r, r), s.nom, encre, papier);
    }
}

void carte_terre::dessine_trace(QPainter& p) const {
    const auto& t = contenu_.trace;
    if (t.empty()) return;
    const double trait = std::max(1.5, style::espace() * 0.5);
    const QColor jour = style::couleur(style::role::generateur), nuit = style::couleur(style::role::eclipse);
    const double e = echelle(), demi = cadre().width() / 2 / e;
    // Four lines: before or after the date, in the Sun or in the shadow; each cut at the edges of the view.
    for (int sorte = 0; sorte < 4; ++sorte) {
        const bool apres = sorte & 1, eclipse = sorte & 2;
        QPainterPath ligne;
        QPointF bout(NAN, NAN);
        for (std::size_t i = 1; i < t.size(); ++i) {
            if ((i > contenu_.present) != apres || t[i].eclipse != eclipse) continue;
            const double x = std::remainder(t[i - 1].lon - centre_.lon, 360.0);
            const double y = x + std::remainder(t[i].lon - t[i - 1].lon, 360.0);
            // A step over the edge is drawn on both sides.
            for (double tour = -360; tour <= 360; tour += 360) {
                if (std::max(x, y) + tour < -demi || std::min(x, y) + tour > demi) continue;
                const QPointF a(width() / 2.0 + (x + tour) * e,
                                height() / 2.0 + (centre_.lat - t[i - 1].lat) * e);
                const QPointF b(width() / 2.0 + (y + tour) * e,
                                height() / 2.0 + (centre_.lat - t[i].lat) * e);
                if (a != bout) ligne.moveTo(a);
                ligne.lineTo(b);
                bout = b;
            }
        }
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(avec_alpha(palette().color(QPalette::Base), 0.6), trait + 2));
        p.drawPath(ligne);
        p.setPen(QPen(avec_alpha(eclipse ? nuit : jour, apres ? 1 : 0.55), apres ? trait : 0.8 * trait,
                      eclipse ? Qt::DashLine : Qt::SolidLine));
        p.drawPath(ligne);
    }
}

void carte_terre::dessine_soleil(QPainter& p) const {
    const QPointF m = pixel(contenu_.soleil);
    const double r = style::espace(2);
    p.setPen(QPen(style::couleur(style::role::soleil), std::max(1.5, r / 5)));
    for (int i = 0; i < 8; ++i) {
        const QPointF d(std::cos(i * M_PI / 4), std::sin(i * M_PI / 4));
        p.drawLine(m + d * r * 1.25, m + d * r * 1.75);
    }
    p.setPen(QPen(palette().color(QPalette::Base), 1));
    p.setBrush(style::couleur(style::role::soleil));
    p.drawEllipse(m, r, r);
}

void carte_terre::dessine_satellite(QPainter& p) const {
    if (!contenu_.satellite) return;
    // What the satellite sees of the ground.
    constexpr double rayon_moyen = 6371;
    const double rayon = rayon_visibilite(contenu_.satellite->distance, 0, rayon_moyen);
    p.setPen(QPen(avec_alpha(palette().color(QPalette::WindowText), 0.5), 1, Qt::DotLine));
    p.setBrush(Qt::NoBrush);
    if (rayon > 0) remplit(p, bord_calotte(*contenu_.satellite, rayon));
    // Body and two wings.
    const QPointF m = pixel(*contenu_.satellite);
    const double u = style::espace();
    p.setPen(QPen(palette().color(QPalette::Base), 1.5));
    p.setBrush(style::couleur(style::role::batterie));
    for (const double cote : {-1.0, 1.0})
        p.drawRect(QRectF(m.x() + cote * 2.2 * u - 1.1 * u, m.y() - 0.9 * u, 2.2 * u, 1.8 * u));
    p.setBrush(contenu_.satellite->eclipse ? style::couleur(style::role::eclipse)
                                           : style::couleur(style::role::generateur));
    p.drawEllipse(m, 1.4 * u, 1.4 * u);
}
