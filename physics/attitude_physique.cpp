#include "physics/attitude_physique.h"

#include <algorithm>
#include <numbers>

#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

constexpr double portee = 4;               // [s] of a span
constexpr double jeu = 1e-3;               // [s] by which the rounding of day counts may overrun it
constexpr long passes_par_question = 1024; // of inner steps, some milliseconds
constexpr double degres = 180 / std::numbers::pi, tours_min = 30 / std::numbers::pi;

/// Angles of a vector (body axes) to the three axes [deg].
vec3 angles_aux_axes(const vec3& v) {
    vec3 r;
    for (int i = 0; i < 3; ++i) r[i] = std::atan2(std::hypot(v[(i + 1) % 3], v[(i + 2) % 3]), v[i]) * degres;
    return r;
}

besoins_milieu besoins_de(const options_modele& o) {
    return {!o.sans_magnetique || o.controle.loi == loi_controle::b_dot, !o.sans_aero};
}

/// Where body axes stand to what surrounds them, angles of the local frame included.
void note_directions(const milieu& m, const rotation& A, ligne_attitude& l) {
    l.angle_h = angles_aux_axes(A.vers_corps(l.h));
    l.angle_nadir = angles_aux_axes(A.vers_corps(vec_echelle(-1, m.r)));
    l.angle_soleil = angles_aux_axes(A.vers_corps(m.vers_soleil));
    l.angle_champ = angles_aux_axes(A.vers_corps(m.champ));
    l.champ = vec_echelle(1e9, m.champ);
    l.part_soleil = m.part_soleil;
    l.orbital = angles_de(compose(A, inverse(repere_local(m))));
    l.roulis = l.orbital.roulis * degres;
    l.tangage = l.orbital.tangage * degres;
    l.lacet = l.orbital.lacet * degres;
}

/// The 25 values, from the rest of the row: rates in inertial axes and relative to the local frame.
void note_classique(const rotation& A, const vec3& omega, const vec3& omega_local, const vec3& acceleration,
                    ligne_attitude& l) {
    enregistrement_att& e = l.classique;
    e[0] = l.j;
    for (int i = 0; i < 3; ++i) {
        e[1 + i] = l.omega[i];
        e[4 + i] = acceleration[i] * degres;
        e[19 + i] = l.roues[i];
        e[22 + i] = l.gradient[i] + l.aero[i] + l.solaire[i] + l.magnetique[i] + l.commande[i];
    }
    const auto ecrit = [&e](int k, const angles_euler& x, double unite) {
        e[k] = x.roulis * unite, e[k + 1] = x.tangage * unite, e[k + 2] = x.lacet * unite;
    };
    const angles_euler inertiel = angles_de(A);
    ecrit(7, l.orbital, degres);
    ecrit(10, taux_de(l.orbital, omega_local), tours_min);
    ecrit(13, inertiel, degres);
    ecrit(16, taux_de(inertiel, omega), tours_min);
}

} // namespace

attitude_physique::attitude_physique(const attitude_record& a, const orbit_state& o,
                                     const options_modele& options, double j_debut, atmosphere& air,
                                     champ_geomagnetique& champ)
    : a_(a), options_(options), pointage_(o.pointage), j_debut_(j_debut),
      env_(o.orbite, options.sans_j2, &air, &champ), corps_(a, options), J_(corps_.J0),
      besoins_(besoins_de(options)), date_(j_debut) {
    commence_trajet(portee);
    etat_.q = quaternion_de(attitude_nominale(trajet_[0], pointage_, j_debut));
    for (int i = 0; i < 3; ++i) etat_.hw[i] = corps_.JR[i] * a.OM_init[i];
    lance_mouvement(corps_, etat_, {a.omega_init[0], a.omega_init[1], a.omega_init[2]});
    vec3 champ_point;
    const milieu m = entourage(0, champ_point);
    const rotation A = attitude();
    couple_ = efforts_de(m, champ_point, A, vitesses_de(corps_, etat_, A), etat_).externe;
    note_saturations();
}

void attitude_physique::commence_trajet(double duree) {
    const bool suite = trajet_fin_ > trajet_debut_ && std::fabs(t_ - trajet_fin_) <= jeu;
    if (suite) trajet_[0] = trajet_[2];
    trajet_debut_ = suite ? trajet_fin_ : t_;
    trajet_fin_ = trajet_debut_ + duree;
    for (int i = suite ? 1 : 0; i < 3; ++i)
        env_.place(j_debut_ + (trajet_debut_ + duree * i / 2) / secondes_par_jour, besoins_, trajet_[i]);
}

