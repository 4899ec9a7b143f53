/// Cost of the power models and of the orbit under them: one thermal pass, whole steps of each configuration.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "analysis/calcul.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "power/power_bat.h"
#include "power/power_step.h"
#include "power/power_thermique.h"
#include "power/power_thermique_noyau.h"

namespace {

/// A run in progress on an inclined orbit and off the nominal attitude, with a battery that cycles; its dates
/// go on as long as the benchmark asks for steps.
struct essai {
    power_record p;
    orbit_state o;
    simulation_period periode;
    attitude_record a;
    calcul c{{periode, o, p, a}, {}, {.besoins = besoin::energie, .fin = regle_fin::sans}};

    explicit essai(int32_t pas, drapeau externes = vrai, int16_t opt_faces = 0) {
        o.orbite.orb_inclinaison = 51.6;
        o.orbite.orb_excentricite = 0.01;
        p.opt_panel_ext = externes;
        p.opt_faces = opt_faces;
        recalcule_faces(p);
        p.bat_c = 40;
        p.gst_charge_init = 80;
        p.cel_ns = 20;
        p.cel_np = 6;
        periode = periode_par_defaut(o.orbite);
        periode.pas_sim = pas;
        orb_position(periode.j_debut, o);
        pointage_orbital(o, 3.1, -2.2, 7);
        p.p_demand = {60, 60};
        if (!c.demarre()) std::abort();
    }
    void pas() {
        if (!c.pas()) std::abort(); // nothing to measure in a run that has ended
        c.avance();
    }
};

void orbite(benchmark::State& etat) {
    essai e(120);
    double j = e.periode.j_debut;
    for (auto _ : etat) {
        orb_position(j, e.o);
        sous_point(j, e.o);
        benchmark::DoNotOptimize(e.o.sat_alt);
        j += 60 / 86400.0;
    }
}
BENCHMARK(orbite);

void pas_panneaux_externes(benchmark::State& etat) {
    essai e(static_cast<int32_t>(etat.range(0)));
    for (auto _ : etat) e.pas();
    benchmark::DoNotOptimize(e.p.bat_soc);
}
BENCHMARK(pas_panneaux_externes)->Arg(1)->Arg(60)->Arg(120)->Arg(3600);

/// A thermal step alone; items are passes, so the inverse of the rate is the cost of one nine-node pass with
/// its share of the step.
void thermique_externe(benchmark::State& etat) {
    essai e(120);
    e.pas();
    const double date = e.periode.j_courant;
    for (auto _ : etat) thermal_ext_panels(e.p, e.o, date, static_cast<int32_t>(etat.range(0)));
    etat.SetItemsProcessed(etat.iterations() * etat.range(0));
}
BENCHMARK(thermique_externe)->Arg(60)->Arg(120)->Arg(3600);

void noyau_surfaces(benchmark::State& etat) {
    modele_surfaces m;
    for (int i = 0; i < 7; ++i) {
        m.T[i] = 300 + i;
        m.Q[i] = 400;
        m.E[i] = 0.7 * 5.67e-08;
        m.C[i] = 0.01;
        m.R[i] = 0.005 * 5.67e-08;
        m.W[i] = i > 0;
        m.inv[i] = 1 / 8000.0;
    }
    m.T_int = 298;
    m.chaleur = 12;
    m.inv_int = 1 / 32000.0;
    constexpr int passes = 1000;
    for (auto _ : etat) integre_surfaces(m, passes);
    etat.SetItemsProcessed(etat.iterations() * passes);
}
BENCHMARK(noyau_surfaces);

void pas_faces(benchmark::State& etat) {
    essai e(static_cast<int32_t>(etat.range(0)), faux, 1);
    for (auto _ : etat) e.pas();
}
BENCHMARK(pas_faces)->Arg(60)->Arg(120);

void pas_cylindre(benchmark::State& etat) {
    essai e(static_cast<int32_t>(etat.range(0)), faux, 2);
    for (auto _ : etat) e.pas();
}
BENCHMARK(pas_cylindre)->Arg(60)->Arg(120)->Arg(600);

void environnement(benchmark::State& etat) {
    essai e(120);
    for (auto _ : etat) {
        environment_update(e.periode.j_courant, e.p, e.o, e.periode);
        e.periode.j_courant += 60 / 86400.0;
    }
}
BENCHMARK(environnement);

void charge_par_puissance(benchmark::State& etat) {
    power_record p;
    double soc = 0.3;
    for (auto _ : etat) {
        benchmark::DoNotOptimize(bat_i_from_p_charge(p, soc, 0.3, 0.19, 22));
        soc = soc < 0.9 ? soc + 1e-4 : 0.3;
    }
}
BENCHMARK(charge_par_puissance);

} // namespace

BENCHMARK_MAIN();
