/// Attitude as a quaternion and as a matrix.
///
/// A quaternion (scalar first) and its matrix turn inertial components into body components:
/// v_body = A v_inertial; q' = q (0, w) / 2 for the body rate w in body axes (J. R. Wertz, Spacecraft
/// Attitude Determination and Control, 1978, 12.1 and 16.1).
#pragma once

#include <cmath>

#include "orbit/math.h"

using quaternion = std::array<double, 4>;

struct rotation {
    std::array<vec3, 3> l = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}; ///< rows

    vec3 vers_corps(const vec3& v) const {
        return {vec_scalaire(l[0], v), vec_scalaire(l[1], v), vec_scalaire(l[2], v)};
    }
    vec3 depuis_corps(const vec3& v) const {
        return {l[0][0] * v[0] + l[1][0] * v[1] + l[2][0] * v[2],
                l[0][1] * v[0] + l[1][1] * v[1] + l[2][1] * v[2],
                l[0][2] * v[0] + l[1][2] * v[1] + l[2][2] * v[2]};
    }
};

/// a after b: v -> a (b v).
inline rotation compose(const rotation& a, const rotation& b) {
    rotation r;
    for (int i = 0; i < 3; ++i) r.l[i] = b.depuis_corps(a.l[i]);
    return r;
}
inline rotation inverse(const rotation& a) {
    return {{{{a.l[0][0], a.l[1][0], a.l[2][0]},
              {a.l[0][1], a.l[1][1], a.l[2][1]},
              {a.l[0][2], a.l[1][2], a.l[2][2]}}}};
}

/// The turn of a quaternion of any length but 0.
inline rotation rotation_de(const quaternion& q) {
    const auto [s, x, y, z] = q;
    const double d = 2 / (s * s + x * x + y * y + z * z);
    const double xx = d * x * x, yy = d * y * y, zz = d * z * z;
    const double xy = d * x * y, xz = d * x * z, yz = d * y * z, sx = d * s * x, sy = d * s * y,
                 sz = d * s * z;
    return {{{{1 - yy - zz, xy + sz, xz - sy},
              {xy - sz, 1 - xx - zz, yz + sx},
              {xz + sy, yz - sx, 1 - xx - yy}}}};
}

/// The unit quaternion of a turn, scalar not negative (S. W. Shepperd, 1978: the largest element first).
quaternion quaternion_de(const rotation& a);

/// Yaw psi about z, pitch theta about the new y, roll phi about the new x [rad].
rotation rotation_lacet_tangage_roulis(double psi, double theta, double phi);

struct angles_euler {
    double roulis, tangage, lacet; ///< [rad] in [-pi, pi], [-pi/2, pi/2], [-pi, pi]
};
/// Read back; at a pitch of 90 degrees, where roll and yaw are one, the yaw is 0.
angles_euler angles_de(const rotation& a);
/// Rates of the three angles [rad/s] for the rate w of the body relative to the frame the angles start from;
/// infinite at a pitch of 90 degrees.
angles_euler taux_de(const angles_euler& angles, const vec3& w);
