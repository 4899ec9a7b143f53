#include "widgets/trace_graph.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <QToolTip>

#include <algorithm>
#include <cmath>

#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/table_resultats.h"

namespace {

constexpr int gauche = 50, droite = 750, haut = 5, bas = 235;
constexpr int haut_courbes = 15; ///< ordinate of the maximum
constexpr int pas_x = 70, pas_y = 55, tiret = 10;
constexpr int taille_police = 10;

QRect cadre_x(int i) { return {gauche + pas_x * i - pas_x / 2, bas + tiret + 1, pas_x, 28}; }
QRect cadre_y(int i) { return {0, bas - pas_y * i - 7, gauche - 3, 14}; }

QFont police(double echelle) {
    QFont f;
    f.setKerning(false);
    f.setPixelSize(std::max(1, static_cast<int>(taille_police * echelle)));
    return f;
}

} // namespace

QColor couleur_colonne(int colonne) {
    static const QColor couleurs[] = {{0, 0, 255},   {255, 0, 0},   {0, 0, 128},
                                      {255, 128, 0}, {128, 0, 128}, {0, 128, 0}};
    return couleurs[colonne % 6];
}

trace_graph::trace_graph(QWidget* parent) : QWidget(parent) {
    setObjectName("pict_graph");
    setMouseTracking(true);
    QSizePolicy place(QSizePolicy::Expanding, QSizePolicy::Expanding);
    place.setHeightForWidth(true);
    setSizePolicy(place);
    const auto etiquette = [this](const QString& nom, Qt::Alignment cote) {
        auto* l = new QLabel(this);
        l->setObjectName(nom);
        l->setAlignment(cote);
        l->setAttribute(Qt::WA_TransparentForMouseEvents);
        QPalette encre = l->palette();
        encre.setColor(QPalette::WindowText, Qt::black);
        l->setPalette(encre);
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
    valeurs_.clear();
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
    eclipses_.clear();
    for (int l = 0; l < table.lignes(); ++l) eclipses_.push_back(table.eclipse(l));
    for (const courbe& c : courbes) {
        auto& v = valeurs_.emplace_back();
        v.reserve(static_cast<size_t>(table.lignes()));
        for (int l = 0; l < table.lignes(); ++l) v.push_back(table.nombre(l, c.colonne));
    }
    ecrit_etiquettes(debut, fin);
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
        lab_y_[static_cast<size_t>(i)]->setText(
            QString::fromStdString(format_image(min_ + i * pas_valeur, "0.0e+00")));
}

// One step too far to the right at both ends: meant.
int trace_graph::abscisse(int r) const {
    return static_cast<int>(std::floor(700.0 * r / segments_)) + gauche;
}

void trace_graph::dessine(QPainter& p) const {
    p.fillRect(QRect(0, 0, largeur, hauteur), Qt::white);
    if (!trace_) return;
    for (int r = 1; r <= segments_; ++r)
        if (eclipses_[static_cast<size_t>(r - 1)])
            p.fillRect(QRect(QPoint(abscisse(r), haut_courbes), QPoint(abscisse(r + 1), bas)),
                       QColor(224, 224, 224));
    dessine_axes(p);
    dessine_courbes(p);
}

void trace_graph::dessine_axes(QPainter& p) const {
    p.setPen(QPen(QColor(176, 176, 176), 1));
    for (int i = 0; i < nombre_y; ++i) p.drawLine(gauche, bas - pas_y * i, droite, bas - pas_y * i);
    p.setPen(QPen(Qt::black, 1));
    for (int i = 0; i < nombre_x; ++i) p.drawLine(pas_x * i + gauche, bas, pas_x * i + gauche, bas + tiret);
    p.setPen(QPen(Qt::black, 2));
    p.drawLine(gauche, haut, gauche, bas);
    p.drawLine(gauche, bas, droite, bas);
}

/// Points that share an abscissa stand on one vertical line: its first, extreme and last points draw it.
QPolygonF trace_graph::ligne_de(const std::vector<double>& valeurs) const {
    QPolygonF ligne;
    double x = -1, bas_x = 0, haut_x = 0, dernier = 0;
    const auto ferme = [&] {
        if (x >= 0) ligne << QPointF(x, bas_x) << QPointF(x, haut_x) << QPointF(x, dernier);
    };
    for (int r = 1; r <= segments_ + 1; ++r) {
        const double part = (valeurs[static_cast<size_t>(r - 1)] - min_) / (max_ - min_);
        const double y = std::clamp(bas - (bas - haut_courbes) * part, -1e5, 1e5);
        if (const double xr = abscisse(r); xr != x) {
            ferme();
            x = xr;
            ligne << QPointF(x, y);
            bas_x = haut_x = y;
        }
        bas_x = std::max(bas_x, y);
        haut_x = std::min(haut_x, y);
        dernier = y;
    }
    ferme();
    return ligne;
}

void trace_graph::dessine_courbes(QPainter& p) const {
    if (segments_ < 1) return;
    p.save();
    p.setClipRect(QRect(QPoint(gauche, haut), QPoint(largeur - 1, bas)));
    for (size_t c = 0; c < valeurs_.size(); ++c) {
        QPen plume(courbes_[static_cast<int>(c)].couleur, 1);
        const QPolygonF ligne = ligne_de(valeurs_[c]);
        // Dense curves fill their pixels anyway; smoothing them would take most of the time.
        if (ligne.size() > 1500) {
            p.setRenderHint(QPainter::Antialiasing, false);
            plume.setCosmetic(true); // whole pixels of the device: two of them at 200 %
            plume.setWidth(std::max(1, static_cast<int>(p.deviceTransform().m11())));
        }
        p.setPen(plume);
        p.drawPolyline(ligne);
    }
    p.restore();
}

void trace_graph::dessine_etiquettes(QPainter& p) const {
    p.setPen(Qt::black);
    p.setFont(police(1));
    for (int i = 0; i < nombre_x; ++i)
        p.drawText(cadre_x(i), Qt::AlignHCenter | Qt::AlignTop, lab_x_[static_cast<size_t>(i)]->text());
    for (int i = 0; i < nombre_y; ++i)
        p.drawText(cadre_y(i), Qt::AlignRight | Qt::AlignVCenter, lab_y_[static_cast<size_t>(i)]->text());
}

QImage trace_graph::image() const {
    QImage im(largeur, hauteur, QImage::Format_RGB32);
    QPainter p(&im);
    dessine(p);
    dessine_etiquettes(p);
    return im;
}

bool trace_graph::enregistre(const QString& chemin) const {
    return image().save(chemin, chemin.endsWith(".png", Qt::CaseInsensitive) ? "PNG" : "BMP");
}

double trace_graph::echelle() const {
    return std::min(double(width()) / largeur, double(height()) / hauteur);
}

QPointF trace_graph::origine() const {
    const double f = echelle();
    return {std::floor((width() - largeur * f) / 2), std::floor((height() - hauteur * f) / 2)};
}

void trace_graph::place_etiquettes() {
    const double f = echelle();
    const QPointF o = origine();
    const auto place = [&](QLabel* l, const QRect& r) {
        l->setFont(police(f));
        l->setGeometry(QRectF(o.x() + r.x() * f, o.y() + r.y() * f, r.width() * f, r.height() * f).toRect());
    };
    for (int i = 0; i < nombre_x; ++i) place(lab_x_[static_cast<size_t>(i)], cadre_x(i));
    for (int i = 0; i < nombre_y; ++i) place(lab_y_[static_cast<size_t>(i)], cadre_y(i));
}

void trace_graph::resizeEvent(QResizeEvent*) {
    cache_ = {};
    place_etiquettes();
}

void trace_graph::paintEvent(QPaintEvent*) {
    const double dpr = devicePixelRatioF(), f = echelle();
    if (cache_.isNull() || cache_.devicePixelRatio() != dpr) {
        cache_ = QPixmap((QSizeF(largeur, hauteur) * f * dpr).toSize());
        cache_.setDevicePixelRatio(dpr);
        cache_.fill(Qt::white);
        QPainter p(&cache_);
        p.scale(f, f);
        p.setRenderHint(QPainter::Antialiasing, f * dpr != 1);
        dessine(p);
    }
    QPainter p(this);
    const QPointF o = origine();
    p.drawPixmap(o, cache_);
    if (curseur_ >= 1 && trace_) {
        p.setPen(QPen(QColor(96, 96, 96), 1, Qt::DashLine));
        const double x = o.x() + abscisse(curseur_) * f;
        p.drawLine(QPointF(x, o.y() + haut * f), QPointF(x, o.y() + bas * f));
    }
}

int trace_graph::ligne_sous(const QPoint& point) const {
    if (!trace_ || segments_ < 1) return -1;
    const QPointF q = (point - origine()) / echelle();
    if (q.x() < gauche || q.x() > largeur || q.y() < haut || q.y() > bas) return -1;
    const int r = static_cast<int>(std::lround((q.x() - gauche) * segments_ / 700.0));
    return std::clamp(r, 1, segments_ + 1);
}

QString trace_graph::valeurs_sous(const QPoint& point) const {
    const int r = ligne_sous(point);
    if (r < 0) return {};
    QString t = QString::fromStdString(table_->date(r - 1));
    if (eclipses_[static_cast<size_t>(r - 1)]) t += " (éclipse)";
    for (size_t c = 0; c < valeurs_.size(); ++c)
        t += "\n" + courbes_[static_cast<int>(c)].nom + " : " +
             QString::fromStdString(format_court(valeurs_[c][static_cast<size_t>(r - 1)]));
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
