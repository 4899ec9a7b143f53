/// The satellite of the three-dimensional view: body, panels, faces coloured by a value.
#include <algorithm>
#include <cmath>

#include "orbit/matrices.h"
#include "power/windows/gl_outils.h"
#include "power/windows/scene3d.h"

namespace {

constexpr int sans_texture = -1;

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

/// The outline of a quad around c, smooth where the faces' own edges are not.
void contour(const vec3& c, const vec3& u, const vec3& v) {
    sommet(vec_difference(vec_difference(c, v), u));
    sommet(vec_somme(vec_difference(c, v), u));
    sommet(vec_somme(vec_somme(c, v), u));
    sommet(vec_difference(vec_somme(c, v), u));
}

/// Outlines of faces, until its end.
struct aretes {
    bool lumiere = glIsEnabled(GL_LIGHTING), texture = glIsEnabled(GL_TEXTURE_2D);
    explicit aretes(float trait) {
        glDisable(GL_LIGHTING);
        glDisable(GL_TEXTURE_2D);
        glColor4d(0.04, 0.04, 0.1, 0.85);
        glLineWidth(1.3f * trait);
    }
    ~aretes() {
        if (lumiere) glEnable(GL_LIGHTING);
        if (texture) glEnable(GL_TEXTURE_2D);
    }
    aretes(const aretes&) = delete;
    aretes& operator=(const aretes&) = delete;
};

/// The outline of one quad.
void arete(const vec3& c, const vec3& u, const vec3& v) {
    glBegin(GL_LINE_LOOP);
    contour(c, u, v);
    glEnd();
}

vec3 moins(const vec3& v) { return vec_echelle(-1.0, v); }

/// A prism around z, or the cylinder as a smooth one of many sides.
struct prisme {
    prisme(const power_record& p, int nombre, bool lisse_)
        : cotes(nombre), lisse(lisse_), largeur(std::max(1e-3f, p.body_width)),
          hauteur(std::max(1e-3f, p.body_height)), demi_angle(pi / cotes),
          // Distance from the axis to a face; the width is that of a face, or the diameter.
          face(lisse ? largeur / 2.0 * std::cos(demi_angle) : largeur / 2.0 / std::tan(demi_angle)),
          echelle(1.4 * taille_satellite / std::max(2.0 * face, hauteur)), h(hauteur / 2.0 * echelle),
          r(face / std::cos(demi_angle) * echelle) {}

    vec3 coin(double azimut, double z) const { return {r * std::cos(azimut), r * std::sin(azimut), z}; }
    /// An edge between two sides.
    vec3 arete(int i, double z) const { return coin((2 * i + 1) * demi_angle, z); }

    int cotes;
    bool lisse;
    double largeur, hauteur, demi_angle, face;
    double echelle; ///< drawn over true
    double h, r;    ///< drawn: half height, distance of the edges from the axis
};

void trace_aretes(const prisme& p) {
    for (const double z : {p.h, -p.h}) {
        glBegin(GL_LINE_LOOP);
        for (int i = 0; i < p.cotes; ++i) sommet(p.arete(i, z));
        glEnd();
    }
    if (p.lisse) return;
    glBegin(GL_LINES);
    for (int i = 0; i < p.cotes; ++i)
        for (const double z : {p.h, -p.h}) sommet(p.arete(i, z));
    glEnd();
}

/// One side, from the bottom to the top.
void trace_cote(const prisme& p, int i, double tour_en_motifs) {
    // Strips of the cylinder start at azimuth 0, faces of a prism stand around theirs.
    const double milieu = p.lisse ? (2 * i + 1) * p.demi_angle : 2 * i * p.demi_angle;
    const double a = milieu - p.demi_angle, b = milieu + p.demi_angle;
    const double s0 = p.lisse ? tour_en_motifs * i / p.cotes : 0.0;
    const double s1 = p.lisse ? tour_en_motifs * (i + 1) / p.cotes : 1.0;
    const double t1 = p.lisse ? 1.0 : p.hauteur / p.largeur;
    const auto n = [](double azimut) { normale({std::cos(azimut), std::sin(azimut), 0}); };
    n(p.lisse ? a : milieu);
    sommet(p.coin(a, -p.h), s0, 0);
    n(p.lisse ? b : milieu);
    sommet(p.coin(b, -p.h), s1, 0);
    sommet(p.coin(b, p.h), s1, t1);
    n(p.lisse ? a : milieu);
    sommet(p.coin(a, p.h), s0, t1);
}

/// The end on the side of `signe` along z.
void trace_couvercle(const prisme& p, double signe) {
    glBegin(GL_POLYGON);
    normale({0, 0, signe});
    for (int i = 0; i < p.cotes; ++i) {
        const vec3 v = p.coin(signe * (2 * i + 1) * p.demi_angle, signe * p.h);
        const double etendue = p.cotes == 4 ? 2.0 * p.face * p.echelle : 2.0 * p.r;
        sommet(v, 0.5 + v[0] / etendue, 0.5 + signe * v[1] / etendue);
    }
    glEnd();
}

} // namespace

