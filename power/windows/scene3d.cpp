#include "power/windows/scene3d.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

#include "orbit/matrices.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "power/windows/gl_outils.h"

namespace {

constexpr double recul = 60.0; ///< eye to what it looks at: beyond the Sun's place, inside the far plane
constexpr double demi_champ = 4.0;
const double ciel[] = {0.0, 0.0, 0.2};

const char* const images_textures[7] = {"terre512.png", "facepx.svg", "facemx.svg", "facepy.svg",
                                        "facemy.svg",   "facepz.svg", "facemz.svg"};

QImage lit_texture(const QString& nom) {
    const QString chemin = ":/textures/" + nom;
    QImage image;
    if (nom.endsWith(".svg")) {
        image = QImage(128, 128, QImage::Format_ARGB32);
        image.fill(Qt::black);
        QPainter p(&image);
        QSvgRenderer(chemin).render(&p);
    } else {
        image.load(chemin);
    }
    // OpenGL counts the rows from the bottom.
    return image.convertToFormat(QImage::Format_RGBA8888).mirrored();
}

} // namespace

/// Dragging turns what is seen with the mouse, so the eye goes the other way.
regard3d regard_de(const camera3d& c) {
    const auto [se, ce] = sincos_de(-c.angle_1);
    const auto [sa, ca] = sincos_de(-c.angle_2);
    const vec3 oeil = {ce * ca, ce * sa, se}, haut = {-se * ca, -se * sa, ce};
    regard3d r{};
    for (int k = 0; k < 3; ++k) {
        r.oeil = vec_somme(r.oeil, vec_echelle(oeil[k], c.axes[k]));
        r.haut = vec_somme(r.haut, vec_echelle(haut[k], c.axes[k]));
    }
    return r;
}

bool cache_par_la_terre(const camera3d& c, const vec3& satellite) {
    const vec3 oeil = regard_de(c).oeil;
    const double profondeur = vec_scalaire(satellite, oeil);
    const vec3 ecart = vec_difference(satellite, vec_echelle(profondeur, oeil));
    return profondeur < 0.0 && vec_norme(ecart) < 1.0;
}

void scene3d::gl_initialize() {
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_TEXTURE_2D);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);

    glGenTextures(static_cast<GLsizei>(textures_.size()), textures_.data());
    for (int i = 0; i < 7; ++i) {
        const QImage image = lit_texture(images_textures[i]);
        glBindTexture(GL_TEXTURE_2D, textures_[i]);
        glTexImage2D(GL_TEXTURE_2D, 0, 4, image.width(), image.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                     image.constBits());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    }
    // The cells repeat over faces of any size: reduced images keep them calm from afar.
    const QImage cellules = lit_texture("cellules.svg");
    glBindTexture(GL_TEXTURE_2D, textures_[texture_cellules]);
    gluBuild2DMipmaps(GL_TEXTURE_2D, 4, cellules.width(), cellules.height(), GL_RGBA, GL_UNSIGNED_BYTE,
                      cellules.constBits());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);

    glClearColor(0.0f, 0.0f, 0.2f, 0.0f);
    glLightf(GL_LIGHT0, GL_CONSTANT_ATTENUATION, 0.1f);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHTING);
    matiere(1.0f, 1.0f, 1.0f);
    const float position[] = {1.0f, 0.0f, 0.0f, 0.0f};
    glLightfv(GL_LIGHT0, GL_POSITION, position);
}

void scene3d::libere() {
    glDeleteTextures(static_cast<GLsizei>(textures_.size()), textures_.data());
    textures_.fill(0);
}

void scene3d::place_camera(const camera3d& c, int largeur, int hauteur) {
    const double champ = demi_champ / c.zoom;
    const double petit = std::max(1, std::min(largeur, hauteur));
    trait_ = static_cast<float>(std::max(1.0, petit / 450.0));
    glLineWidth(trait_);
    pixel_ = 2 * champ / petit;
    const double x = champ * largeur / petit, y = champ * hauteur / petit;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-x, x, -y, y, 1.0, 25000.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    const auto [oeil, haut] = regard_de(c);
    // The inertial frame with its pole upwards is turned by -90 degrees about x into OpenGL's.
    auto gl = [](const vec3& v) { return vec3{v[0], v[2], -v[1]}; };
    const vec3 centre = gl(c.centre), h = gl(haut);
    const vec3 place = vec_somme(centre, vec_echelle(recul, gl(oeil)));
    gluLookAt(place[0], place[1], place[2], centre[0], centre[1], centre[2], h[0], h[1], h[2]);
}

