/// The same row of an energy run, read by everything that runs the model: batch program, result window, study
/// of the generator, complete simulation.

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QComboBox>
#include <QTableView>

#include <sys/resource.h>

#include <cmath>
#include <sstream>

#include "analysis/calcul.h"
#include "analysis/listes_resultats.h"
#include "power/windows/power_exp_pan.h"
#include "power/windows/power_sim_all.h"
#include "project/pwr_fichier.h"
#include "project/windows/power_exp_data.h"
#include "shell/formats.h"
#include "tests/batch/lance_batch.h"
#include "tests/gestes.h"
#include "widgets/table_resultats.h"

using gestes::clique;
using gestes::controle;
using std::size_t;

namespace {

constexpr int ligne = 17;
constexpr const char* noms[] = {"bat_soc", "bat_v", "gen_power", "p_excess", "node_t_10", "pan_power_1"};

struct consommateurs : gestes::essai_fenetres {
    consommateurs() {
        s.power.cel_ns = 20;
        s.power.cel_np = 6;
        s.power.opt_panel_ext = faux; // a square prism
        recalcule_faces(s.power);
    }
    QString cellule(QWidget& f, int colonne) {
        auto* m = controle<QTableView>(&f, "grid")->model();
        return m->index(ligne, colonne).data().toString();
    }
    void lisent_les_memes_nombres();
};

} // namespace

TEST_F(consommateurs, read_the_same_numbers) { lisent_les_memes_nombres(); }
TEST_F(consommateurs, read_the_same_numbers_in_the_physical_model) {
    calcul c({s.periode, s.orbit, s.power, s.attitude}, voies_de(noms, s.power));
    while (c.suivant() && c.lignes() <= ligne) continue;
    const double reference = c.ligne()[4];
    s.power.t_bat = 0;
    s.modele.physique = true;
    lisent_les_memes_nombres();
    EXPECT_GT(std::fabs(s.power.node_t[10] - reference), 1e-3) << "the models differ";
}

void consommateurs::lisent_les_memes_nombres() {
    session t = s;
    calcul c({t.periode, t.orbit, t.power, t.attitude}, voies_de(noms, t.power), {.modele = s.modele});
    std::vector<double> attendus;
    while (c.suivant())
        if (c.lignes() == ligne + 1) attendus = c.ligne();
    ASSERT_EQ(attendus.size(), std::size(noms));
    EXPECT_LT(attendus[0], 1);

    // The batch program, to the last digit.
    const std::string pwr = dossier.filePath("projet.pwr").toStdString();
    ASSERT_TRUE(sauve_energie(pwr, s.power, s.periode));
    const auto r =
        lance_batch("energie --pwr '" + pwr + "' --debut " + format_court(s.periode.j_debut) + " --fin " +
                    format_court(s.periode.j_fin) + (s.modele.physique ? " --modele physique" : "") +
                    " --colonnes bat_soc,bat_v,gen_power,p_excess,node_t_10,pan_power_1");
    std::istringstream sortie(r.sortie);
    std::string texte;
    for (int l = 0; l <= ligne + 1; ++l) std::getline(sortie, texte);
    std::string attendu;
    for (const double x : attendus) attendu += (attendu.empty() ? "" : ",") + format_court(x);
    EXPECT_EQ(texte, attendu);

    // The result window and the study, as they show it. A run starts from the battery temperature of the
    // last.
    power_exp_data f(s);
    f.show();
    auto* liste = controle<QListWidget>(&f, "list_var");
    const char* textes[] = {"Batterie Taux de charge", "Batterie Tension (V)", "Puissance GS (W)",
                            "Puissance excédente (W)", "Température noeud Intérieur (°C)"};
    for (int n = 0; n < 5; ++n) {
        clique(&f, QString("lab_col_%1").arg(n));
        gestes::clique_ligne(liste, liste->findItems(textes[n], Qt::MatchExactly).at(0));
    }
    clique(&f, "cmd_saisir");
    const auto egal = [&](QWidget& fenetre, int colonne, double x, int decimales) {
        EXPECT_EQ(cellule(fenetre, colonne).toStdString(), texte_fixe(x, decimales)) << colonne;
    };
    egal(f, 1, attendus[0], 3);
    egal(f, 2, attendus[1], 3);
    egal(f, 3, attendus[2], 2);
    egal(f, 4, attendus[3], 2);
    egal(f, 5, attendus[4] - 273.15, 2);
    s.power.t_bat = 0;
    power_exp_pan g(s);
    g.show();
    clique(&g, "opt_view_1");
    clique(&g, "cmd_saisir");
    clique(&g, "cmd_puissance");
    egal(g, 2, attendus[5], 2);

    // The complete simulation: the first step at its start, one more at each tick.
    s.power.t_bat = 0;
    power_sim_all h(s);
    controle<QWidget>(&h, "Pict_visu3d")->hide();
    h.show();
    auto* minuterie = h.findChild<QTimer*>("Timer_sim_pwr");
    minuterie->stop();
    auto* vitesse = h.findChild<QComboBox*>("cmb_vitesse");
    vitesse->setCurrentIndex(vitesse->findData(20));
    const double date = t.periode.j_debut + (ligne - 0.5) * t.periode.pas_sim / 86400;
    QMetaObject::invokeMethod(minuterie, "timeout");
    h.findChild<QAbstractButton*>("cmd_lance")->click();
    for (int n = 0; n < 100 && s.periode.j_courant < date; ++n)
        QMetaObject::invokeMethod(minuterie, "timeout");
    EXPECT_EQ(s.power.bat_soc, attendus[0]);
    EXPECT_EQ(s.power.gen_power, attendus[2]);
    EXPECT_EQ(s.power.node_t[10], attendus[4]);
    EXPECT_TRUE(gestes::messages.isEmpty()) << gestes::messages.join("\n").toStdString();
}

