#include "power/windows/scene3d.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

// The GL headers come after Qt's.
#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>

#include "orbit/matrices.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "widgets/style.h"

namespace {

constexpr double recul = 60.0; ///< eye to what it looks at: beyond the Sun's place, inside the far plane
constexpr double demi_champ = 4.0;
constexpr double taille_satellite = 0.2; ///< drawn size of the body, far above the true one
constexpr int texture_cellules = 7;

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

void normale(const vec3& v) { glNormal3dv(v.data()); }
void sommet(const vec3& v) { glVertex3dv(v.data()); }
void sommet(const vec3& v, double s, double t) {
    glTexCoord2d(s, t);
    glVertex3dv(v.data());
}

/// A quad around c with half sides u and v; u x v is the outward normal, v the upward side of its texture.
void quadrilatere(const vec3& c, const vec3& u, const vec3& v, double repete_s = 1.0, double repete_t = 1.0) {
    const vec3 n = vec_vectoriel(u, v);
    glBegin(GL_QUADS);
    normale(vec_echelle(1.0 / vec_norme(n), n));
    const vec3 bas = vec_difference(c, v), haut = vec_somme(c, v);
    sommet(vec_difference(bas, u), 0, 0);
    sommet(vec_somme(bas, u), repete_s, 0);
    sommet(vec_somme(haut, u), repete_s, repete_t);
    sommet(vec_difference(haut, u), 0, repete_t);
    glEnd();
}

void couleur_gl(const QColor& c, double alpha = 1.0) { glColor4d(c.redF(), c.greenF(), c.blueF(), alpha); }

/// Colours that stand on the view's dark sky, whatever the desktop's palette.
QColor sur_ciel(style::role r) { return style::accorde(style::couleur(r), true); }

void matiere(float r, float v, float b) {
    const float m[] = {r, v, b, 1.0f};
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, m);
}

/// Unit vector to the eye, and the upward side of the view, in the inertial frame. Dragging turns what is
/// seen with the mouse, so the eye goes the other way.
void axes_camera(const camera3d& c, vec3& oeil, vec3& haut) {
    const auto [se, ce] = sincos_de(-c.angle_1);
    const auto [sa, ca] = sincos_de(-c.angle_2);
    oeil = {ce * ca, ce * sa, se};
    haut = {-se * ca, -se * sa, ce};
}

struct sans_lumiere {
    sans_lumiere() {
        glDisable(GL_LIGHTING);
        glBindTexture(GL_TEXTURE_2D, 0);
        glDisable(GL_TEXTURE_2D);
    }
    ~sans_lumiere() {
        glEnable(GL_LIGHTING);
        glEnable(GL_TEXTURE_2D);
    }
};

} // namespace

bool cache_par_la_terre(const camera3d& c, const vec3& satellite) {
    vec3 oeil, haut;
    axes_camera(c, oeil, haut);
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
    const double x = champ * largeur / petit, y = champ * hauteur / petit;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-x, x, -y, y, 1.0, 25000.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    vec3 oeil, haut;
    axes_camera(c, oeil, haut);
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

void scene3d::trace_terre(double sideral) {
    glPushMatrix();
    // GLU starts its texture at +y, the picture of the Earth at longitude -180: 90 degrees apart.
    glRotated(radians_vers_degres(sideral) + 90.0, 0.0, 0.0, 1.0);
    glBindTexture(GL_TEXTURE_2D, textures_[0]);
    matiere(1.0f, 1.0f, 1.0f);
    glColor3d(1.0, 1.0, 1.0);
    GLUquadric* quadrique = gluNewQuadric();
    gluQuadricTexture(quadrique, GL_TRUE);
    gluSphere(quadrique, 1.0, 30, 30);
    gluDeleteQuadric(quadrique);
    {
        const sans_lumiere axe;
        glColor3d(1.0, 1.0, 1.0);
        glBegin(GL_LINES);
        glVertex3d(0.0, 0.0, 1.5);
        glVertex3d(0.0, 0.0, -1.5);
        glEnd();
    }
    glPopMatrix();
}

void scene3d::trace_orbite(const record_orbite& o) {
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
        constexpr int nombre = 180;
        for (int i = 0; tracable && i < nombre; ++i) {
            const double nu = deux_pi * i / nombre, u = nu + degres_vers_radians(o.orb_argument);
            const double r = parametre / (1.0 + e * std::cos(nu));
            points_orbite_.push_back(plan.depuis_plan({r * std::cos(u), r * std::sin(u), 0.0}));
        }
    }
    const sans_lumiere trait;
    couleur_gl(sur_ciel(style::role::terre), 0.8);
    glBegin(GL_LINE_LOOP);
    for (const vec3& p : points_orbite_) sommet(p);
    glEnd();
}

