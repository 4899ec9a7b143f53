#include "physics/attitude_physique.h"

#include <algorithm>
#include <numbers>

#include "physics/soleil_almanach.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

namespace {

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

} // namespace

attitude_physique::attitude_physique(const attitude_record& a, const orbit_state& o,
                                     const options_modele& options, double j_debut, atmosphere& air,
                                     champ_geomagnetique& champ)
    : a_(a), options_(options), pointage_(o.pointage), j_debut_(j_debut),
      env_(o.orbite, options.sans_j2, &air, &champ), corps_(a, options), J_(corps_.J0),
      besoins_(besoins_de(options)) {
    env_.place(j_debut, besoins_, milieu_);
    etat_.q = quaternion_de(attitude_nominale(milieu_, pointage_, j_debut));
    for (int i = 0; i < 3; ++i) etat_.hw[i] = corps_.JR[i] * a.OM_init[i];
    lance_mouvement(corps_, etat_, {a.omega_init[0], a.omega_init[1], a.omega_init[2]});
    if (options_.controle.loi == loi_controle::b_dot) {
        milieu apres;
        constexpr double h = 0.1;
        env_.place(j_debut + h / secondes_par_jour, besoins_, apres);
        champ_point_ = vec_echelle(1 / h, vec_difference(apres.champ, milieu_.champ));
    }
    const rotation A = attitude();
    couple_ = efforts_de(milieu_, champ_point_, A, vitesses_de(corps_, etat_, A), etat_).externe;
    note_saturations();
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
    double pas = std::min(pas_conseille(corps_, v.omega, etat_.hw, couple_),
                          0.05 * milieu_.rayon / vec_norme(milieu_.v));
    const controle_attitude& c = options_.controle;
    if (c.loi == loi_controle::pd)
        pas = std::min(pas, 0.05 / (c.frequence * std::max(1.0, 2 * c.amortissement)));
    if (c.loi == loi_controle::b_dot) // at most the time in which the law brakes the rotation
        pas = std::min(pas, corps_.inertie_min / (c.gain * vec_scalaire(milieu_.champ, milieu_.champ)));
    return pas;
}

void attitude_physique::avance(double dt, double j) {
    const double j0 = milieu_.j;
    const vec3 soleil0 = milieu_.soleil_pos, soleil1 = soleil_almanach(j);
    saturation_ = 0;
    double fait = 0;
    for (long passe = 0; fait < dt; ++passe) {
        const double reste = dt - fait, n = std::ceil(reste / pas_interne());
        if (!(n <= passes_max - passe)) {
            leve_faute();
            return;
        }
        const double h = n <= 1 ? reste : reste / n;
        const auto place = [&](double t, milieu& m) {
            const double f = t / dt;
            vec3 soleil;
            for (int i = 0; i < 3; ++i) soleil[i] = soleil0[i] + f * (soleil1[i] - soleil0[i]);
            env_.place(j0 + t / secondes_par_jour, soleil, besoins_, m);
        };
        milieu m[3] = {milieu_, milieu_, milieu_};
        place(fait + h / 2, m[1]);
        if (n <= 1)
            env_.place(j, soleil1, besoins_, m[2]);
        else
            place(fait + h, m[2]);

        vec3 B_point[3];
        for (int i = 0; i < 3; ++i) { // derivatives of the parabola through the three fields
            const double a = m[0].champ[i], b = m[1].champ[i], c = m[2].champ[i];
            B_point[0][i] = (4 * b - 3 * a - c) / h;
            B_point[1][i] = (c - a) / h;
            B_point[2][i] = (a - 4 * b + 3 * c) / h;
        }
        bool premier = true;
        pas_rk4(corps_, etat_, h,
                [&](int instant, const rotation& A, const vitesses_corps& v, const etat_mouvement& e) {
                    const efforts f = efforts_de(m[instant], B_point[instant], A, v, e);
                    if (premier) couple_ = f.externe;
                    premier = false;
                    return actions{f.externe, f.roues};
                });
        milieu_ = m[2];
        champ_point_ = B_point[2];
        ++pas_internes_;
        if (n <= 1) break;
        fait += h;
    }
    note_saturations();
}

