#include "analysis/calcul.h"

#include <utility>

#include "attitude/att_couples.h"
#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "physics/energie_physique.h"
#include "power/diagnostic.h"
#include "power/power_gestion.h"
#include "power/power_step.h"
#include "power/vraisemblance.h"
#include "shell/utilitaires.h"

namespace {

constexpr unsigned de_l_attitude = besoin::attitude | besoin::physique;

} // namespace

calcul::calcul(const modeles& m, std::vector<voie> voies, reglages_calcul r)
    : m_(m), voies_(std::move(voies)), r_(std::move(r)),
      besoins_(r_.besoins | besoins_de(voies_)), etat_{m_.periode, m_.orbite, m_.energie, m_.attitude},
      ligne_(voies_.size()) {
    if (r_.couple) besoins_ |= besoin::physique;
    if (!r_.modele.physique) besoins_ &= ~besoin::physique;
    const bool attitude = r_.modele.physique && lit(de_l_attitude);
    if (lit(besoin::couples) || attitude) air_ = std::make_unique<atmosphere>(r_.dossier_donnees);
    if (r_.modele.physique && air_) champ_ = std::make_unique<champ_geomagnetique>(r_.dossier_donnees);
}

std::string calcul::defaut_donnees() const {
    if (champ_ && !champ_->faute().empty()) return champ_->faute();
    return air_ ? air_->faute() : std::string();
}

std::string calcul::cause() const {
    if (!faute_ || faute_de_donnees() || !lit(besoin::energie)) return {};
    return cause_de_faute(m_.energie, m_.orbite, m_.periode);
}

std::span<const evenement_controle> calcul::evenements() const {
    if (!attitude_) return {};
    return attitude_->evenements();
}

bool calcul::verifie() {
    if (!veille_.faute()) return true;
    faute_ = true;
    raison_ = faute_de_donnees() ? defaut_donnees() : surveillance::description();
    return false;
}

bool calcul::demarre() {
    veille_.efface(); // what the caller does between two steps raises flags of its own
    commence_ = true;
    demarre_ = faute_ = charge_signalee_ = alerte_signalee_ = false;
    raison_.clear();
    alerte_.clear();
    lignes_ = pas_ = 0;
    m_.periode.j_courant = m_.periode.j_debut;
    if (lit(besoin::energie)) {
        power_state_init(m_.energie);
        m_.energie.t_charge = m_.energie.t_discharge = 0;
    }
    if (r_.modele.physique) {
        env_.emplace(m_.orbite.orbite, r_.modele.sans_j2, air_.get(), champ_.get());
        attitude_.reset();
        if (lit(de_l_attitude))
            attitude_.emplace(m_.attitude, m_.orbite, r_.modele, m_.periode.j_debut, *air_, *champ_);
    }
    if (const double j = m_.periode.j_debut; !(j + m_.periode.pas_sim / secondes_par_jour > j)) leve_faute();
    return demarre_ = verifie();
}

void calcul::lieu_reference() {
    const double j = m_.periode.j_courant;
    if (!lit(besoin::energie)) {
        orb_position(j, m_.orbite);
        m_.energie.part_soleil = m_.orbite.eclipse == vrai ? 0 : 1;
    } else if (r_.environnement)
        r_.environnement(j, m_.energie, m_.orbite, m_.periode);
    else
        environment_update(j, m_.energie, m_.orbite, m_.periode);
    if (lit(besoin::sol | besoin::couples)) sous_point(j, m_.orbite);
}

void calcul::lieu_physique() {
    const double j = m_.periode.j_courant;
    const bool donne = lit(besoin::energie) && r_.environnement;
    const bool couples = lit(besoin::couples) && !attitude_;
    if (lit(besoin::sol) || couples || (!donne && lit(besoin::orbite | besoin::energie))) {
        env_->place(j, {.champ = couples, .air = couples, .sol = lit(besoin::sol)}, milieu_);
        vers_etat_orbite(milieu_, m_.orbite);
        m_.energie.part_soleil = milieu_.part_soleil;
    }
    pointage_du_spin(j, m_.periode.j_debut, m_.orbite.pointage);
    if (donne)
        r_.environnement(j, m_.energie, m_.orbite, m_.periode);
    else if (lit(besoin::energie))
        environnement_energie(milieu_,
                              r_.couple ? attitude_->attitude()
                                        : attitude_nominale(milieu_, m_.orbite.pointage, m_.periode.j_debut),
                              m_.energie);
}