void scene3d::trace_caisse(const power_record& p) {
    const double cote = std::sqrt(std::max(1e-4f, p.body_face_area));
    const double d = taille_satellite / 2.0;
    const vec3 X = {d, 0, 0}, Y = {0, d, 0}, Z = {0, 0, d};
    auto moins = [](const vec3& v) { return vec_echelle(-1.0, v); };
    const struct {
        vec3 centre, u, v;
    } faces[6] = {{X, Y, Z}, {moins(X), moins(Y), Z}, {Y, moins(X), Z}, {moins(Y), X, Z},
                  {Z, X, Y}, {moins(Z), X, moins(Y)}};
    matiere(1.0f, 1.0f, 1.0f);
    for (int i = 0; i < 6; ++i) {
        glBindTexture(GL_TEXTURE_2D, textures_[i + 1]);
        quadrilatere(faces[i].centre, faces[i].u, faces[i].v);
    }

    // Two wings along y: the drawn area follows the true one within what can still be seen.
    const double corde = 0.42 * taille_satellite;
    const double aire = std::max(0.0f, p.ext_area) / (cote * cote) * taille_satellite * taille_satellite;
    const double longueur = std::clamp(aire / (2.0 * corde), 0.25 * taille_satellite, 1.6 * taille_satellite);
    const auto [s, c] = sincos_de(angle_panneaux_);
    const vec3 t = {corde * s, 0, corde * c}; // across the wing, normal to y and to the panel's normal
    for (double signe_y : {1.0, -1.0}) {
        const double debut = d + 0.2 * taille_satellite;
        const vec3 milieu = {0, signe_y * (debut + longueur / 2.0), 0};
        const vec3 l = {0, longueur / 2.0, 0};
        glEnable(GL_CULL_FACE);
        matiere(1.0f, 1.0f, 1.0f);
        glBindTexture(GL_TEXTURE_2D, textures_[texture_cellules]);
        quadrilatere(milieu, t, l, 1.0, longueur / (2.0 * corde)); // front: t x l = (-c, 0, s)
        glBindTexture(GL_TEXTURE_2D, 0);
        matiere(0.75f, 0.72f, 0.66f);
        quadrilatere(milieu, moins(t), l);
        glDisable(GL_CULL_FACE);
        const sans_lumiere bras;
        glColor3d(0.8, 0.8, 0.8);
        glBegin(GL_LINES);
        glVertex3d(0, signe_y * d, 0);
        glVertex3d(0, signe_y * debut, 0);
        glEnd();
    }
}