void attitude_physique::note_saturations() {
    const saturations change = saturation_ ^ saturation_notee_;
    for (const saturation s : {dipole_sature, couple_roue_sature, vitesse_roue_saturee})
        for (int axe = 0; axe < 3; ++axe)
            if (const saturations bit = bit_sature(s, axe); change & bit)
                evenements_.push_back({milieu_.j, s, axe, (saturation_ & bit) != 0});
    saturation_notee_ = saturation_;
}

void attitude_physique::lit(ligne_attitude& l) {
    milieu& m = milieu_;
    if (!besoins_.champ) env_.place(m.j, m.soleil_pos, {true, besoins_.air}, m); // for the columns alone
    const rotation A = attitude();
    const vitesses_corps v = vitesses_de(corps_, etat_, A);
    const saturations avant = saturation_;
    const efforts f = efforts_de(m, champ_point_, A, v, etat_);
    saturation_ = avant;

    l.j = m.j;
    std::copy(etat_.q.begin(), etat_.q.end(), l.q);
    l.h = etat_.H;
    l.h_norme = vec_norme(etat_.H);
    l.energie = energie_de(corps_, etat_);
    l.angle_h = angles_aux_axes(A.vers_corps(etat_.H));
    l.angle_nadir = angles_aux_axes(A.vers_corps(vec_echelle(-1, m.r)));
    l.angle_soleil = angles_aux_axes(A.vers_corps(m.vers_soleil));
    l.angle_champ = angles_aux_axes(A.vers_corps(m.champ));
    l.gradient = f.t.gradient;
    l.aero = f.t.aero;
    l.solaire = f.t.solaire;
    l.magnetique = f.t.magnetique;
    l.commande = f.commande;
    l.couple_roues = f.roues;
    l.omega = vec_echelle(degres, v.omega);
    l.champ = vec_echelle(1e9, m.champ);
    l.part_soleil = m.part_soleil;
    l.sature = saturation_;
    for (int i = 0; i < 3; ++i)
        l.roues[i] = corps_.JR[i] != 0 ? etat_.hw[i] / corps_.JR[i] * degres
                                       : (options_.sans_roues ? 0 : a_.OM_init[i] * degres);

    const rotation local = repere_local(m);
    const angles_euler orbital = angles_de(compose(A, inverse(local))), inertiel = angles_de(A);
    l.roulis = orbital.roulis * degres;
    l.tangage = orbital.tangage * degres;
    l.lacet = orbital.lacet * degres;

    const vec3 acceleration = acceleration_de(corps_, etat_, A, v, {f.externe, f.roues});
    // The local frame turns with the orbit and with the drift of its plane and perigee.
    vec3 taux = taux_local(m);
    taux[2] += env_.orbite().taux_noeud;
    const angles_euler taux_orbital = taux_de(orbital, vec_difference(v.omega, A.vers_corps(taux)));
    const angles_euler taux_inertiel = taux_de(inertiel, v.omega);
    enregistrement_att& e = l.classique;
    e[0] = l.j;
    for (int i = 0; i < 3; ++i) {
        e[1 + i] = l.omega[i];
        e[4 + i] = acceleration[i] * degres;
        e[19 + i] = l.roues[i];
        e[22 + i] = f.t.gradient[i] + f.t.aero[i] + f.t.solaire[i] + f.t.magnetique[i] + f.commande[i];
    }
    const auto ecrit = [&e](int k, const angles_euler& x, double unite) {
        e[k] = x.roulis * unite, e[k + 1] = x.tangage * unite, e[k + 2] = x.lacet * unite;
    };
    ecrit(7, orbital, degres);
    ecrit(10, taux_orbital, tours_min);
    ecrit(13, inertiel, degres);
    ecrit(16, taux_inertiel, tours_min);
}

std::string texte_limite(const evenement_controle& e) {
    const std::string axe(1, "xyz"[e.axe]);
    switch (e.nature) {
    case dipole_sature: return "Magnétocoupleur " + axe + " : dipôle maximal";
    case couple_roue_sature: return "Roue " + axe + " : couple maximal";
    default: return "Roue " + axe + " : vitesse maximale";
    }
}
