#include "power/windows/synoptique_pieces.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <algorithm>
#include <cmath>

using style::couleur;
using style::role;

fleche::fleche(const QString& nom, role r, sens s, QWidget* parent) : QWidget(parent), role_(r), sens_(s) {
    setObjectName(nom);
    // A hidden arrow keeps its place: nothing moves when a flow begins or ends.
    QSizePolicy p(QSizePolicy::Expanding, QSizePolicy::Expanding);
    p.setRetainSizeWhenHidden(true);
    setSizePolicy(p);
}

void fleche::epaisseur(double part) {
    part_ = std::isfinite(part) ? std::clamp(part, 0.0, 1.0) : 0;
    update();
}

void fleche::avance(double phase) {
    phase_ = phase;
    if (isVisible()) update();
}

QSize fleche::sizeHint() const { return {style::espace(26), style::espace(12)}; }
QSize fleche::minimumSizeHint() const { return {style::espace(20), style::espace(9)}; }

void fleche::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    if (sens_ == sens::vers_gauche) {
        p.translate(width(), 0);
        p.scale(-1, 1);
    }
    const double l = width(), y = height() / 2.0;
    const double e = 3 + part_ * std::max(4.0, std::min(height() * 0.5, style::espace(9) * 1.0) - 3);
    const double tete = std::min(l / 3, e * 0.7 + 7), demi = e / 2 + 6;

    QPainterPath corps;
    corps.moveTo(0, y - e / 2);
    corps.lineTo(l - tete, y - e / 2);
    corps.lineTo(l - tete, y - demi);
    corps.lineTo(l - 1, y);
    corps.lineTo(l - tete, y + demi);
    corps.lineTo(l - tete, y + e / 2);
    corps.lineTo(0, y + e / 2);
    corps.closeSubpath();
    const QColor c = couleur(role_);
    if (part_ < 1e-4) { // a trace, as the solvers leave it
        p.setPen(QPen(c, 1, Qt::DotLine));
        p.drawLine(QPointF(0, y), QPointF(l, y));
        return;
    }
    p.fillPath(corps, c);

    p.setClipPath(corps);
    QColor clair = style::sombre() ? c.darker(150) : c.lighter(135);
    p.setPen(QPen(clair, 2.5));
    const double pas = 18, pointe = std::min(demi, 9.0);
    for (double x = -pas + std::fmod(phase_, 1.0) * pas; x < l; x += pas) {
        p.drawLine(QPointF(x - pointe, y - demi), QPointF(x, y));
        p.drawLine(QPointF(x, y), QPointF(x - pointe, y + demi));
    }
}

pictogramme::pictogramme(sujet s, QWidget* parent) : QWidget(parent), sujet_(s) {}
QSize pictogramme::sizeHint() const { return {style::espace(13), style::espace(11)}; }
QSize pictogramme::minimumSizeHint() const { return {style::espace(9), style::espace(8)}; }

namespace {

void dessine_panneau(QPainter& p) {
    const QPolygonF cadre{QPointF(18, 20), QPointF(96, 20), QPointF(82, 80), QPointF(4, 80)};
    QColor fond = couleur(role::generateur);
    fond.setAlpha(110);
    p.setBrush(fond);
    p.drawPolygon(cadre);
    for (int i = 1; i < 4; ++i) p.drawLine(QPointF(18 + 19.5 * i, 20), QPointF(4 + 19.5 * i, 80));
    for (int i = 1; i < 3; ++i)
        p.drawLine(QPointF(18 - 14.0 * i / 3, 20 + 20 * i), QPointF(96 - 14.0 * i / 3, 20 + 20 * i));
}

void dessine_charge_utile(QPainter& p) { // a dish on its mount
    QColor fond = couleur(role::charge_utile);
    fond.setAlpha(110);
    p.setBrush(fond);
    QPainterPath parabole;
    parabole.moveTo(16, 24);
    parabole.quadTo(22, 74, 72, 80);
    parabole.closeSubpath();
    p.drawPath(parabole);
    p.drawLine(QPointF(44, 52), QPointF(66, 30));
    p.setBrush(p.pen().color());
    p.drawEllipse(QPointF(68, 28), 4, 4);
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(58, 14, 24, 24), 0, 90 * 16);
    p.drawArc(QRectF(48, 4, 44, 44), 0, 90 * 16);
    p.drawLine(QPointF(36, 66), QPointF(28, 94));
    p.drawLine(QPointF(14, 94), QPointF(46, 94));
}

