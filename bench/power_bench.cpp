/// Cost of the power models and of the orbit under them: one thermal pass, whole steps of each configuration.
#include <benchmark/benchmark.h>

#include "analysis/calcul.h"
#include "bench/banc.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "power/power_bat.h"
#include "power/power_step.h"
#include "power/power_thermique.h"
#include "power/power_thermique_noyau.h"

namespace {

/// A sample's run in progress, over its year again and again.
struct essai : session {
    calcul c{{periode, orbit, power, attitude}, {}, {.besoins = besoin::energie, .fin = regle_fin::sans}};
    temoin vu;

    explicit essai(int32_t pas, const char* nom = "microsatellite") {
        charge_exemple(nom, *this, pas);
        exige(c.demarre(), "faute à l'état initial");
    }
    void pas() {
        exige(c.pas(), "faute numérique");
        vu.voit(*this);
        avance(periode.pas_sim);
    }
    void avance(double secondes) {
        periode.j_courant += secondes / secondes_par_jour;
        if (periode.j_courant > periode.j_fin) periode.j_courant = periode.j_debut;
    }
};

void orbite(benchmark::State& etat) {
    essai e(120);
    for (auto _ : etat) {
        orb_position(e.periode.j_courant, e.orbit);
        sous_point(e.periode.j_courant, e.orbit);
        benchmark::DoNotOptimize(e.orbit.sat_alt);
        e.avance(60);
    }
    e.vu.verifie();
}
BENCHMARK(orbite);

void pas_panneaux_externes(benchmark::State& etat) {
    essai e(static_cast<int32_t>(etat.range(0)));
    for (auto _ : etat) e.pas();
    e.vu.verifie();
}
BENCHMARK(pas_panneaux_externes)->Arg(1)->Arg(60)->Arg(120)->Arg(3600);

/// A thermal step alone; items are passes, so the inverse of the rate is the cost of one nine-node pass with
/// its share of the step.
void thermique_externe(benchmark::State& etat) {
    essai e(120);
    e.pas();
    const double date = e.periode.j_courant;
    for (auto _ : etat) thermal_ext_panels(e.power, e.orbit, date, static_cast<int32_t>(etat.range(0)));
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
    essai e(static_cast<int32_t>(etat.range(0)), "hexagone");
    for (auto _ : etat) e.pas();
    e.vu.verifie();
}
BENCHMARK(pas_faces)->Arg(60)->Arg(120);

void pas_cylindre(benchmark::State& etat) {
    essai e(static_cast<int32_t>(etat.range(0)), "cylindre");
    for (auto _ : etat) e.pas();
    e.vu.verifie();
}
BENCHMARK(pas_cylindre)->Arg(60)->Arg(120)->Arg(600);

void environnement(benchmark::State& etat) {
    essai e(120);
    for (auto _ : etat) {
        environment_update(e.periode.j_courant, e.power, e.orbit, e.periode);
        e.avance(60);
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
