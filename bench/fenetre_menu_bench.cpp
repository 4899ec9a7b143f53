/// The main window: one refresh of the summary, which follows every edit.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QStandardPaths>

#include "shell/windows/menu.h"
#include "widgets/style.h"

namespace {

void modification(benchmark::State& etat) {
    session s;
    s.dossier_depart = DOSSIER_DATA;
    menu m(s);
    m.show();
    auto* pas = m.findChild<QComboBox*>("cmb_pas");
    for (auto _ : etat) pas->setCurrentIndex(1 - pas->currentIndex() % 2);
}

} // namespace

BENCHMARK(modification)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    style::applique(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
