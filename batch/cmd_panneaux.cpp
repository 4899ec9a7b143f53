#include "batch/commandes.h"
#include "batch/deroule.h"
#include "power/montage.h"

statut cmd_panneaux(const options& o, session& s, csv& sortie) {
    if (montage_de(s.power) == montage::externes)
        return deroule(
            {"panneaux",
             {"sim_date", "node_t_0", "pan_power_0", "incidence_sun", "incidence_earth", "solar_flux_direct",
              "albedo_flux", "solar_albedo_flux", "cell_flux", "panel_target_refined"}},
            o, s, sortie);
    // By quantity, then by panel.
    const int panneaux = nombre_panneaux(s.power);
    std::vector<std::string> noms = {"sim_date"};
    for (const char* grandeur : {"node_t_", "pan_power_", "cell_flux_"})
        for (int i = 0; i < panneaux; ++i) noms.push_back(grandeur + std::to_string(i));
    std::vector<const char*> colonnes;
    for (const std::string& nom : noms) colonnes.push_back(nom.c_str());
    return deroule({"panneaux", colonnes}, o, s, sortie);
}
