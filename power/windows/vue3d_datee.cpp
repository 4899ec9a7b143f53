#include "power/windows/vue3d_datee.h"

#include <QVBoxLayout>

#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "physics/energie_physique.h"
#include "power/power_panneaux.h"
#include "power/power_step.h"
#include "power/windows/vue3d.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

/// The surroundings of the physical model, and its node and perigee of the date for the drawn orbit. The body
/// stands at `attitude` (inertial to body), or at its nominal pointing without one.
void environnement(double j, const options_modele& modele, const rotation* attitude, power_record& p,
                   orbit_state& o, double debut) {
    const environnement_physique env(o.orbite, modele.sans_j2, nullptr, nullptr);
    milieu m;
    env.place(j, {}, m);
    environnement_energie(m, attitude ? *attitude : attitude_nominale(m, o.pointage, debut), p);
    if (attitude) {
        const angles_euler a = angles_de(compose(*attitude, inverse(repere_local(m))));
        o.pointage.phi = radians_vers_degres(a.roulis);
        o.pointage.theta = radians_vers_degres(a.tangage);
        o.pointage.psi = radians_vers_degres(a.lacet);
    } else
        pointage_du_spin(j, debut, o.pointage);
    elements_de_la_date(j, modele, o.orbite);
}

} // namespace

vue3d_datee::vue3d_datee(const session& s, QWidget* parent)
    : QWidget(parent), s_(s), orbit_(s.orbit), power_(s.power), periode_(s.periode),
      vue_(new vue3d(orbit_, power_, periode_)) {
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->addWidget(vue_);
    vue_->temperatures_connues(false);
}

void vue3d_datee::montre(const orbit_state& o, double j) { place(o, j, s_.modele, nullptr); }

void vue3d_datee::montre_attitude(const orbit_state& o, double j, const rotation& attitude) {
    options_modele physique = s_.modele;
    physique.physique = true;
    place(o, j, physique, &attitude);
}

void vue3d_datee::place(const orbit_state& o, double j, const options_modele& modele,
                        const rotation* attitude) {
    orbit_ = o;
    power_ = s_.power;
    periode_ = s_.periode;
    periode_.j_courant = j;
    if (modele.physique)
        environnement(j, modele, attitude, power_, orbit_, periode_.j_debut);
    else
        environment_update(j, power_, orbit_, periode_);
    // The panels stand where their drive would have brought them.
    power_.pan_angle = static_cast<double>(power_.pan_angle_init) * rad_par_degre;
    if (power_.opt_panel_ext == vrai && power_.pan_fixed != vrai) {
        panel_target_update(power_, orbit_);
        if (power_.pan_target != sans_cible) power_.pan_angle = power_.pan_target;
    }
    surveillance().efface(); // an orbit that gives no position is told elsewhere
    vue_->redessine();
}

void vue3d_datee::suit_satellite() {
    vue_->vue_de_cote();
    affichage3d a = vue_->affichage();
    a.axes = a.nadir = a.vitesse = a.soleil = true;
    vue_->affiche(a);
}
