#include "analysis/windows/dessin_polaire.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "widgets/style.h"

dessin_polaire::dessin_polaire(QWidget* parent) : QWidget(parent) {
    setObjectName("pict_polaire");
    setAccessibleName("Passage vu de la station");
    setToolTip("Passage vu de la station : azimut autour (le nord en haut), élévation du bord (0°) au centre "
               "(90°) ; "
               "rond plein : début, carré : fin ; en éclipse, trait tireté");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize dessin_polaire::sizeHint() const { return {style::espace(52), style::espace(52)}; }
QSize dessin_polaire::minimumSizeHint() const { return {style::espace(30), style::espace(30)}; }

void dessin_polaire::montre(std::vector<point_ciel> points, double masque) {
    points_ = std::move(points);
    masque_ = masque;
    present_.reset();
    update();
}

void dessin_polaire::montre_present(const std::optional<visee>& v) {
    present_ = v;
    update();
}

QPointF dessin_polaire::place(double azimut, double elevation) const {
    const double marge = fontMetrics().height() * 1.3;
    const double rayon = std::min(width(), height()) / 2.0 - marge;
    const double r = rayon * (90 - std::max(0.0, elevation)) / 90, a = azimut * M_PI / 180;
    return {width() / 2.0 + r * std::sin(a), height() / 2.0 - r * std::cos(a)};
}

double dessin_polaire::rayon(double elevation) const { return height() / 2.0 - place(0, elevation).y(); }

void dessin_polaire::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    peint_ciel(p);
    peint_mots(p);
    if (points_.empty()) {
        const QPointF milieu(width() / 2.0, height() / 2.0);
        const QRectF place(milieu - QPointF(rayon(0), 0.4 * rayon(0)), QSizeF(2 * rayon(0), rayon(0) * 0.8));
        const int au_milieu = Qt::AlignCenter | Qt::TextWordWrap;
        const QString texte = "Choisissez un passage";
        p.fillRect(p.boundingRect(place, au_milieu, texte), palette().color(QPalette::Base)); // over an angle
        p.setPen(style::couleur(style::role::discret));
        p.drawText(place, au_milieu, texte);
        return;
    }
    peint_passage(p);
}

/// The disc with its circles and rays, and the mask.
void dessin_polaire::peint_ciel(QPainter& p) const {
    const QPointF milieu(width() / 2.0, height() / 2.0);
    const QColor discret = style::couleur(style::role::discret);
    QColor grille = discret;
    grille.setAlphaF(0.4f);
    p.setPen(QPen(discret, 1));
    p.setBrush(palette().color(QPalette::Base));
    p.drawEllipse(milieu, rayon(0), rayon(0));
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(grille, 1));
    for (const double e : {30.0, 60.0}) p.drawEllipse(milieu, rayon(e), rayon(e));
    for (int a = 0; a < 360; a += 30) p.drawLine(place(a, 0), a % 90 == 0 ? milieu : place(a, 60));
    if (masque_ > 0) {
        p.setPen(QPen(style::couleur(style::role::perte), 1, Qt::DotLine));
        p.drawEllipse(milieu, rayon(masque_), rayon(masque_));
    }
}

/// Elevations and cardinal points.
void dessin_polaire::peint_mots(QPainter& p) const {
    const QPointF milieu(width() / 2.0, height() / 2.0);
    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 0.85);
    p.setFont(f);
    p.setPen(style::couleur(style::role::discret));
    const QFontMetricsF m(f);
    for (const double e : {30.0, 60.0})
        p.drawText(place(0, e) + QPointF(style::espace() / 2.0, m.ascent()), QString("%1°").arg(e));
    p.setPen(palette().color(QPalette::WindowText));
    const char* const points_cardinaux[] = {"N", "E", "S", "O"};
    for (int i = 0; i < 4; ++i) {
        const QPointF d(std::sin(i * M_PI / 2), -std::cos(i * M_PI / 2));
        const QPointF c = milieu + d * (rayon(0) + 0.65 * m.height());
        p.drawText(QRectF(c - QPointF(20, m.height() / 2), QSizeF(40, m.height())), Qt::AlignCenter,
                   points_cardinaux[i]);
    }
}

/// The pass from its begin to its end, and the satellite where it stands in it.
void dessin_polaire::peint_passage(QPainter& p) const {
    for (const bool eclipse : {false, true}) {
        QPainterPath ligne;
        for (std::size_t i = 1; i < points_.size(); ++i) {
            if (points_[i].eclipse != eclipse) continue;
            const QPointF a = place(points_[i - 1].azimut, points_[i - 1].elevation);
            if (ligne.isEmpty() || ligne.currentPosition() != a) ligne.moveTo(a);
            ligne.lineTo(place(points_[i].azimut, points_[i].elevation));
        }
        p.setPen(QPen(style::couleur(eclipse ? style::role::eclipse : style::role::generateur),
                      style::espace() * 0.6, eclipse ? Qt::DashLine : Qt::SolidLine));
        p.setBrush(Qt::NoBrush);
        p.drawPath(ligne);
    }
    const double r = style::espace() * 1.1;
    p.setPen(QPen(palette().color(QPalette::Base), 1));
    p.setBrush(palette().color(QPalette::WindowText));
    p.drawEllipse(place(points_.front().azimut, points_.front().elevation), r, r);
    const QPointF fin = place(points_.back().azimut, points_.back().elevation);
    p.drawRect(QRectF(fin - QPointF(r, r), QSizeF(2 * r, 2 * r)));
    if (present_ && present_->elevation >= 0) {
        p.setBrush(style::couleur(style::role::batterie));
        p.drawEllipse(place(present_->azimut, present_->elevation), 1.5 * r, 1.5 * r);
    }
}
