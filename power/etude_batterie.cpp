#include "power/etude_batterie.h"

#include <cmath>

#include "power/power_bat.h"
#include "shell/surveillance.h"

etude_batterie::etude_batterie(power_record& p, const reglages_batterie& r)
    : p_(p), r_(r), i_(r.puissance_constante ? 0 : r.i_decharge) {
    p_.courbe_charge_incompatible = false;
}

bool etude_batterie::decharge(point_batterie& pt) {
    const double T = r_.temperature;
    if (t_ > r_.duree * 60) return false;
    const double ft = bat_cap_temp(p_, T), fi = bat_cap_current(p_, i_);
    s_ -= ((i_ / ft) / fi) / 3600.0;
    if (r_.puissance_constante) i_ = bat_i_from_p_discharge(p_, s_, r_.p_decharge, i_, T);
    v_ = bat_v_discharge(p_, i_, T, s_);
    if (s_ <= 0) {
        s_ = 0;
        i_ = 0.01;
        v_ = 0;
    }
    pt = {t_++, s_, v_, i_};
    return true;
}

bool etude_batterie::recharge(point_batterie& pt) {
    if (!en_recharge_) {
        en_recharge_ = true;
        i_ = r_.i_charge;
        s0_ = s_;
    }
    if (!(s_ < 1.0)) return false;
    if (++passes_ > passes_max) {
        sans_fin_ = true;
        leve_faute();
        return false;
    }
    const double T = r_.temperature;
    s_ += (i_ / 3600.0) / r_.k;
    v_ = bat_v_charge(p_, i_, T, s_);
    if (static_cast<double>(static_cast<float>(v_)) > r_.v_max) {
        v_ = r_.v_max;
        i_ = bat_i_from_v_charge(p_, s_, v_, i_, T);
    }
    pt = {t_++, s_, v_, i_};
    return true;
}

bool etude_batterie::charge_a_signaler() {
    if (charge_signalee_ || !p_.courbe_charge_incompatible) return false;
    return charge_signalee_ = true;
}

int etude_batterie::profondeur() const { return static_cast<int>(std::floor((1 - s_) * 100)); }

long etude_batterie::temps_recharge() const {
    return std::lrint(static_cast<double>(t_) - 1 - r_.duree * 60);
}

int etude_batterie::avancement() const {
    // Both scales are meant: the bar's range changes with the phase.
    const long t = t_ > 0 ? t_ - 1 : 0;
    return en_recharge_ ? static_cast<int>(std::floor((s_ - s0_) * 100)) + 100
                        : static_cast<int>(std::floor((static_cast<double>(t) / 60.0) * 100));
}
