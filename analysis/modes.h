/// Consumption modes: powers that add to the reference demand while they are in force.
#pragma once

#include <string>
#include <vector>

#include "analysis/variables.h"
#include "orbit/station.h"
#include "project/etude.h"

/// Length of a turn [s]: 2 pi sqrt(a3/mu), with the mu of the étude's model.
double duree_orbite(const etude& e);
/// The turn, from 0, that a date belongs to: floor((date - start)/T + 1e-9), so that a step that falls on the
/// end of a turn to within its rounding begins the next.
long orbite_de(double date, double debut, double duree);

/// "2 modes de consommation s'ajoutent à la demande, 15 W au plus."; empty without modes.
std::string phrase_modes(const etude& e);
/// The modes that name a station which the étude has not, and so are never in force: "mode « TX » : la
/// station « Kourou » n'est pas dans l'étude", each.
std::vector<std::string> modes_sans_station(const etude& e);

/// Which modes are in force at a step, and what they draw. One for a run; it reads the étude it is made from.
class modes_en_vigueur {
public:
    explicit modes_en_vigueur(const etude& e);

    bool vide() const { return modes_.empty(); }
    /// Parts of a step that the conditions read (ground point).
    unsigned besoins() const;
    /// The mode i is in force: Sun, shadow and ground point as the step's environment left them.
    bool en_vigueur(std::size_t i, const etat_calcul& s) const;
    /// Sum of the powers in force [W].
    double puissance(const etat_calcul& s) const;

private:
    struct mode {
        mode_conso reglage;
        std::vector<repere_station> station; ///< one where the condition names a station, else none
        double masque = 0;
    };
    std::vector<mode> modes_;
    double debut_, duree_orbite_;
    bool physique_; ///< the frame that positions stand in
};