void scene3d::trace_prisme(const power_record& p, int cotes, bool lisse) {
    // Distance from the axis to a face, and to an edge; the width is that of a face, or the diameter.
    const double largeur = std::max(1e-3f, p.body_width), hauteur = std::max(1e-3f, p.body_height);
    const double demi_angle = pi / cotes;
    const double face = lisse ? largeur / 2.0 * std::cos(demi_angle) : largeur / 2.0 / std::tan(demi_angle);
    const double arete = face / std::cos(demi_angle);
    const double echelle = 1.4 * taille_satellite / std::max(2.0 * face, hauteur);
    const double h = hauteur / 2.0 * echelle, r = arete * echelle;
    const double tour_en_motifs = std::max(1.0, std::round(2.0 * pi * face / hauteur));
    auto coin = [&](double azimut, double z) { return vec3{r * std::cos(azimut), r * std::sin(azimut), z}; };

    matiere(1.0f, 1.0f, 1.0f);
    glBindTexture(GL_TEXTURE_2D, textures_[texture_cellules]);
    glBegin(GL_QUADS);
    for (int i = 0; i < cotes; ++i) {
        // Strips of the cylinder start at azimuth 0, faces of a prism stand around theirs.
        const double milieu = lisse ? (2 * i + 1) * demi_angle : 2 * i * demi_angle;
        const double a = milieu - demi_angle, b = milieu + demi_angle;
        const double s0 = lisse ? tour_en_motifs * i / cotes : 0.0;
        const double s1 = lisse ? tour_en_motifs * (i + 1) / cotes : 1.0;
        const double t1 = lisse ? 1.0 : hauteur / largeur;
        auto n = [&](double azimut) { normale({std::cos(azimut), std::sin(azimut), 0}); };
        n(lisse ? a : milieu);
        sommet(coin(a, -h), s0, 0);
        n(lisse ? b : milieu);
        sommet(coin(b, -h), s1, 0);
        sommet(coin(b, h), s1, t1);
        n(lisse ? a : milieu);
        sommet(coin(a, h), s0, t1);
    }
    glEnd();
    for (int couvercle : {0, 1}) {
        const double signe_z = couvercle == 0 ? 1.0 : -1.0;
        glBindTexture(GL_TEXTURE_2D, textures_[5 + couvercle]);
        glBegin(GL_POLYGON);
        normale({0, 0, signe_z});
        for (int i = 0; i < cotes; ++i) {
            const double azimut = signe_z * (2 * i + 1) * demi_angle;
            const vec3 v = coin(azimut, signe_z * h);
            const double etendue = cotes == 4 ? 2.0 * face * echelle : 2.0 * r;
            sommet(v, 0.5 + v[0] / etendue, 0.5 + signe_z * v[1] / etendue);
        }
        glEnd();
    }
}

void scene3d::trace_satellite(const session& s, const vec3& position) {
    vec3 axes[3];
    for (int i = 0; i < 3; ++i) {
        vec3 e{};
        e[i] = 1.0;
        axes[i] = corps_vers_inertiel(s.orbit, e);
        for (double x : axes[i])
            if (!std::isfinite(x)) return;
    }
    const double m[16] = {axes[0][0], axes[0][1], axes[0][2], 0, axes[1][0],  axes[1][1],  axes[1][2],  0,
                          axes[2][0], axes[2][1], axes[2][2], 0, position[0], position[1], position[2], 1};
    glPushMatrix();
    glMultMatrixd(m);
    const power_record& p = s.power;
    if (p.opt_panel_ext == vrai)
        trace_caisse(p);
    else if (p.opt_faces == 0)
        trace_prisme(p, 4, false);
    else if (p.opt_faces == 1)
        trace_prisme(p, 6, false);
    else
        trace_prisme(p, nb_bandes, true);
    {
        const sans_lumiere traits;
        const style::role roles[3] = {style::role::axe_x, style::role::axe_y, style::role::axe_z};
        glLineWidth(2.0f * trait_);
        glBegin(GL_LINES);
        for (int i = 0; i < 3; ++i) {
            vec3 bout{};
            couleur_gl(sur_ciel(roles[i]));
            sommet(bout);
            bout[i] = 1.3 * taille_satellite;
            sommet(bout);
        }
        glEnd();
        glLineWidth(trait_);
    }
    glPopMatrix();
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

void scene3d::trace(const session& s, const camera3d& c, int largeur, int hauteur) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    place_camera(c, largeur, hauteur);
    glEnable(GL_TEXTURE_2D);
    glPushMatrix();
    glRotated(-90.0, 1.0, 0.0, 0.0);
    const vec3& soleil = s.orbit.soleil_pos;
    eclaire(soleil, false, 0.0f);
    trace_terre(temps_sideral(s.periode.j_courant));
    trace_orbite(s.orbit.orbite);
    trace_soleil(soleil);
    const vec3 satellite = vec_echelle(1.0 / rayon_terre, s.orbit.sat_pos);
    if (vec_norme(satellite) > 0.5 && !cache_par_la_terre(c, satellite)) {
        // Drawn far larger than it is, a low satellite would be half sunk in the ground.
        glClear(GL_DEPTH_BUFFER_BIT);
        eclaire(soleil, s.power.eclipse == vrai, 0.15f);
        trace_satellite(s, satellite);
    }
    glPopMatrix();
    // The window system mixes the picture by its alpha, which clearing and smooth lines have left below one.
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_TRUE);
    glClearColor(0.0f, 0.0f, 0.2f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glClearColor(0.0f, 0.0f, 0.2f, 0.0f);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}
