#include <limits>

#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "power/diagnostic.h"
#include "power/etude_batterie.h"
#include "shell/formats.h"
#include "shell/surveillance.h"

namespace {

using col = colonne<point_batterie>;

const std::vector<col> table = {
    {"t", [](const point_batterie& e, int) { return static_cast<double>(e.t); }, 0, true},
    {"s", [](const point_batterie& e, int) { return e.s; }},
    {"v", [](const point_batterie& e, int) { return e.v; }},
    {"i", [](const point_batterie& e, int) { return e.i; }},
};

/// The settings of the study from the options; false, with a line written, when one is missing.
bool reglages(const options& o, reglages_batterie& r) {
    const auto prend = [](const char* nom, const std::optional<double>& x, double max, double& y) {
        if (!x) signale(std::string("option manquante : ") + nom);
        y = x.value_or(0);
        if (y > max) signale(std::string(nom) + " : au plus " + format_court(max));
        return x.has_value() && y <= max;
    };
    constexpr double max = reglage_batterie_max, sans = std::numeric_limits<double>::infinity();
    if (!prend("--tecl", o.tecl, decharge_max, r.duree) || !prend("--temp", o.temp, sans, r.temperature) ||
        !prend("--k", o.k, max, r.k) || !prend("--vmax", o.vmax, max, r.v_max) ||
        !prend("--ich", o.ich, max, r.i_charge))
        return false;
    if (o.pde.has_value() == o.ide.has_value()) {
        signale("il faut l'une des options --pde et --ide");
        return false;
    }
    r.puissance_constante = o.pde.has_value();
    return r.puissance_constante ? prend("--pde", o.pde, max, r.p_decharge)
                                 : prend("--ide", o.ide, max, r.i_decharge);
}

} // namespace

statut cmd_batterie(const options& o, session& s, csv& sortie) {
    reglages_batterie r;
    std::vector<col> choix;
    if (!reglages(o, r) || !choisit_colonnes(table, table.size(), o.colonnes, choix)) return usage_incorrect;
    if (const std::string refus = refus_etude_batterie(s.power, r.temperature); !refus.empty()) {
        signale("--temp : " + refus);
        return usage_incorrect;
    }
    ecrit_entete(choix, sortie);

    surveillance veille;
    etude_batterie etude(s.power, r);
    point_batterie pt;
    const auto faute = [&] {
        const std::string raison =
            etude.sans_fin() ? "la recharge ne se termine pas" : surveillance::description();
        signale("batterie : faute numérique après t = " + std::to_string(pt.t) + " s (" + raison + ")");
        return faute_numerique;
    };
    const auto phase = [&](bool (etude_batterie::*seconde)(point_batterie&)) {
        while ((etude.*seconde)(pt)) {
            if (veille.faute()) return false;
            ecrit_ligne(choix, pt, sortie);
        }
        return !veille.faute();
    };
    if (!phase(&etude_batterie::decharge) || !phase(&etude_batterie::recharge)) return faute();
    return reussi;
}
