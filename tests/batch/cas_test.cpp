/// Runs the batch program on the reference runs of tests/data/cas and compares exit status and rows.
///
/// Expected numbers: an independent implementation of the same models (see the README of that folder).
/// Flags and whole seconds must be equal; other numbers agree within the tolerance of their column; azimuths
/// and longitudes modulo a turn; attitudes and torques relative to the largest magnitude of their column.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <fnmatch.h>

#include "tests/batch/lance_batch.h"
#include "tests/fichiers.h"

namespace {

using namespace std;
using tableau = vector<vector<string>>;

const set<string> entiers = {"eclipse",  "pan_wait",    "pan_moving", "bat_state_full",
                             "t_charge", "t_discharge", "t"};
const set<string> tournants = {"sun_az", "nad_az", "sat_lon", "anomalie_moy"};

struct tolerance {
    const char* motif;
    double relative, absolue;
};
constexpr tolerance tolerances[] = {
    {"sat_pos*", 1e-9, 1e-5},     {"sat_vit*", 1e-9, 1e-8},      {"soleil_pos*", 1e-9, 1e-2},
    {"vec_*", 1e-9, 1e-9},        {"anomalie_moy", 1e-9, 1e-9},  {"sat_lon", 1e-9, 1e-8},
    {"sat_lat", 1e-9, 1e-8},      {"sat_alt", 1e-9, 1e-5},       {"gen_power", 1e-9, 1e-8},
    {"bat_p", 1e-9, 1e-8},        {"p_*", 1e-9, 1e-8},           {"pan_power_*", 1e-9, 1e-8},
    {"pan_target*", 1e-9, 1e-10}, {"panel_target*", 1e-9, 1e-8}, {"pan_angle", 1e-9, 1e-10},
    {"sun_*", 1e-9, 1e-10},       {"nad_*", 1e-9, 1e-10},        {"incidence_*", 1e-9, 1e-8},
    {"earth_half", 1e-9, 1e-10},  {"bat_i", 1e-9, 1e-9},         {"t_bat", 1e-9, 1e-8},
    {"node_t_*", 1e-9, 0.0},      {"*flux*", 1e-9, 1e-8},        {"*", 1e-9, 1e-12},
};

tableau lit_csv(const string& texte) {
    tableau t;
    istringstream lignes(texte);
    for (string ligne; getline(lignes, ligne);) {
        if (!ligne.empty() && ligne.back() == '\r') ligne.pop_back();
        if (ligne.empty()) continue;
        vector<string> cellules;
        istringstream valeurs(ligne);
        for (string v; getline(valeurs, v, ',');) cellules.push_back(v);
        t.push_back(cellules);
    }
    return t;
}

double nombre(const string& s) {
    double x = NAN;
    from_chars(s.data(), s.data() + s.size(), x);
    return x;
}

/// Limit of the difference to the expected value x of a column; a negative one leaves the column out.
double limite(const string& colonne, bool a_l_echelle, bool nominal, double x, double echelle) {
    if (a_l_echelle) return 1e-10 * echelle + 1e-18;
    if (nominal) // directions that are rounding noise at nominal attitude
        return colonne == "nad_az" || colonne == "nad_sxy" ? -1 : 1e-4 + 1e-5 * fabs(x);
    for (const tolerance& t : tolerances)
        if (fnmatch(t.motif, colonne.c_str(), 0) == 0) return t.absolue + t.relative * fabs(x);
    return 0;
}

void compare(const tableau& attendu, const tableau& obtenu, bool a_l_echelle, bool nominal) {
    ASSERT_FALSE(obtenu.empty());
    ASSERT_EQ(attendu[0], obtenu[0]) << "column names";
    ASSERT_EQ(attendu.size(), obtenu.size()) << "rows";
    for (size_t k = 0; k < attendu[0].size(); ++k) {
        const string& colonne = attendu[0][k];
        double echelle = 0;
        for (size_t n = 1; n < attendu.size(); ++n) echelle = max(echelle, fabs(nombre(attendu[n][k])));
        for (size_t n = 1; n < attendu.size(); ++n) {
            const string &a = attendu[n][k], &b = obtenu[n].at(k);
            if (a == b) continue;
            const double x = nombre(a);
            const double permis =
                entiers.count(colonne) ? 0 : limite(colonne, a_l_echelle, nominal, x, echelle);
            if (permis < 0) continue;
            double ecart = fabs(x - nombre(b));
            if (tournants.count(colonne)) ecart = min(ecart, fabs(ecart - 2 * M_PI));
            ASSERT_LE(ecart, permis) << colonne << ", row " << n << ": expected " << a << ", got " << b;
        }
    }
}

class cas : public testing::TestWithParam<string> {};

} // namespace

TEST_P(cas, agrees_with_the_reference_run) {
    const filesystem::path dossier = string(DONNEES_TEST) + "/cas";
    const string base = (dossier / GetParam()).string();
    const string args = lit(base + ".args");
    const string commande = args.substr(0, args.find('\n'));
    const resultat_batch r = lance_batch(commande, dossier.string());
    EXPECT_EQ(r.statut, stoi(lit(base + ".status"))) << r.erreurs;
    const bool a_l_echelle = commande.starts_with("attitude") || commande.starts_with("couples");
    compare(lit_csv(lit(base + ".csv")), lit_csv(r.sortie), a_l_echelle,
            args.find("sensitive") != string::npos);
}

static vector<string> noms_des_cas() {
    set<string> noms;
    for (const auto& f : filesystem::directory_iterator(string(DONNEES_TEST) + "/cas"))
        if (f.path().extension() == ".args") noms.insert(f.path().stem().string());
    return {noms.begin(), noms.end()};
}

INSTANTIATE_TEST_SUITE_P(reference, cas, testing::ValuesIn(noms_des_cas()),
                         [](const auto& info) { return info.param; });
