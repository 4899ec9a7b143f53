#include "analysis/modes.h"

#include <algorithm>
#include <cmath>

#include "analysis/phrase_bilan.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "physics/orbite_seculaire.h"
#include "physics/repere.h"
#include "shell/utilitaires.h"

double duree_orbite(const etude& e) {
    const double a = e.orbit.orbite.orb_demi, mu = e.modele.physique ? mu_physique : mu_terre;
    return 2 * pi * std::sqrt(a * a * a / mu);
}

long orbite_de(double date, double debut, double duree) {
    return static_cast<long>(std::floor((date - debut) * secondes_par_jour / duree + 1e-9));
}

std::string phrase_modes(const etude& e) {
    if (e.modes.empty()) return {};
    double somme = 0;
    for (const mode_conso& m : e.modes) somme += m.puissance;
    const bool un = e.modes.size() == 1;
    return (un ? std::string("Un mode de consommation s'ajoute")
               : std::to_string(e.modes.size()) + " modes de consommation s'ajoutent") +
           " à la demande, " + nombre_fr(somme, 1) + " W au plus.";
}

std::vector<std::string> modes_sans_station(const etude& e) {
    std::vector<std::string> t;
    for (const mode_conso& m : e.modes) {
        const auto nommee = [&m](const station& s) { return s.nom == m.quand.station; };
        if (m.quand.genre == genre_quand::station &&
            std::none_of(e.stations.begin(), e.stations.end(), nommee))
            t.push_back("mode « " + m.nom + " » : " +
                        (m.quand.station.empty()
                             ? std::string("aucune station n'est choisie")
                             : "la station « " + m.quand.station + " » n'est pas dans l'étude"));
    }
    return t;
}

modes_en_vigueur::modes_en_vigueur(const etude& e)
    : debut_(e.periode.j_debut), duree_orbite_(duree_orbite(e)), physique_(e.modele.physique) {
    for (const mode_conso& reglage : e.modes) {
        mode m{reglage, {}, 0};
        if (reglage.quand.genre == genre_quand::station)
            for (const station& s : e.stations)
                if (s.nom == reglage.quand.station) {
                    m.station.emplace_back(s);
                    m.masque = s.masque;
                    break;
                }
        modes_.push_back(std::move(m));
    }
}

unsigned modes_en_vigueur::besoins() const {
    const bool sol = std::any_of(modes_.begin(), modes_.end(), [](const mode& m) {
        return m.reglage.quand.genre == genre_quand::latitude ||
               m.reglage.quand.genre == genre_quand::station;
    });
    return sol ? besoin::sol : 0;
}

bool modes_en_vigueur::en_vigueur(std::size_t i, const etat_calcul& s) const {
    const mode& m = modes_[i];
    const quand_mode& q = m.reglage.quand;
    const double date = s.periode.j_courant;
    switch (q.genre) {
    case genre_quand::toujours: return true;
    case genre_quand::jour: return s.energie.eclipse == faux;
    case genre_quand::nuit: return s.energie.eclipse != faux;
    case genre_quand::latitude: {
        const double latitude = radians_vers_degres(s.orbite.sat_lat);
        return latitude >= q.latitude_min && latitude <= q.latitude_max;
    }
    case genre_quand::station: {
        const vec3& r = s.orbite.sat_pos;
        const vec3 terrestre = physique_ ? tour_terre(date).vers_terrestre(r) : vers_terrestre(date, r);
        return !m.station.empty() && m.station[0].vers(terrestre).elevation >= m.masque;
    }
    case genre_quand::periode: {
        // A millisecond forgives the rounding of a day count: a step that falls on the beginning is in.
        const double t = (date - debut_) * secondes_par_jour - q.debut + 1e-3;
        return t >= 0 && std::fmod(t, q.periode) < q.duree;
    }
    case genre_quand::une_orbite_sur: return orbite_de(date, debut_, duree_orbite_) % q.une_orbite_sur == 0;
    }
    return false;
}

double modes_en_vigueur::puissance(const etat_calcul& s) const {
    double somme = 0;
    for (std::size_t i = 0; i < modes_.size(); ++i)
        if (en_vigueur(i, s)) somme += modes_[i].reglage.puissance;
    return somme;
}
