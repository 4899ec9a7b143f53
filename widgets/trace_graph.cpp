#include "widgets/trace_graph.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "shell/utilitaires.h"
#include "widgets/style.h"
#include "widgets/table_resultats.h"
#include "widgets/textes.h"

namespace {

constexpr int gauche = 50, droite = 750, haut = 5, bas = 235;
constexpr int haut_courbes = 15; ///< ordinate of the maximum
constexpr int pas_x = 70, pas_y = 55, tiret = 10;
constexpr int taille_police = 10;
constexpr int rangees_legende = 2, hauteur_rangee = 11; ///< of the saved picture's legend

QString texte_legende(const trace_graph::courbe& c) {
    return c.nom + (c.unite.isEmpty() ? QString() : " (" + c.unite + ")") +
           (c.position.isEmpty() ? QString() : ", " + c.position);
}

/// Side of a curve's number under a font.
double cote_numero(const QFont& f) { return std::round(QFontMetricsF(f).ascent() + 1); }

/// Moves the ordinates, sorted, so that they stand `ecart` apart between two limits, where there is room.
void ecarte(std::vector<std::pair<double, size_t>>& y, double ecart, double min, double max) {
    for (size_t i = 0; i < y.size(); ++i)
        y[i].first = std::max(y[i].first, i == 0 ? min : y[i - 1].first + ecart);
    for (size_t i = y.size(); i-- > 0;)
        y[i].first = std::min(y[i].first, i + 1 == y.size() ? max : y[i + 1].first - ecart);
}

} // namespace

QColor couleur_colonne(int colonne, bool fonce) {
    static const QColor couleurs[] = {{0, 0, 255},   {255, 0, 0},   {0, 0, 128},
                                      {255, 128, 0}, {128, 0, 128}, {0, 128, 0}};
    static const QColor claires[] = {{105, 160, 255}, {255, 110, 110}, {185, 198, 235},
                                     {255, 175, 90},  {228, 145, 228}, {110, 215, 120}};
    return fonce ? claires[colonne % 6] : couleurs[colonne % 6];
}

void dessine_numero(QPainter& p, const QPointF& centre, int numero, const QColor& couleur, double cote) {
    const QRectF r(centre.x() - cote / 2, centre.y() - cote / 2, cote, cote);
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(couleur);
    p.drawRoundedRect(r, cote / 5, cote / 5);
    QFont f = p.font();
    f.setPixelSize(std::max(6, qRound(cote * 0.8)));
    f.setBold(true);
    p.setFont(f);
    p.setPen(qGray(couleur.rgb()) > 120 ? Qt::black : Qt::white);
    p.drawText(r, Qt::AlignCenter, QString::number(numero));
    p.restore();
}

trace_graph::trace_graph(QWidget* parent) : QWidget(parent) {
    setObjectName("pict_graph");
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    const auto etiquette = [this](const QString& nom, Qt::Alignment cote) {
        auto* l = new QLabel(this);
        l->setObjectName(nom);
        l->setAlignment(cote);
        l->setAttribute(Qt::WA_TransparentForMouseEvents);
        l->setForegroundRole(QPalette::Text);
        return l;
    };
    for (int i = 0; i < nombre_x; ++i)
        lab_x_[static_cast<size_t>(i)] =
            etiquette(QString("lab_x_%1").arg(i), Qt::AlignHCenter | Qt::AlignTop);
    for (int i = 0; i < nombre_y; ++i)
        lab_y_[static_cast<size_t>(i)] =
            etiquette(QString("lab_y_%1").arg(i), Qt::AlignRight | Qt::AlignVCenter);
}

void trace_graph::efface() {
    trace_ = false;
    curseur_ = -1;
    courbes_.clear();
    lignes_.clear();
    derniers_.clear();
    bandes_.clear();
    for (QLabel* l : lab_x_) l->clear();
    for (QLabel* l : lab_y_) l->clear();
    cache_ = {};
    update();
}

void trace_graph::trace(const table_resultats& table, const QVector<courbe>& courbes, double debut,
                        double fin, double min, double max) {
    efface();
    if (min > max) std::swap(min, max);
    if (min == max) return;
    trace_ = true;
    min_ = min;
    max_ = max;
    courbes_ = courbes;
    // The rows of the grid are counted with its header: the first of the table is row 1.
    const int lignes = table.lignes() + 1;
    segments_ = lignes - 2;
    table_ = &table;
    version_ = table.version();
    if (segments_ > 0) {
        releve_bandes();
        releve_courbes();
    }
    ecrit_etiquettes(debut, fin);
    place_etiquettes(); // the legend's rows have moved them
}

