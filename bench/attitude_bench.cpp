/// Attitude: one step with every torque and three dampers, and the pieces that it is made of.
#include <benchmark/benchmark.h>

#include "attitude/att_champs.h"
#include "attitude/att_coefficients.h"
#include "attitude/att_couples.h"
#include "attitude/att_defin_attitude.h"
#include "attitude/att_igrf.h"
#include "attitude/att_integrateur.h"
#include "attitude/att_run.h"
#include "bench/banc.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"

namespace {

constexpr double debut = 18707.55001;

struct cas {
    attitude_record a;
    orbit_state o;
    atmosphere air{DOSSIER_DATA};

    cas() {
        a.md = {.5, .4, .3};
        a.ld = {.1, .12, .14};
        a.c = {.02, .03, .04};
        a.k = {.05, .06, .07};
        a.JR = {.001, .002, .003};
        a.OM_init = {10, 20, 30};
        a.cm = {.01, .02, -.01};
        a.omega_init = {.001, .002, -.001};
        bilan_masses(a);
        o.orbite.orb_inclinaison = 51.6;
        o.orbite.orb_excentricite = .001;
        o.orbite.orb_demi = 6778;
        o.pointage.psi = 10;
        attitude_init(a, o.pointage);
        place(debut);
    }
    /// The next date of a year.
    double suivante(double j, double secondes) {
        j += secondes / secondes_par_jour;
        return j > debut + 365 ? debut : j;
    }
    void place(double j) {
        orb_position(j, o);
        sous_point(j, o);
    }
};

void pas_complet(benchmark::State& etat) {
    cas c;
    surveillance veille;
    constexpr double dt = .1;
    double j = debut;
    for (auto _ : etat) {
        attitude_step(c.a, c.o, dt, j, c.air);
        j = dt / 86400 + j;
    }
    exige(!veille.faute(), "faute numérique");
}
BENCHMARK(pas_complet);

void couples(benchmark::State& etat) {
    cas c;
    surveillance veille;
    double j = debut;
    for (auto _ : etat) {
        c.place(j);
        total_torque(c.a, c.o, j, c.air);
        j = c.suivante(j, 60);
        benchmark::DoNotOptimize(c.a.ctot);
    }
    exige(!veille.faute(), "faute numérique");
}
BENCHMARK(couples);

void orbite_et_point_au_sol(benchmark::State& etat) {
    cas c;
    double j = debut;
    for (auto _ : etat) {
        c.place(j);
        j = c.suivante(j, 60);
        benchmark::DoNotOptimize(c.o);
    }
}
BENCHMARK(orbite_et_point_au_sol);

void coefficients(benchmark::State& etat) {
    cas c;
    c.a.z = {.01, .02, .03};
    for (auto _ : etat) {
        systeme_attitude s;
        coefficients_attitude(c.a, s);
        benchmark::DoNotOptimize(s);
    }
}
BENCHMARK(coefficients);

void champ_coefficients(benchmark::State& etat) {
    double j = debut;
    for (auto _ : etat) {
        champ_igrf champ(j);
        benchmark::DoNotOptimize(champ);
        j += 1e-6;
    }
}
BENCHMARK(champ_coefficients);

void champ_synthese(benchmark::State& etat) {
    const champ_igrf champ(debut);
    const sinus_cosinus colatitude = sincos_de(1.1), longitude = sincos_de(.4);
    double r = 6800;
    for (auto _ : etat) {
        benchmark::DoNotOptimize(champ.synthese(r, colatitude, longitude));
        r += 1e-6;
    }
}
BENCHMARK(champ_synthese);

void temperature(benchmark::State& etat) {
    cas c;
    double j = debut;
    for (auto _ : etat) {
        benchmark::DoNotOptimize(c.air.temperature_exo(j, c.o.sat_lon, c.o.sat_lat, 400, c.o.soleil_pos));
        j += 1e-6;
    }
}
BENCHMARK(temperature);

void densite(benchmark::State& etat) {
    cas c;
    double alt = 300;
    for (auto _ : etat) {
        benchmark::DoNotOptimize(c.air.densite(900, alt));
        alt = alt > 700 ? 300 : alt + .01;
    }
}
BENCHMARK(densite);

/// An hour of one-second steps through the run loop, every 1000th kept; each hour follows the one before.
void heure(benchmark::State& etat) {
    cas c;
    simulation_period p{debut, debut + 1 / 24., debut, 1};
    for (auto _ : etat) {
        const att_run_bilan b = att_run(c.a, c.o, p, 1000, c.air, {});
        exige(b.fin == att_run_fin::terminee && b.pas >= 3600, "calcul interrompu");
        etat.SetItemsProcessed(etat.items_processed() + b.pas);
        p.j_debut = c.suivante(p.j_debut, 3600);
        p.j_fin = p.j_debut + 1 / 24.;
    }
}
BENCHMARK(heure)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