void dessine_shunt(QPainter& p) { // a resistor that warms
    QColor fond = couleur(role::perte);
    p.drawPolyline(QPolygonF{QPointF(2, 72), QPointF(18, 72), QPointF(24, 56), QPointF(36, 88),
                             QPointF(48, 56), QPointF(60, 88), QPointF(72, 56), QPointF(78, 72),
                             QPointF(98, 72)});
    p.setPen(QPen(fond, p.pen().widthF(), Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 3; ++i) {
        QPainterPath onde;
        onde.moveTo(28 + 22 * i, 44);
        onde.cubicTo(16 + 22 * i, 34, 40 + 22 * i, 22, 28 + 22 * i, 10);
        p.drawPath(onde);
    }
}

} // namespace

void pictogramme::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const double c = std::min(width(), height());
    p.translate((width() - c) / 2, (height() - c) / 2);
    p.scale(c / 100, c / 100);
    p.setPen(QPen(couleur(role::trait), 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    switch (sujet_) {
    case sujet::panneau: dessine_panneau(p); break;
    case sujet::charge_utile: dessine_charge_utile(p); break;
    case sujet::shunt: dessine_shunt(p); break;
    }
}

image_eclipse::image_eclipse(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("img_pan_eclipse"));
    montre(false);
}

void image_eclipse::montre(bool eclipse) {
    eclipse_ = eclipse;
    setToolTip(eclipse ? tr("Le satellite est dans l'ombre de la Terre") : tr("Le satellite est au Soleil"));
    setAccessibleName(eclipse ? tr("Éclipse") : tr("Soleil"));
    update();
}

QSize image_eclipse::sizeHint() const { return {style::espace(13), style::espace(11)}; }
QSize image_eclipse::minimumSizeHint() const { return {style::espace(9), style::espace(8)}; }

void image_eclipse::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const double c = std::min(width(), height());
    p.translate((width() - c) / 2, (height() - c) / 2);
    p.scale(c / 100, c / 100);
    const QPointF o(50, 50);
    const QColor soleil = couleur(role::soleil);
    if (!eclipse_) {
        p.setPen(QPen(soleil, 5, Qt::SolidLine, Qt::RoundCap));
        for (int i = 0; i < 12; ++i) {
            const double a = qDegreesToRadians(30.0 * i);
            const QPointF d(std::cos(a), std::sin(a));
            p.drawLine(o + 33 * d, o + (i % 2 ? 42 : 47) * d);
        }
        p.setPen(Qt::NoPen);
        p.setBrush(soleil);
        p.drawEllipse(o, 25, 25);
        return;
    }
    // Only a thin crescent of light shows behind the Earth.
    QRadialGradient halo(QPointF(58, 42), 46);
    QColor lueur = soleil;
    lueur.setAlpha(170);
    halo.setColorAt(0.7, lueur);
    lueur.setAlpha(0);
    halo.setColorAt(1, lueur);
    p.setPen(Qt::NoPen);
    p.setBrush(halo);
    p.drawEllipse(QPointF(58, 42), 46, 46);
    p.setBrush(soleil);
    p.drawEllipse(QPointF(60, 40), 31, 31);
    p.setPen(QPen(couleur(role::trait), 2));
    p.setBrush(QColor(0x2b, 0x32, 0x40));
    p.drawEllipse(QPointF(47, 53), 35, 35);
}