void trace_graph::ecrit_etiquettes(double debut, double fin) {
    const double pas = (fin - debut) / (nombre_x - 1);
    for (int i = 0; i < nombre_x; ++i) {
        // A tenth of a second keeps a whole second from being cut.
        const double j = debut + i * pas + 0.1 / secondes_par_jour;
        const QString date = QString::fromStdString(date_vers_texte(jour_vers_date(j)));
        lab_x_[static_cast<size_t>(i)]->setText(i == 0 ? date.right(8) + "\n" + date.left(10)
                                                       : date.right(8));
    }
    const double pas_valeur = (max_ - min_) / (nombre_y - 1);
    for (int i = 0; i < nombre_y; ++i)
        lab_y_[static_cast<size_t>(i)]->setText(texte_image(min_ + i * pas_valeur, "0.0e+00"));
}

// One step too far to the right at both ends: meant.
int trace_graph::abscisse(int r) const {
    return static_cast<int>(std::floor(700.0 * r / segments_)) + gauche;
}

trace_graph::feuille trace_graph::feuille_image() const {
    feuille f;
    f.taille = {largeur, hauteur};
    f.police.setKerning(false);
    f.police.setPixelSize(taille_police);
    f.papier = Qt::white;
    f.encre = Qt::black;
    f.filet = {176, 176, 176};
    f.eclipse = {224, 224, 224};
    f.image = true;
    return f;
}

/// The drawing area takes all the room that labels and legend leave.
trace_graph::feuille trace_graph::feuille_ecran() const {
    feuille f;
    f.taille = size();
    f.police = style::police_nombres(this);
    f.papier = palette().color(QPalette::Base);
    f.encre = palette().color(QPalette::Text);
    f.filet = style::melange(f.encre, f.papier, 0.3);
    f.eclipse = style::melange(f.encre, f.papier, 0.12);
    f.fonce = f.papier.lightness() < 128;
    const QFontMetrics m(f.police);
    const double x = m.horizontalAdvance("-8.8e+88") + style::espace(2);
    const double y = m.height() / 2.0 + 2;
    const double large = std::max(20.0, f.taille.width() - x - style::espace(12));
    const double haute =
        std::max(20.0, f.taille.height() - y - tiret - (1 + rangees(f)) * m.height() - style::espace());
    const double kx = large / (droite - gauche), ky = haute / (bas - haut);
    f.place = QTransform(kx, 0, 0, ky, x - kx * gauche, y - ky * haut);
    return f;
}

/// Rows of the legend; at least one, the line of the first date.
int trace_graph::rangees(const feuille& f) const {
    if (f.image) return rangees_legende;
    const int n = static_cast<int>(courbes_.size());
    const double place = zone_legende(f).width();
    double large = 1;
    for (const courbe& c : courbes_)
        large = std::max(large, QFontMetricsF(f.police).horizontalAdvance(texte_legende(c)) +
                                    2 * cote_numero(f.police));
    const int par_rangee = std::clamp(static_cast<int>(place / large), 1, std::max(1, n));
    return std::clamp((n + par_rangee - 1) / par_rangee, 1, 3);
}

void trace_graph::dessine(QPainter& p, const feuille& f) const {
    p.fillRect(QRectF(QPointF(0, 0), f.taille), f.papier);
    if (!trace_) return;
    const bool lisse = p.testRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::Antialiasing, false); // bands of whole pixels, of one shade
    for (const QRect& bande : bandes_) {
        QRectF r = f.place.mapRect(QRectF(bande));
        r.setWidth(std::max(1.0, r.width()));
        p.fillRect(r, f.eclipse);
    }
    p.setRenderHint(QPainter::Antialiasing, lisse);
    dessine_axes(p, f);
    dessine_courbes(p, f);
}

void trace_graph::dessine_axes(QPainter& p, const feuille& f) const {
    const auto ligne = [&](int x1, int y1, int x2, int y2) {
        p.drawLine(f.place.map(QPointF(x1, y1)), f.place.map(QPointF(x2, y2)));
    };
    p.setPen(QPen(f.filet, 1));
    for (int i = 0; i < nombre_y; ++i) ligne(gauche, bas - pas_y * i, droite, bas - pas_y * i);
    p.setPen(QPen(f.encre, 1));
    for (int i = 0; i < nombre_x; ++i) {
        const QPointF pied = f.place.map(QPointF(pas_x * i + gauche, bas));
        p.drawLine(pied, pied + QPointF(0, tiret));
    }
    p.setPen(QPen(f.encre, 2));
    ligne(gauche, haut, gauche, bas);
    ligne(gauche, bas, droite, bas);
}

