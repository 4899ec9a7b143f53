#include "widgets/graphe_pieces.h"

#include <algorithm>
#include <cmath>

#include "shell/utilitaires.h"

namespace {

constexpr double marge = 50, densite = 20; // [px], in half perimeters of the axes

/// The part of a line within a rectangle (Liang and Barsky, 1984); false where there is none.
bool coupe(const QRectF& r, QPointF& a, QPointF& b) {
    const QPointF d = b - a;
    double t0 = 0, t1 = 1;
    const double p[] = {-d.x(), d.x(), -d.y(), d.y()};
    const double q[] = {a.x() - r.left(), r.right() - a.x(), a.y() - r.top(), r.bottom() - a.y()};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1) return false;
    }
    b = a + d * t1;
    a += d * t0;
    return true;
}

} // namespace

double abscisses_en_dates::getTickStep(const QCPRange& r) {
    static constexpr double pas_s[] = {1,   2,   5,    10,   15,   30,    60,    120,  300,
                                       600, 900, 1800, 3600, 7200, 10800, 21600, 43200};
    const double voulu = r.size() * secondes_par_jour / 5.0;
    for (double p : pas_s)
        if (p >= voulu) return p / secondes_par_jour;
    return std::max(1.0, cleanMantissa(voulu / secondes_par_jour));
}

QVector<QString> abscisses_en_dates::createLabelVector(const QVector<double>& t, const QLocale&, QChar, int) {
    QVector<QString> r;
    const bool secondes = t.size() > 1 && t[1] - t[0] < 59.0 / secondes_par_jour;
    const bool jours = t.size() > 1 && t[1] - t[0] >= 1;
    int jour_avant = -1;
    for (double j : t) {
        // Half a millisecond keeps a tick on a round hour from being shown as the second before.
        const date_record d = jour_vers_date(j + 0.0005 / secondes_par_jour);
        QString texte = QString("%1:%2").arg(d.heure, 2, 10, QChar('0')).arg(d.minute, 2, 10, QChar('0'));
        if (secondes) texte += QString(":%1").arg(d.seconde, 2, 10, QChar('0'));
        if (jours) texte.clear();
        if (jours || d.jour != jour_avant)
            texte += QString(jours ? "%1/%2/%3" : "\n%1/%2/%3")
                         .arg(d.jour, 2, 10, QChar('0'))
                         .arg(d.mois, 2, 10, QChar('0'))
                         .arg(d.an);
        jour_avant = d.jour;
        r << texte;
    }
    return r;
}

void courbe_bornee::drawLinePlot(QCPPainter* p, const QVector<QPointF>& lignes) const {
    const QRectF cadre = QRectF(clipRect()).adjusted(-marge, -marge, marge, marge);
    QVector<QPointF> morceau;
    double longueur = 0;
    QVector<QVector<QPointF>> morceaux;
    const auto ferme = [&] {
        if (morceau.size() > 1) morceaux << morceau;
        morceau.clear();
    };
    for (int i = 1; i < lignes.size(); ++i) {
        QPointF a = lignes[i - 1], b = lignes[i];
        const bool fini = std::isfinite(a.x() + a.y()) && std::isfinite(b.x() + b.y());
        if (!fini || !coupe(cadre, a, b)) {
            ferme();
            continue;
        }
        if (morceau.isEmpty() || morceau.last() != a) {
            ferme();
            morceau << a;
        }
        morceau << b;
        longueur += (b - a).manhattanLength();
    }
    ferme();
    // Where a curve fills its pixels dashes tell nothing, and would take longer than a frame.
    if (longueur > densite * (cadre.width() + cadre.height()) && p->pen().style() != Qt::SolidLine) {
        QPen plein = p->pen();
        plein.setStyle(Qt::SolidLine);
        p->setPen(plein);
    }
    for (const QVector<QPointF>& m : morceaux) QCPGraph::drawLinePlot(p, m);
}
