// One frame of the three-dimensional view at 400 x 400, its picture read back. To be run with a display. The
// time of the process counts the software renderer's threads too.
#include <benchmark/benchmark.h>

#include <QApplication>

#include "orbit/orb_trajecto.h"
#include "power/windows/vue3d.h"
#include "widgets/style.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    style::applique(app);
    session s;
    session_init(s);
    vue3d v(s);
    v.resize(400, 400);
    v.show();
    app.processEvents();
    double j = s.periode.j_debut;
    auto mesure = [&](benchmark::State& etat, bool satellite) {
        satellite ? v.centre_satellite() : v.centre_terre();
        for (auto _ : etat) {
            s.periode.j_courant = j += 10.0 / 86400.0;
            orb_position(j, s.orbit);
            s.power.pan_angle += 0.01;
            benchmark::DoNotOptimize(v.image());
        }
    };
    const auto tout = [&](benchmark::State& etat) {
        affichage3d a;
        a.soleil = a.nadir = a.vitesse = a.champ = true;
        a.faces = couleur_faces::flux;
        v.affiche(a);
        mesure(etat, true);
        v.affiche({});
    };
    benchmark::RegisterBenchmark("image/tout", tout)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("image/terre", mesure, false)
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("image/satellite", mesure, true)
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    if (!v.dessine()) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
