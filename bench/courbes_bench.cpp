/// The page of curves on a year at 60 s with six variables: the model steps alone, the same kept as curves up
/// to the first picture, then frames of pan and zoom with two kept years behind the current one.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

#include "analysis/calcul_courbes.h"
#include "bench/banc.h"
#include "power/power_step.h"
#include "shell/session.h"
#include "shell/utilitaires.h"
#include "widgets/style.h"
#include "widgets/traces.h"

namespace {

const std::vector<std::string> noms = {"gen_power", "p_demande", "bat_p", "bat_soc", "t_bat", "sun_az"};

etude un_an() {
    session s;
    charge_exemple("microsatellite", s, 60);
    return s;
}

void pas_seuls(benchmark::State& etat) {
    for (auto _ : etat) {
        etude e = un_an();
        power_state_init(e.power);
        for (e.periode.j_courant = e.periode.j_debut; e.periode.j_courant <= e.periode.j_fin;
             e.periode.j_courant += e.periode.pas_sim / secondes_par_jour)
            power_step(e.power, e.orbit, e.periode);
        benchmark::DoNotOptimize(e.power.bat_soc);
    }
}

QVector<trace_graphique> trois_graphiques(const std::vector<std::shared_ptr<resultat_courbes>>& calculs) {
    QVector<trace_graphique> g(3);
    for (std::size_t c = 0; c < calculs.size(); ++c)
        for (std::size_t k = 0; k < noms.size(); ++k) {
            const courbe_calculee& x = calculs[c]->courbes[k];
            trace_courbe t;
            t.nom = QString::fromStdString(x.quoi.nom);
            t.titre = x.quoi.quoi->titre;
            t.unite = x.quoi.quoi->unite;
            t.calcul = c ? QString("gardé %1").arg(c) : QString();
            t.couleur = style::couleur_courbe(int(k));
            t.trait = c ? Qt::DashLine : Qt::SolidLine;
            t.donnees = {calculs[c], &x.valeurs};
            g[qsizetype(k / 2)].courbes << t;
        }
    return g;
}

QVector<QPair<double, double>> bandes_de(const resultat_courbes& r) {
    QVector<QPair<double, double>> b;
    for (const auto& [de, a] : r.eclipses) b << qMakePair(de, a);
    return b;
}

std::shared_ptr<resultat_courbes> calcule() {
    suivi_courbes suivi;
    return std::make_shared<resultat_courbes>(calcule_courbes(un_an(), noms, {}, suivi));
}

void premiere_image(benchmark::State& etat) {
    for (auto _ : etat) {
        traces t;
        t.resize(1100, 560);
        const auto r = calcule();
        t.etendue(r->debut, r->fin);
        t.pose_bandes(bandes_de(*r));
        t.montre(trois_graphiques({r}));
        benchmark::DoNotOptimize(t.grab());
    }
}

/// Resident memory [MiB].
double memoire() {
    QFile f("/proc/self/statm");
    if (!f.open(QIODevice::ReadOnly)) return 0;
    return f.readAll().split(' ').value(1).toDouble() * 4096 / (1024 * 1024);
}

/// A frame each: pan over the year with so many hours in sight.
void image_suivante(benchmark::State& etat) {
    const auto un = calcule();
    const std::vector<std::shared_ptr<resultat_courbes>> calculs = {un, calcule(), calcule()};
    traces t;
    t.resize(1100, 560);
    t.etendue(un->debut, un->fin);
    t.pose_bandes(bandes_de(*un));
    t.montre(trois_graphiques(calculs));
    QImage image(t.size(), QImage::Format_RGB32);
    const double large = std::min(un->fin - un->debut, double(etat.range(0)) / 24);
    double debut = un->debut;
    for (auto _ : etat) {
        t.pose_vue(debut, debut + large);
        t.render(&image);
        debut += large / 97;
        if (debut + large > un->fin) debut = un->debut;
    }
    etat.counters["memoire_Mio"] = memoire();
}

BENCHMARK(pas_seuls)->Unit(benchmark::kMillisecond);
BENCHMARK(premiere_image)->Unit(benchmark::kMillisecond);
BENCHMARK(image_suivante)->Arg(365 * 24)->Arg(30 * 24)->Arg(24)->Arg(4)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QStandardPaths::setTestModeEnabled(true);
    QApplication app(argc, argv);
    style::applique(app);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
