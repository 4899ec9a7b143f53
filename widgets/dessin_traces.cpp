#include "widgets/dessin_traces.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPalette>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "widgets/graduation.h"
#include "widgets/style.h"

namespace {

constexpr double marge = 6;          // [px]
constexpr double trait_legende = 22; // [px]
constexpr double points_lisses = .1; // a pixel, that a moving curve is smoothed with

/// Behind the current run's entry those of the kept runs say just which run they are.
QString nom_entree(const trace_graphique& g, int k) {
    const trace_courbe& c = g.courbes[k];
    if (c.calcul.isEmpty()) return c.titre;
    return k > 0 && g.courbes[k - 1].nom == c.nom ? c.calcul : c.titre + " · " + c.calcul;
}

} // namespace

double dessin_traces::hauteur_ligne() const { return QFontMetricsF(police).height() + 2; }

QStringList dessin_traces::unites(int g) const {
    QStringList u;
    for (const trace_courbe& c : graphiques[g].courbes)
        if (!u.contains(c.unite)) u << c.unite;
    return u;
}

QPair<double, double> dessin_traces::etendue(int g, const QString& unite) const {
    for (const ordonnees& o : choisies)
        if (o.graphique == g && o.unite == unite) return {o.min, o.max};
    double bas = 0, haut = 1;
    bool trouve = false;
    for (const trace_courbe& c : graphiques[g].courbes) {
        if (c.unite != unite || !c.donnees || c.donnees->min() > c.donnees->max()) continue;
        bas = trouve ? std::min(bas, c.donnees->min()) : c.donnees->min();
        haut = trouve ? std::max(haut, c.donnees->max()) : c.donnees->max();
        trouve = true;
    }
    double bord = 0.06 * (haut - bas);
    if (bord <= 1e-12 * std::fabs(haut)) bord = std::max(0.05 * std::fabs(haut), 1e-9);
    return {bas - bord, haut + bord};
}

double dessin_traces::largeur_entree(const trace_graphique& g, int k) const {
    const QString nombre = "-0000." + QString(std::max(3, g.courbes[k].decimales), '0');
    return trait_legende + QFontMetricsF(police).horizontalAdvance(nom_entree(g, k)) +
           QFontMetricsF(police_nombres).horizontalAdvance(nombre + " " + g.courbes[k].unite) + 3 * marge;
}

int dessin_traces::graduations_y(const QRectF& r) const {
    return std::max(2, int(r.height() / (1.6 * QFontMetricsF(police_nombres).height())));
}

void dessin_traces::dispose(const QSize& taille) {
    taille_ = taille;
    const qsizetype n = graphiques.size();
    const double ligne = hauteur_ligne();
    largeur_axe_ = QFontMetricsF(police_nombres).horizontalAdvance("-0000.00") + 2 * marge;
    qsizetype droits = 0;
    for (int g = 0; g < n; ++g) droits = std::max(droits, unites(g).size() - 1);
    const double x = largeur_axe_,
                 large = std::max(40., taille.width() - x - marge * 2 - double(droits) * largeur_axe_);
    const double pied = 2 * ligne + marge;
    const double strip = evenements.isEmpty() ? 0 : ligne + 2;
    bande_ = QRectF(x, 2, large, strip);
    cadres_.clear();
    legendes_.clear();
    QVector<double> tetes;
    double total = 0;
    for (int g = 0; g < n; ++g) {
        double lignes = 1, plein = 0;
        for (int k = 0; k < graphiques[g].courbes.size(); ++k) {
            const double l = largeur_entree(graphiques[g], k);
            if (plein > 0 && plein + l > large) ++lignes, plein = 0;
            plein += l;
        }
        tetes << lignes * ligne + 4;
        total += tetes.last();
    }
    // Legends leave the curves at least half of the height: what does not fit is in the table of readings.
    for (double& t : tetes)
        t = std::max(ligne + 4, t * std::min(1., .45 * taille.height() / std::max(1., total)));
    total = std::accumulate(tetes.begin(), tetes.end(), 0.);
    const double haut = bande_.bottom() + 2;
    const double chaque = n ? (taille.height() - haut - pied - total) / double(n) : 0;
    double y = haut;
    for (int g = 0; g < n; ++g) {
        legendes_ << QRectF(x, y, large, tetes[g]);
        cadres_ << QRectF(x, y + tetes[g], large, std::max(20., chaque - marge));
        y += tetes[g] + chaque;
    }
}

