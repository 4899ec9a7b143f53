#include "power/power_gestion.h"

#include <algorithm>
#include <limits>

#include "power/power_bat.h"

namespace {

/// A duration [s] that goes on for a step, to the end of its type.
int32_t prolonge(int32_t t, int32_t dt) {
    return static_cast<int32_t>(std::min<int64_t>(int64_t{t} + dt, std::numeric_limits<int32_t>::max()));
}

/// Charge with the excess `surplus` [W] of the bus.
void charge(power_record& p, int32_t dt, double surplus) {
    const double c = p.bat_c, k = p.gst_k_recharge;
    const double par_accu = (surplus / p.bat_ns) / p.bat_np;

    double soc = p.bat_soc + dt * p.bat_i / (k * 3600 * c);
    p.t_charge = prolonge(p.t_charge, dt);
    if (soc >= 1) {
        soc = 1;
        p.bat_state_full = faux;
        p.t_charge = 0;
    }
    p.bat_soc = soc;

    p.bat_i = c * bat_i_from_p_charge(p, p.bat_soc, par_accu / c, p.bat_i / c, p.t_bat);
    if (static_cast<float>(p.bat_i) > p.gst_ich_max) p.bat_i = p.gst_ich_max;
    p.bat_v = bat_v_charge(p, p.bat_i / c, p.t_bat, p.bat_soc);
    if (static_cast<float>(p.bat_v) > p.gst_vch_max) {
        p.bat_v = p.gst_vch_max;
        p.bat_i = c * bat_i_from_v_charge(p, p.bat_soc, p.bat_v, p.bat_i / c, p.t_bat);
    }
    p.t_discharge = 0;
    p.bat_p = -(p.bat_ns * p.bat_np) * p.bat_i * p.bat_v;
    p.p_loss_ch = std::fabs((k - 1) * p.bat_p / k);
}

/// Discharge for the shortage `manque` [W] of the bus.
void decharge(power_record& p, int32_t dt, double manque) {
    const double c = p.bat_c, rendement = p.gst_rend_bat;
    const double ft = bat_cap_temp(p, p.t_bat), fi = bat_cap_current(p, p.bat_i / c);
    p.bat_soc -= dt * p.bat_i / (fi * ft * 3600 * c);

    const double par_accu = (manque / p.bat_ns) / (rendement / 100) / p.bat_np;
    p.bat_i = c * bat_i_from_p_discharge(p, p.bat_soc, par_accu / c, p.bat_i / c, p.t_bat);
    p.bat_v = bat_v_discharge(p, p.bat_i / c, p.t_bat, p.bat_soc);
    // The product of the two byte counts wraps at 256 here, unlike in charge: that is meant.
    const auto accus = static_cast<uint8_t>(p.bat_ns * p.bat_np);
    p.bat_p = accus * p.bat_i * p.bat_v;
    p.t_discharge = prolonge(p.t_discharge, dt);
    if (!(p.bat_soc > 0)) p.bat_soc = 0;
    p.p_loss_de = (1 - rendement / 100) * p.bat_p;
}

} // namespace

void power_management(power_record& p, int32_t dt, double demande) {
    const int s = p.eclipse == vrai ? 1 : 0;
    const double rend_gs = p.gst_rend_gs;
    const double pg = rend_gs * p.gen_power / 100; // generator power at the payload

    p.p_demande = demande;
    p.p_loss_ch = 0;
    p.p_loss_de = 0;
    p.bat_state_full = vrai;
    p.p_loss_gs = (1 - rend_gs / 100) * p.gen_power;
    if (!(static_cast<float>(pg) >= demande)) {
        decharge(p, dt, demande - pg);
    } else if (p.bat_soc >= 1) {
        p.bat_p = 0;
        p.bat_i = p.gst_i_maint;
        p.t_charge = 0;
        p.t_discharge = 0;
    } else {
        charge(p, dt, pg - demande);
    }

    // Charge power comes out at its full value, discharge power passes the battery's efficiency.
    if (p.bat_p > 0)
        p.p_excess = p.gst_rend_bat * p.bat_p / 100 + pg - demande;
    else
        p.p_excess = pg + p.bat_p - demande;
    p.p_payload = p.p_excess < 0 ? demande + p.p_excess : demande;
    p.p_loss_pl = p.p_dissip[s] * p.p_payload / 100;
    p.p_heat = p.p_loss_de + p.p_loss_ch + p.p_loss_gs + p.p_loss_pl;
    if (p.p_excess > 0) p.p_heat += p.p_excess;
}