QColor trace_graph::couleur(int courbe, const feuille& f) const {
    const auto& c = courbes_[courbe];
    if (!f.fonce) return c.couleur;
    return c.couleur_sombre.isValid() ? c.couleur_sombre : c.couleur.lighter(170);
}

/// The rows that share an abscissa.
std::vector<trace_graph::tranche> trace_graph::tranches() const {
    std::vector<tranche> t;
    for (int r = 1; r <= segments_ + 1; ++r) {
        const int x = abscisse(r);
        if (t.empty() || t.back().x != x) t.push_back({x, r - 1, r - 1});
        ++t.back().fin;
    }
    return t;
}

/// Each row in eclipse but the last of all has a band up to the abscissa of the next row.
void trace_graph::releve_bandes() {
    for (const auto& [debut, fin] : table_->eclipses()) {
        if (debut >= segments_) break;
        const QRect r(QPoint(abscisse(debut + 1), haut_courbes),
                      QPoint(abscisse(std::min(fin, segments_) + 1), bas));
        if (!bandes_.isEmpty() && bandes_.last().right() >= r.left())
            bandes_.last().setRight(r.right());
        else
            bandes_ << r;
    }
}

/// Points that share an abscissa stand on one vertical line: its first, extreme and last points draw it.
void trace_graph::releve_courbes() {
    lignes_.resize(static_cast<size_t>(courbes_.size()));
    for (const courbe& c : courbes_) derniers_.push_back(table_->nombre(segments_, c.colonne));
    const auto ordonnee = [this](double valeur) {
        const double part = (valeur - min_) / (max_ - min_);
        return std::clamp(bas - (bas - haut_courbes) * part, -1e5, 1e5);
    };
    for (const auto& [x, debut, fin] : tranches())
        for (size_t c = 0; c < lignes_.size(); ++c) {
            const int colonne = courbes_[static_cast<int>(c)].colonne;
            const auto [min, max] = table_->extremes(colonne, debut, fin);
            for (const double v :
                 {table_->nombre(debut, colonne), min, max, table_->nombre(fin - 1, colonne)})
                lignes_[c] << QPointF(x, ordonnee(v));
        }
}

/// A line of more points than the screen has columns, with a pen of several pixels: each abscissa once from
/// its lowest to its highest point, and the lines between. (In one go, the raster engine fills the outline in
/// a time that grows with its square.) Dashes follow the abscissa, since along a line that goes up and down
/// within a pixel they would fill it. Of what stands high in a gap both ends are drawn: no extreme is lost,
/// and the curve behind is seen between them.
static void dessine_dense(QPainter& p, QPen plume, const QPolygonF& ligne) {
    constexpr double bout = 3;                      // [px]
    const QList<qreal> motif = plume.dashPattern(); // dash, gap, dash, … in widths of the pen
    const double periode = std::accumulate(motif.begin(), motif.end(), 0.0);
    const auto plein = [&](double x) {
        if (motif.isEmpty()) return true;
        double reste = std::fmod(x / plume.widthF(), periode);
        qsizetype k = 0;
        while (k + 1 < motif.size() && reste >= motif[k]) reste -= motif[k++];
        return k % 2 == 0;
    };
    const auto ajoute = [&](QList<QLineF>& lignes, const QPointF& a, const QPointF& b) {
        const QPointF d(0, std::copysign(bout, b.y() - a.y()));
        if (plein((a.x() + b.x()) / 2))
            lignes << QLineF(a, b);
        else if (std::fabs(b.y() - a.y()) > 4 * bout)
            lignes << QLineF(a, a + d) << QLineF(b - d, b);
    };
    QList<QLineF> colonnes, liens;
    for (qsizetype i = 0; i < ligne.size();) {
        const double x = ligne[i].x();
        double min = ligne[i].y(), max = min;
        for (; i < ligne.size() && ligne[i].x() == x; ++i) {
            min = std::min(min, ligne[i].y());
            max = std::max(max, ligne[i].y());
        }
        ajoute(colonnes, {x, min}, {x, max});
        if (i < ligne.size()) ajoute(liens, ligne[i - 1], ligne[i]);
    }
    plume.setStyle(Qt::SolidLine);
    p.setPen(plume); // square ends fill the corners
    p.drawLines(liens);
    plume.setCapStyle(Qt::FlatCap);
    p.setPen(plume);
    p.drawLines(colonnes);
}

