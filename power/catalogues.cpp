#include "power/catalogues.h"

namespace {

struct cellule {
    float isc, imp, voc, vmp, disc, dimp, dvoc, dvmp, surface;
};

constexpr cellule cellules[nb_cellules_catalogue] = {
    {.53f, .5f, 1.0f, .86f, .0003f, .00025f, -.002f, -.002f, 16},
    {1.0f, .95f, .54f, .45f, .0012f, .0009f, -.002f, -.002f, 20},
};

struct batterie {
    courbe_batterie charge, decharge;
    float cmax, c10, tmin, cmin, t999, tau0, tau50, k_recharge, v_max;
};

constexpr batterie nickel = {charge_nickel, decharge_nickel, 1.2f, .6f, -50, 30, 50, 100, 15, 1.05f, 1.55f};

constexpr batterie lithium = {{{{0, 0, 0, 3.3f, 0, 0},
                                {20, 0, -5, 4.15f, -.001f, .4f},
                                {80, 0, -5, 4.15f, -.001f, .15f},
                                {100, 0, -5, 4.15f, -.001f, .15f}}},
                              {{{0, 0, 0, 4.1f, 0, 0},
                                {20, .1f, -5, 3.6f, .002f, -.4f},
                                {80, .1f, -2, 3.4f, .002f, -.4f},
                                {100, 0, 0, 2.8f, 0, 0}}},
                              1.0f,
                              .8f,
                              -50,
                              30,
                              50,
                              500,
                              300,
                              1.0f,
                              4.0f};

} // namespace

void choisit_cellule(power_record& p, int type) {
    if (type < 0 || type >= nb_cellules_catalogue) return;
    const cellule& c = cellules[type];
    p.cel_type = static_cast<int16_t>(type);
    p.cel_isc = c.isc;
    p.cel_imp = c.imp;
    p.cel_voc = c.voc;
    p.cel_vmp = c.vmp;
    p.cel_disc = c.disc;
    p.cel_dimp = c.dimp;
    p.cel_dvoc = c.dvoc;
    p.cel_dvmp = c.dvmp;
    p.cel_surface = c.surface;
}

void choisit_batterie(power_record& p, int type) {
    if (type < 0 || type >= nb_batteries_catalogue) return;
    p.bat_type = static_cast<uint8_t>(type);
    if (type == batterie_generique) return;
    const batterie& b = type == 2 ? lithium : nickel;
    p.ch_pt = b.charge;
    p.de_pt = b.decharge;
    p.bat_cmax = b.cmax;
    p.bat_c10 = b.c10;
    p.bat_tmin = b.tmin;
    p.bat_cmin_pct = b.cmin;
    p.bat_t999 = b.t999;
    p.bat_tau0 = b.tau0;
    p.bat_tau50 = b.tau50;
    p.gst_k_recharge = b.k_recharge;
    p.gst_vch_max = b.v_max;
}
