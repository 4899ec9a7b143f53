/// The OpenGL drawing of Earth, Sun and satellite (fixed functions and GLU). Lengths in Earth radii, in the
/// inertial frame of 1950 with its pole upwards. Every call needs the context of `gl_initialize` current.
#pragma once

#include <array>
#include <vector>

#include "power/power.h"
#include "power/windows/faces3d.h"
#include "shell/periode.h"

/// Where the view is taken from. The projection is orthographic: -4 to 4 across the smaller side at zoom 1.
struct camera3d {
    double angle_1 = -0.35; ///< [rad] tilt, in [-pi/2, pi/2]; negative looks from the side of the third axis
    double angle_2 = 0.6;   ///< [rad] turn about the third axis
    double zoom = 1.0;
    vec3 centre{}; ///< [Earth radii] what stands in the middle, inertial frame
    /// The axes that the angles count from, inertial frame: the third one points upwards in the picture.
    std::array<vec3, 3> axes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
};

/// Unit vector to the eye, and the upward side of the picture, in the inertial frame.
struct regard3d {
    vec3 oeil, haut;
};
regard3d regard_de(const camera3d& c);

/// True when the satellite stands behind the Earth's disc.
bool cache_par_la_terre(const camera3d& c, const vec3& satellite);

/// What is drawn beside the bodies.
struct affichage3d {
    bool axes = true; ///< body axes
    bool soleil = false, nadir = false, vitesse = false, champ = false;
    couleur_faces faces = couleur_faces::images;
    bool operator==(const affichage3d&) const = default;
};

/// What a frame shows.
struct sujet3d {
    const orbit_state& orbit;
    const power_record& power;
    double date; ///< [days]
};

class scene3d {
public:
    /// Prepares the context and uploads the textures, once.
    void gl_initialize();
    /// Gives the textures back.
    void libere();
    /// Draws a frame in the current viewport of `largeur` x `hauteur` pixels.
    void trace(const sujet3d& s, const camera3d& c, const affichage3d& a, int largeur, int hauteur);
    /// Brings the drawn panels to an angle [rad]; a panel's normal is (-cos, 0, sin) in body axes.
    void update_panels(double pan_angle) { angle_panneaux_ = pan_angle; }

private:
    void place_camera(const camera3d& c, int largeur, int hauteur);
    void eclaire(const vec3& soleil, bool ombre, float ambiante);
    void trace_terre(const camera3d& c, double sideral);
    void trace_limbe(const camera3d& c);
    void trace_orbite(const record_orbite& o, const vec3& soleil);
    void trace_satellite(const sujet3d& s, const affichage3d& a, const vec3& position);
    void trace_caisse(const power_record& p);
    void trace_aile(const power_record& p, double cote_y);
    void trace_prisme(const power_record& p, int cotes, bool lisse);
    void trace_soleil(const vec3& soleil);
    void trace_cache(const camera3d& c, const vec3& satellite);
    void trace_fleches(const sujet3d& s, const affichage3d& a, const camera3d& c, const vec3& position);

    /// Binds the picture of a face, or sets its colour where faces are coloured by a value.
    void habille(int texture, double valeur);

    /// Earth, then the faces +x, -x, +y, -y, +z, -z; the last is the solar cells' pattern.
    std::array<unsigned, 8> textures_{};
    double angle_panneaux_ = 0;
    float trait_ = 1.0f;                    ///< [pixels] line width, in step with the size of the picture
    double pixel_ = 0;                      ///< [Earth radii] a pixel
    bool coloree_ = false;                  ///< faces by a value
    valeurs_faces valeurs_;                 ///< of the frame in hand
    std::array<double, 7> orbite_tracee_{}; ///< elements of the trace below
    std::vector<vec3> points_orbite_;
};
