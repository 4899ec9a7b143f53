#include "analysis/passages.h"

#include <algorithm>

#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "physics/orbite_seculaire.h"
#include "physics/repere.h"
#include "shell/formats.h"
#include "shell/mot_csv.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

trajectoire trajectoire_reference(const record_orbite& o) {
    orbit_state etat;
    etat.orbite = o;
    return [etat](double j) mutable -> etat_terrestre {
        orb_satellite(j, etat);
        const vec3 p = vers_terrestre(j, etat.sat_pos), v = vers_terrestre(j, etat.sat_vit);
        return {p, {v[0] + taux_sideral * p[1], v[1] - taux_sideral * p[0], v[2]}};
    };
}

trajectoire trajectoire_du_modele(const record_orbite& o, const options_modele& modele) {
    if (!modele.physique) return trajectoire_reference(o);
    return [orbite = orbite_seculaire(o, modele.sans_j2)](double j) -> etat_terrestre {
        const auto lieu = orbite.a_la_date(j);
        const tour_terre terre(j);
        const vec3 p = terre.vers_terrestre(lieu.r), v = terre.vers_terrestre(lieu.v);
        return {p, {v[0] + taux_sideral * p[1], v[1] - taux_sideral * p[0], v[2]}};
    };
}

namespace {

constexpr double pas_regard = 30.0 / secondes_par_jour;
constexpr double tolerance = 1e-3 / secondes_par_jour;

/// What a station sees at a date.
struct regard {
    double j = 0;
    double ecart = 0;    ///< sine of the elevation less that of the mask
    double montee = 0;   ///< sign of the elevation's rate
    double approche = 0; ///< sign of the distance's rate
};

/// The passes of one station, from looks given in the order of time.
class suivi {
public:
    suivi(std::size_t indice, const station& s, const trajectoire& t, std::vector<passage>& trouves)
        : indice_(indice), repere_(s), sinus_masque_(std::sin(s.masque * rad_par_degre)), trajectoire_(t),
          trouves_(trouves) {}

    void commence(double j, const etat_terrestre& e) {
        dernier_ = voit(j, e);
        if (dernier_.ecart >= 0) ouvre(j);
    }

    void avance(double j, const etat_terrestre& e) {
        const regard a = dernier_, b = voit(j, e);
        // Between two extremes of the elevation the mask is crossed once at most.
        if (a.montee * b.montee < 0) {
            const regard m = zero(a, b, &regard::montee);
            segment(a, m);
            segment(m, b);
        } else
            segment(a, b);
        dernier_ = b;
    }

    void acheve() {
        if (en_vue_) ferme(dernier_.j);
    }

private:
    regard voit(double j, const etat_terrestre& e) const {
        const vec3 d = vec_difference(e.pos, repere_.pos);
        const double z = vec_scalaire(repere_.zenith, d), r2 = vec_scalaire(d, d),
                     dv = vec_scalaire(d, e.vit);
        return {j, z / std::sqrt(r2) - sinus_masque_, vec_scalaire(repere_.zenith, e.vit) * r2 - z * dv, dv};
    }
    regard voit(double j) const { return voit(j, trajectoire_(j)); }
    visee vise(double j) const { return repere_.vers(trajectoire_(j).pos); }

    /// Where a quantity of the look changes its sign between a and b.
    regard zero(regard a, regard b, double regard::*x) const {
        while (b.j - a.j > tolerance) {
            const regard m = voit((a.j + b.j) / 2);
            ((m.*x < 0) == (a.*x < 0) ? a : b) = m;
        }
        return b;
    }

    void segment(const regard& a, const regard& b) {
        if (!en_vue_ && b.ecart >= 0) ouvre(zero(a, b, &regard::ecart).j);
        if (!en_vue_) return;
        const double fin = b.ecart < 0 ? zero(a, b, &regard::ecart).j : b.j;
        if (a.approche < 0 && b.approche >= 0) note_distance(zero(a, b, &regard::approche).j, fin);
        if (b.ecart < 0)
            ferme(fin);
        else
            note(b.j, b.ecart);
    }

