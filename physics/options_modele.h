/// Which model a run uses, what is left out of the physical one, and its attitude control.
///
/// The reference model is the default; everything else here concerns the physical model alone. The tables
/// name each field once, for files, settings and messages.
#pragma once

#include <span>
#include <string_view>

enum class loi_controle { aucune, b_dot, pd };
/// What the PD law points at: the nominal pointing in the local orbital frame, or a face at the Sun.
enum class cible_controle { nadir, soleil };

struct controle_attitude {
    loi_controle loi = loi_controle::aucune;
    double gain = 1e6;     ///< [A m2 s/T] B-dot: dipole per rate of change of the field
    double dipole_max = 5; ///< [A m2] B-dot: largest dipole on each axis
    cible_controle cible = cible_controle::nadir;
    int face = 2;               ///< PD towards the Sun: the face, 0 to 5 for +x, +y, +z, -x, -y, -z
    double frequence = 0.05;    ///< [rad/s] PD: natural frequency
    double amortissement = 0.7; ///< PD: damping ratio
    double couple_max = 0.01;   ///< [N m] PD: largest torque of a wheel
    double vitesse_max = 600;   ///< [rad/s] PD: largest speed of a wheel
    bool operator==(const controle_attitude&) const = default;
};

struct options_modele {
    bool physique = false; ///< the physical model instead of the reference one
    bool sans_j2 = false;
    bool sans_gradient = false, sans_aero = false, sans_solaire = false, sans_magnetique = false;
    bool sans_amortisseurs = false, sans_roues = false;
    controle_attitude controle;
    bool operator==(const options_modele&) const = default;
};

/// A part that can be switched off, and its name in options and files.
struct partie_modele {
    const char* nom;  ///< "gradient"
    const char* sens; ///< in French
    bool options_modele::*sans;
};
std::span<const partie_modele> parties_modele();

/// Switches off a part by its name; false for a name that is none.
bool retire_partie(options_modele& o, std::string_view nom);

/// A number of the control, with its limits (both allowed).
struct champ_controle {
    const char* nom; ///< "gain"
    double controle_attitude::*place;
    const char* unite;
    double min, max;
    const char* sens; ///< in French
};
std::span<const champ_controle> champs_controle();

/// Names in files and options: "aucune", "b_dot", "pd"; "nadir", "soleil".
inline constexpr const char* noms_loi[] = {"aucune", "b_dot", "pd"};
inline constexpr const char* noms_cible[] = {"nadir", "soleil"};
/// Faces as the user names them; the place is the face's number.
inline constexpr const char* noms_face[] = {"+x", "+y", "+z", "-x", "-y", "-z"};
