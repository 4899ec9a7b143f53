#include "analysis/banc_attitude.h"

#include <algorithm>
#include <cmath>

#include "orbit/math.h"
#include "physics/rotation.h"
#include "shell/utilitaires.h"

namespace {

double premiere(std::span<const double> c) { return std::fabs(c[0]); }
double norme(std::span<const double> c) { return std::hypot(c[0], c[1], c[2]); }

/// Of the whole turn that the three angles make [deg]: the trace of its matrix is 1 + 2 cos.
double ecart_total(std::span<const double> c) {
    const rotation A = rotation_lacet_tangage_roulis(degres_vers_radians(c[2]), degres_vers_radians(c[1]),
                                                     degres_vers_radians(c[0]));
    const quaternion q = quaternion_de(A);
    return radians_vers_degres(2 * std::atan2(std::hypot(q[1], q[2], q[3]), q[0]));
}

using noms = std::vector<std::string>;

noms axes(const std::string& nom) { return {nom + "_x", nom + "_y", nom + "_z"}; }

} // namespace

std::span<const groupe_banc> groupes_banc() {
    static const std::vector<groupe_banc> table = {
        {"angles", "Angles : roulis, tangage, lacet", {"roulis", "tangage", "lacet"}},
        {"vitesses", "Vitesses de rotation", axes("omega")},
        {"moment", "Moment cinétique", {"h_x", "h_y", "h_z", "h_norme"}},
        {"energie", "Énergie de rotation", {"energie"}},
        {"gradient", "Couple : gradient de gravité", axes("gradient")},
        {"aero", "Couple : frottement de l'air", axes("aero")},
        {"solaire", "Couple : pression de rayonnement", axes("solaire")},
        {"magnetique", "Couple : dipôle dans le champ", axes("magnetique")},
        {"commande", "Couple des magnétocoupleurs", axes("commande")},
        {"couple_roue", "Couple des moteurs de roues", axes("couple_roue")},
        {"vitesse_roue", "Vitesse des roues", axes("vitesse_roue")},
        {"angle_nadir", "Angle de chaque axe avec le nadir", axes("angle_nadir")},
        {"angle_soleil", "Angle de chaque axe avec le Soleil", axes("angle_soleil")},
        {"angle_champ", "Angle de chaque axe avec le champ", axes("angle_champ")},
        {"angle_h", "Angle de chaque axe avec le moment", axes("angle_h")},
    };
    return table;
}

std::span<const grandeur_banc> grandeurs_banc() {
    static const std::vector<grandeur_banc> table = {
        {"ecart", "L'écart au repère orbital", "°", 5, {"roulis", "tangage", "lacet"}, ecart_total},
        {"energie", "L'énergie de rotation", "J", 1e-4, {"energie"}, premiere},
        {"vitesse", "La vitesse de rotation", "°/s", .2, axes("omega"), norme},
        {"roulis", "Le roulis", "°", 5, {"roulis"}, premiere},
        {"tangage", "Le tangage", "°", 5, {"tangage"}, premiere},
        {"lacet", "Le lacet", "°", 5, {"lacet"}, premiere},
        {"nadir_x", "L'angle de l'axe x au nadir", "°", 5, {"angle_nadir_x"}, premiere},
        {"nadir_y", "L'angle de l'axe y au nadir", "°", 5, {"angle_nadir_y"}, premiere},
        {"nadir_z", "L'angle de l'axe z au nadir", "°", 5, {"angle_nadir_z"}, premiere},
        {"soleil_x", "L'angle de l'axe x au Soleil", "°", 5, {"angle_soleil_x"}, premiere},
        {"soleil_y", "L'angle de l'axe y au Soleil", "°", 5, {"angle_soleil_y"}, premiere},
        {"soleil_z", "L'angle de l'axe z au Soleil", "°", 5, {"angle_soleil_z"}, premiere},
        {"h_x", "L'angle de l'axe x au moment cinétique", "°", 5, {"angle_h_x"}, premiere},
        {"h_y", "L'angle de l'axe y au moment cinétique", "°", 5, {"angle_h_y"}, premiere},
        {"h_z", "L'angle de l'axe z au moment cinétique", "°", 5, {"angle_h_z"}, premiere},
    };
    return table;
}

