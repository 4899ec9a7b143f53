/// Physical model: one Runge-Kutta step of the attitude with everything in it, its parts, and a day of it.
#include <benchmark/benchmark.h>

#include "analysis/calcul.h"
#include "physics/attitude_physique.h"
#include "physics/energie_physique.h"
#include "power/power_gestion.h"
#include "power/power_step.h"
#include "shell/utilitaires.h"

namespace {

constexpr double debut = 18707.55001;

/// Every torque, three wheels, three dampers; a low orbit with some eccentricity.
struct cas {
    attitude_record a;
    orbit_state o;
    options_modele options;
    atmosphere air{DOSSIER_DATA};
    champ_geomagnetique champ{DOSSIER_DATA};

    cas() {
        a.md = {.5, .4, .3};
        a.ld = {.1, .12, .14};
        a.c = {.002, .003, .004};
        a.k = {.0002, .00025, .0002};
        a.JR = {.0001, .0002, .0003};
        a.OM_init = {1, 2, 3};
        a.cm = {.01, .02, -.01};
        a.dip_res = {.1, .1, .1};
        a.omega_init = {.001, .0015, -.001};
        bilan_masses(a);
        o.orbite.orb_inclinaison = 51.6;
        o.orbite.orb_excentricite = .001;
        o.orbite.orb_demi = 6778;
        o.pointage.lacet = 10;
    }
    attitude_physique run() { return {a, o, options, debut, air, champ}; }
};

/// A Runge-Kutta step a call (`inner` counts them): of 4 s, every surroundings (field, air, orbit, shadow)
/// computed anew in it; of 1 s, where four steps share them.
void pas_rk4_complet(benchmark::State& etat) {
    cas c;
    std::optional<attitude_physique> run;
    double j = 0;
    long n = 0, internes = 0;
    for (auto _ : etat) {
        if (n++ % 1000 == 0) { // before the torques have made it turn too fast for one step
            if (run) internes += run->pas_internes();
            run.emplace(c.run());
            j = debut;
        }
        j += static_cast<double>(etat.range(0)) / secondes_par_jour;
        run->avance(j);
        benchmark::DoNotOptimize(*run);
    }
    internes += run->pas_internes();
    etat.counters["inner"] = static_cast<double>(internes) / static_cast<double>(etat.iterations());
}
BENCHMARK(pas_rk4_complet)->ArgName("s")->Arg(4)->Arg(1);

void mecanique_seule(benchmark::State& etat) {
    cas c;
    const corps_mobile corps(c.a, c.options);
    etat_mouvement e;
    for (int i = 0; i < 3; ++i) e.hw[i] = c.a.JR[i] * c.a.OM_init[i];
    lance_mouvement(corps, e, {.001, .002, -.001});
    for (auto _ : etat) {
        pas_rk4(corps, e, .1,
                [](int, const rotation&, const vitesses_corps&, const etat_mouvement&) { return actions{}; });
        benchmark::DoNotOptimize(e);
    }
}
BENCHMARK(mecanique_seule);

void quatre_couples(benchmark::State& etat) {
    cas c;
    const environnement_physique env(c.o.orbite, false, &c.air, &c.champ);
    milieu m;
    env.place(debut, {true, true}, m);
    const rotation A = attitude_nominale(m, c.o.pointage, debut);
    const mat3 J = tenseur_inertie(c.a);
    for (auto _ : etat) benchmark::DoNotOptimize(couples_physiques(c.a, J, c.options, m, A));
}
BENCHMARK(quatre_couples);

void milieu_complet(benchmark::State& etat) {
    cas c;
    const environnement_physique env(c.o.orbite, false, &c.air, &c.champ);
    milieu m;
    double j = debut;
    for (auto _ : etat) {
        env.place(j += 1e-6, {true, true}, m);
        benchmark::DoNotOptimize(m);
    }
}
BENCHMARK(milieu_complet);

void champ_degre_13(benchmark::State& etat) {
    cas c;
    vec3 r = {4000, 3000, 4800};
    for (auto _ : etat) {
        r[0] += 1e-3;
        benchmark::DoNotOptimize(c.champ.terrestre(debut, r));
    }
}
BENCHMARK(champ_degre_13);

void orbite(benchmark::State& etat) {
    cas c;
    const orbite_seculaire o(c.o.orbite, false);
    double j = debut;
    for (auto _ : etat) benchmark::DoNotOptimize(o.a_la_date(j += 1e-6));
}
BENCHMARK(orbite);

/// A day at 60 s with a row each: the attitude on the motion's own inner steps, then with the power model.
void jour_a_60s(benchmark::State& etat) {
    cas c;
    power_record p;
    simulation_period periode{debut, debut + 1, debut, 60};
    reglages_calcul r;
    r.besoins = besoin::physique;
    r.dossier_donnees = DOSSIER_DATA;
    r.modele.physique = true;
    r.couple = etat.range(0) != 0;
    if (r.couple) r.besoins |= besoin::energie;
    for (auto _ : etat) {
        calcul run({periode, c.o, p, c.a}, {}, r);
        double somme = 0;
        while (run.suivant()) somme += run.etat().physique->energie + p.bat_soc;
        benchmark::DoNotOptimize(somme);
    }
}
BENCHMARK(jour_a_60s)->ArgName("couple")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// The same with inner steps of 1 s: 86,400 of them.
void jour_couple_par_1s(benchmark::State& etat) {
    cas c;
    power_record p;
    simulation_period periode{debut, debut + 1, debut, 60};
    const environnement_physique env(c.o.orbite, false, nullptr, nullptr);
    milieu m;
    for (auto _ : etat) {
        attitude_physique run = c.run();
        power_state_init(p);
        double j = debut;
        for (int k = 0; k < 86400; ++k) {
            if (k % 60 == 0) {
                env.place(j, {}, m);
                environnement_energie(m, run.attitude(), p);
                c.o.sat_pos = m.r;
                periode.j_courant = j;
                power_step_suite(p, c.o, periode, demande_reference(p));
            }
            j = debut + (k + 1) / secondes_par_jour;
            run.avance(j);
        }
        etat.counters["inner"] = static_cast<double>(run.pas_internes());
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(jour_couple_par_1s)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
