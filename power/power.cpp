#include "power/power.h"

void recalcule_faces(power_record& p) {
    p.nb_faces = p.opt_faces == 0 ? 4 : p.opt_faces == 1 ? 6 : 0;
    for (int i = 0; i < p.nb_faces; ++i) {
        p.face_azim[i] = i * (361 / p.nb_faces) * rad_par_degre;
        p.face_elev[i] = 0;
    }
}
