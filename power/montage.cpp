#include "power/montage.h"

#include "orbit/math.h"

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
