#include "analysis/windows/carte_balayage.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

#include "widgets/style.h"

namespace {

/// From dark blue over green to yellow, its lightness rising all along, so that it reads in grey too.
QColor teinte(double t) {
    constexpr double points[][3] = {
        {0.27, 0.00, 0.33}, {0.23, 0.32, 0.55}, {0.13, 0.57, 0.55}, {0.37, 0.79, 0.38}, {0.99, 0.91, 0.14}};
    t = std::clamp(t, 0.0, 1.0) * 4;
    const int i = std::min(3, int(t));
    const double f = t - i;
    const auto melange = [&](int c) { return points[i][c] * (1 - f) + points[i + 1][c] * f; };
    return QColor::fromRgbF(float(melange(0)), float(melange(1)), float(melange(2)));
}

QString nombre(double x) { return QString::number(x, 'g', 4); }

} // namespace

carte_balayage::carte_balayage(QWidget* parent) : QWidget(parent) {
    setObjectName("carte_balayage");
    setAccessibleName("Carte du balayage");
    setMouseTracking(true);
}

QSize carte_balayage::minimumSizeHint() const { return {style::espace(70), style::espace(50)}; }

void carte_balayage::montre(const QString& nom_x, std::vector<double> x, const QString& nom_y,
                            std::vector<double> y, const QString& nom_z, std::vector<double> z) {
    nom_x_ = nom_x;
    nom_y_ = nom_y;
    nom_z_ = nom_z;
    x_ = std::move(x);
    y_ = std::move(y);
    z_ = std::move(z);
    min_ = INFINITY;
    max_ = -INFINITY;
    for (const double v : z_)
        if (std::isfinite(v)) {
            min_ = std::min(min_, v);
            max_ = std::max(max_, v);
        }
    update();
}

QRectF carte_balayage::cadre() const {
    return QRectF(rect()).adjusted(style::espace(18), style::espace(3), -style::espace(24),
                                   -style::espace(12));
}

void carte_balayage::paintEvent(QPaintEvent*) {
    QPainter p(this);
    if (x_.empty() || y_.empty() || !(max_ >= min_)) return;
    const QRectF c = cadre();
    const double l = c.width() / double(x_.size()), h = c.height() / double(y_.size());
    for (std::size_t i = 0; i < x_.size(); ++i)
        for (std::size_t k = 0; k < y_.size(); ++k) {
            const double z = z_[i * y_.size() + k];
            const QRectF case_(c.left() + double(i) * l, c.bottom() - double(k + 1) * h, l + 0.5, h + 0.5);
            if (std::isfinite(z))
                p.fillRect(case_, teinte(max_ > min_ ? (z - min_) / (max_ - min_) : 0.5));
            else
                p.fillRect(case_, QBrush(palette().color(QPalette::Mid), Qt::BDiagPattern));
        }
    p.setPen(palette().color(QPalette::WindowText));
    p.drawRect(c);
    const QFontMetrics m = fontMetrics();
    p.drawText(QRectF(c.left(), c.bottom() + 2, c.width(), m.height()), Qt::AlignLeft, nombre(x_.front()));
    p.drawText(QRectF(c.left(), c.bottom() + 2, c.width(), m.height()), Qt::AlignRight, nombre(x_.back()));
    p.drawText(QRectF(c.left(), c.bottom() + m.height(), c.width(), m.height() + 4), Qt::AlignHCenter,
               nom_x_);
    const QRectF gauche(0, c.top(), c.left() - 4, c.height());
    p.drawText(gauche, int(Qt::AlignRight) | int(Qt::AlignBottom), nombre(y_.front()));
    p.drawText(gauche, int(Qt::AlignRight) | int(Qt::AlignTop), nombre(y_.back()));
    p.drawText(gauche, int(Qt::AlignRight) | int(Qt::AlignVCenter), nom_y_);
    const QRectF echelle(c.right() + style::espace(4), c.top() + m.height(), style::espace(4),
                         c.height() - 2 * m.height());
    for (int y = 0; y < int(echelle.height()); ++y)
        p.fillRect(QRectF(echelle.left(), echelle.bottom() - y - 1, echelle.width(), 1.5),
                   teinte(y / echelle.height()));
    const QRectF mots(echelle.left(), 0, width() - echelle.left() - 2, m.height());
    p.drawText(mots.translated(0, c.top() - 2), Qt::AlignLeft, nombre(max_));
    p.drawText(mots.translated(0, echelle.bottom() + 2), Qt::AlignLeft, nombre(min_));
    p.drawText(QRectF(echelle.right() + 4, c.top(), width() - echelle.right() - 4, c.height()),
               int(Qt::AlignVCenter) | int(Qt::TextWrapAnywhere), nom_z_);
}

long carte_balayage::variante_sous(const QPointF& p) const {
    const QRectF c = cadre();
    if (x_.empty() || y_.empty() || !c.contains(p)) return -1;
    const auto i = std::size_t((p.x() - c.left()) / c.width() * double(x_.size()));
    const auto k = std::size_t((c.bottom() - p.y()) / c.height() * double(y_.size()));
    if (i >= x_.size() || k >= y_.size()) return -1;
    return long(i * y_.size() + k);
}

void carte_balayage::mousePressEvent(QMouseEvent* e) {
    if (const long v = variante_sous(e->position()); v >= 0) emit clique(v);
}

void carte_balayage::mouseMoveEvent(QMouseEvent* e) {
    const long v = variante_sous(e->position());
    if (v < 0) return QToolTip::hideText();
    const auto n = std::size_t(v);
    QToolTip::showText(e->globalPosition().toPoint(),
                       QString("%1 = %2\n%3 = %4\n%5 = %6\nUn clic ouvre cette variante.")
                           .arg(nom_x_, nombre(x_[n / y_.size()]), nom_y_, nombre(y_[n % y_.size()]), nom_z_,
                                std::isfinite(z_[n]) ? nombre(z_[n]) : QString("faute")),
                       this);
}