    void ouvre(double j) {
        en_vue_ = true;
        passage_ = {};
        passage_.station = indice_;
        passage_.debut = j;
        passage_.a_debut = vise(j);
        passage_.distance_min = passage_.a_debut.distance;
        plus_haut_ = -2;
        note(j, voit(j).ecart);
    }
    void note(double j, double ecart) {
        if (ecart <= plus_haut_) return;
        plus_haut_ = ecart;
        passage_.date_max = j;
    }
    void note_distance(double j, double fin) {
        if (j >= passage_.debut && j <= fin)
            passage_.distance_min = std::min(passage_.distance_min, vise(j).distance);
    }
    void ferme(double j) {
        en_vue_ = false;
        note(j, voit(j).ecart);
        passage_.fin = j;
        passage_.a_fin = vise(j);
        passage_.au_max = vise(passage_.date_max);
        passage_.distance_min = std::min(passage_.distance_min, passage_.a_fin.distance);
        if (passage_.fin > passage_.debut) trouves_.push_back(passage_);
    }

    std::size_t indice_;
    repere_station repere_;
    double sinus_masque_;
    const trajectoire& trajectoire_;
    std::vector<passage>& trouves_;
    regard dernier_;
    bool en_vue_ = false;
    passage passage_;
    double plus_haut_ = 0; ///< of the pass under way, as `regard::ecart`
};

} // namespace

resultat_passages cherche_passages(const trajectoire& t, const std::vector<station>& stations, double debut,
                                   double fin, const std::stop_token& arret) {
    resultat_passages r;
    if (!(fin >= debut)) return r;
    std::vector<suivi> suivis;
    for (std::size_t i = 0; i < stations.size(); ++i) suivis.emplace_back(i, stations[i], t, r.passages);

    surveillance veille;
    const double regards = std::ceil((fin - debut) / pas_regard);
    for (double k = 0; k <= regards; ++k) {
        const double j = k < regards ? debut + k * pas_regard : fin;
        const etat_terrestre e = t(j);
        for (suivi& s : suivis) k == 0 ? s.commence(j, e) : s.avance(j, e);
        if (veille.faute()) {
            r.faute = j;
            break;
        }
        if (arret.stop_requested()) {
            r.interrompu = true;
            break;
        }
    }
    if (!r.faute)
        for (suivi& s : suivis) s.acheve();
    std::sort(r.passages.begin(), r.passages.end(), [](const passage& a, const passage& b) {
        return a.debut != b.debut ? a.debut < b.debut : a.station < b.station;
    });
    return r;
}

namespace {

constexpr colonne_passage colonnes[] = {
    {"debut", [](const passage& p) { return p.debut; }},
    {"fin", [](const passage& p) { return p.fin; }},
    {"duree", [](const passage& p) { return p.duree(); }},
    {"elevation_max", [](const passage& p) { return p.au_max.elevation; }},
    {"date_max", [](const passage& p) { return p.date_max; }},
    {"azimut_debut", [](const passage& p) { return p.a_debut.azimut; }},
    {"azimut_max", [](const passage& p) { return p.au_max.azimut; }},
    {"azimut_fin", [](const passage& p) { return p.a_fin.azimut; }},
    {"distance_min", [](const passage& p) { return p.distance_min; }},
};

} // namespace

std::span<const colonne_passage> colonnes_passage() { return colonnes; }

std::string passages_csv(const std::vector<passage>& passages, const std::vector<station>& stations) {
    std::string t = "station";
    for (const auto& c : colonnes) t += std::string(",") + c.nom;
    t += '\n';
    for (const passage& p : passages) {
        t += mot_csv(stations[p.station].nom);
        for (const auto& c : colonnes) t += "," + format_court(c.valeur(p));
        t += '\n';
    }
    return t;
}
