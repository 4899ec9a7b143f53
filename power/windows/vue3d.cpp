#include "power/windows/vue3d.h"

#include <QActionGroup>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
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
#include "power/windows/legende3d.h"
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

struct moyens {
    bool opengl = false;
    int echantillons = 0; ///< samples a pixel that the machine has time for
};

/// What this machine can draw. Several samples a pixel cost a program that draws in software thrice the time:
/// there the scene smooths its edges by itself.
moyens moyens_de_la_machine() {
    QOpenGLContext contexte;
    contexte.setFormat(format_surface());
    if (!contexte.create()) return {};
    QOffscreenSurface surface;
    surface.setFormat(contexte.format());
    surface.create();
    if (!contexte.makeCurrent(&surface)) return {};
    moyens m;
    m.opengl = !contexte.isOpenGLES() && contexte.format().profile() != QSurfaceFormat::CoreProfile;
    const QByteArray dessinateur(
        reinterpret_cast<const char*>(contexte.functions()->glGetString(GL_RENDERER)));
    bool logiciel = false;
    for (const char* nom : {"llvmpipe", "softpipe", "swrast", "Software", "SwiftShader"})
        logiciel |= dessinateur.contains(nom);
    m.echantillons = logiciel ? 0 : 4;
    contexte.doneCurrent();
    return m;
}
const moyens& machine() {
    static const moyens m = moyens_de_la_machine();
    return m;
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
    surface3d(const orbit_state& o, const power_record& e, const simulation_period& p, const camera3d& c,
              const affichage3d& a, QWidget* parent)
        : QOpenGLWidget(parent), orbit_(o), power_(e), periode_(p), camera_(c), affichage_(a) {
        QSurfaceFormat f = format_surface();
        f.setSamples(machine().echantillons);
        setFormat(f);
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
        prete_ = true;
    }
    void paintGL() override {
        const double finesse = devicePixelRatioF();
        scene_.update_panels(power_.pan_angle);
        scene_.trace({orbit_, power_, periode_.j_courant}, camera_, affichage_, qRound(width() * finesse),
                     qRound(height() * finesse));
    }

private:
    const orbit_state& orbit_;
    const power_record& power_;
    const simulation_period& periode_;
    const camera3d& camera_;
    const affichage3d& affichage_;
    scene3d scene_;
    bool prete_ = false;
};

bool fini(const vec3& v) { return std::isfinite(v[0] + v[1] + v[2]); }

/// Axes around a direction: the first along it, the third as near to `vers_haut` as it can stand.
std::array<vec3, 3> axes_vers(const vec3& direction, const vec3& vers_haut) {
    const vec3 x = vec_echelle(1 / vec_norme(direction), direction);
    vec3 y = vec_vectoriel(vers_haut, x);
    y = vec_echelle(1 / vec_norme(y), y);
    return {x, y, vec_vectoriel(x, y)};
}

} // namespace

bool vue3d::opengl_disponible() { return machine().opengl; }

vue3d::vue3d(const orbit_state& o, const power_record& e, const simulation_period& p, QWidget* parent,
             bool sans_opengl)
    : QWidget(parent), orbit_(o), power_(e), periode_(p) {
    setObjectName("Pict_visu3d");
    setAccessibleName("Vue en trois dimensions");
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
    cree_boutons(boutons);
    surface_ = new surface3d(orbit_, power_, periode_, camera_, affichage_, this);
    pile->addWidget(boutons);
    pile->addWidget(surface_);
    pile->setCurrentWidget(boutons);
    setToolTip(
        "Terre, Soleil et satellite à la date du pas. Glisser : tourner la vue ; molette : agrandir ; "
        "T : la Terre ; S : le satellite ; D : depuis le Soleil ; Z : du zénith ; L : le long de la trace.");
    attente_.setSingleShot(true);
    connect(&attente_, &QTimer::timeout, this, &vue3d::dessine_une_image);
    connect(surface_, &QOpenGLWidget::frameSwapped, this, [this] {
        if (commence_.isValid()) cout_ = commence_.elapsed();
        fini_.start();
        ++images_;
    });
    temperatures_connues(true);
    centre_terre();
}

QSize vue3d::sizeHint() const { return {style::espace(100), style::espace(100)}; }

// --- Frames ----------------------------------------------------------------------------------------------

QImage vue3d::image() {
    if (!surface_) return {};
    suit_cible();
    return surface_->grabFramebuffer().convertToFormat(QImage::Format_RGB32);
}

