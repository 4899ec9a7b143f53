/// What of the models' limits matters for an étude.
#include <algorithm>
#include <cmath>

#include "analysis/modes.h"
#include "analysis/phrase_bilan.h"
#include "analysis/rapport.h"
#include "orbit/orb_trajecto.h"
#include "physics/orbite_seculaire.h"
#include "power/montage.h"
#include "shell/utilitaires.h"

namespace {

using phrases = std::vector<std::string>;

constexpr double derive_negligeable = 0.05; // [deg/day]
constexpr double diametre_soleil = 0.533;   // [deg]

/// What the flattening that is left out would do.
void aplatissement(const etude& e, double fin, phrases& p) {
    const orbite_seculaire vraie(e.orbit.orbite, false);
    const double par_jour = radians_vers_degres(vraie.taux_noeud) * secondes_par_jour;
    const double total = std::fabs(par_jour * (fin - vraie.epoque));
    if (std::fabs(par_jour) < derive_negligeable && total < 1) return;
    p.push_back("L'orbite est fixe : l'aplatissement de la Terre ferait dériver le nœud de " +
                nombre_fr(par_jour, 2) + "° par jour" +
                (total >= 1 ? ", soit " + nombre_fr(total, 0) + "° entre l'époque et la fin du calcul" : "") +
                ". Pour une autre saison, donnez un nœud et une époque de cette saison" +
                (e.modele.physique ? "." : ", ou prenez le modèle physique."));
}

void orbite(const etude& e, double fin, phrases& p) {
    const record_orbite& o = e.orbit.orbite;
    const double perigee = altitude_perigee(o);
    if (!e.modele.physique || e.modele.sans_j2)
        aplatissement(e, fin, p);
    else
        p.push_back(
            "L'orbite suit la dérive séculaire de J2 seule : ni termes périodiques (jusqu'à 10 km), ni "
            "frottement.");
    if (perigee < 500)
        p.push_back("Le frottement de l'air ne fait pas descendre l'orbite : avec un périgée de " +
                    nombre_fr(perigee, 0) + " km, l'altitude ne tiendrait que quelques " +
                    (perigee < 300 ? "jours ou semaines" : "mois ou années") + " sans poussée.");
    if (o.orb_demi > 20000)
        p.push_back(
            "La Lune et le Soleil ne perturbent pas l'orbite ; à cette altitude, l'inclinaison réelle "
            "dériverait d'un peu moins d'un degré par an.");
}

void lumiere(const etude& e, phrases& p) {
    p.push_back("La durée d'une éclipse est arrondie au pas de " + std::to_string(e.periode.pas_sim) + " s" +
                (e.modele.physique
                     ? "."
                     : ", sans pénombre (environ " + nombre_fr(duree_orbite(e) * diametre_soleil / 360, 0) +
                           " s à chaque bord sur cette orbite)."));
    if (!e.modele.physique && montage_de(e.power) != montage::externes)
        p.push_back(
            "L'albédo vu par les cellules vient d'une source ponctuelle au nadir : environ 20 % de trop à "
            "700 km pour une face tournée vers la Terre.");
}

void panneaux(const etude& e, phrases& p) {
    switch (montage_de(e.power)) {
    case montage::externes:
        p.push_back(
            "Le corps ne fait pas d'ombre sur les panneaux externes : c'est optimiste quand le Soleil est "
            "derrière lui.");
        break;
    case montage::cylindre:
        p.push_back(
            "La surface d'une bande du cylindre ne compte pas sa hauteur : la puissance est juste pour "
            "2 m ; ici (" +
            nombre_fr(e.power.body_height, 2) + " m), multipliez-la par " +
            nombre_fr(e.power.body_height / 2, 2) + ".");
        break;
    case montage::faces:
        p.push_back(
            "Avec des panneaux sur les faces d'un prisme, la batterie reste à 20 °C : les critères de "
            "température n'y disent rien.");
        break;
    }
    if (montage_de(e.power) != montage::externes)
        p.push_back(
            "L'électricité produite n'est pas retranchée de la chaleur absorbée par les faces : elles sont "
            "un peu trop chaudes.");
    p.push_back(
        "La tension du bus impose le point de fonctionnement des cellules : pas de recherche du maximum de "
        "puissance, pas d'ombre ni de désaccord entre cellules.");
}

void batterie(const etude& e, const bilan& b, phrases& p) {
    p.push_back(
        "La batterie ne vieillit pas et ne se décharge pas d'elle-même ; comptez sa capacité de fin de "
        "vie si la mission dure.");
    const double tours = duree_orbite(e) / e.periode.pas_sim;
    if (tours < 90)
        p.push_back(
            "Le pas de " + std::to_string(e.periode.pas_sim) + " s ne donne que " + nombre_fr(tours, 0) +
            " points par orbite : la charge minimale n'est sûre qu'à 1 % près ou moins bien. Reprenez "
            "avec un pas plus court.");
    if (static_cast<int>(b.tours.size()) >= orbites_max_bilan)
        p.push_back("La charge ne s'est pas répétée en " + std::to_string(b.tours.size()) +
                    " orbites : la dernière n'est pas encore un régime établi.");
    p.push_back("Le verdict vaut pour la saison calculée ; l'angle du Soleil sur l'orbite change au long de "
                "l'année (page Bilan, onglet Année, ou « bilan --annee »).");
}

} // namespace

std::vector<std::string> limites_du_modele(const etude& e, const bilan& b) {
    phrases p;
    const double fin =
        b.tours.empty() ? e.periode.j_fin : b.tours.back().debut + b.tours.back().duree / secondes_par_jour;
    orbite(e, fin, p);
    lumiere(e, p);
    panneaux(e, p);
    batterie(e, b, p);
    return p;
}
