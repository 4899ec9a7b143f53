#include "physics/rotation.h"

quaternion quaternion_de(const rotation& a) {
    const auto& l = a.l;
    const double t[4] = {l[0][0] + l[1][1] + l[2][2], l[0][0] - l[1][1] - l[2][2],
                         l[1][1] - l[0][0] - l[2][2], l[2][2] - l[0][0] - l[1][1]};
    int k = 0;
    for (int i = 1; i < 4; ++i)
        if (t[i] > t[k]) k = i;
    const double m = std::sqrt(1 + t[k]) / 2, d = 1 / (4 * m);
    quaternion q;
    switch (k) {
    case 0: q = {m, (l[1][2] - l[2][1]) * d, (l[2][0] - l[0][2]) * d, (l[0][1] - l[1][0]) * d}; break;
    case 1: q = {(l[1][2] - l[2][1]) * d, m, (l[0][1] + l[1][0]) * d, (l[0][2] + l[2][0]) * d}; break;
    case 2: q = {(l[2][0] - l[0][2]) * d, (l[0][1] + l[1][0]) * d, m, (l[1][2] + l[2][1]) * d}; break;
    default: q = {(l[0][1] - l[1][0]) * d, (l[0][2] + l[2][0]) * d, (l[1][2] + l[2][1]) * d, m};
    }
    if (q[0] < 0)
        for (double& x : q) x = -x;
    return q;
}

rotation rotation_lacet_tangage_roulis(double psi, double theta, double phi) {
    const auto [sp, cp] = sincos_de(psi);
    const auto [st, ct] = sincos_de(theta);
    const auto [sf, cf] = sincos_de(phi);
    return {{{{ct * cp, ct * sp, -st},
              {sf * st * cp - cf * sp, sf * st * sp + cf * cp, sf * ct},
              {cf * st * cp + sf * sp, cf * st * sp - sf * cp, cf * ct}}}};
}

angles_euler angles_de(const rotation& a) {
    const auto& l = a.l;
    const double c = std::hypot(l[0][0], l[0][1]);
    const double tangage = std::atan2(-l[0][2], c);
    if (c < 1e-12) return {std::atan2(-l[2][1], l[1][1]), tangage, 0};
    return {std::atan2(l[1][2], l[2][2]), tangage, std::atan2(l[0][1], l[0][0])};
}

angles_euler taux_de(const angles_euler& angles, const vec3& w) {
    const auto [sf, cf] = sincos_de(angles.roulis);
    const auto [st, ct] = sincos_de(angles.tangage);
    const double lacet = (sf * w[1] + cf * w[2]) / ct;
    return {w[0] + st * lacet, cf * w[1] - sf * w[2], lacet};
}
