#include "power/windows/legende3d.h"

#include <QPainter>

#include <cmath>

#include "power/windows/faces3d.h"
#include "power/windows/fleches3d.h"
#include "widgets/style.h"

legende3d::legende3d(QWidget* parent) : QWidget(parent) {
    setObjectName("legende_3d");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void legende3d::montre(const affichage3d& a) {
    affichage_ = a;
    updateGeometry();
    update();
}

void legende3d::echelle(double min, double max) {
    if (min == min_ && max == max_) return;
    min_ = min;
    max_ = max;
    update();
}

int legende3d::lignes() const {
    int n = affichage_.faces == couleur_faces::images ? 0 : 2;
    for (const fleche3d& f : fleches3d()) n += affichage_.*f.montree ? 1 : 0;
    return n;
}

QSize legende3d::sizeHint() const {
    return {fontMetrics().horizontalAdvance("B   champ magnétique") + style::espace(4),
            lignes() * fontMetrics().height() + style::espace(2)};
}

void legende3d::paintEvent(QPaintEvent*) {
    if (lignes() == 0) return;
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 30, 150)); // the sky, so that the words stand out from the Earth
    p.drawRoundedRect(rect(), style::espace(), style::espace());
    const int h = fontMetrics().height(), marge = style::espace();
    QFont grasse = font();
    grasse.setBold(true);
    int y = marge;
    for (const fleche3d& f : fleches3d()) {
        if (!(affichage_.*f.montree)) continue;
        p.setPen(f.couleur());
        p.setFont(grasse);
        p.drawText(QRect(marge, y, style::espace(4), h), Qt::AlignCenter, QString(QChar(f.lettre)));
        p.setFont(font());
        p.drawText(QRect(marge + style::espace(5), y, width(), h), Qt::AlignLeft | Qt::AlignVCenter, f.nom);
        y += h;
    }
    if (affichage_.faces == couleur_faces::images) return;
    const bool flux = affichage_.faces == couleur_faces::flux;
    p.setPen(QColor(0xe8, 0xea, 0xee));
    const QRect barre(marge, y + h / 4, width() - 2 * marge, h / 2);
    QLinearGradient degrade(barre.topLeft(), barre.topRight());
    for (int i = 0; i <= 8; ++i) {
        const auto [r, v, b] = couleur_echelle(i / 8.0);
        degrade.setColorAt(i / 8.0, QColor::fromRgbF(float(r), float(v), float(b)));
    }
    p.fillRect(barre, degrade);
    y += h;
    const QRect mots(marge, y, width() - 2 * marge, h);
    p.drawText(mots, Qt::AlignLeft | Qt::AlignVCenter, QString::number(std::lround(min_)));
    p.drawText(mots, Qt::AlignHCenter | Qt::AlignVCenter, flux ? "W/m²" : "°C");
    p.drawText(mots, Qt::AlignRight | Qt::AlignVCenter, QString::number(std::lround(max_)));
}
