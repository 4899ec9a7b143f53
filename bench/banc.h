/// What the benchmarks share: satellites that live (dates that move, a battery that charges and discharges),
/// and failures that end the program.
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "orbit/pointage.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/session.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

/// A measure of something else than what was meant is worse than none.
inline void exige(bool vrai, const char* quoi) {
    if (vrai) return;
    std::fprintf(stderr, "banc : %s\n", quoi);
    std::exit(1);
}

/// A sample of the program with a year before it, made to live through that year: the Sun near the plane of
/// the microsatellite's orbit, more cells on the small bodies, a smaller load of the cylinder.
inline void charge_exemple(const std::string& nom, session& s, int32_t pas) {
    const std::string base = DOSSIER_DATA "/exemples/" + nom;
    std::string raison;
    erreur_fichier erreur;
    session_init(s);
    exige(charge_orbite(base + ".orb", s.orbit.orbite, raison) &&
              charge_energie(base + ".pwr", s.power, s.periode, erreur),
          "exemple illisible");
    if (nom == "microsatellite") s.orbit.orbite.orb_inclinaison = 10;
    if (nom == "cubesat") s.power.cel_np = 6;
    if (nom == "hexagone") s.power.cel_np = 30;
    if (nom == "cylindre") s.power.p_demand = {45, 38};
    s.periode.pas_sim = pas;
    s.periode.j_fin = s.periode.j_debut + 365;
}

/// Sees that a run had no fault, and that its battery was neither idle nor empty.
class temoin {
public:
    void voit(const session& s) {
        min_ = std::min(min_, s.power.bat_soc);
        max_ = std::max(max_, s.power.bat_soc);
        duree_ += s.periode.pas_sim;
    }
    void verifie() const {
        exige(!veille_.faute(), "faute numérique");
        if (duree_ < 86400) return; // the benchmark's first tries are too short to tell
        exige(max_ - min_ > 0.02, "la batterie ne travaille pas");
        exige(min_ > 0.5, "la batterie est vide");
    }

private:
    surveillance veille_;
    double min_ = 1, max_ = 0, duree_ = 0;
};