/// The parabola through the three nodes.
milieu attitude_physique::entourage(double t, vec3& champ_point) const {
    const double duree = trajet_fin_ - trajet_debut_, x = 2 * (t - trajet_debut_) / duree - 1; // -1, 0, 1
    const double a = x * (x - 1) / 2, b = 1 - x * x, c = x * (x + 1) / 2;
    const milieu &d = trajet_[0], &m = trajet_[1], &f = trajet_[2];
    const auto entre = [&](double u, double v, double w) { return a * u + b * v + c * w; };
    const auto vecteur = [&](const vec3 milieu::*v) {
        vec3 r;
        for (int i = 0; i < 3; ++i) r[i] = entre((d.*v)[i], (m.*v)[i], (f.*v)[i]);
        return r;
    };
    milieu r;
    r.j = j_debut_ + t / secondes_par_jour;
    r.r = vecteur(&milieu::r);
    r.v = vecteur(&milieu::v);
    r.rayon = vec_norme(r.r);
    r.vers_soleil = vecteur(&milieu::vers_soleil);
    r.distance_soleil = m.distance_soleil;
    r.part_soleil = std::clamp(entre(d.part_soleil, m.part_soleil, f.part_soleil), 0.0, 1.0);
    r.champ = vecteur(&milieu::champ);
    r.vent = vecteur(&milieu::vent);
    r.densite = std::max(0.0, entre(d.densite, m.densite, f.densite));
    const double k = 2 / duree;
    for (int i = 0; i < 3; ++i)
        champ_point[i] = k * ((x - .5) * d.champ[i] - 2 * x * m.champ[i] + (x + .5) * f.champ[i]);
    return r;
}

attitude_physique::efforts attitude_physique::efforts_de(const milieu& m, const vec3& champ_point,
                                                         const rotation& A, const vitesses_corps& v,
                                                         const etat_mouvement& e) {
    efforts f{couples_physiques(a_, J_, options_, m, A), {}, {}, a_.jets};
    for (const vec3& t : {f.t.gradient, f.t.aero, f.t.solaire, f.t.magnetique})
        f.externe = vec_somme(f.externe, t);

    const controle_attitude& c = options_.controle;
    if (c.loi == loi_controle::b_dot) {
        const vec3 B = A.vers_corps(m.champ);
        const vec3 B_point = vec_difference(A.vers_corps(champ_point), vec_vectoriel(v.omega, B));
        f.commande = vec_vectoriel(dipole_b_dot(c, B_point, saturation_), B);
        f.externe = vec_somme(f.externe, f.commande);
    } else if (c.loi == loi_controle::pd) {
        ecart_attitude ecart;
        if (c.cible == cible_controle::nadir) {
            vec3 taux = taux_local(m);
            if (pointage_.spin)
                taux = vec_somme(taux, vec_echelle(pointage_.vspin / tours_min / m.rayon, m.r));
            ecart = ecart_au_repere(A, attitude_nominale(m, pointage_, j_debut_), taux, v.omega);
        } else {
            ecart = ecart_a_la_direction(A, c.face, m.vers_soleil, v.omega);
        }
        f.roues = couple_pd(c, corps_, ecart, v.omega, A.vers_corps(e.H), e.hw, saturation_);
    }
    return f;
}

double attitude_physique::pas_interne() const {
    const vitesses_corps v = vitesses_de(corps_, etat_, attitude());
    const milieu& m = trajet_[0];
    double pas =
        std::min(pas_du_mouvement(corps_, v.omega, etat_.hw, couple_), 0.05 * m.rayon / vec_norme(m.v));
    const controle_attitude& c = options_.controle;
    if (c.loi == loi_controle::pd)
        pas = std::min(pas, 0.05 / (c.frequence * std::max(1.0, 2 * c.amortissement)));
    if (c.loi == loi_controle::b_dot) // at most the time in which the law brakes the rotation
        if (const double frein = c.gain * vec_scalaire(m.champ, m.champ); frein > 1e-12 * corps_.inertie_min)
            pas = std::min(pas, corps_.inertie_min / frein);
    return pas;
}

