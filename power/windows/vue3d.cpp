#include "power/windows/vue3d.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QPainter>
#include <QStackedLayout>
#include <QSvgRenderer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "orbit/orb_trajecto.h"
#include "widgets/style.h"

namespace {

QSurfaceFormat format_surface() {
    QSurfaceFormat f;
    f.setRenderableType(QSurfaceFormat::OpenGL);
    f.setVersion(2, 1);
    f.setProfile(QSurfaceFormat::CompatibilityProfile);
    f.setDepthBufferSize(24);
    return f;
}

QCursor curseur_h_move() {
    QPixmap image(32, 32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    QSvgRenderer(QString(":/curseurs/h_move.svg")).render(&p);
    p.end();
    return QCursor(image, 16, 16);
}

/// The drawing surface. The mouse and the keys are the view's own, so it lets them through.
class surface3d : public QOpenGLWidget {
public:
    surface3d(const session& s, const camera3d& c, QWidget* parent)
        : QOpenGLWidget(parent), s_(s), camera_(c) {
        setFormat(format_surface());
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    ~surface3d() override {
        if (!prete_) return;
        makeCurrent();
        scene_.libere();
        doneCurrent();
    }

protected:
    void initializeGL() override {
        // A reparented window gets a new context: the textures go with the old one.
        scene_.gl_initialize();
        scene_.update_panels(s_.power.pan_angle);
        prete_ = true;
    }
    void paintGL() override {
        const double finesse = devicePixelRatioF();
        scene_.update_panels(s_.power.pan_angle);
        scene_.trace(s_, camera_, qRound(width() * finesse), qRound(height() * finesse));
    }

private:
    const session& s_;
    const camera3d& camera_;
    scene3d scene_;
    bool prete_ = false;
};

} // namespace

bool vue3d::opengl_disponible() {
    QOpenGLContext contexte;
    contexte.setFormat(format_surface());
    if (!contexte.create()) return false;
    QOffscreenSurface surface;
    surface.setFormat(contexte.format());
    surface.create();
    if (!contexte.makeCurrent(&surface)) return false;
    const bool fonctions_fixes =
        !contexte.isOpenGLES() && contexte.format().profile() != QSurfaceFormat::CoreProfile;
    contexte.doneCurrent();
    return fonctions_fixes;
}

vue3d::vue3d(session& s, QWidget* parent, bool sans_opengl) : QWidget(parent), s_(s) {
    setObjectName("Pict_visu3d");
    setMinimumSize(style::espace(40), style::espace(40));
    setFocusPolicy(Qt::StrongFocus);
    auto* pile = new QStackedLayout(this);
    pile->setStackingMode(QStackedLayout::StackAll);
    if (sans_opengl || !opengl_disponible()) {
        auto* texte =
            new QLabel("La vue en trois dimensions n'est pas disponible : OpenGL manque sur ce poste ou "
                       "ne peut pas démarrer.\nLa simulation et tous les autres affichages fonctionnent "
                       "normalement.",
                       this);
        texte->setObjectName("lab_sans_opengl");
        texte->setAlignment(Qt::AlignCenter);
        texte->setWordWrap(true);
        texte->setMargin(style::espace(4));
        texte->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        pile->addWidget(texte);
        return;
    }
    auto* boutons = new QWidget(this);
    auto* colonne = new QVBoxLayout(boutons);
    colonne->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    auto ajoute = [&](const QString& nom, const QString& dessin, const QString& aide, auto action) {
        auto* b = new QToolButton(boutons);
        b->setObjectName(nom);
        b->setIcon(style::icone(dessin));
        b->setIconSize(QSize(style::espace(5), style::espace(5)));
        b->setToolTip(aide);
        b->setFocusPolicy(Qt::NoFocus);
        connect(b, &QToolButton::clicked, this, action);
        colonne->addWidget(b, 0, Qt::AlignRight);
    };
    ajoute("cmd_centre_terre", "centrer_terre", "Centrer la vue sur la Terre (T)", &vue3d::centre_terre);
    ajoute("cmd_centre_satellite", "centrer_satellite", "Centrer la vue sur le satellite (S)",
           &vue3d::centre_satellite);
    colonne->addStretch();
    surface_ = new surface3d(s_, camera_, this);
    pile->addWidget(boutons);
    pile->addWidget(surface_);
    pile->setCurrentWidget(boutons);
    setToolTip("Terre, Soleil et satellite à la date du pas. Glisser : tourner la vue ; molette : agrandir ; "
               "T : centrer sur la Terre ; S : centrer sur le satellite.");
    centre_terre();
}

QSize vue3d::sizeHint() const { return {style::espace(100), style::espace(100)}; }

QImage vue3d::image() {
    if (!surface_) return {};
    suit_cible();
    return surface_->grabFramebuffer().convertToFormat(QImage::Format_RGB32);
}

void vue3d::redessine() {
    if (!surface_) return;
    suit_cible();
    surface_->update();
}

double vue3d::zoom_de_l_orbite() const {
    const record_orbite& o = s_.orbit.orbite;
    const double apogee = o.orb_demi * (1.0 + std::fabs(o.orb_excentricite)) / rayon_terre;
    return std::isfinite(apogee) ? std::clamp(4.0 / (1.25 * std::max(apogee, 1.1)), 0.05, 4.0) : 1.0;
}

void vue3d::suit_cible() {
    camera_.centre = sur_satellite_ ? vec_echelle(1.0 / rayon_terre, s_.orbit.sat_pos) : vec3{};
    if (!sur_satellite_ && !zoom_choisi_) camera_.zoom = zoom_de_l_orbite();
}

void vue3d::centre_terre() {
    sur_satellite_ = false;
    zoom_choisi_ = false;
    redessine();
}

void vue3d::centre_satellite() {
    sur_satellite_ = true;
    camera_.zoom = 9.0;
    redessine();
}

void vue3d::change_zoom(double facteur) {
    zoom_choisi_ = true;
    camera_.zoom = std::clamp(camera_.zoom * facteur, 0.05, 60.0);
    redessine();
}

void vue3d::mousePressEvent(QMouseEvent* e) {
    if (!surface_) return QWidget::mousePressEvent(e);
    glisse_ = true;
    souris_ = e->pos();
    setCursor(curseur_h_move());
}

void vue3d::mouseMoveEvent(QMouseEvent* e) {
    if (!glisse_) return QWidget::mouseMoveEvent(e);
    camera_.angle_1 = std::clamp(camera_.angle_1 + (souris_.y() - e->pos().y()) / 50.0, -demi_pi, demi_pi);
    camera_.angle_2 += (e->pos().x() - souris_.x()) / 50.0;
    souris_ = e->pos();
    redessine();
}

void vue3d::mouseReleaseEvent(QMouseEvent* e) {
    if (!glisse_) return QWidget::mouseReleaseEvent(e);
    glisse_ = false;
    unsetCursor();
}

void vue3d::wheelEvent(QWheelEvent* e) {
    if (!surface_ || e->angleDelta().y() == 0) return QWidget::wheelEvent(e);
    change_zoom(std::pow(1.15, e->angleDelta().y() / 120.0));
    e->accept();
}

void vue3d::keyPressEvent(QKeyEvent* e) {
    if (surface_ && !(e->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        switch (e->key()) {
        case Qt::Key_T: return centre_terre();
        case Qt::Key_S: return centre_satellite();
        case Qt::Key_Plus: return change_zoom(1.25);
        case Qt::Key_Minus: return change_zoom(0.8);
        default: break;
        }
    }
    QWidget::keyPressEvent(e);
}

void vue3d::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    redessine();
}
