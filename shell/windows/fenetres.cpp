#include "shell/windows/fenetres.h"

#include "attitude/windows/att_conf.h"
#include "attitude/windows/att_sim.h"
#include "orbit/windows/orbito_conf.h"
#include "power/windows/power_exp_bat.h"
#include "power/windows/power_exp_pan.h"
#include "power/windows/power_sim_all.h"
#include "project/windows/att_exp_data.h"
#include "project/windows/power_conf.h"
#include "project/windows/power_exp_data.h"
#include "shell/windows/guide.h"
#include "widgets/fenetre.h"

namespace {

template <class F>
fenetre* cree(session& s) {
    return new F(s);
}

struct ligne {
    const char* nom;
    fabrique_fenetre fabrique;
};

/// One line for each window: {"power_conf", cree<power_conf>}.
constexpr ligne table[] = {
    {"power_sim_all", cree<power_sim_all>},
    {"att_conf", cree<att_conf>},
    {"att_sim", cree<att_sim>},
    {"power_conf", cree<power_conf>},
    {"orbito_conf", cree<orbito_conf>},
    {"power_exp_pan", cree<power_exp_pan>},
    {"power_exp_bat", cree<power_exp_bat>},
    {"power_exp_data", cree<power_exp_data>},
    {"att_exp_data", cree<att_exp_data>},
    {"guide", cree<guide>},
};

} // namespace

fabrique_fenetre fabrique(const QString& nom) {
    for (const auto& l : table)
        if (nom == QLatin1String(l.nom)) return l.fabrique;
    return nullptr;
}

QStringList noms_fenetres() {
    QStringList noms;
    for (const auto& l : table) noms << l.nom;
    return noms;
}