void scene3d::eclaire(const vec3& soleil, bool ombre, float ambiante) {
    const float position[] = {static_cast<float>(soleil[0]), static_cast<float>(soleil[1]),
                              static_cast<float>(soleil[2]), 0.0f};
    const float jour[] = {1.0f, 1.0f, 1.0f, 1.0f}, nuit[] = {0.0f, 0.0f, 0.0f, 1.0f};
    const float autour[] = {ambiante, ambiante, ambiante, 1.0f};
    glLightfv(GL_LIGHT0, GL_POSITION, position);
    glLightfv(GL_LIGHT0, GL_AMBIENT, autour);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, ombre ? nuit : jour);
}

void scene3d::trace_terre(const camera3d& c, double sideral) {
    glPushMatrix();
    // GLU starts its texture at +y, the picture of the Earth at longitude -180: 90 degrees apart.
    glRotated(radians_vers_degres(sideral) + 90.0, 0.0, 0.0, 1.0);
    glBindTexture(GL_TEXTURE_2D, textures_[0]);
    matiere(1.0f, 1.0f, 1.0f);
    glColor3d(1.0, 1.0, 1.0);
    GLUquadric* quadrique = gluNewQuadric();
    gluQuadricTexture(quadrique, GL_TRUE);
    gluSphere(quadrique, 1.0, 48, 32);
    gluDeleteQuadric(quadrique);
    glPopMatrix();
    trace_limbe(c);
    {
        const sans_lumiere axe;
        glColor3d(1.0, 1.0, 1.0);
        glBegin(GL_LINES);
        glVertex3d(0.0, 0.0, 1.5);
        glVertex3d(0.0, 0.0, -1.5);
        glEnd();
    }
}

/// Fades the edge of the disc into the sky over a pixel and a half: the edge is smooth without several
/// samples a pixel, and covers the corners of the sphere.
void scene3d::trace_limbe(const camera3d& c) {
    constexpr int pas = 240;
    const auto [oeil, haut] = regard_de(c);
    const vec3 droite = vec_vectoriel(haut, oeil);
    const double dedans = 1 - std::max(0.0035, 1.5 * pixel_), dehors = 1.0 + 2 * pixel_;
    const sans_lumiere anneau;
    glDepthMask(GL_FALSE);
    const auto bande = [&](double r1, double a1, double r2, double a2) {
        glBegin(GL_TRIANGLE_STRIP);
        for (int i = 0; i <= pas; ++i) {
            const auto [s, k] = sincos_de(deux_pi * i / pas);
            const vec3 d = vec_somme(vec_echelle(k, droite), vec_echelle(s, haut));
            // In front of the whole sphere.
            for (const auto& [r, alpha] : {std::pair{r1, a1}, std::pair{r2, a2}}) {
                glColor4d(ciel[0], ciel[1], ciel[2], alpha);
                sommet(vec_somme(vec_echelle(r, d), oeil));
            }
        }
        glEnd();
    };
    bande(dedans, 0.0, 1.0 - 0.3 * pixel_, 1.0);
    bande(1.0 - 0.3 * pixel_, 1.0, dehors, 1.0);
    glDepthMask(GL_TRUE);
}

void scene3d::trace_orbite(const record_orbite& o, const vec3& soleil) {
    const std::array<double, 7> elements = {o.orb_demi,      o.orb_excentricite, o.orb_inclinaison,
                                            o.orb_ascension, o.orb_argument,     o.orb_jour,
                                            double(o.orb_an)};
    if (elements != orbite_tracee_) {
        orbite_tracee_ = elements;
        points_orbite_.clear();
        const double e = o.orb_excentricite;
        const bool tracable = e >= 0.0 && e < 1.0 && o.orb_demi > 0.0;
        const tour_plan plan(o);
        const double parametre = o.orb_demi / rayon_terre * (1.0 - e * e);
        constexpr int nombre = 240;
        for (int i = 0; tracable && i < nombre; ++i) {
            const double nu = deux_pi * i / nombre, u = nu + degres_vers_radians(o.orb_argument);
            const double r = parametre / (1.0 + e * std::cos(nu));
            points_orbite_.push_back(plan.depuis_plan({r * std::cos(u), r * std::sin(u), 0.0}));
        }
    }
    // In the shadow where the Sun, taken at its distance, stands within the Earth's disc.
    const double s = vec_norme(soleil), rayon = rayon_ombre / rayon_terre;
    const auto ombre = [&](const vec3& p) {
        const double r = vec_norme(p);
        return r <= rayon || std::sqrt(r * r - rayon * rayon) < -vec_scalaire(p, soleil) / s;
    };
    const sans_lumiere trait;
    const QColor jour = sur_ciel(style::role::terre), nuit = sur_ciel(style::role::eclipse);
    const std::size_t n = points_orbite_.size();
    for (const bool sombre : {false, true}) {
        couleur_gl(sombre ? nuit : jour, sombre ? 0.9 : 0.8);
        if (sombre) {
            glEnable(GL_LINE_STIPPLE);
            glLineStipple(2, 0x3f3f);
        }
        bool pose = false;
        for (std::size_t i = 0; i < n; ++i) {
            const vec3 &a = points_orbite_[i], &b = points_orbite_[(i + 1) % n];
            const bool ici = (s > 0 && ombre(vec_echelle(0.5, vec_somme(a, b)))) == sombre;
            if (ici && !pose) {
                glBegin(GL_LINE_STRIP);
                sommet(a);
            }
            if (ici) sommet(b);
            if (!ici && pose) glEnd();
            pose = ici;
        }
        if (pose) glEnd();
    }
    glDisable(GL_LINE_STIPPLE);
}

