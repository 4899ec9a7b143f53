#include "widgets/jauge.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

// The scale runs clockwise over 240 degrees, from the lower left; angles counter-clockwise from the right.
constexpr double angle_debut = 210, etendue = 240;
constexpr double hauteur_cadran = 1.55; // radii: the number stands in the open part of the circle
constexpr int divisions = 5, sous_divisions = 4;

QPointF sur_cercle(const QPointF& c, double r, double degres) {
    const double a = qDegreesToRadians(degres);
    return {c.x() + r * std::cos(a), c.y() - r * std::sin(a)};
}

} // namespace

double echelle_ronde(double x) {
    const double decade = std::pow(10.0, std::floor(std::log10(x)));
    for (const double m : {1.0, 2.0, 5.0})
        if (m * decade >= x) return m * decade;
    return 10 * decade;
}

jauge::jauge(const QString& titre, const QString& nom_nombre, const QString& unite, style::role role,
             QWidget* parent)
    : QWidget(parent), titre_(titre), role_(role), nombre_(new QLabel(this)),
      unite_(new QLabel(unite, this)) {
    nombre_->setObjectName(nom_nombre);
    QFont f = style::police_nombres(this);
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.25);
    nombre_->setFont(f);
    nombre_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    unite_->setVisible(!unite.isEmpty());

    auto* ligne = new QHBoxLayout;
    ligne->setSpacing(0);
    ligne->addStretch();
    ligne->addWidget(nombre_);
    ligne->addWidget(unite_);
    ligne->addStretch();
    auto* tout = new QVBoxLayout(this);
    tout->setContentsMargins(0, 0, 0, 0);
    tout->setSpacing(0);
    tout->addStretch(); // the dial is painted above the number
    tout->addLayout(ligne);

    aiguille_.setDuration(350);
    aiguille_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&aiguille_, &QVariantAnimation::valueChanged, this, [this](const QVariant& v) {
        affichee_ = v.toDouble();
        update();
    });
}

void jauge::echelle(double max, bool croissante) {
    max_ = max > 0 && std::isfinite(max) ? max : 1;
    croissante_ = croissante;
    update();
}

void jauge::montre(double x, const QString& texte, bool active) {
    nombre_->setText(texte);
    const double but = active && std::isfinite(x) ? x : 0;
    if (croissante_ && but > max_) max_ = echelle_ronde(but);
    if (active != active_) {
        active_ = active;
        unite_->setVisible(active && !unite_->text().isEmpty());
        update();
    }
    if (but == valeur_) return;
    valeur_ = but;
    aiguille_.stop();
    aiguille_.setStartValue(affichee_);
    aiguille_.setEndValue(valeur_);
    aiguille_.start();
}

QSize jauge::sizeHint() const { return {style::espace(36), style::espace(36)}; }
QSize jauge::minimumSizeHint() const { return {style::espace(28), style::espace(28)}; }

/// Title, dial and number stay together in the middle of the widget.
void jauge::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    const double textes = fontMetrics().height() + nombre_->sizeHint().height();
    rayon_ = std::max(1.0, std::min(width() / 2.0, (height() - textes) / hauteur_cadran) * 0.97);
    const int marge = qMax(0, qRound((height() - textes - hauteur_cadran * rayon_) / 2));
    layout()->setContentsMargins(0, marge, 0, marge);
}

void jauge::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);

    const double haut = fontMetrics().height(), r = rayon_;
    const double y = layout()->contentsMargins().top();
    const QPointF c(width() / 2.0, y + haut + r);
    const double part = std::clamp(affichee_ / max_, 0.0, 1.0);
    const QColor couleur = style::couleur(active_ ? role_ : style::role::discret);

    p.setPen(palette().color(QPalette::WindowText));
    p.drawText(QRectF(0, y, width(), haut), Qt::AlignCenter, titre_);

    const double epaisseur = std::max(3.0, r * 0.11);
    const QRectF cercle(c.x() - r + epaisseur, c.y() - r + epaisseur, 2 * (r - epaisseur),
                        2 * (r - epaisseur));
    QColor fond = style::couleur(style::role::discret);
    fond.setAlpha(70);
    p.setPen(QPen(fond, epaisseur, Qt::SolidLine, Qt::FlatCap));
    p.drawArc(cercle, qRound(angle_debut * 16), qRound(-etendue * 16));
    p.setPen(QPen(couleur, epaisseur, Qt::SolidLine, Qt::FlatCap));
    p.drawArc(cercle, qRound(angle_debut * 16), qRound(-etendue * part * 16));

    QFont petite = font();
    petite.setPointSizeF(petite.pointSizeF() * 0.75);
    p.setFont(petite);
    const double r_trait = r - 1.9 * epaisseur;
    for (int i = 0; i <= divisions * sous_divisions; ++i) {
        const bool grande = i % sous_divisions == 0;
        const double f = static_cast<double>(i) / (divisions * sous_divisions);
        const double a = angle_debut - etendue * f;
        p.setPen(QPen(style::couleur(style::role::trait), grande ? 1.6 : 0.8));
        p.drawLine(sur_cercle(c, r_trait, a), sur_cercle(c, r_trait - (grande ? 0.11 : 0.06) * r, a));
        if (!grande) continue;
        const QPointF q = sur_cercle(c, r_trait - 0.26 * r, a);
        p.setPen(palette().color(QPalette::WindowText));
        p.drawText(QRectF(q.x() - 30, q.y() - 15, 60, 30), Qt::AlignCenter,
                   QString::number(max_ * f, 'g', 4));
    }

    const double a = angle_debut - etendue * part;
    const QPointF pointe = sur_cercle(c, r_trait, a);
    const QPointF base1 = sur_cercle(c, r * 0.05, a + 90), base2 = sur_cercle(c, r * 0.05, a - 90);
    p.setPen(Qt::NoPen);
    p.setBrush(active_ ? palette().color(QPalette::WindowText) : couleur);
    p.drawPolygon(QPolygonF{base1, pointe, base2});
    p.drawEllipse(c, r * 0.08, r * 0.08);
}
