/// A satellite far from everything: no torque acts on it but what a test sets.
#pragma once

#include "attitude/att_defin_attitude.h"
#include "attitude/att_integrateur.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"

struct corps_libre {
    attitude_record a;
    orbit_state o;
    atmosphere air{DOSSIER_DATA};
    double j = 18800;

    explicit corps_libre(const mat3& I = mat_diagonale(2, 3, 4), const vec3& taux = {}) {
        a.I = I;
        a.dim = {};
        a.dip_res = {};
        faces_recalcul(a);
        a.omega_init = {taux[0], taux[1], taux[2], 0, 0, 0};
        o.orbite.orb_demi = 1e8; // km
    }
    void prepare() {
        attitude_init(a, o.pointage);
        orb_position(j, o);
        sous_point(j, o);
    }
    bool pas(double dt) {
        const bool avance = attitude_step(a, o, dt, j, air);
        if (avance) j = dt / 86400 + j;
        return avance;
    }
    void avance(double dt, double duree) {
        const long n = std::lround(duree / dt);
        for (long i = 0; i < n; ++i) pas(dt);
    }

    vec3 taux() const { return {a.omega[0], a.omega[1], a.omega[2]}; }
    /// Angular momentum of the rigid body in body axes; the products of inertia are stored positive.
    vec3 moment() const {
        const auto [x, y, z] = taux();
        const mat3& I = a.I;
        return {I(0, 0) * x - I(0, 1) * y - I(0, 2) * z, -I(0, 1) * x + I(1, 1) * y - I(1, 2) * z,
                -I(0, 2) * x - I(1, 2) * y + I(2, 2) * z};
    }
    double energie() const { return vec_scalaire(taux(), moment()) / 2; }
    /// The momentum in inertial axes, through the integrated Euler angles (roll, pitch, yaw from the body).
    vec3 moment_inertiel() const {
        const auto [sr, cr] = sincos_de(a.yi[0]);
        const auto [sp, cp] = sincos_de(a.yi[1]);
        const auto [sy, cy] = sincos_de(a.yi[2]);
        vec3 h = moment();
        h = {h[0], cr * h[1] - sr * h[2], sr * h[1] + cr * h[2]};
        h = {cp * h[0] + sp * h[2], h[1], -sp * h[0] + cp * h[2]};
        return {cy * h[0] - sy * h[1], sy * h[0] + cy * h[1], h[2]};
    }
};
