#include "shell/session.h"

#include <filesystem>

#include "orbit/orb_trajecto.h"

namespace fs = std::filesystem;

void session_init(session& s) {
    recalcule_faces(s.power);
    faces_recalcul(s.attitude);
    s.periode = periode_par_defaut(s.orbit.orbite);
}

std::string trouve_dossier_depart(const std::string& dossier_executable,
                                  const std::string& dossier_utilisateur) {
    return dossier_executable + dossier_utilisateur; // replaced below
}