/// Between two frames three times the length of a frame is left to everything else.
void vue3d::redessine() {
    if (!surface_ || attente_.isActive()) return;
    const qint64 repos = 3 * cout_ - (fini_.isValid() ? fini_.elapsed() : 3 * cout_);
    if (repos > 0)
        attente_.start(int(std::min<qint64>(repos, 1000)));
    else
        dessine_une_image();
}

void vue3d::dessine_une_image() {
    suit_cible();
    if (affichage_.faces != couleur_faces::images && fini(orbit_.sat_pos)) {
        const valeurs_faces v = valeurs_de(affichage_.faces, power_, orbit_);
        legende_->echelle(v.min, v.max);
    }
    commence_.start();
    surface_->update();
}

// --- Camera ----------------------------------------------------------------------------------------------

double vue3d::zoom_de_l_orbite() const {
    const record_orbite& o = orbit_.orbite;
    const double apogee = o.orb_demi * (1.0 + std::fabs(o.orb_excentricite)) / rayon_terre;
    return std::isfinite(apogee) ? std::clamp(4.0 / (1.25 * std::max(apogee, 1.1)), 0.05, 4.0) : 1.0;
}

/// The camera for the frame: what it stands on has moved.
void vue3d::suit_cible() {
    camera_ = reglee_;
    if (depuis_ == depuis::satellite) {
        const double r = vec_norme(orbit_.sat_pos) / rayon_terre;
        camera_.centre = vec_echelle(1.0 / rayon_terre, orbit_.sat_pos);
        const vec3 moment = vec_vectoriel(orbit_.sat_pos, orbit_.sat_vit);
        if (r > 0 && vec_norme(moment) > 0 && fini(moment)) {
            // Along the track, then to the left of it, then to the zenith.
            const vec3 z = vec_echelle(1 / vec_norme(orbit_.sat_pos), orbit_.sat_pos);
            const vec3 y = vec_echelle(1 / vec_norme(moment), moment);
            camera_.axes = {vec_vectoriel(y, z), y, z};
        }
        // From further below, the Earth would stand before the satellite.
        if (r > 1) camera_.angle_1 = std::min(camera_.angle_1, 0.95 * std::acos(1 / r));
    } else if (depuis_ == depuis::soleil) {
        const vec3& s = orbit_.soleil_pos;
        if (fini(s) && std::hypot(s[0], s[1]) > 0) camera_.axes = axes_vers(s, {0, 0, 1});
    }
    if (depuis_ != depuis::satellite && !zoom_choisi_) camera_.zoom = reglee_.zoom = zoom_de_l_orbite();
}

void vue3d::choisit(depuis d, double angle_1, double angle_2, double zoom) {
    depuis_ = d;
    zoom_choisi_ = zoom > 0;
    reglee_ = {};
    reglee_.angle_1 = angle_1;
    reglee_.angle_2 = angle_2;
    if (zoom > 0) reglee_.zoom = zoom;
    suit_cible();
    redessine();
}

void vue3d::centre_terre() {
    // The turn of the view stays from one satellite to the Earth and back.
    depuis_ = depuis::terre;
    zoom_choisi_ = false;
    suit_cible();
    redessine();
}

void vue3d::centre_satellite() {
    depuis_ = depuis::satellite;
    reglee_.zoom = 9.0;
    suit_cible();
    redessine();
}

void vue3d::vue_du_soleil() { choisit(depuis::soleil, 0, 0, 0); }
void vue3d::vue_du_zenith() { choisit(depuis::satellite, -demi_pi, pi, 5); }
void vue3d::vue_de_la_trace() { choisit(depuis::satellite, -0.2, pi, 6); }
void vue3d::vue_de_cote() { choisit(depuis::satellite, -0.25, pi - 1.1, 8); }

void vue3d::change_zoom(double facteur) {
    zoom_choisi_ = true;
    reglee_.zoom = std::clamp(reglee_.zoom * facteur, 0.05, 60.0);
    suit_cible();
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
    reglee_.angle_1 = std::clamp(reglee_.angle_1 + (souris_.y() - e->pos().y()) / 50.0, -demi_pi, demi_pi);
    reglee_.angle_2 += (e->pos().x() - souris_.x()) / 50.0;
    souris_ = e->pos();
    suit_cible();
    reglee_.angle_1 = camera_.angle_1; // at the limit of the satellite's sight the drag stops
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
        case Qt::Key_D: return vue_du_soleil();
        case Qt::Key_Z: return vue_du_zenith();
        case Qt::Key_L: return vue_de_la_trace();
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

void vue3d::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::FontChange && legende_) legende_->updateGeometry();
}