void calcul::attitude_du_pas() {
    if (const double j = m_.periode.j_courant; j != attitude_->date()) attitude_->avance(j, r_.arret);
    if (!ligne_a_lire_ && !lit(besoin::couples)) return;
    attitude_->lit(physique_);
    // A NaN of a damaged file goes through the sums without raising a flag.
    if (!std::isfinite(physique_.h_norme + physique_.energie)) leve_faute();
    etat_.physique = &physique_;
    etat_.enregistrement = &physique_.classique;
}

void calcul::couples_du_pas() {
    const double j = m_.periode.j_courant;
    attitude_record& a = m_.attitude;
    if (!r_.modele.physique) {
        pointage_du_spin(j, m_.periode.j_debut, m_.orbite.pointage);
        couples_sur_place(a, m_.orbite, j, *air_);
        return;
    }
    couples_corps t{physique_.gradient, physique_.aero, physique_.solaire, physique_.magnetique};
    if (!attitude_)
        t = couples_physiques(a, tenseur_inertie(a), r_.modele, milieu_,
                              attitude_nominale(milieu_, m_.orbite.pointage, m_.periode.j_debut));
    a.c_gradient = t.gradient, a.c_aero = t.aero, a.c_solaire = t.solaire, a.c_magnetique = t.magnetique;
    for (int i = 0; i < 3; ++i) a.ctot[i] = t.gradient[i] + t.aero[i] + t.solaire[i] + t.magnetique[i];
}

void calcul::un_pas() {
    if (attitude_) attitude_du_pas();
    r_.modele.physique ? lieu_physique() : lieu_reference();
    if (lit(besoin::energie))
        power_step_suite(m_.energie, m_.orbite, m_.periode,
                         r_.demande ? r_.demande(etat_) : demande_reference(m_.energie));
    if (lit(besoin::couples)) couples_du_pas();
}

bool calcul::pas() {
    veille_.efface();
    ligne_a_lire_ = pas_++ % r_.cadence == 0;
    un_pas();
    if (ligne_a_lire_)
        for (std::size_t c = 0; c < ligne_.size(); ++c) ligne_[c] = voies_[c].lit(etat_);
    if (!verifie()) return false;
    if (lit(besoin::energie) && alerte_.empty() && !vraisemblable(m_.energie))
        alerte_ = invraisemblance(m_.energie, m_.periode.j_courant);
    if (ligne_a_lire_) {
        ++lignes_;
        date_ligne_ = m_.periode.j_courant;
    }
    return true;
}

bool calcul::place(double date) {
    veille_.efface();
    const double courante = std::exchange(m_.periode.j_courant, date);
    r_.modele.physique ? lieu_physique() : lieu_reference();
    m_.periode.j_courant = courante;
    return verifie();
}

void calcul::avance() { m_.periode.j_courant += m_.periode.pas_sim / secondes_par_jour; }

bool calcul::suivant() {
    if (faute_ || arrete_) return false;
    do {
        if (commence_)
            avance();
        else if (!demarre())
            return false;
        arrete_ = r_.arret && r_.arret();
        if (arrete_ || !reste() || !pas()) return false;
        if (attitude_) arrete_ = r_.arret && r_.arret(); // the step may have been left before its end
        if (arrete_) return false;
    } while (!ligne_a_lire_);
    return true;
}

bool calcul::charge_a_signaler() {
    if (charge_signalee_ || !m_.energie.courbe_charge_incompatible) return false;
    return charge_signalee_ = true;
}

bool calcul::alerte_a_signaler() {
    if (alerte_signalee_ || alerte_.empty()) return false;
    return alerte_signalee_ = true;
}
