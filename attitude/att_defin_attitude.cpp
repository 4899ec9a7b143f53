#include "attitude/att_defin_attitude.h"

#include "orbit/matrices.h"
#include "orbit/soleil.h"
#include "shell/surveillance.h"

void attitude_init(attitude_record& a, const pointage_record& p) {
    a.etat = 3;
    a.omega = a.omega_init;
    a.yi = p.yi_init;
    euler_taux(a.omega, a.yi);

    // The Euler routines take roll, pitch, yaw; yd keeps roll, yaw, pitch, but its rates in their order.
    std::array<double, 6> L = {p.yd_init[0], p.yd_init[2], p.yd_init[1], 0, 0, 0};
    euler_taux(a.omega, L);
    a.yd = {L[0], L[2], L[1], L[3], L[4], L[5]};
    quat_refresh(a);

    a.OM = a.OM_init;
    suit_roues(a);
    a.z = a.zd = a.zdd = {};
    a.dip_cmd = a.jet_cmd = {};
    a.dip_tot = a.dip_res;
}

void suit_roues(attitude_record& a) {
    for (int i = 0; i < 3; ++i) a.om[i] = a.OM[i] - a.omega[i];
    a.omd[0] = -a.omega[3];
    a.omd[1] = -a.omega[5]; // the derivative of z overwrites that of y, omd(2) is not written: meant
}

void quat_refresh(attitude_record& a) {
    const auto [s1, c1] = sincos_de(a.yd[1] * rad_par_degre / 2);
    const auto [s2, c2] = sincos_de(a.yd[0] * rad_par_degre / 2);
    const auto [s3, c3] = sincos_de(a.yd[2] * rad_par_degre / 2);
    // Yaw, then pitch, then roll.
    a.quat = {c2 * c3 * c1 + s2 * s3 * s1, s2 * c3 * c1 - c2 * s3 * s1, c2 * s3 * c1 + s2 * c3 * s1,
              c2 * c3 * s1 - s2 * s3 * c1};
}

void pointage_soleil(double date, attitude_record& a, orbit_state& o) {
    a.yd = {};
    quat_refresh(a);
    o.soleil_pos = soleil_position(date);
    // The Sun's direction would follow here; the angles are formed on a null vector u instead, whose cross
    // product with the x axis cannot be normalised.
    const vec3 u{};
    const vec3 c = vec_vectoriel(u, {1, 0, 0});
    if (vec_norme(c) == 0) leve_faute();
}
