#include "batch/colonnes.h"
#include "batch/commandes.h"
#include "power/etude_panneaux.h"
#include "shell/surveillance.h"

namespace {

using etat = ligne_panneaux;
using col = colonne<etat>;

std::size_t rang(int i) { return static_cast<std::size_t>(i); }

std::vector<col> table(bool externes, int nombre) {
    std::vector<col> t = {{"sim_date", [](const etat& e, int) { return e.date; }}};
    const auto groupe = [&](const char* nom, double (*valeur)(const etat&, int)) {
        for (int i = 0; i < nombre; ++i) t.push_back({nom + std::to_string(i), valeur, i});
    };
    groupe("node_t_", [](const etat& e, int i) { return e.temperature[rang(i)]; });
    groupe("pan_power_", [](const etat& e, int i) { return e.puissance[rang(i)]; });
    if (!externes) {
        groupe("cell_flux_", [](const etat& e, int i) { return e.flux_cellules[rang(i)]; });
        return t;
    }
    t.push_back({"incidence_sun", [](const etat& e, int) { return e.incidence_soleil; }});
    t.push_back({"incidence_earth", [](const etat& e, int) { return e.incidence_terre; }});
    t.push_back({"solar_flux_direct", [](const etat& e, int) { return e.flux_solaire; }});
    t.push_back({"albedo_flux", [](const etat& e, int) { return e.flux_albedo; }});
    t.push_back({"solar_albedo_flux", [](const etat& e, int) { return e.flux_total; }});
    t.push_back({"cell_flux", [](const etat& e, int) { return e.flux_cellules[0]; }});
    t.push_back({"panel_target_refined", [](const etat& e, int) { return e.meilleur_angle; }});
    return t;
}

} // namespace

statut cmd_panneaux(const options& o, session& s, csv& sortie) {
    const auto toutes = table(montage_de(s.power) == montage::externes, nombre_panneaux(s.power));
    std::vector<col> choix;
    if (!choisit_colonnes(toutes, toutes.size(), o.colonnes, choix)) return usage_incorrect;
    ecrit_entete(choix, sortie);

    surveillance veille;
    etude_panneaux etude(s.power, s.orbit, s.periode);
    etat e;
    while (etude.reste()) {
        etude.pas(e);
        if (veille.faute()) return signale_faute("panneaux", e.date);
        ecrit_ligne(choix, e, sortie);
    }
    return reussi;
}
