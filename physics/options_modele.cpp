#include "physics/options_modele.h"

namespace {

constexpr partie_modele parties[] = {
    {"j2", "dérive séculaire due à l'aplatissement de la Terre", &options_modele::sans_j2},
    {"gradient", "gradient de gravité", &options_modele::sans_gradient},
    {"aero", "frottement de l'air", &options_modele::sans_aero},
    {"solaire", "pression de rayonnement", &options_modele::sans_solaire},
    {"magnetique", "couple magnétique", &options_modele::sans_magnetique},
    {"amortisseurs", "amortisseurs à ressort", &options_modele::sans_amortisseurs},
    {"roues", "roues cinétiques", &options_modele::sans_roues},
};

constexpr champ_controle champs[] = {
    {"gain", &controle_attitude::gain, "A m² s/T", 0, 1e9, "Gain de la loi B-dot"},
    {"dipole_max", &controle_attitude::dipole_max, "A m²", 0, 1e4, "Dipôle le plus grand sur chaque axe"},
    {"frequence", &controle_attitude::frequence, "rad/s", 1e-5, 10, "Pulsation propre de la loi PD"},
    {"amortissement", &controle_attitude::amortissement, "", 0, 10, "Taux d'amortissement de la loi PD"},
    {"couple_max", &controle_attitude::couple_max, "N m", 0, 100, "Couple le plus grand d'une roue"},
    {"vitesse_max", &controle_attitude::vitesse_max, "rad/s", 0, 1e5, "Vitesse la plus grande d'une roue"},
};

} // namespace

std::span<const partie_modele> parties_modele() { return parties; }
std::span<const champ_controle> champs_controle() { return champs; }

bool retire_partie(options_modele& o, std::string_view nom) {
    for (const partie_modele& p : parties)
        if (nom == p.nom) {
            o.*p.sans = true;
            return true;
        }
    return false;
}
