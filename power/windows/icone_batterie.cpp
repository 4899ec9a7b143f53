#include "power/windows/icone_batterie.h"

#include <QPainter>

#include <algorithm>

#include "widgets/style.h"

namespace {
constexpr int barres_max = 5;
constexpr int etat_vide = 6, etat_charge = 7, etat_attente = 8;
} // namespace

int niveau_batterie(double bat_soc) {
    if (bat_soc >= 0.9) return 5;
    if (bat_soc >= 0.65) return 4;
    if (bat_soc >= 0.4) return 3;
    if (bat_soc >= 0.15) return 2;
    return bat_soc > 0 ? 1 : 0;
}

int etat_batterie(double bat_p, double bat_soc) {
    if (bat_p > 0) return etat_vide - niveau_batterie(bat_soc);
    return bat_p < 0 ? etat_charge : etat_attente;
}

QString mot_batterie(int etat) {
    switch (etat) {
    case etat_vide: return QStringLiteral("Déchargée");
    case etat_charge: return QStringLiteral("Charge...");
    case etat_attente: return QStringLiteral("Attente...");
    default: return QStringLiteral("Décharge...");
    }
}

icone_batterie::icone_batterie(QWidget* parent) : QWidget(parent) {}

void icone_batterie::montre(double bat_soc, int etat) {
    if (etat != etat_) phase_ = 0;
    soc_ = bat_soc;
    niveau_ = niveau_batterie(bat_soc);
    etat_ = etat;
    setToolTip(QStringLiteral("État de charge de la batterie : %1 %").arg(100 * bat_soc, 0, 'f', 1));
    update();
}

void icone_batterie::avance() {
    ++phase_;
    if (etat_ != etat_attente || niveau_ == 0) update();
}

int icone_batterie::barres() const {
    if (etat_ == etat_charge && niveau_ < barres_max) return niveau_ + phase_ % (barres_max - niveau_ + 1);
    if (etat_ != etat_attente && niveau_ > 0) return niveau_ - phase_ % 2;
    return niveau_;
}

QSize icone_batterie::sizeHint() const { return {style::espace(24), style::espace(11)}; }
QSize icone_batterie::minimumSizeHint() const { return {style::espace(18), style::espace(8)}; }

void icone_batterie::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const double h = std::min<double>(height() - 4.0, (width() - 4.0) / 2.1), l = 2.1 * h;
    const QRectF zone((width() - l) / 2, (height() - h) / 2, l, h);
    const double borne = 0.05 * l, marge = std::max(3.0, 0.1 * h);
    const QRectF corps(zone.left(), zone.top(), zone.width() - borne, zone.height());

    const bool alerte = niveau_ == 0;
    QColor bord = style::couleur(alerte ? style::role::alerte : style::role::trait);
    if (alerte && phase_ % 2) bord.setAlpha(90);
    p.setPen(QPen(bord, 2));
    p.setBrush(palette().color(QPalette::Base));
    p.drawRoundedRect(corps, marge, marge);
    p.setBrush(bord);
    p.drawRoundedRect(QRectF(corps.right(), zone.center().y() - 0.2 * h, borne, 0.4 * h), 1, 1);

    const QRectF interieur = corps.adjusted(marge, marge, -marge, -marge);
    const double pas = interieur.width() / barres_max;
    QColor plein = style::couleur(alerte ? style::role::alerte : style::role::batterie);
    QColor vide = style::couleur(style::role::discret);
    vide.setAlpha(50);
    p.setPen(Qt::NoPen);
    const int n = barres();
    for (int i = 0; i < barres_max; ++i) {
        p.setBrush(i < n ? plein : vide);
        p.drawRoundedRect(
            QRectF(interieur.left() + i * pas + 1, interieur.top(), pas - 2, interieur.height()), 2, 2);
    }

    QFont f = style::police_nombres(this);
    f.setBold(true);
    f.setPixelSize(std::max(9, static_cast<int>(0.34 * h)));
    p.setFont(f);
    const QString texte = QStringLiteral("%1 %").arg(100 * soc_, 0, 'f', 0);
    const QRectF fond(corps.center().x() - 0.27 * l, corps.center().y() - 0.24 * h, 0.54 * l, 0.48 * h);
    QColor voile = palette().color(QPalette::Base);
    voile.setAlpha(215);
    p.setBrush(voile);
    p.drawRoundedRect(fond, 3, 3);
    p.setPen(palette().color(QPalette::Text));
    p.drawText(fond, Qt::AlignCenter, texte);
}
