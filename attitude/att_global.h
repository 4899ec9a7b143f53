/// The attitude record: mechanical description, surfaces, actuators and the state of a run.
///
/// Axes x, y, z are 0, 1, 2; faces 0 to 5 are +x, +y, +z, -x, -y, -z. Initial Euler angles come from the
/// pointing of the orbit settings (`pointage_record`).
#pragma once

#include <array>
#include <cstdint>

#include "orbit/math.h"

using faces6 = std::array<double, 6>;

/// Diagonal matrix.
inline mat3 mat_diagonale(double xx, double yy, double zz) { return {{xx, 0, 0, 0, yy, 0, 0, 0, zz}}; }

struct attitude_record {
    // Mechanical description
    double Masse = 50;                                 ///< [kg] central body
    vec3 dim = {.45, .45, .45};                        ///< [m] dimensions of the central body
    vec3 cm{};                                         ///< [m] centre of mass of the central body
    mat3 I_corps = mat_diagonale(2.188, 2.347, 2.541); ///< [kg m2] central body; products positive
    vec3 mext{};                                       ///< [kg] external mass on each axis
    vec3 dext{};                                       ///< [m] its signed distance
    double Mt = 50;                                    ///< [kg] total mass, derived
    mat3 I = mat_diagonale(2.188, 2.347, 2.541);       ///< [kg m2] total inertia, derived
    vec3 cm_total{};                                   ///< [m] copy of cm, derived

    // Surfaces, by face
    faces6 sn = {.9, .9, .9, .81, .81, .81};   ///< normal aerodynamic coefficient
    faces6 st = {.85, .3, .85, .77, .27, .77}; ///< tangential aerodynamic coefficient
    faces6 cr = {.9, .5, .9, .81, .45, .81};   ///< light reflection
    faces6 cd = {.05, .2, .05, .04, .18, .04}; ///< light diffusion
    std::array<vec3, 6> face_c{};              ///< [m] face centres relative to the centre of mass, derived

    // Actuators
    vec3 dip_res = {1.7320508075688772, 1.7320508075688772, 1.7320508075688772}; ///< [A m2] residual dipole
    vec3 dip_act{};                                                              ///< [A m2] actuator dipole
    std::array<int16_t, 3> dip_cmd{}; ///< command of each actuator dipole; 0 in every run
    vec3 dip_tot = {1.7320508075688772, 1.7320508075688772, 1.7320508075688772}; ///< [A m2] dipole in force
    vec3 jets{};                      ///< [N m] constant jet torque
    std::array<int16_t, 3> jet_cmd{}; ///< stored and reset, read by nothing
    vec3 JR{};                        ///< [kg m2] wheel inertia
    vec3 OM{};                        ///< [rad/s] wheel speed in a run
    vec3 OM_init{};                   ///< [rad/s] wheel speed set by the user
    vec3 md{};                        ///< [kg] damper mass
    vec3 ld{};                        ///< [m] damper lever
    vec3 c{};                         ///< [N s/m] damper viscosity
    vec3 k{};                         ///< [N/m] damper stiffness

    // State of a run
    int16_t etat = 0;                   ///< set to 3 at the start of a run, read by nothing
    std::array<double, 6> omega{};      ///< 0-2 [rad/s] body rate, 3-5 its derivative
    std::array<double, 6> omega_init{}; ///< initial value: psi, theta, phi rates in 0-2
    std::array<double, 6> yi{};         ///< 0-2 [rad] inertial Euler angles, 3-5 their rates
    std::array<double, 6> yd{};         ///< 0 roll, 1 yaw, 2 pitch [rad]; 3-5 rates of roll, pitch, yaw
    vec3 om{}, omd{};                   ///< [rad/s], [rad/s2] relative wheel speed and its derivative
    vec3 z{}, zd{}, zdd{};              ///< [m], [m/s], [m/s2] damper displacement
    std::array<double, 4> quat{};       ///< quaternion; written, read by nothing

    // Torques in body axes [N m]
    vec3 c_gradient{}, c_aero{}, c_solaire{}, c_magnetique{};
    vec3 ctot{};
};

/// Totals of mass and inertia, then the face table. Each external mass counts once in the mass and twice in
/// the inertia, each damper mass twice in the mass: that is meant.
void bilan_masses(attitude_record& a);

/// Face centres from the dimensions and the centre of mass.
void faces_recalcul(attitude_record& a);
