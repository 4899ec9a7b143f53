#include "analysis/windows/carte_terre.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "analysis/windows/cotes.h"
#include "widgets/style.h"

namespace {

constexpr double zoom_max = 80;

} // namespace

carte_terre::carte_terre(QWidget* parent) : QWidget(parent) {
    setObjectName("pict_carte");
    setAccessibleName("Carte de la Terre");
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setToolTip("Molette : agrandir autour du pointeur ; glisser : déplacer ; double clic : toute la Terre");
    lit_cotes(terres_, cotes_);
}

QSize carte_terre::sizeHint() const { return {style::espace(180), style::espace(90)}; }
QSize carte_terre::minimumSizeHint() const { return {style::espace(60), style::espace(30)}; }

void carte_terre::montre(contenu_carte c) {
    contenu_ = std::move(c);
    update();
}

double carte_terre::echelle() const { return zoom_ * std::min(width() / 360.0, height() / 180.0); }

QRectF carte_terre::cadre() const {
    const double l = std::min<double>(width(), 360 * echelle()),
                 h = std::min<double>(height(), 180 * echelle());
    return {(width() - l) / 2, (height() - h) / 2, l, h};
}

QPointF carte_terre::pixel(const point_sol& p) const {
    return QPointF(width() / 2.0, height() / 2.0) +
           QPointF(std::remainder(p.lon - centre_.lon, 360.0), centre_.lat - p.lat) * echelle();
}

std::optional<point_sol> carte_terre::sol(const QPointF& pixel) const {
    if (!cadre().contains(pixel)) return {};
    const QPointF d = (pixel - QPointF(width() / 2.0, height() / 2.0)) / echelle();
    return point_sol{std::remainder(centre_.lon + d.x(), 360.0),
                     std::clamp(centre_.lat - d.y(), -90.0, 90.0)};
}

void carte_terre::borne_centre() {
    const double demi = cadre().height() / 2 / echelle();
    centre_.lat = std::clamp(centre_.lat, -90 + demi, 90 - demi);
    centre_.lon = std::remainder(centre_.lon, 360.0);
}

void carte_terre::montre_tout() {
    zoom_ = 1;
    centre_ = {};
    update();
}

void carte_terre::agrandit(double facteur, const QPointF& autour) {
    const QPointF d = autour - QPointF(width() / 2.0, height() / 2.0);
    const double avant = echelle();
    zoom_ = std::clamp(zoom_ * facteur, 1.0, zoom_max);
    const double apres = echelle();
    // What stood under the pointer stays there.
    centre_.lon += d.x() / avant - d.x() / apres;
    centre_.lat -= d.y() / avant - d.y() / apres;
    borne_centre();
    update();
}

void carte_terre::deplace(const QPointF& pixels) {
    centre_.lon -= pixels.x() / echelle();
    centre_.lat += pixels.y() / echelle();
    borne_centre();
    update();
}

void carte_terre::wheelEvent(QWheelEvent* e) {
    if (e->angleDelta().y() == 0) return QWidget::wheelEvent(e);
    agrandit(std::pow(1.2, e->angleDelta().y() / 120.0), e->position());
    e->accept();
}

void carte_terre::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return QWidget::mousePressEvent(e);
    glisse_ = true;
    bouge_ = false;
    souris_ = e->position();
}

void carte_terre::mouseMoveEvent(QMouseEvent* e) {
    if (glisse_) {
        const QPointF d = e->position() - souris_;
        if (!bouge_ && d.manhattanLength() < 4) return;
        bouge_ = true;
        setCursor(Qt::ClosedHandCursor);
        deplace(d);
        souris_ = e->position();
    }
    if (const auto p = sol(e->position()))
        emit pointe(p->lon, p->lat);
    else
        emit quitte();
}

void carte_terre::mouseReleaseEvent(QMouseEvent* e) {
    if (!glisse_) return QWidget::mouseReleaseEvent(e);
    glisse_ = false;
    unsetCursor();
    if (bouge_) return;
    for (std::size_t i = 0; i < contenu_.stations.size(); ++i)
        if ((pixel(contenu_.stations[i].place) - e->position()).manhattanLength() < style::espace(3))
            emit station_choisie(int(i));
}

void carte_terre::mouseDoubleClickEvent(QMouseEvent*) { montre_tout(); }

void carte_terre::contextMenuEvent(QContextMenuEvent* e) {
    QMenu m(this);
    if (const auto p = sol(e->pos()))
        connect(m.addAction("Ajouter une station ici"), &QAction::triggered, this,
                [this, p] { emit demande_station(p->lon, p->lat); });
    connect(m.addAction("Toute la Terre"), &QAction::triggered, this, &carte_terre::montre_tout);
    m.exec(e->globalPos());
}

void carte_terre::keyPressEvent(QKeyEvent* e) {
    const QPointF milieu(width() / 2.0, height() / 2.0);
    const double pas = style::espace(10);
    switch (e->key()) {
    case Qt::Key_Plus: return agrandit(1.25, milieu);
    case Qt::Key_Minus: return agrandit(0.8, milieu);
    case Qt::Key_0: return montre_tout();
    case Qt::Key_Left: return deplace({pas, 0});
    case Qt::Key_Right: return deplace({-pas, 0});
    case Qt::Key_Up: return deplace({0, pas});
    case Qt::Key_Down: return deplace({0, -pas});
    default: QWidget::keyPressEvent(e);
    }
}

void carte_terre::leaveEvent(QEvent* e) {
    emit quitte();
    QWidget::leaveEvent(e);
}
