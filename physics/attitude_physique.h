/// A run of the attitude in the physical model, step by step.
///
/// From the nominal pointing at the start of the period and the initial rates of the record. A program step
/// is cut into inner steps that follow the motion (`pas_du_mouvement`), the control and the turn round the
/// Earth (0.05 rad). The surroundings are computed at the start, middle and end of a span of 4 s (or of an
/// inner step, where that is longer) and follow a parabola between (within 3e-8 of the field in a low orbit),
/// while rows are read in surroundings computed for their date. The constant jet torque of the record acts as
/// a torque on the body.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "attitude/att_resultats.h"
#include "physics/controle.h"
#include "physics/couples_physiques.h"

/// Everything that a row tells, at the date `j`. Angles in degrees, rates in deg/s.
struct ligne_attitude {
    double j = 0;
    double q[4] = {};
    vec3 h{};                                                     ///< [N m s] inertial axes
    double h_norme = 0, energie = 0;                              ///< [N m s], [J]
    vec3 angle_h{}, angle_nadir{}, angle_soleil{}, angle_champ{}; ///< from each body axis
    vec3 gradient{}, aero{}, solaire{}, magnetique{}, commande{}; ///< [N m] body axes; commande: the coils
    vec3 omega{}, roues{};                                        ///< body rate, wheels relative to the body
    vec3 couple_roues{};                                          ///< [N m] of the motors on the wheels
    vec3 champ{};                                                 ///< [nT] inertial axes
    double roulis = 0, tangage = 0, lacet = 0;
    angles_euler orbital{}; ///< [rad] the same three
    double part_soleil = 0;
    double sature = 0;              ///< bits of `saturations`
    enregistrement_att classique{}; ///< the 25 values of the reference model's record
};

/// A limit of the control reached, or left.
struct evenement_controle {
    double j;
    saturation nature;
    int axe;
    bool debut;
};
/// "Roue y : couple maximal".
std::string texte_limite(const evenement_controle& e);

class attitude_physique {
public:
    /// `air` and `champ` outlive the run; the orbit's elements and pointing and the record are copied.
    attitude_physique(const attitude_record& a, const orbit_state& o, const options_modele& options,
                      double j_debut, atmosphere& air, champ_geomagnetique& champ);

    /// Moves on to the date j. A motion that needs more than a million inner steps raises the fault of an
    /// endless loop. `arret`, where given, is asked at times: true leaves the motion short of j.
    void avance(double j, const std::function<bool()>& arret = {});

    double date() const { return date_; }
    rotation attitude() const { return rotation_de(etat_.q); }
    const etat_mouvement& etat() const { return etat_; }
    /// The row of the date reached.
    void lit(ligne_attitude& l);

    /// Inner steps done.
    long pas_internes() const { return pas_internes_; }
    const std::vector<evenement_controle>& evenements() const { return evenements_; }

private:
    struct efforts {
        couples_corps t;
        vec3 commande{}, roues{};
        vec3 externe{};
    };
    efforts efforts_de(const milieu& m, const vec3& champ_point, const rotation& A, const vitesses_corps& v,
                       const etat_mouvement& e);
    double pas_interne() const;
    void commence_trajet(double duree);
    milieu entourage(double t, vec3& champ_point) const;
    void note_saturations();

    attitude_record a_;
    options_modele options_;
    pointage_record pointage_;
    double j_debut_;
    environnement_physique env_;
    corps_mobile corps_;
    mat3 J_;
    besoins_milieu besoins_;

    double date_;
    double t_ = 0;                             ///< [s] since the start of the period
    std::array<milieu, 3> trajet_;             ///< surroundings at the start, middle and end of a span
    double trajet_debut_ = 0, trajet_fin_ = 0; ///< [s]
    etat_mouvement etat_;
    vec3 couple_{}; ///< [N m] at the last start of an inner step
    saturations saturation_ = 0, saturation_notee_ = 0;
    long pas_internes_ = 0;
    std::vector<evenement_controle> evenements_;
};