int dessin_traces::graphique_en(const QPointF& p) const {
    for (int g = 0; g < cadres_.size(); ++g)
        if (cadres_[g].contains(p)) return g;
    return -1;
}

QString dessin_traces::unite_en(const QPointF& p) const {
    for (int g = 0; g < cadres_.size(); ++g) {
        if (p.y() < cadres_[g].top() || p.y() > cadres_[g].bottom()) continue;
        const QStringList u = unites(g);
        if (p.x() < cadres_[g].left()) return u.value(0, {});
        if (p.x() > cadres_[g].right()) return u.value(1 + int((p.x() - cadres_[g].right()) / largeur_axe_));
    }
    return {};
}

double dessin_traces::date_en(double x) const {
    const double large = std::max(1., bande_.width());
    return debut + (x - bande_.left()) / large * (fin - debut);
}

double dessin_traces::x_de(double j) const {
    return bande_.left() + (j - debut) / (fin - debut) * bande_.width();
}

const trace_evenement* dessin_traces::evenement_en(const QPointF& p) const {
    if (!bande_.contains(p)) return nullptr;
    const double j = date_en(p.x()), portee = 8 * (fin - debut) / std::max(1., bande_.width());
    const auto avant = [](const trace_evenement& e, double d) { return e.date < d; };
    const trace_evenement* pres = nullptr;
    for (auto e = std::lower_bound(evenements.begin(), evenements.end(), j - portee, avant);
         e != evenements.end() && e->date <= j + portee; ++e)
        if (!pres || std::fabs(e->date - j) < std::fabs(pres->date - j)) pres = &*e;
    return pres;
}

dessin_traces::encres dessin_traces::encre(bool papier) const {
    const QPalette pal = QApplication::palette();
    const QColor fond = papier ? QColor(Qt::white) : pal.color(QPalette::Base);
    const QColor texte = papier ? QColor(0x20, 0x22, 0x26) : pal.color(QPalette::Text);
    // Opaque: of a month there are hundreds, and each translucent one would be blended for itself.
    const QColor bande = style::melange(
        style::accorde(style::couleur(style::role::eclipse), !papier && style::sombre()), fond, .24);
    return {fond, texte, style::melange(texte, fond, .6), style::melange(texte, fond, .16), bande, papier};
}

void dessin_traces::peint(QPainter& p, bool papier) const {
    const encres e = encre(papier);
    p.fillRect(QRectF(QPointF(0, 0), QSizeF(taille_)), e.fond);
    p.setFont(police);
    if (graphiques.isEmpty()) {
        p.setPen(e.texte);
        p.drawText(QRectF(QPointF(0, 0), QSizeF(taille_)), Qt::AlignCenter | Qt::TextWordWrap,
                   "Choisissez une variable ou un jeu tout prêt : ses courbes se placeront ici.");
    }
    for (int g = 0; g < graphiques.size(); ++g) {
        peint_cadre(p, g, e);
        if (graphiques[g].courbes.isEmpty()) {
            p.setPen(e.axe);
            p.drawText(cadres_[g], Qt::AlignCenter, "Déposez une variable ici.");
        }
        p.save();
        p.setClipRect(cadres_[g]);
        // The current run over the kept ones, and dashes over what they leave to be seen.
        for (const bool tirets : {false, true})
            for (const bool courant : {false, true})
                for (const trace_courbe& c : graphiques[g].courbes)
                    if ((c.trait != Qt::SolidLine) == tirets && c.calcul.isEmpty() == courant)
                        peint_courbe(p, g, c, e);
        p.restore();
        peint_axes(p, g, e);
    }
    peint_dates(p, e);
    peint_evenements(p, e);
}

void dessin_traces::peint_cadre(QPainter& p, int g, const encres& e) const {
    const QRectF& r = cadres_[g];
    // Of a year the bands run together: what stands closer than a pixel is filled at once.
    QRectF ensemble;
    const auto apres = [](const QPair<double, double>& x, double d) { return x.second < d; };
    for (auto i = std::lower_bound(bandes.begin(), bandes.end(), debut, apres);
         i != bandes.end() && i->first <= fin; ++i) {
        const double x0 = std::max(r.left(), x_de(i->first)), x1 = std::min(r.right(), x_de(i->second));
        const QRectF une(x0, r.top(), std::max(x1 - x0, .5), r.height());
        if (!ensemble.isNull() && x0 - ensemble.right() < 1) {
            ensemble.setRight(std::max(ensemble.right(), une.right()));
            continue;
        }
        p.fillRect(ensemble, e.bande);
        ensemble = une;
    }
    p.fillRect(ensemble, e.bande);
    p.setPen(QPen(e.grille, 1));
    for (const graduation& t : graduations_dates(debut, fin, std::max(2, int(r.width() / 110)))) {
        const double x = std::round(x_de(t.valeur)) + .5;
        p.drawLine(QPointF(x, r.top()), QPointF(x, r.bottom()));
    }
    if (const QStringList u = unites(g); !u.isEmpty()) {
        const auto [bas, haut] = etendue(g, u[0]);
        for (const graduation& t : graduations(bas, haut, graduations_y(r))) {
            const double y = std::round(r.bottom() - (t.valeur - bas) / (haut - bas) * r.height()) + .5;
            p.drawLine(QPointF(r.left(), y), QPointF(r.right(), y));
        }
    }
}

