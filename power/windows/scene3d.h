/// The OpenGL drawing of Earth, Sun and satellite (fixed functions and GLU). Lengths in Earth radii, in the
/// inertial frame of 1950 with its pole upwards. Every call needs the context of `gl_initialize` current.
#pragma once

#include <array>
#include <vector>

#include "shell/session.h"

/// Where the view is taken from. The projection is orthographic: -4 to 4 across the smaller side at zoom 1.
struct camera3d {
    double angle_1 = -0.35; ///< [rad] tilt, in [-pi/2, pi/2]; negative looks from the north
    double angle_2 = 0.6;   ///< [rad] turn about the polar axis
    double zoom = 1.0;
    vec3 centre{}; ///< [Earth radii] what stands in the middle, inertial frame
};

/// True when the satellite stands behind the Earth's disc.
bool cache_par_la_terre(const camera3d& c, const vec3& satellite);

class scene3d {
public:
    /// Prepares the context and uploads the textures, once.
    void gl_initialize();
    /// Gives the textures back.
    void libere();
    /// Draws a frame in the current viewport of `largeur` x `hauteur` pixels.
    void trace(const session& s, const camera3d& c, int largeur, int hauteur);
    /// Brings the drawn panels to an angle [rad]; a panel's normal is (-cos, 0, sin) in body axes.
    void update_panels(double pan_angle) { angle_panneaux_ = pan_angle; }

private:
    void place_camera(const camera3d& c, int largeur, int hauteur);
    void eclaire(const vec3& soleil, bool ombre, float ambiante);
    void trace_terre(double sideral);
    void trace_orbite(const record_orbite& o);
    void trace_satellite(const session& s, const vec3& position);
    void trace_caisse(const power_record& p);
    void trace_prisme(const power_record& p, int cotes, bool lisse);
    void trace_soleil(const vec3& soleil);

    /// Earth, then the faces +x, -x, +y, -y, +z, -z; the last is the solar cells' pattern.
    std::array<unsigned, 8> textures_{};
    double angle_panneaux_ = 0;
    float trait_ = 1.0f;                    ///< [pixels] line width, in step with the size of the picture
    std::array<double, 7> orbite_tracee_{}; ///< elements of the trace below
    std::vector<vec3> points_orbite_;
};