void trace_graph::dessine_courbes(QPainter& p, const feuille& f) const {
    constexpr qsizetype assez = 1500; // points of a curve that fills its pixels; smoothing it costs most
    if (segments_ < 1) return;
    p.save();
    const QPointF coin = f.place.map(QPointF(gauche, haut));
    p.setClipRect(QRectF(coin, QPointF(f.taille.width(), f.place.map(QPointF(0, bas + 1)).y())));
    for (size_t c = 0; c < lignes_.size(); ++c) {
        QPen plume(couleur(static_cast<int>(c), f), f.image ? 1 : 2, courbes_[static_cast<int>(c)].trait);
        const QPolygonF ligne = f.place.map(lignes_[c]);
        const bool dense = ligne.size() > assez;
        p.setRenderHint(QPainter::Antialiasing, !dense && !f.image);
        if (dense) {
            plume.setCosmetic(true); // whole pixels of the device: two of them at 200 %
            plume.setWidth(qRound(plume.widthF() * p.deviceTransform().m11()));
        }
        if (!dense || plume.width() == 1) {
            p.setPen(plume);
            p.drawPolyline(ligne);
        } else
            dessine_dense(p, plume, ligne);
    }
    p.restore();
    dessine_numeros(p, f);
}

/// Behind the curves' last points, one below the other where they would meet.
void trace_graph::dessine_numeros(QPainter& p, const feuille& f) const {
    const double cote = cote_numero(f.police);
    const QPointF min = f.place.map(QPointF(0, bas)), max = f.place.map(QPointF(0, haut_courbes));
    std::vector<std::pair<double, size_t>> y;
    for (size_t c = 0; c < derniers_.size(); ++c) {
        const double part = (derniers_[c] - min_) / (max_ - min_);
        y.emplace_back(std::clamp(min.y() + (max.y() - min.y()) * part, max.y(), min.y()), c);
    }
    std::sort(y.begin(), y.end());
    ecarte(y, cote + 1, max.y(), min.y());
    const double x = std::min(f.place.map(QPointF(abscisse(segments_ + 1), 0)).x() + cote,
                              f.taille.width() - cote / 2 - 2);
    p.setFont(f.police);
    for (const auto& [ordonnee, c] : y) {
        const int n = static_cast<int>(c);
        dessine_numero(p, {x, ordonnee}, courbes_[n].numero, couleur(n, f), cote);
    }
}

/// The margin below the dates, behind the first one's second line.
QRectF trace_graph::zone_legende(const feuille& f) const {
    const QFontMetricsF m(f.police);
    const double x = f.place.map(QPointF(gauche, 0)).x() + m.horizontalAdvance("00/00/0000") / 2 + 10;
    const double rang = f.image ? hauteur_rangee : m.height();
    const double y = f.place.map(QPointF(0, bas)).y() + tiret + 1 + rang;
    return {x, y, std::max(1.0, f.taille.width() - x - 2), std::max(rang, f.taille.height() - y)};
}

void trace_graph::dessine_legende(QPainter& p, const feuille& f) const {
    if (!trace_ || courbes_.isEmpty()) return;
    const QRectF zone = zone_legende(f);
    const int rangs = std::min(rangees(f), static_cast<int>(courbes_.size()));
    const int colonnes = (static_cast<int>(courbes_.size()) + rangs - 1) / rangs;
    const QFontMetricsF m(f.police);
    const double rang = f.image ? hauteur_rangee : m.height(), cote = cote_numero(f.police);
    const double large = zone.width() / colonnes;
    p.setFont(f.police);
    for (int i = 0; i < courbes_.size(); ++i) {
        const QRectF r(zone.x() + i % colonnes * large, zone.y() + i / colonnes * rang, large, rang);
        dessine_numero(p, {r.x() + cote / 2, r.center().y()}, courbes_[i].numero, couleur(i, f), cote - 1);
        p.setPen(f.encre);
        const QRectF texte = r.adjusted(cote + 3, 0, -4, 0);
        p.drawText(texte, Qt::AlignLeft | Qt::AlignVCenter,
                   m.elidedText(texte_legende(courbes_[i]), Qt::ElideMiddle, texte.width()));
    }
}

QRectF trace_graph::cadre_x(int i, const feuille& f) const {
    const QPointF pied = f.place.map(QPointF(gauche + pas_x * i, bas));
    const double large =
        std::max(pas_x * f.place.m11(), QFontMetricsF(f.police).horizontalAdvance("00/00/0000"));
    return {pied.x() - large / 2, pied.y() + tiret + 1, large,
            f.image ? 28 : 2 * QFontMetricsF(f.police).height()};
}

QRectF trace_graph::cadre_y(int i, const feuille& f) const {
    const QPointF bout = f.place.map(QPointF(gauche, bas - pas_y * i));
    const double haute = QFontMetricsF(f.police).height() + 2;
    return {0, bout.y() - haute / 2, bout.x() - 3, haute};
}

