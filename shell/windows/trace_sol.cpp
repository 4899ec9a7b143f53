#include "shell/windows/trace_sol.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "widgets/style.h"

namespace {

constexpr int nb_points = 720;

} // namespace

trace_sol::trace_sol(QWidget* parent) : QWidget(parent), fond_(":/textures/terre512.png") {
    setObjectName("pict_trace_sol");
    setToolTip("Trace au sol d'une révolution à partir de la date de début : en éclipse, trait gris tireté ; "
               "au Soleil, trait ambre ; rond : départ");
    QSizePolicy p(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setSizePolicy(p);
}

QSize trace_sol::sizeHint() const { return {style::espace(72), style::espace(36)}; }
QSize trace_sol::minimumSizeHint() const { return {style::espace(60), style::espace(34)}; }

void trace_sol::montre(orbit_state o, double j) {
    points_.clear();
    const double periode = 1.0 / moy_mvt_de_demi(o.orbite.orb_demi);
    for (int i = 0; i <= nb_points; ++i) {
        const double date = j + periode * i / nb_points;
        orb_position(date, o);
        sous_point(date, o);
        if (!std::isfinite(o.sat_lon) || !std::isfinite(o.sat_lat)) break;
        points_.push_back(
            {std::remainder(o.sat_lon / rad_par_degre, 360.0), o.sat_lat / rad_par_degre, o.eclipse != faux});
    }
    update();
}

double trace_sol::part_eclipse() const {
    if (points_.isEmpty()) return 0.0;
    return double(std::count_if(points_.begin(), points_.end(), [](const point& p) { return p.eclipse; })) /
           double(points_.size());
}

/// The largest map of two to one that fits, at the top and in the middle.
QRectF trace_sol::carte() const {
    const double largeur = std::min<double>(width(), 2.0 * height());
    return {(width() - largeur) / 2, 0, largeur, largeur / 2};
}

void trace_sol::paintEvent(QPaintEvent*) {
    const QRectF cadre = carte();
    QPainter p(this);
    p.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    p.drawPixmap(cadre, fond_, fond_.rect());
    p.fillRect(cadre, QColor(0, 0, 0, 70)); // the track stands out
    p.setClipRect(cadre);
    const auto place = [&](const point& q) {
        return QPointF(cadre.left() + (q.lon + 180.0) / 360.0 * cadre.width(),
                       cadre.top() + (90.0 - q.lat) / 180.0 * cadre.height());
    };
    p.setPen(QPen(QColor(255, 255, 255, 60), 1));
    for (int lon = -150; lon < 180; lon += 30)
        p.drawLine(place({double(lon), 90, false}), place({double(lon), -90, false}));
    for (int lat = -60; lat < 90; lat += 30)
        p.drawLine(place({-180, double(lat), false}), place({180, double(lat), false}));

    // One path for the light and one for the shadow, cut at the date line. The map is dark on every palette.
    for (const bool eclipse : {false, true}) {
        QPainterPath trace;
        for (int i = 1; i < points_.size(); ++i) {
            const point &a = points_[i - 1], &b = points_[i];
            if (b.eclipse != eclipse || std::fabs(b.lon - a.lon) > 180.0) continue;
            if (trace.currentPosition() != place(a) || trace.isEmpty()) trace.moveTo(place(a));
            trace.lineTo(place(b));
        }
        const double epaisseur = style::espace() * 0.6;
        p.strokePath(trace, QPen(QColor(0, 0, 0, 150), epaisseur + 2));
        p.strokePath(trace, eclipse ? QPen(QColor(0xc4, 0xc9, 0xd2), epaisseur, Qt::DashLine)
                                    : QPen(QColor(0xff, 0xb3, 0x40), epaisseur));
    }
    if (points_.isEmpty()) return;
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::white);
    p.drawEllipse(place(points_.front()), style::espace() * 1.2, style::espace() * 1.2);
}
