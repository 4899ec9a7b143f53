#include "power/etude_panneaux.h"

#include "orbit/math.h"
#include "power/power_panneaux.h"
#include "power/power_step.h"
#include "shell/utilitaires.h"

montage montage_de(const power_record& p) {
    if (p.opt_panel_ext == vrai) return montage::externes;
    // Neither flag value goes with the faces, as in the power step.
    return p.opt_panel_ext == faux && p.opt_faces == 2 ? montage::cylindre : montage::faces;
}

int nombre_panneaux(const power_record& p) {
    switch (montage_de(p)) {
    case montage::externes: return 1;
    case montage::cylindre: return nb_bandes;
    default: return p.nb_faces;
    }
}

direction normale_panneau(const power_record& p, int panneau) {
    switch (montage_de(p)) {
    case montage::externes: return {p.pan_angle, pi};
    case montage::cylindre: return {0, (panneau * 10 + 5) * rad_par_degre};
    default:
        return {p.face_elev[static_cast<std::size_t>(panneau)],
                p.face_azim[static_cast<std::size_t>(panneau)]};
    }
}

void demarre_energie(power_record& p) {
    p.courbe_charge_incompatible = false;
    p.t_charge = p.t_discharge = 0;
    power_state_init(p);
}

etude_panneaux::etude_panneaux(power_record& p, orbit_state& o, simulation_period& periode)
    : p_(p), o_(o), periode_(periode) {
    demarre_energie(p_);
    periode_.j_courant = periode_.j_debut;
}

bool etude_panneaux::reste() const { return periode_.j_courant <= periode_.j_fin + 0.1 / secondes_par_jour; }

void etude_panneaux::pas(ligne_panneaux& l) {
    power_step(p_, o_, periode_);
    l.date = periode_.j_courant;
    l.eclipse = p_.eclipse;
    l.nombre = nombre_panneaux(p_);
    for (int i = 0; i < l.nombre; ++i) {
        const auto [a, b] = normale_panneau(p_, i);
        const auto n = static_cast<std::size_t>(i);
        l.temperature[n] = p_.node_t[n];
        l.puissance[n] = p_.pan_power[n];
        l.flux_cellules[n] = cell_flux(p_, a, b);
    }
    if (montage_de(p_) == montage::externes) {
        const double a = p_.pan_angle;
        l.angle = a;
        l.incidence_soleil = incidence_sun(p_, a, pi);
        l.incidence_terre = incidence_earth(p_, a, pi);
        l.flux_solaire = solar_flux_direct(p_, a, pi);
        l.flux_albedo = albedo_flux(p_, o_, a, pi);
        l.flux_total = solar_albedo_flux(p_, o_, a, pi);
        l.meilleur_angle = panel_target_refined(p_);
    }
    periode_.j_courant += periode_.pas_sim / secondes_par_jour;
}