TEST_F(consommateurs, a_table_keeps_what_its_texts_show_and_says_when_memory_runs_out) {
    // Numbers near the middle between two texts, wide ranges, and what no whole number holds.
    table_resultats t;
    t.recommence({{.ecriture = {2}}, {.ecriture = {0, "0.000E+00"}}, {.vide = true}, {.ecriture = {3}}}, 0,
                 60);
    const auto valeur = [](int l, int c) {
        const double x = (l % 7 - 3) * 0.005 + (l / 1024) * 1.25 - 4;
        return c == 1 ? x * 1e-7 : c == 0 ? x : l < 5000 ? x * 1e3 : x * 1e12;
    };
    constexpr int n = 9000;
    for (int l = 0; l < n; ++l)
        t.ajoute(std::vector<double>{valeur(l, 0), valeur(l, 1), 1, valeur(l, 3)}, l % 10 > 6);
    double min = 0, max = 0;
    for (int l = 0; l < n; ++l) {
        ASSERT_EQ(t.texte(l, 0), format_image(valeur(l, 0), "0.00")) << l;
        ASSERT_EQ(t.texte(l, 1), format_image(valeur(l, 1), "0.000E+00")) << l;
        ASSERT_EQ(t.texte(l, 2), "");
        ASSERT_EQ(t.texte(l, 3), texte_fixe(valeur(l, 3), 3)) << l;
        ASSERT_EQ(t.nombre(l, 0), QString::fromStdString(t.texte(l, 0)).toDouble()) << l;
        ASSERT_EQ(t.eclipse(l), l % 10 > 6);
        if (l < 1500 || l >= 5200) continue;
        min = l == 1500 ? t.nombre(l, 0) : std::min(min, t.nombre(l, 0));
        max = l == 1500 ? t.nombre(l, 0) : std::max(max, t.nombre(l, 0));
    }
    EXPECT_EQ(t.extremes(0, 1500, 5200), std::make_pair(min, max));

#ifndef __SANITIZE_ADDRESS__
    // With a few megabytes left the run ends with a word; its rows stay and the window goes on.
    s.periode.j_fin = s.periode.j_debut + 3650;
    power_exp_data f(s);
    f.show();
    auto* liste = controle<QListWidget>(&f, "list_var");
    for (int c = 0; c < 6; ++c) {
        clique(&f, QString("lab_col_%1").arg(c));
        gestes::clique_ligne(liste, liste->item(c + 6));
    }
    QApplication::processEvents();
    std::ifstream statm("/proc/self/statm");
    rlim_t pages = 0;
    statm >> pages;
    rlimit avant{};
    getrlimit(RLIMIT_AS, &avant);
    const rlimit serre{pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + (24u << 20), avant.rlim_max};
    setrlimit(RLIMIT_AS, &serre);
    clique(&f, "cmd_saisir");
    setrlimit(RLIMIT_AS, &avant);
    EXPECT_EQ(gestes::messages, QStringList{message_memoire});
    EXPECT_GT(controle<QTableView>(&f, "grid")->model()->rowCount(), 10000);
    s.periode.j_fin = s.periode.j_debut + 0.1;
    clique(&f, "cmd_saisir");
    EXPECT_EQ(controle<QTableView>(&f, "grid")->model()->rowCount(), 73);
#endif
}
