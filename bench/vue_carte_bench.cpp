// One picture of the map at 1200 x 600: another date, and another zoom. To be run with a display.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>

#include "analysis/windows/carte_terre.h"
#include "analysis/windows/page_carte.h"
#include "widgets/style.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    style::applique(app);
    session s;
    session_init(s);
    s.dossier_depart = DOSSIER_DATA;
    s.orbit.orbite.orb_inclinaison = 97.8;
    page_carte p(s);
    p.resize(1800, 1000);
    p.show();
    auto* c = p.findChild<carte_terre*>();
    c->setFixedSize(1200, 600);
    app.processEvents();
    QImage image(1200, 600, QImage::Format_RGB32);
    double j = s.periode.j_debut;
    benchmark::RegisterBenchmark("carte/date", [&](benchmark::State& etat) {
        for (auto _ : etat) {
            p.montre_date(j += 60 / 86400.0);
            c->render(&image);
        }
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("carte/zoom", [&](benchmark::State& etat) {
        for (auto _ : etat) {
            c->agrandit(c->zoom() > 20 ? 0.02 : 1.01, {500, 300});
            c->render(&image);
        }
    })->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
