/// Passes: when a ground station sees a satellite above its mask.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/orbite.h"
#include "orbit/station.h"
#include "physics/options_modele.h"

/// Where the satellite stands and how it moves in the Earth-fixed frame [km, km/s], the Earth's own turn
/// taken off the velocity.
struct etat_terrestre {
    vec3 pos, vit;
};
using trajectoire = std::function<etat_terrestre(double j)>;

/// The trajectory of the reference model.
trajectoire trajectoire_reference(const record_orbite& o);
/// That of the model asked for.
trajectoire trajectoire_du_modele(const record_orbite& o, const options_modele& modele);

/// An interval within the period with the elevation at the mask or above; one under way at the start or at
/// the end of the period is cut there. Dates are found to a millisecond.
struct passage {
    std::size_t station = 0;   ///< place in the list of stations
    double debut = 0, fin = 0; ///< [days]
    double date_max = 0;       ///< [days] when it stands highest
    visee a_debut, au_max, a_fin;
    double distance_min = 0; ///< [km]

    double duree() const { return (fin - debut) * 86400.0; } ///< [s]
};

struct resultat_passages {
    std::vector<passage> passages; ///< by start, then by station
    std::optional<double> faute;   ///< date at which the trajectory came to a numerical fault
    bool interrompu = false;
};

/// The passes over each station from `debut` to `fin` [days]. The trajectory is looked at every 30 s, and
/// every highest and lowest point between two looks is found, so that no pass is too short to be seen.
resultat_passages cherche_passages(const trajectoire& t, const std::vector<station>& stations, double debut,
                                   double fin, const std::stop_token& arret = {});

/// The columns of a pass as it is written, behind the station's name.
struct colonne_passage {
    const char* nom;
    double (*valeur)(const passage&);
};
std::span<const colonne_passage> colonnes_passage();

/// Passes as CSV: a head, then a row each; the station first.
std::string passages_csv(const std::vector<passage>& passages, const std::vector<station>& stations);
