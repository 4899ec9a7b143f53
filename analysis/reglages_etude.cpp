#include "analysis/reglages_etude.h"

#include <memory>

#include "analysis/modes.h"
#include "power/power_gestion.h"

reglages_calcul reglages_de(const etude& e, reglages_calcul r) {
    r.modele = e.modele;
    if (!e.modes.empty()) {
        const auto modes = std::make_shared<const modes_en_vigueur>(e);
        r.besoins |= modes->besoins();
        r.demande = [modes](const etat_calcul& s) {
            return demande_reference(s.energie) + modes->puissance(s);
        };
    }
    return r;
}

void place_orbite(const etude& e, double date, orbit_state& o) { place_orbite(date, e.modele, o); }