void scene3d::trace_soleil(const vec3& soleil) {
    const sans_lumiere astre;
    const double distance = vec_norme(soleil);
    if (!(distance > 0.0)) return;
    glPushMatrix();
    glColor3ub(255, 255, 0);
    glTranslated(soleil[0] / 1000.0 / 6378.137, soleil[1] / 1000.0 / 6378.137, soleil[2] / 1000.0 / 6378.137);
    GLUquadric* quadrique = gluNewQuadric();
    gluSphere(quadrique, 0.1, 10, 10);
    gluDeleteQuadric(quadrique);
    glPopMatrix();
    // The Sun itself is mostly out of the picture: a ray tells where it stands.
    couleur_gl(sur_ciel(style::role::soleil), 0.9);
    glEnable(GL_LINE_STIPPLE);
    glLineStipple(2, 0x3333);
    glBegin(GL_LINES);
    sommet(vec_echelle(1.02 / distance, soleil));
    sommet(vec_echelle(recul / distance, soleil));
    glEnd();
    glDisable(GL_LINE_STIPPLE);
}

/// A pale ring where the satellite stands behind the Earth.
void scene3d::trace_cache(const camera3d& c, const vec3& satellite) {
    const auto [oeil, haut] = regard_de(c);
    const vec3 droite = vec_vectoriel(haut, oeil);
    const sans_lumiere anneau;
    glDisable(GL_DEPTH_TEST);
    couleur_gl(Qt::white, 0.75);
    glBegin(GL_LINE_LOOP);
    for (int i = 0; i < 32; ++i) {
        const auto [s, k] = sincos_de(deux_pi * i / 32);
        const vec3 d = vec_somme(vec_echelle(k, droite), vec_echelle(s, haut));
        sommet(vec_somme(satellite, vec_echelle(taille_satellite / 2, d)));
    }
    glEnd();
    glEnable(GL_DEPTH_TEST);
}

void scene3d::trace(const sujet3d& s, const camera3d& c, const affichage3d& a, int largeur, int hauteur) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    place_camera(c, largeur, hauteur);
    glEnable(GL_TEXTURE_2D);
    glPushMatrix();
    glRotated(-90.0, 1.0, 0.0, 0.0);
    const vec3& soleil = s.orbit.soleil_pos;
    eclaire(soleil, false, 0.0f);
    trace_terre(c, temps_sideral(s.date));
    trace_orbite(s.orbit.orbite, soleil);
    trace_soleil(soleil);
    const vec3 satellite = vec_echelle(1.0 / rayon_terre, s.orbit.sat_pos);
    if (vec_norme(satellite) > 0.5 && cache_par_la_terre(c, satellite)) {
        trace_cache(c, satellite);
    } else if (vec_norme(satellite) > 0.5) {
        // Drawn far larger than it is, a low satellite would be half sunk in the ground.
        glClear(GL_DEPTH_BUFFER_BIT);
        eclaire(soleil, s.power.eclipse == vrai, 0.15f);
        trace_satellite(s, a, satellite);
        trace_fleches(s, a, c, satellite);
    }
    glPopMatrix();
    // The window system mixes the picture by its alpha, which clearing and smooth lines have left below one.
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_TRUE);
    glClearColor(0.0f, 0.0f, 0.2f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glClearColor(0.0f, 0.0f, 0.2f, 0.0f);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}