void dessin_traces::peint_axes(QPainter& p, int g, const encres& e) const {
    const QRectF& r = cadres_[g];
    const QStringList u = unites(g);
    p.setPen(QPen(e.axe, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(r);
    const QFontMetricsF m(police_nombres);
    for (int k = 0; k < u.size(); ++k) {
        const auto [bas, haut] = etendue(g, u[k]);
        const bool gauche = k == 0;
        const double x = gauche ? r.left() : r.right() + (k - 1) * largeur_axe_;
        p.setFont(police_nombres);
        if (k > 1) {
            p.setPen(e.axe);
            p.drawLine(QPointF(x, r.top()), QPointF(x, r.bottom()));
        }
        for (const graduation& t : graduations(bas, haut, graduations_y(r))) {
            const double y = r.bottom() - (t.valeur - bas) / (haut - bas) * r.height();
            p.setPen(e.axe);
            p.drawLine(QPointF(x, y), QPointF(x + (gauche ? -3 : 3), y));
            p.setPen(e.texte);
            const QRectF ou(gauche ? x - largeur_axe_ : x + marge, y - m.height() / 2, largeur_axe_ - marge,
                            m.height());
            p.drawText(ou, Qt::AlignVCenter | (gauche ? Qt::AlignRight : Qt::AlignLeft), t.texte);
        }
        p.setFont(police);
        p.setPen(e.texte);
        const QRectF ou(gauche ? x - largeur_axe_ : x + marge, r.top() - m.height() - 3, largeur_axe_ - marge,
                        m.height());
        p.drawText(ou, Qt::AlignVCenter | (gauche ? Qt::AlignRight : Qt::AlignLeft), u[k]);
    }
}

void dessin_traces::peint_dates(QPainter& p, const encres& e) const {
    if (cadres_.isEmpty()) return;
    const QRectF& r = cadres_.last();
    p.setFont(police_nombres);
    const double h = hauteur_ligne();
    const double large =
        mention.isEmpty() ? 0 : QFontMetricsF(p.font()).horizontalAdvance(mention) + 2 * marge;
    const QRectF coin(r.right() - large, r.bottom() + h + 2, large, h);
    p.setPen(e.texte);
    p.drawText(coin, Qt::AlignRight | Qt::AlignVCenter, mention);
    for (const graduation& t : graduations_dates(debut, fin, std::max(2, int(r.width() / 110)))) {
        const double x = x_de(t.valeur);
        p.setPen(e.axe);
        p.drawLine(QPointF(x, r.bottom()), QPointF(x, r.bottom() + 3));
        p.setPen(e.texte);
        // At the right edge a text stands within the picture.
        const auto sous = [&](const QString& texte, double y) {
            const double demi = QFontMetricsF(p.font()).horizontalAdvance(texte) / 2 + 1;
            return QRectF(std::min(x, taille_.width() - demi) - 60, y, 120, h);
        };
        const double y = r.bottom() + 4;
        p.drawText(sous(t.texte, y), Qt::AlignCenter, t.texte);
        const QRectF jour = sous(t.jour, y + h - 2);
        if (!t.jour.isEmpty() && (mention.isEmpty() || !jour.intersects(coin)))
            p.drawText(jour, Qt::AlignCenter, t.jour);
    }
}

void dessin_traces::peint_evenements(QPainter& p, const encres& e) const {
    if (evenements.isEmpty()) return;
    p.save();
    p.setPen(QPen(e.grille, 1));
    p.drawRect(bande_);
    p.setClipRect(bande_.adjusted(-8, 0, 8, 0));
    QFont f = police;
    f.setPointSizeF(f.pointSizeF() * .9);
    p.setFont(f);
    const double large = QFontMetricsF(f).horizontalAdvance("▲") + 1;
    const auto avant = [](const trace_evenement& x, double d) { return x.date < d; };
    QVector<double> libre(genres.size(), -1e9); // each kind marks a place once
    for (auto x = std::lower_bound(evenements.begin(), evenements.end(), debut, avant);
         x != evenements.end() && x->date <= fin; ++x) {
        const double ou = x_de(x->date);
        if (ou < libre[x->genre]) continue;
        libre[x->genre] = ou + large;
        p.setPen(style::accorde(genres[x->genre].couleur, !e.papier && style::sombre()));
        p.drawText(QRectF(ou - 10, bande_.top(), 20, bande_.height()), Qt::AlignCenter,
                   QString(genres[x->genre].signe));
    }
    p.restore();
}

void dessin_traces::peint_courbe(QPainter& p, int g, const trace_courbe& c, const encres& e) const {
    if (!c.donnees || c.donnees->taille() == 0) return;
    const serie& s = *c.donnees;
    const QRectF& r = cadres_[g];
    const auto [bas, haut] = etendue(g, c.unite);
    const double echelle = r.height() / (haut - bas);
    const QColor couleur = style::accorde(c.couleur, !e.papier && style::sombre());
    std::size_t i = s.depuis(debut), bout = std::min(s.depuis(fin) + 1, s.taille());
    if (i > 0) --i;
    const double par_pixel = double(bout - i) / r.width();
    if (par_pixel > 1 || (vif && par_pixel > points_lisses)) {
        peint_dense(p, r, c, bas, echelle, couleur);
        return;
    }
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(couleur, c.epaisseur, c.trait, Qt::FlatCap, Qt::BevelJoin));
    QPolygonF ligne;
    const auto trace = [&] {
        if (ligne.size() == 1) p.drawPoint(ligne[0]);
        if (ligne.size() > 1) p.drawPolyline(ligne);
        ligne.clear();
    };
    // Far outside of the frame a line only costs time; its direction is kept to what a screen shows.
    const double borne = 50 * r.height();
    for (; i < bout; ++i) {
        if (s.rompu(i)) trace();
        if (!std::isfinite(s.valeur(i))) continue;
        ligne << QPointF(x_de(s.date(i)), std::clamp(r.bottom() - (s.valeur(i) - bas) * echelle,
                                                     r.top() - borne, r.bottom() + borne));
    }
    trace();
    p.setRenderHint(QPainter::Antialiasing, false);
}

/// Each column of pixels from its smallest to its largest value; dashes leave columns out.
void dessin_traces::peint_dense(QPainter& p, const QRectF& r, const trace_courbe& c, double bas,
                                double echelle, const QColor& couleur) const {
    std::vector<morceau_serie> m;
    c.donnees->reduit(debut, fin, int(r.width()), m);
    constexpr double bout = 3; // [px]
    const double epais = std::max(1., std::round(c.epaisseur));
    const auto y_de = [&](double v) {
        return std::clamp(r.bottom() - (v - bas) * echelle, r.top() - 2, r.bottom() + 2);
    };
    const int plein = c.trait == Qt::SolidLine ? 1 : c.trait == Qt::DashLine ? 9 : 3;
    const int periode = c.trait == Qt::SolidLine ? 1 : c.trait == Qt::DashLine ? 13 : 6;
    QVector<QRect> barres;
    barres.reserve(qsizetype(m.size()) + int(r.width()));
    const auto remplit = [&](int colonne, double y0, double y1) {
        const QRect une(int(r.left()) + colonne, int(y0 - epais / 2), 1, int(y1 - y0 + epais));
        // An angle that turns many times within a column fills it once.
        if (!barres.isEmpty() && barres.last().intersects(une))
            barres.last() |= une;
        else
            barres << une;
    };
    const auto barre = [&](int colonne, double pied, double haut) {
        const double y0 = y_de(haut), y1 = y_de(pied);
        if (colonne % periode < plein) return remplit(colonne, y0, y1);
        // Of what stands high in a gap both ends are drawn: no extreme is lost, and the curve behind is seen.
        if (y1 - y0 < 4 * bout) return;
        remplit(colonne, y0, y0 + bout);
        remplit(colonne, y1 - bout, y1);
    };
    for (std::size_t k = 0; k < m.size(); ++k) {
        double haut = m[k].max, pied = m[k].min;
        if (m[k].joint) {
            // Up to here from the piece before, in a straight line over the columns between.
            const double de = m[k - 1].dernier,
                         pente = (m[k].premier - de) / (m[k].colonne - m[k - 1].colonne);
            double avant = de;
            for (int col = m[k - 1].colonne + 1; col < m[k].colonne; ++col) {
                const double v = de + pente * (col - m[k - 1].colonne);
                barre(col, std::min(avant, v), std::max(avant, v));
                avant = v;
            }
            haut = std::max(haut, avant);
            pied = std::min(pied, avant);
        }
        barre(m[k].colonne, pied, haut);
    }
    p.setPen(Qt::NoPen);
    p.setBrush(couleur);
    p.drawRects(barres);
}

void dessin_traces::peint_lecture(QPainter& p, bool papier, bool curseur) const {
    const encres e = encre(papier);
    for (int g = 0; g < graphiques.size() && g < legendes_.size(); ++g) peint_legende(p, g, e, curseur);
    if (!cadres_.isEmpty()) peint_marques(p, e, curseur);
}

/// The entries of a chart, each with its value at the cursor, in rows.
void dessin_traces::peint_legende(QPainter& p, int g, const encres& e, bool curseur) const {
    const double ligne = hauteur_ligne();
    const QRectF& r = legendes_[g];
    p.save();
    p.setClipRect(r.adjusted(0, 0, marge * 2, 0));
    double x = r.left(), y = r.top() + 2;
    for (int k = 0; k < graphiques[g].courbes.size(); ++k) {
        const trace_courbe& c = graphiques[g].courbes[k];
        const double l = largeur_entree(graphiques[g], k);
        if (x > r.left() && x + l > r.right()) x = r.left(), y += ligne;
        p.setPen(QPen(style::accorde(c.couleur, !e.papier && style::sombre()), std::max(2., c.epaisseur),
                      c.trait, Qt::FlatCap));
        p.drawLine(QPointF(x, y + ligne / 2), QPointF(x + trait_legende - 4, y + ligne / 2));
        p.setPen(e.texte);
        p.setFont(police);
        const QString nom = nom_entree(graphiques[g], k);
        p.drawText(QRectF(x + trait_legende, y, l, ligne), Qt::AlignVCenter, nom);
        p.setFont(police_nombres);
        p.drawText(
            QRectF(x + trait_legende + QFontMetricsF(police).horizontalAdvance(nom) + marge, y, l, ligne),
            Qt::AlignVCenter, valeur_entree(c, curseur));
        x += l;
    }
    p.restore();
}

/// The value at the cursor with its unit; the unit alone where there is none.
QString dessin_traces::valeur_entree(const trace_courbe& c, bool curseur) const {
    const double v = c.donnees && curseur ? c.donnees->en(date) : NAN;
    if (!std::isfinite(v)) return c.unite.isEmpty() ? QString() : "(" + c.unite + ")";
    // No sign before a number that is shown as zero.
    const bool nul = std::fabs(v) * std::pow(10, c.decimales) < .5;
    return QString::number(nul ? 0 : v, 'f', c.decimales) + " " + c.unite;
}

/// Cursor and marks over all charts, and what stands between the marks.
void dessin_traces::peint_marques(QPainter& p, const encres& e, bool curseur) const {
    const double haut = cadres_.first().top(), bas = cadres_.last().bottom(), ligne = hauteur_ligne();
    const auto verticale = [&](double j, const QPen& plume, const QString& nom) {
        if (j < debut || j > fin) return;
        const double x = std::round(x_de(j)) + .5;
        p.setPen(plume);
        p.drawLine(QPointF(x, haut), QPointF(x, bas));
        if (nom.isEmpty()) return;
        const QRectF etiquette(x - ligne / 2, haut, ligne, ligne);
        p.fillRect(etiquette, plume.color());
        p.setPen(e.fond);
        p.setFont(police);
        p.drawText(etiquette, Qt::AlignCenter, nom);
    };
    const QColor marque = style::accorde(style::couleur(style::role::terre), !e.papier && style::sombre());
    if (a && b) {
        QColor voile = marque;
        voile.setAlpha(28);
        const double x0 = std::clamp(x_de(std::min(*a, *b)), bande_.left(), bande_.right());
        const double x1 = std::clamp(x_de(std::max(*a, *b)), bande_.left(), bande_.right());
        for (const QRectF& r : cadres_) p.fillRect(QRectF(x0, r.top(), x1 - x0, r.height()), voile);
    }
    if (curseur) verticale(date, QPen(e.axe, 1, Qt::DashLine), {});
    if (a) verticale(*a, QPen(marque, 1.4), "A");
    if (b) verticale(*b, QPen(marque, 1.4), "B");
}
