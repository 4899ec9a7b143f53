/// Study of one accumulator: the discharge of an eclipse, then its recharge, at a fixed temperature and with
/// a step of one second. It works on values of its own; the power record gives the curves only.
#pragma once

#include "power/power.h"

/// What a study takes at most: a discharge of ten days [min], and any of its other numbers but the
/// temperature.
inline constexpr double decharge_max = 14400, reglage_batterie_max = 1000;

struct reglages_batterie {
    double duree = 0;       ///< [min] discharge
    double temperature = 0; ///< [degC]
    double k = 1;           ///< recharge coefficient
    double v_max = 0;       ///< [V] voltage at which the charge current falls
    double i_charge = 0;    ///< [C units]
    bool puissance_constante = true;
    double p_decharge = 0; ///< [V/h] power over the nominal capacity, at constant power
    double i_decharge = 0; ///< [C units] at constant current
};

struct point_batterie {
    long t = 0;   ///< [s] from the start of the discharge
    double s = 1; ///< state of charge, 0..1
    double v = 0; ///< [V]
    double i = 0; ///< [C units]
};

/// First `decharge` until it returns false, then `recharge` until it returns false. The caller brackets the
/// calls with a `surveillance`.
class etude_batterie {
public:
    etude_batterie(power_record& p, const reglages_batterie& r);

    /// One second; false, with `pt` untouched, when the phase is over.
    bool decharge(point_batterie& pt);
    /// The recharge is over when the accumulator is full, or given up after `passes_max` seconds: `sans_fin`
    /// tells which, and the fault of an endless iteration is raised then.
    bool recharge(point_batterie& pt);
    bool sans_fin() const { return sans_fin_; }

    /// True once in a study: the charge curve has failed (`message_charge_incompatible` is to be told).
    bool charge_a_signaler();

    /// [%] depth of discharge so far, whole.
    int profondeur() const;
    /// [s] duration of the recharge, rounded; valid once it is over.
    long temps_recharge() const;
    /// Progress as shown: hundredths of minutes in discharge, 100 to 200 in recharge.
    int avancement() const;

private:
    power_record& p_;
    reglages_batterie r_;
    double i_, s_ = 1, s0_ = 0, v_ = 0;
    long t_ = 0;
    int passes_ = 0;
    bool en_recharge_ = false, sans_fin_ = false, charge_signalee_ = false;
};
