/// The arrows of the three-dimensional view: body axes, Sun, nadir, velocity, field, each with its letter.
#include <cmath>

#include "attitude/att_igrf.h"
#include "orbit/matrices.h"
#include "orbit/orb_projection.h"
#include "power/windows/fleches3d.h"
#include "power/windows/gl_outils.h"
#include "power/windows/scene3d.h"

namespace {

constexpr double longueur_axe = 1.3 * taille_satellite, longueur_direction = 2.2 * taille_satellite;

/// Strokes of the letters in a square of side 1, the pen lifted at a negative x.
struct lettre {
    char nom;
    std::initializer_list<std::array<double, 2>> traits;
};
const std::array<double, 2> leve = {-1, 0};
const lettre lettres[] = {
    {'X', {{0, 0}, {1, 1}, leve, {0, 1}, {1, 0}}},
    {'Y', {{0, 1}, {.5, .5}, {1, 1}, leve, {.5, .5}, {.5, 0}}},
    {'Z', {{0, 1}, {1, 1}, {0, 0}, {1, 0}}},
    {'S', {{1, .85}, {.7, 1}, {.2, 1}, {0, .8}, {.1, .6}, {.9, .4}, {1, .2}, {.8, 0}, {.3, 0}, {0, .15}}},
    {'N', {{0, 0}, {0, 1}, {1, 0}, {1, 1}}},
    {'V', {{0, 1}, {.5, 0}, {1, 1}}},
    {'B',
     {{0, 0}, {0, 1}, {.7, 1}, {.9, .8}, {.7, .55}, {0, .55}, leve, {.7, .55}, {1, .3}, {.8, 0}, {0, 0}}},
};

void ecrit_lettre(char nom, const vec3& ou, const vec3& droite, const vec3& haut, double taille) {
    for (const lettre& l : lettres) {
        if (l.nom != nom) continue;
        glBegin(GL_LINE_STRIP);
        for (const auto& [x, y] : l.traits) {
            if (x < 0) {
                glEnd();
                glBegin(GL_LINE_STRIP);
                continue;
            }
            sommet(vec_somme(ou, vec_somme(vec_echelle((x - .5) * .8 * taille, droite),
                                           vec_echelle((y - .5) * taille, haut))));
        }
        glEnd();
    }
}

/// A head of twelve sides at the end of a shaft.
void pointe(const vec3& base, const vec3& bout, double rayon) {
    const vec3 d = vec_difference(bout, base);
    const vec3 autre = std::fabs(d[2]) > 0.9 * vec_norme(d) ? vec3{1, 0, 0} : vec3{0, 0, 1};
    vec3 u = vec_vectoriel(d, autre);
    u = vec_echelle(rayon / vec_norme(u), u);
    vec3 v = vec_vectoriel(d, u);
    v = vec_echelle(rayon / vec_norme(v), v);
    glBegin(GL_TRIANGLE_FAN);
    sommet(bout);
    for (int i = 0; i <= 12; ++i) {
        const auto [s, c] = sincos_de(deux_pi * i / 12);
        sommet(vec_somme(base, vec_somme(vec_echelle(c, u), vec_echelle(s, v))));
    }
    glEnd();
}

/// The field of the reference model [nT], inertial axes.
vec3 champ(double date, const vec3& position) {
    const vec3 p = vers_terrestre(date, position);
    const double r = vec_norme(p), plat = std::hypot(p[0], p[1]);
    const sinus_cosinus colatitude = {plat / r, p[2] / r},
                        longitude = {plat > 0 ? p[1] / plat : 0, plat > 0 ? p[0] / plat : 1};
    const vec3 b = champ_igrf(date).synthese(r, colatitude, longitude); // up, south, east
    const vec3 haut = vec_echelle(1 / r, p), est = {-longitude.s, longitude.c, 0},
               sud = vec_vectoriel(est, haut);
    return vers_inertiel(
        date, vec_somme(vec_echelle(b[0], haut), vec_somme(vec_echelle(b[1], sud), vec_echelle(b[2], est))));
}

} // namespace

std::span<const fleche3d> fleches3d() {
    static const fleche3d table[] = {
        {'X', "axe X du corps", &affichage3d::axes, [] { return sur_ciel(style::role::axe_x); }},
        {'Y', "axe Y du corps", &affichage3d::axes, [] { return sur_ciel(style::role::axe_y); }},
        {'Z', "axe Z du corps", &affichage3d::axes, [] { return sur_ciel(style::role::axe_z); }},
        {'S', "Soleil", &affichage3d::soleil, [] { return sur_ciel(style::role::soleil); }},
        {'N', "nadir", &affichage3d::nadir, [] { return sur_ciel(style::role::terre); }},
        {'V', "vitesse", &affichage3d::vitesse,
         [] { return style::accorde(style::couleur_courbe(3), true); }},
        {'B', "champ magnétique", &affichage3d::champ,
         [] { return style::accorde(style::couleur_courbe(1), true); }},
    };
    return table;
}

void scene3d::trace_fleches(const sujet3d& s, const affichage3d& a, const camera3d& c, const vec3& position) {
    const auto [oeil, haut] = regard_de(c);
    const vec3 droite = vec_vectoriel(haut, oeil);
    const double lettre = std::max(14 * pixel_ * trait_, 0.04 * taille_satellite);
    const double tete = std::max(9 * pixel_ * trait_, 0.12 * taille_satellite);
    const sans_lumiere traits;
    for (const fleche3d& f : fleches3d()) {
        if (!(a.*f.montree)) continue;
        vec3 d{};
        switch (f.lettre) {
        case 'S': d = s.orbit.vec_soleil; break;
        case 'N': d = s.orbit.vec_nadir; break;
        case 'V': d = s.orbit.sat_vit; break;
        case 'B': d = champ(s.date, s.orbit.sat_pos); break;
        default: {
            vec3 axe{};
            axe[f.lettre - 'X'] = 1;
            d = corps_vers_inertiel(s.orbit, axe);
        }
        }
        const double norme = vec_norme(d);
        if (!(norme > 0) || !std::isfinite(norme)) continue;
        const bool axe = f.montree == &affichage3d::axes;
        const double longueur = std::max(axe ? longueur_axe : longueur_direction, 3 * tete);
        d = vec_echelle(1 / norme, d);
        const vec3 bout = vec_somme(position, vec_echelle(longueur, d));
        const vec3 base = vec_somme(position, vec_echelle(longueur - tete, d));
        couleur_gl(f.couleur());
        glLineWidth(2.0f * trait_);
        glBegin(GL_LINES);
        sommet(position);
        sommet(base);
        glEnd();
        pointe(base, bout, 0.35 * tete);
        glLineWidth(1.5f * trait_);
        ecrit_lettre(f.lettre, vec_somme(bout, vec_echelle(0.9 * lettre, d)), droite, haut, lettre);
    }
    glLineWidth(trait_);
}