// --- What is shown ---------------------------------------------------------------------------------------

void vue3d::cree_boutons(QWidget* boutons) {
    // The buttons at the right, the legend in the opposite corner: neither takes the other's height.
    auto* rangee = new QHBoxLayout(boutons);
    rangee->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    legende_ = new legende3d(boutons);
    rangee->addWidget(legende_, 0, Qt::AlignLeft | Qt::AlignBottom);
    auto* colonne = new QVBoxLayout;
    rangee->addLayout(colonne, 1);
    const auto ajoute = [&](const QString& nom, const QString& dessin, const QString& aide, auto action) {
        auto* b = new QToolButton(boutons);
        b->setObjectName(nom);
        b->setIcon(style::icone(dessin));
        b->setIconSize(QSize(style::espace(5), style::espace(5)));
        b->setToolTip(aide);
        b->setAccessibleName(aide);
        b->setFocusPolicy(Qt::TabFocus);
        connect(b, &QToolButton::clicked, this, action);
        colonne->addWidget(b, 0, Qt::AlignRight);
    };
    ajoute("cmd_centre_terre", "centrer_terre", "Centrer la vue sur la Terre (T)", &vue3d::centre_terre);
    ajoute("cmd_centre_satellite", "centrer_satellite", "Centrer la vue sur le satellite (S)",
           &vue3d::centre_satellite);
    ajoute("cmd_vue_soleil", "vue_soleil", "Voir depuis le Soleil (D)", &vue3d::vue_du_soleil);
    ajoute("cmd_vue_zenith", "vue_zenith", "Voir du zénith du satellite (Z)", &vue3d::vue_du_zenith);
    ajoute("cmd_vue_trace", "vue_trace", "Voir le long de la trace, de l'arrière (L)",
           &vue3d::vue_de_la_trace);
    cree_menu(boutons, colonne);
    colonne->addStretch();
}

void vue3d::cree_menu(QWidget* boutons, QVBoxLayout* colonne) {
    auto* b = new QToolButton(boutons);
    b->setObjectName("cmd_affichage_3d");
    b->setIcon(style::icone("vue_affichage"));
    b->setIconSize(QSize(style::espace(5), style::espace(5)));
    b->setToolTip("Flèches et couleurs des faces");
    b->setAccessibleName("Flèches et couleurs des faces");
    b->setPopupMode(QToolButton::InstantPopup);
    b->setFocusPolicy(Qt::TabFocus);
    auto* m = new QMenu(b);
    const auto action = [&](const char* nom, const QString& texte, bool choisie) {
        QAction* a = m->addAction(texte);
        a->setObjectName(nom);
        a->setCheckable(true);
        a->setChecked(choisie);
        connect(a, &QAction::triggered, this, &vue3d::change_affichage);
        return a;
    };
    m->addSection("Flèches");
    fleches_ = {action("act_axes", "Axes du corps", true), action("act_soleil", "Soleil", false),
                action("act_nadir", "Nadir", false), action("act_vitesse", "Vitesse", false),
                action("act_champ", "Champ magnétique", false)};
    m->addSection("Faces");
    auto* groupe = new QActionGroup(m);
    faces_ = {action("act_faces_images", "Images", true), action("act_faces_flux", "Par le flux reçu", false),
              action("act_faces_temperature", "Par la température", false)};
    for (QAction* a : faces_) groupe->addAction(a);
    b->setMenu(m);
    colonne->addWidget(b, 0, Qt::AlignRight);
}

void vue3d::change_affichage() {
    affichage3d a;
    bool* const fleches[] = {&a.axes, &a.soleil, &a.nadir, &a.vitesse, &a.champ};
    for (int i = 0; i < fleches_.size(); ++i) *fleches[i] = fleches_[i]->isChecked();
    for (int i = 0; i < faces_.size(); ++i)
        if (faces_[i]->isChecked()) a.faces = couleur_faces(i);
    affiche(a);
}

void vue3d::affiche(const affichage3d& a) {
    if (!surface_) return;
    affichage_ = a;
    const bool fleches[] = {a.axes, a.soleil, a.nadir, a.vitesse, a.champ};
    for (int i = 0; i < fleches_.size(); ++i) fleches_[i]->setChecked(fleches[i]);
    faces_[int(a.faces)]->setChecked(true);
    legende_->montre(a);
    redessine();
}

void vue3d::temperatures_connues(bool oui) {
    if (!surface_) return;
    faces_[int(couleur_faces::temperature)]->setEnabled(oui);
    legende_->montre(affichage_);
}
