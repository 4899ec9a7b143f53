/// Small pieces of the OpenGL drawing.
#pragma once

#include <QColor>

// The GL headers come after Qt's.
#include <GL/gl.h>
#include <GL/glu.h>

#include "orbit/math.h"
#include "widgets/style.h"

/// [Earth radii] drawn size of the body, far above the true one.
inline constexpr double taille_satellite = 0.2;
/// Place of the solar cells' pattern among the textures of the scene.
inline constexpr int texture_cellules = 7;

inline void normale(const vec3& v) { glNormal3dv(v.data()); }
inline void sommet(const vec3& v) { glVertex3dv(v.data()); }
inline void sommet(const vec3& v, double s, double t) {
    glTexCoord2d(s, t);
    glVertex3dv(v.data());
}

inline void couleur_gl(const QColor& c, double alpha = 1.0) {
    glColor4d(c.redF(), c.greenF(), c.blueF(), alpha);
}

/// Colours that stand on the view's dark sky, whatever the desktop's palette.
inline QColor sur_ciel(style::role r) { return style::accorde(style::couleur(r), true); }

inline void matiere(float r, float v, float b) {
    const float m[] = {r, v, b, 1.0f};
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, m);
}

/// No light and no texture while it lives.
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
    sans_lumiere(const sans_lumiere&) = delete;
    sans_lumiere& operator=(const sans_lumiere&) = delete;
};