void scene3d::habille(int texture, double valeur) {
    if (!coloree_) {
        glBindTexture(GL_TEXTURE_2D, texture == sans_texture ? 0 : textures_[std::size_t(texture)]);
        return;
    }
    const auto [r, v, b] = couleur_echelle((valeur - valeurs_.min) / (valeurs_.max - valeurs_.min));
    glColor3d(r, v, b);
}

void scene3d::trace_caisse(const power_record& p) {
    const double d = taille_satellite / 2.0;
    const vec3 X = {d, 0, 0}, Y = {0, d, 0}, Z = {0, 0, d};
    const struct {
        vec3 centre, u, v;
    } faces[6] = {{X, Y, Z}, {moins(X), moins(Y), Z}, {Y, moins(X), Z}, {moins(Y), X, Z},
                  {Z, X, Y}, {moins(Z), X, moins(Y)}};
    matiere(1.0f, 1.0f, 1.0f);
    for (int i = 0; i < 6; ++i) {
        habille(i + 1, valeurs_.caisse[std::size_t(i)]);
        quadrilatere(faces[i].centre, faces[i].u, faces[i].v);
    }
    {
        const aretes traits(trait_);
        for (const auto& f : faces) arete(f.centre, f.u, f.v);
    }
    for (const double cote_y : {1.0, -1.0}) trace_aile(p, cote_y);
}

/// A wing along y: the drawn area follows the true one within what can still be seen.
void scene3d::trace_aile(const power_record& p, double cote_y) {
    const double d = taille_satellite / 2.0, cote = std::sqrt(std::max(1e-4f, p.body_face_area));
    const double corde = 0.42 * taille_satellite;
    const double aire = std::max(0.0f, p.ext_area) / (cote * cote) * taille_satellite * taille_satellite;
    const double longueur = std::clamp(aire / (2.0 * corde), 0.25 * taille_satellite, 1.6 * taille_satellite);
    const auto [s, c] = sincos_de(angle_panneaux_);
    const vec3 t = {corde * s, 0, corde * c}; // across the wing, normal to y and to the panel's normal
    const double debut = d + 0.2 * taille_satellite;
    const vec3 milieu = {0, cote_y * (debut + longueur / 2.0), 0};
    const vec3 l = {0, longueur / 2.0, 0};
    glEnable(GL_CULL_FACE);
    matiere(1.0f, 1.0f, 1.0f);
    habille(texture_cellules, valeurs_.panneau);
    quadrilatere(milieu, t, l, 1.0, longueur / (2.0 * corde)); // front: t x l = (-c, 0, s)
    habille(sans_texture, valeurs_.dos_panneau);
    matiere(0.75f, 0.72f, 0.66f);
    quadrilatere(milieu, moins(t), l);
    glDisable(GL_CULL_FACE);
    {
        const aretes traits(trait_);
        arete(milieu, t, l);
    }
    const aretes bras(trait_);
    glColor3d(0.8, 0.8, 0.8);
    glBegin(GL_LINES);
    glVertex3d(0, cote_y * d, 0);
    glVertex3d(0, cote_y * debut, 0);
    glEnd();
}

void scene3d::trace_prisme(const power_record& p, int cotes, bool lisse) {
    const prisme corps(p, cotes, lisse);
    const double tour_en_motifs = std::max(1.0, std::round(2.0 * pi * corps.face / corps.hauteur));
    matiere(1.0f, 1.0f, 1.0f);
    if (!coloree_) habille(texture_cellules, 0);
    glBegin(GL_QUADS);
    for (int i = 0; i < cotes; ++i) {
        if (coloree_) habille(texture_cellules, valeurs_.cotes[std::size_t(i)]);
        trace_cote(corps, i, tour_en_motifs);
    }
    glEnd();
    habille(5, valeurs_.dessus);
    trace_couvercle(corps, 1.0);
    habille(6, valeurs_.dessous);
    trace_couvercle(corps, -1.0);
    const aretes traits(trait_);
    trace_aretes(corps);
}

void scene3d::trace_satellite(const sujet3d& s, const affichage3d& a, const vec3& position) {
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
    coloree_ = a.faces != couleur_faces::images;
    if (coloree_) {
        valeurs_ = valeurs_de(a.faces, p, s.orbit);
        glDisable(GL_LIGHTING); // a colour stands for a value, lit or not
        glDisable(GL_TEXTURE_2D);
    }
    // The faces step back a little, so that their outlines stand before them.
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.0f, 1.0f);
    if (p.opt_panel_ext == vrai)
        trace_caisse(p);
    else if (p.opt_faces == 0)
        trace_prisme(p, 4, false);
    else if (p.opt_faces == 1)
        trace_prisme(p, 6, false);
    else
        trace_prisme(p, nb_bandes, true);
    glDisable(GL_POLYGON_OFFSET_FILL);
    glEnable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}
