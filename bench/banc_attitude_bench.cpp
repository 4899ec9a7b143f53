/// The run behind the page "Banc d'attitude": a day at 60 s with all its columns, then the sentence's search.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

#include "analysis/banc_attitude.h"
#include "project/etude_fichier.h"

namespace {

etude un_jour(const char* nom) {
    etude e;
    std::string raison;
    if (!charge_etude(std::string(DOSSIER_DATA "/exemples/") + nom, e, raison)) {
        std::fprintf(stderr, "%s\n", raison.c_str());
        std::exit(1);
    }
    e.periode.j_fin = e.periode.j_debut + 1;
    e.periode.pas_sim = 60;
    return e;
}

void jour(benchmark::State& etat, const char* nom) {
    const etude e = un_jour(nom);
    for (auto _ : etat) {
        suivi_courbes suivi;
        const resultat_courbes r = calcule_banc(e, DOSSIER_DATA, suivi);
        if (r.partiel || r.pas != 1441) etat.SkipWithError(r.raison.c_str());
        benchmark::DoNotOptimize(r.courbes.data());
    }
}
BENCHMARK_CAPTURE(jour, libration, "mat.kestrel")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(jour, culbute, "culbute.kestrel")->Unit(benchmark::kMillisecond);

void seuil(benchmark::State& etat) {
    suivi_courbes suivi;
    const resultat_courbes r = calcule_banc(un_jour("mat.kestrel"), DOSSIER_DATA, suivi);
    for (auto _ : etat) benchmark::DoNotOptimize(passe_sous(r, grandeurs_banc()[0], 5));
}
BENCHMARK(seuil)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
