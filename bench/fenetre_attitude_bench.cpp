/// The attitude simulation over 100,000 steps with three dampers: the model steps alone, and the window,
/// which keeps each of them in the results file and draws the first page.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "attitude/windows/att_sim.h"
#include "bench/banc.h"
#include "project/att_fichier.h"
#include "widgets/style.h"

namespace {

constexpr int pas = 100'000;

void prepare(session& s, const QTemporaryDir& dossier) {
    const std::string cas = DONNEES_TEST "/cas/att_08_amort_012";
    std::string raison;
    exige(charge_orbite(cas + ".orb", s.orbit.orbite, raison) &&
              charge_attitude(cas + ".att", s.attitude, raison),
          "cas illisible");
    for (const char* nom : {"flux_solaire.txt", "densite.txt"})
        QFile::copy(QString(DOSSIER_DATA) + "/" + nom, dossier.filePath(nom));
    s.dossier_depart = dossier.path().toStdString();
    s.periode = periode_par_defaut(s.orbit.orbite);
    s.periode.pas_sim = 1;
    s.periode.j_fin = s.periode.j_debut + (pas - 1) / secondes_par_jour;
}

void pas_seuls(benchmark::State& etat) {
    const QTemporaryDir dossier;
    session s;
    prepare(s, dossier);
    for (auto _ : etat) {
        atmosphere air(s.dossier_depart);
        const att_run_bilan b = att_run(s.attitude, s.orbit, s.periode, 1, air, {});
        exige(b.fin == att_run_fin::terminee && b.pas == pas, "calcul interrompu");
    }
}

void calcul_fenetre(benchmark::State& etat) {
    const QTemporaryDir dossier;
    session s;
    prepare(s, dossier);
    att_sim f(s);
    f.show();
    const auto attend = [&s] {
        do QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        while (s.calcul_en_cours);
    };
    attend(); // the run that the window begins with
    for (auto _ : etat) {
        f.att_run();
        attend();
    }
    exige(f.findChild<QSpinBox*>("txt_page")->maximum() == pas / lignes_par_page + 1, "calcul interrompu");
}

} // namespace

BENCHMARK(pas_seuls)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(calcul_fenetre)->Unit(benchmark::kMillisecond)->MinTime(0.5)->MeasureProcessCPUTime();

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    style::applique(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
