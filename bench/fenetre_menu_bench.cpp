/// The main window: one refresh of the summary, which follows every edit; the longest wait of the events
/// while a person types in the power settings, the verdict following each entry; the complete simulation from
/// the call to its first picture.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTest>

#include <memory>

#include "bench/banc.h"
#include "shell/windows/fenetres.h"
#include "shell/windows/menu.h"
#include "widgets/fenetre.h"
#include "widgets/style.h"

namespace {

/// The program with its main window, on an example where one is named.
struct programme {
    session s;
    menu m;

    explicit programme(const char* exemple = nullptr) : s(ici()), m(s) {
        m.show();
        if (exemple) m.ouvre(exemple);
    }
    static session ici() {
        session s;
        s.dossier_depart = DOSSIER_DATA;
        return s;
    }
};
constexpr const char* microsatellite = DOSSIER_DATA "/exemples/microsatellite.kestrel";

void modification(benchmark::State& etat) {
    programme p;
    auto* pas = p.m.findChild<QComboBox*>("cmb_pas");
    for (auto _ : etat) pas->setCurrentIndex(1 - pas->currentIndex() % 2);
}

/// The longest time between two turns of the event loop.
void frappe(benchmark::State& etat) {
    programme p(microsatellite);
    fenetre* f = p.m.montre_fenetre("power_conf", 3);
    auto* boite = f->findChild<QLineEdit*>("bat_txt_c");
    auto* verdict = f->findChild<QLabel*>("lab_phrase");
    exige(boite && verdict, "power_conf");
    boite->setFocus();
    QElapsedTimer montre;
    int capacite = 10;
    for (auto _ : etat) {
        const QString avant = verdict->text();
        qint64 pire = 0;
        const auto sert = [&] {
            montre.start();
            QApplication::processEvents();
            pire = std::max(pire, montre.nsecsElapsed());
        };
        boite->selectAll();
        for (const QChar c : QString::number(capacite)) {
            QTest::keyClick(boite, c.toLatin1());
            sert();
        }
        montre.start();
        QTest::keyClick(boite, Qt::Key_Return);
        pire = std::max(pire, montre.nsecsElapsed());
        QElapsedTimer attente;
        attente.start();
        while (verdict->text() == avant && attente.elapsed() < 1000) sert();
        exige(verdict->text() != avant, "le verdict n'a pas suivi");
        capacite = capacite == 10 ? 20 : 10;
        etat.SetIterationTime(static_cast<double>(pire) / 1e9);
    }
}

void simulation_complete(benchmark::State& etat) {
    programme p(microsatellite);
    exige(QTest::qWaitForWindowExposed(&p.m), "la fenêtre principale ne se montre pas");
    for (auto _ : etat) {
        std::unique_ptr<fenetre> f(fabrique("power_sim_all")(p.s));
        f->show();
        exige(QTest::qWaitForWindowExposed(f.get()), "la simulation complète ne se montre pas");
        f->repaint();
        etat.PauseTiming();
        f.reset();
        QApplication::processEvents();
        etat.ResumeTiming();
    }
}

} // namespace

BENCHMARK(frappe)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(20);
BENCHMARK(simulation_complete)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(modification)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    style::applique(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