vue_banc vue_d_office(loi_controle loi) {
    switch (loi) {
    case loi_controle::b_dot: return {{"vitesses", "energie", "commande"}, "vitesse"};
    case loi_controle::pd: return {{"angles", "couple_roue", "vitesse_roue"}, "ecart"};
    default: return {{"angles", "vitesses", "energie"}, "ecart"};
    }
}

resultat_courbes calcule_banc(etude e, const std::string& dossier, suivi_courbes& suivi,
                              const std::stop_token& abandon) {
    e.modele.physique = true;
    e.modes.clear(); // they ask for nothing but power
    noms voulus = {"q0", "q1", "q2", "q3"};
    for (const groupe_banc& g : groupes_banc()) voulus.insert(voulus.end(), g.voies.begin(), g.voies.end());
    return calcule_courbes(std::move(e), voulus, dossier, suivi, abandon,
                           {.energie = false, .lignes_max = lignes_max_banc});
}

passage_seuil passe_sous(const resultat_courbes& r, const grandeur_banc& g, double seuil) {
    std::vector<const serie*> s;
    for (const std::string& nom : g.voies) {
        const courbe_calculee* c = r.cherche(nom);
        if (!c) return {};
        s.push_back(&c->valeurs);
    }
    passage_seuil p;
    std::vector<double> ligne(s.size());
    double avant = 0;
    for (std::size_t i = 0; i < s[0]->taille(); ++i) {
        for (std::size_t k = 0; k < s.size(); ++k) ligne[k] = s[k]->valeur(i);
        const double x = g.valeur(ligne);
        if (!(x < seuil)) {
            p.definitif.reset();
        } else if (!p.definitif) {
            const double j = s[0]->date(i);
            p.definitif = i == 0 ? j : j - (j - s[0]->date(i - 1)) * (seuil - x) / (avant - x);
            if (!p.premier) p.premier = p.definitif;
        }
        avant = x;
    }
    return p;
}

std::optional<std::array<double, 4>> attitude_a(const resultat_courbes& r, double date) {
    std::array<const serie*, 4> q;
    for (std::size_t k = 0; k < 4; ++k) {
        const courbe_calculee* c = r.cherche("q" + std::to_string(k));
        if (!c || c->valeurs.taille() == 0) return {};
        q[k] = &c->valeurs;
    }
    const serie& s = *q[0];
    const std::size_t n = s.taille();
    if (!(date >= s.date(0) - 1e-9 && date <= s.date(n - 1) + 1e-9)) return {};
    const std::size_t b = std::min(s.depuis(date), n - 1), a = b > 0 ? b - 1 : b;
    const double duree = s.date(b) - s.date(a);
    const double t = duree > 0 ? std::clamp((date - s.date(a)) / duree, 0., 1.) : 1;
    double scalaire = 0; // q and -q are one attitude: the nearer one
    for (const serie* c : q) scalaire += c->valeur(a) * c->valeur(b);
    std::array<double, 4> x;
    for (std::size_t k = 0; k < 4; ++k)
        x[k] = (1 - t) * q[k]->valeur(a) + t * (scalaire < 0 ? -1 : 1) * q[k]->valeur(b);
    const double longueur = std::sqrt(x[0] * x[0] + x[1] * x[1] + x[2] * x[2] + x[3] * x[3]);
    if (!(longueur > 0)) return {};
    for (double& c : x) c /= longueur;
    return x;
}

std::vector<std::string> avertissements_attitude(const etude& e) {
    std::vector<std::string> a;
    if (e.modele.controle.loi == loi_controle::pd)
        for (std::size_t axe = 0; axe < 3; ++axe)
            if (e.attitude.JR[axe] == 0 || e.modele.sans_roues)
                a.push_back(std::string("contrôle pd : pas de roue sur l'axe ") + "xyz"[axe] +
                            ", il n'y a pas de couple");
    return a;
}
