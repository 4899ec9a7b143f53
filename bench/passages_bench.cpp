/// Passes over ten stations for thirty days.
#include <benchmark/benchmark.h>

#include "analysis/passages.h"

namespace {

void dix_stations_trente_jours(benchmark::State& etat) {
    std::vector<station> stations;
    std::string raison;
    if (!charge_stations(DOSSIER_DATA "/stations.txt", stations, raison)) etat.SkipWithError(raison.c_str());
    stations.resize(10);
    record_orbite o;
    o.orb_inclinaison = 97.8;
    o.orb_excentricite = 0.001;
    std::size_t passages = 0;
    for (auto _ : etat)
        passages = cherche_passages(trajectoire_reference(o), stations, 18707.5, 18737.5).passages.size();
    etat.counters["passages"] = static_cast<double>(passages);
}
BENCHMARK(dix_stations_trente_jours)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
