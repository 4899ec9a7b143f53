/// The power budget of a satellite that lives: sixteen turns at 60 s, a year of 24 dates.
#include <benchmark/benchmark.h>

#include "analysis/bilan.h"
#include "bench/banc.h"
#include "project/etude_fichier.h"

namespace {

etude exemple() {
    etude e;
    std::string raison;
    exige(charge_etude(DOSSIER_DATA "/exemples/microsatellite.kestrel", e, raison), raison.c_str());
    e.periode.pas_sim = 60;
    return e;
}

void seize_tours(benchmark::State& etat) {
    const etude e = exemple();
    for (auto _ : etat) {
        const bilan b = calcule_bilan(e, {.orbites = 16, .dossier_donnees = DOSSIER_DATA});
        exige(b.tours.size() == 16 && b.tient, "bilan de seize tours");
    }
}
BENCHMARK(seize_tours)->Unit(benchmark::kMillisecond);

void annee_de_24_dates(benchmark::State& etat) {
    const etude e = exemple();
    for (auto _ : etat)
        exige(calcule_annee(e, 24, {.dossier_donnees = DOSSIER_DATA}).size() == 24, "année de 24 dates");
}
BENCHMARK(annee_de_24_dates)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
