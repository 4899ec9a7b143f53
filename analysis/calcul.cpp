#include "analysis/calcul.h"

#include "attitude/att_couples.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "power/power_gestion.h"
#include "power/power_step.h"
#include "shell/utilitaires.h"

calcul::calcul(const modeles& m, std::vector<voie> voies, reglages_calcul r)
    : m_(m), voies_(std::move(voies)), r_(std::move(r)),
      besoins_(r_.besoins | besoins_de(voies_)), etat_{m_.periode, m_.orbite, m_.energie, m_.attitude},
      ligne_(voies_.size()) {
    if (besoins_ & besoin::couples) air_ = std::make_unique<atmosphere>(r_.dossier_donnees);
}

bool calcul::verifie() {
    if (!veille_.faute()) return true;
    faute_ = true;
    raison_ = faute_de_donnees() ? air_->faute() : surveillance::description();
    return false;
}

bool calcul::demarre() {
    veille_.efface(); // what the caller does between two steps raises flags of its own
    commence_ = true;
    demarre_ = faute_ = charge_signalee_ = false;
    raison_.clear();
    lignes_ = 0;
    m_.periode.j_courant = m_.periode.j_debut;
    if (besoins_ & besoin::energie) {
        power_state_init(m_.energie);
        m_.energie.t_charge = m_.energie.t_discharge = 0;
    }
    return demarre_ = verifie();
}

void calcul::un_pas() {
    const double j = m_.periode.j_courant;
    const bool energie = besoins_ & besoin::energie;
    if (!energie)
        orb_position(j, m_.orbite);
    else if (r_.environnement)
        r_.environnement(j, m_.energie, m_.orbite, m_.periode);
    else
        environment_update(j, m_.energie, m_.orbite, m_.periode);
    if (besoins_ & (besoin::sol | besoin::couples)) sous_point(j, m_.orbite);
    if (energie)
        power_step_suite(m_.energie, m_.orbite, m_.periode,
                         r_.demande ? r_.demande(etat_) : demande_reference(m_.energie));
    if (besoins_ & besoin::couples) {
        pointage_du_spin(j, m_.periode.j_debut, m_.orbite.pointage);
        couples_sur_place(m_.attitude, m_.orbite, j, *air_);
    }
}

bool calcul::pas() {
    veille_.efface();
    un_pas();
    for (std::size_t c = 0; c < ligne_.size(); ++c) ligne_[c] = voies_[c].lit(etat_);
    if (!verifie()) return false;
    ++lignes_;
    return true;
}

void calcul::avance() { m_.periode.j_courant += m_.periode.pas_sim / secondes_par_jour; }

bool calcul::suivant() {
    if (faute_) return false;
    if (commence_)
        avance();
    else if (!demarre())
        return false;
    return reste() && pas();
}

bool calcul::charge_a_signaler() {
    if (charge_signalee_ || !m_.energie.courbe_charge_incompatible) return false;
    return charge_signalee_ = true;
}