void attitude_physique::avance(double j, const std::function<bool()>& arret) {
    const double but = (j - j_debut_) * secondes_par_jour;
    saturation_ = 0;
    for (long passe = 0; t_ < but; ++passe) {
        const double pas = pas_interne(), reste = but - t_;
        if (!(reste / pas < passes_max - passe)) {
            leve_faute();
            return;
        }
        if (arret && passe % passes_par_question == passes_par_question - 1 && arret()) return;
        // A span that is over, or that was made for a slower motion, gives way to the next.
        const double voulu = std::max(portee, std::min(pas, reste));
        if (t_ >= trajet_fin_ - jeu || trajet_fin_ - trajet_debut_ > 2 * voulu)
            commence_trajet(reste > portee && reste > pas && pas > portee ? reste / std::ceil(reste / pas)
                                                                          : voulu);
        const double borne = but <= trajet_fin_ + jeu ? but : trajet_fin_, n = std::ceil((borne - t_) / pas);
        const double suivant = n <= 1 ? borne : t_ + (borne - t_) / n, h = suivant - t_;

        vec3 champ_point[3];
        const milieu m[3] = {entourage(t_, champ_point[0]), entourage(t_ + h / 2, champ_point[1]),
                             entourage(suivant, champ_point[2])};
        bool premier = true;
        pas_rk4(corps_, etat_, h,
                [&](int instant, const rotation& A, const vitesses_corps& v, const etat_mouvement& e) {
                    const efforts f = efforts_de(m[instant], champ_point[instant], A, v, e);
                    if (premier) couple_ = f.externe;
                    premier = false;
                    return actions{f.externe, f.roues};
                });
        t_ = suivant;
        ++pas_internes_;
    }
    date_ = j;
    note_saturations();
}

void attitude_physique::note_saturations() {
    const saturations change = saturation_ ^ saturation_notee_;
    for (const saturation s : {dipole_sature, couple_roue_sature, vitesse_roue_saturee})
        for (int axe = 0; axe < 3; ++axe)
            if (const saturations bit = bit_sature(s, axe); change & bit)
                evenements_.push_back({date_, s, axe, (saturation_ & bit) != 0});
    saturation_notee_ = saturation_;
}

void attitude_physique::lit(ligne_attitude& l) {
    milieu m;
    env_.place(date_, {.champ = true, .air = besoins_.air}, m);
    vec3 champ_point;
    entourage(t_, champ_point);
    const rotation A = attitude();
    const vitesses_corps v = vitesses_de(corps_, etat_, A);
    const saturations avant = saturation_;
    const efforts f = efforts_de(m, champ_point, A, v, etat_);
    saturation_ = avant;

    l.j = m.j;
    std::copy(etat_.q.begin(), etat_.q.end(), l.q);
    l.h = etat_.H;
    l.h_norme = vec_norme(etat_.H);
    l.energie = energie_de(corps_, etat_);
    note_directions(m, A, l);
    l.gradient = f.t.gradient;
    l.aero = f.t.aero;
    l.solaire = f.t.solaire;
    l.magnetique = f.t.magnetique;
    l.commande = f.commande;
    l.couple_roues = f.roues;
    l.omega = vec_echelle(degres, v.omega);
    l.sature = saturation_;
    for (int i = 0; i < 3; ++i)
        l.roues[i] = corps_.JR[i] != 0 ? etat_.hw[i] / corps_.JR[i] * degres
                                       : (options_.sans_roues ? 0 : a_.OM_init[i] * degres);

    const vec3 acceleration = acceleration_de(corps_, etat_, A, v, {f.externe, f.roues});
    // The local frame turns with the orbit and with the drift of its plane and perigee.
    vec3 taux = taux_local(m);
    taux[2] += env_.orbite().taux_noeud;
    note_classique(A, v.omega, vec_difference(v.omega, A.vers_corps(taux)), acceleration, l);
}

std::string texte_limite(const evenement_controle& e) {
    const std::string axe(1, "xyz"[e.axe]);
    switch (e.nature) {
    case dipole_sature: return "Magnétocoupleur " + axe + " : dipôle maximal";
    case couple_roue_sature: return "Roue " + axe + " : couple maximal";
    default: return "Roue " + axe + " : vitesse maximale";
    }
}
