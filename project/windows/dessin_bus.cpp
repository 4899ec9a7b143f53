#include "project/windows/dessin_bus.h"

#include <QPainter>
#include <QPolygonF>

#include <cmath>

#include "project/windows/champ_saisie.h"
#include "widgets/style.h"

namespace {

void bloc(QPainter& d, const QRectF& r, const QColor& couleur, const QString& titre, const QString& lignes,
          const QColor& encre) {
    QColor fond = couleur;
    fond.setAlpha(45);
    d.setPen(QPen(couleur, 2));
    d.setBrush(fond);
    d.drawRoundedRect(r, style::espace(2), style::espace(2));
    d.setPen(encre);
    QFont gras = d.font();
    gras.setBold(true);
    const QFont avant = d.font();
    const QRectF interieur =
        r.adjusted(style::espace(), style::espace(2), -style::espace(), -style::espace(2));
    d.setFont(gras);
    d.drawText(interieur, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, titre);
    d.setFont(avant);
    d.drawText(interieur, Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap, lignes);
}

void fleche(QPainter& d, QPointF a, QPointF b, const QColor& couleur) {
    const double l = std::hypot(b.x() - a.x(), b.y() - a.y()), t = style::espace(3);
    if (l <= t) return;
    const QPointF u = (b - a) / l, n(-u.y(), u.x());
    d.setPen(QPen(couleur, 3));
    d.drawLine(a, b - u * t);
    d.setPen(Qt::NoPen);
    d.setBrush(couleur);
    d.drawPolygon(QPolygonF{b, b - u * t + n * (t * .5), b - u * t - n * (t * .5)});
}

} // namespace

dessin_bus::dessin_bus(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void dessin_bus::montre(const power_record& p) {
    const bool regule = p.gst_regulated != 0;
    bus_ = regule ? QString("Bus régulé\n%1 V").arg(texte_court(p.gst_vregul))
                  : QString("Bus non régulé\ntension de la batterie");
    generateur_ = p.opt_panel_ext != faux ? "deux panneaux externes"
                  : p.opt_faces == 2      ? "paroi du cylindre"
                                          : QString("%1 faces").arg(p.nb_faces);
    rendement_gs_ = QString("%1 %").arg(texte_court(p.gst_rend_gs));
    transfert_ = QString("%1 %").arg(texte_court(p.gst_rend_bat));
    recharge_ = QString("× %1").arg(texte_court(p.gst_k_recharge));
    batterie_ =
        QString("%1 % au départ\ncharge : %2 V, %3 A\nau plus par accu")
            .arg(texte_court(p.gst_charge_init), texte_court(p.gst_vch_max), texte_court(p.gst_ich_max));
    charge_jour_ =
        QString("Jour : %1 W, %2 % dissipés").arg(texte_court(p.p_demand[0]), texte_court(p.p_dissip[0]));
    charge_nuit_ =
        QString("Éclipse : %1 W, %2 % dissipés").arg(texte_court(p.p_demand[1]), texte_court(p.p_dissip[1]));
    setAccessibleName(QString("%1 ; %2 ; %3").arg(bus_, charge_jour_, charge_nuit_));
    update();
}

QSize dessin_bus::sizeHint() const { return {style::espace(120), style::espace(110)}; }
QSize dessin_bus::minimumSizeHint() const { return {style::espace(95), style::espace(85)}; }

void dessin_bus::paintEvent(QPaintEvent*) {
    QPainter d(this);
    d.setRenderHint(QPainter::Antialiasing);
    const QColor encre = palette().color(QPalette::WindowText);
    const QColor gs = style::couleur(style::role::generateur), bat = style::couleur(style::role::batterie),
                 cu = style::couleur(style::role::charge_utile), trait = style::couleur(style::role::trait);
    const int m = style::espace(3), haut_bloc = fontMetrics().height() * 6;
    const double large = (width() - 2.0 * m) * .42, milieu = height() / 2.0;
    const QRectF r_gs(m, m, large, haut_bloc * .6);
    const QRectF r_bat(m, height() - m - haut_bloc, large, haut_bloc);
    const QRectF r_bus(m, milieu - haut_bloc * .35, large, haut_bloc * .6);
    const QRectF r_cu(width() - m - large, r_bus.center().y() - haut_bloc * .6, large, haut_bloc * 1.2);

    bloc(d, r_gs, gs, "Générateur solaire", generateur_, encre);
    bloc(d, r_bat, bat, "Batterie", batterie_, encre);
    bloc(d, r_bus, trait, bus_.section('\n', 0, 0), bus_.section('\n', 1), encre);
    bloc(d, r_cu, cu, "Charge utile", charge_jour_ + "\n" + charge_nuit_, encre);

    const double x = r_gs.center().x(), ecart = large * .2;
    fleche(d, {x, r_gs.bottom()}, {x, r_bus.top()}, gs);
    fleche(d, {x - ecart, r_bus.bottom()}, {x - ecart, r_bat.top()}, gs);
    fleche(d, {x + ecart, r_bat.top()}, {x + ecart, r_bus.bottom()}, bat);
    fleche(d, {r_bus.right(), r_cu.center().y()}, {r_cu.left(), r_cu.center().y()}, cu);

    d.setPen(encre);
    const double h = style::espace(6);
    auto texte = [&](double gauche, double haut, double bas, const QString& t, bool a_droite) {
        const QRectF r(a_droite ? gauche + style::espace(2) : gauche - large - style::espace(2),
                       (haut + bas) / 2 - h / 2, large, h);
        d.drawText(r, (a_droite ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter, t);
    };
    texte(x, r_gs.bottom(), r_bus.top(), rendement_gs_, true);
    texte(x - ecart, r_bus.bottom(), r_bat.top(), recharge_, false);
    texte(x + ecart, r_bus.bottom(), r_bat.top(), transfert_, true);
}