void trace_graph::dessine_etiquettes(QPainter& p, const feuille& f) const {
    p.setPen(f.encre);
    p.setFont(f.police);
    for (int i = 0; i < nombre_x; ++i)
        p.drawText(cadre_x(i, f), Qt::AlignHCenter | Qt::AlignTop, lab_x_[static_cast<size_t>(i)]->text());
    for (int i = 0; i < nombre_y; ++i)
        p.drawText(cadre_y(i, f), Qt::AlignRight | Qt::AlignVCenter, lab_y_[static_cast<size_t>(i)]->text());
}

QImage trace_graph::image() const {
    QImage im(largeur, hauteur, QImage::Format_RGB32);
    QPainter p(&im);
    const feuille f = feuille_image();
    dessine(p, f);
    dessine_etiquettes(p, f);
    dessine_legende(p, f);
    return im;
}

bool trace_graph::enregistre(const QString& chemin) const {
    return image().save(chemin, chemin.endsWith(".png", Qt::CaseInsensitive) ? "PNG" : "BMP");
}

void trace_graph::place_etiquettes() {
    const feuille f = feuille_ecran();
    const bool serrees = pas_x * f.place.m11() < QFontMetricsF(f.police).horizontalAdvance(" 00:00:00");
    for (int i = 0; i < nombre_x; ++i) {
        QLabel* l = lab_x_[static_cast<size_t>(i)];
        l->setFont(f.police);
        l->setGeometry(cadre_x(i, f).toRect());
        l->setVisible(!serrees || i % 2 == 0);
    }
    for (int i = 0; i < nombre_y; ++i) {
        lab_y_[static_cast<size_t>(i)]->setFont(f.police);
        lab_y_[static_cast<size_t>(i)]->setGeometry(cadre_y(i, f).toRect());
    }
}

void trace_graph::resizeEvent(QResizeEvent*) {
    cache_ = {};
    place_etiquettes();
}

void trace_graph::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() != QEvent::PaletteChange && e->type() != QEvent::FontChange) return;
    cache_ = {};
    place_etiquettes();
    update();
}

void trace_graph::paintEvent(QPaintEvent*) {
    const double dpr = devicePixelRatioF();
    const feuille f = feuille_ecran();
    if (cache_.isNull() || cache_.devicePixelRatio() != dpr) {
        cache_ = QPixmap((f.taille * dpr).toSize());
        cache_.setDevicePixelRatio(dpr);
        QPainter p(&cache_);
        p.setRenderHint(QPainter::Antialiasing);
        dessine(p, f);
        dessine_legende(p, f);
    }
    QPainter p(this);
    p.drawPixmap(0, 0, cache_);
    if (curseur_ >= 1 && trace_) {
        p.setPen(QPen(style::melange(f.encre, f.papier, 0.6), 1, Qt::DashLine));
        p.drawLine(f.place.map(QPointF(abscisse(curseur_), haut)),
                   f.place.map(QPointF(abscisse(curseur_), bas)));
    }
}

int trace_graph::ligne_sous(const QPoint& point) const {
    if (!trace_ || segments_ < 1 || table_->version() != version_) return -1;
    const QPointF q = feuille_ecran().place.inverted().map(QPointF(point));
    if (q.x() < gauche || q.x() > abscisse(segments_ + 1) + 1 || q.y() < haut || q.y() > bas) return -1;
    const int r = static_cast<int>(std::lround((q.x() - gauche) * segments_ / 700.0));
    return std::clamp(r, 1, segments_ + 1);
}

QString trace_graph::valeurs_sous(const QPoint& point) const {
    const int r = ligne_sous(point);
    if (r < 0) return {};
    QString t = QString::fromStdString(table_->date(r - 1));
    if (table_->eclipse(r - 1)) t += " (éclipse)";
    for (const courbe& c : courbes_)
        t += "\n" + c.nom + (c.position.isEmpty() ? "" : ", " + c.position) + " : " +
             QString::fromStdString(table_->texte(r - 1, c.colonne)) +
             (c.unite.isEmpty() ? "" : " " + c.unite);
    return t;
}

void trace_graph::mouseMoveEvent(QMouseEvent* e) {
    const int r = ligne_sous(e->pos());
    if (r != curseur_) {
        curseur_ = r;
        update();
    }
    if (r < 0)
        QToolTip::hideText();
    else
        QToolTip::showText(e->globalPosition().toPoint(), valeurs_sous(e->pos()), this);
}

void trace_graph::leaveEvent(QEvent*) {
    curseur_ = -1;
    update();
}
