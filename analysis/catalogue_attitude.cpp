/// Disturbance torques, and the record of an attitude run.
#include <array>
#include <cmath>

#include "analysis/catalogue_tables.h"

namespace {

using E = etat_calcul;

template <vec3 attitude_record::*couple>
double composante(const E& e, int i) {
    return (e.attitude.*couple)[static_cast<std::size_t>(i)];
}

template <vec3 attitude_record::*couple>
double norme(const E& e, int) {
    const vec3& c = e.attitude.*couple;
    return std::hypot(c[0], c[1], c[2]);
}

constexpr variable couple(const char* nom, const char* titre, const char* sens,
                          double (*valeur)(const E&, int)) {
    return {nom, titre, "N·m", 9, sens, besoin::couples, valeur, 3};
}

constexpr variable intensite(const char* nom, const char* titre, double (*valeur)(const E&, int)) {
    return {nom, titre, "N·m", 9, "intensité du couple", besoin::couples, valeur};
}

/// Reader of a column of the record of an attitude run.
template <std::size_t k>
double resultat(const E& e, int) {
    return (*e.enregistrement)[k];
}

template <std::size_t k>
constexpr variable integre(const char* titre, const char* unite, int decimales, const char* sens) {
    return {"", titre, unite, decimales, sens, besoin::attitude, resultat<k>};
}

constexpr const char* deg_s = "°/s";
constexpr const char* tr_min = "tr/min";
constexpr const char* des_angles = "angle d'Euler du repère inertiel au repère satellite";
constexpr const char* leur_vitesse = "vitesse de l'angle d'Euler inertiel";
constexpr const char* de_la_roue = "vitesse relative de la roue ; 0 quand aucune ne tourne";
constexpr const char* du_corps = "vitesse de rotation, en axes satellite";
constexpr const char* sa_derivee = "accélération, en axes satellite";
constexpr const char* perturbateur = "somme des couples perturbateurs du pas, en axes satellite";

constexpr variable couples[] = {
    couple("gradient", "Couple de gradient de gravité", "en axes satellite, au pointage nominal",
           composante<&attitude_record::c_gradient>),
    couple("aero", "Couple aérodynamique",
           "frottement de l'atmosphère, en axes satellite, au pointage nominal",
           composante<&attitude_record::c_aero>),
    couple("solaire", "Couple de radiation solaire",
           "pression du rayonnement, en axes satellite, au pointage nominal ; nul en éclipse",
           composante<&attitude_record::c_solaire>),
    couple("magnetique", "Couple magnétique",
           "dipôle dans le champ terrestre, en axes satellite, au pointage nominal",
           composante<&attitude_record::c_magnetique>),
    couple("ctot", "Couple total", "somme des quatre couples, en axes satellite, au pointage nominal",
           composante<&attitude_record::ctot>),
    intensite("gradient_norme", "Couple de gradient de gravité (total)", norme<&attitude_record::c_gradient>),
    intensite("aero_norme", "Couple aérodynamique (total)", norme<&attitude_record::c_aero>),
    intensite("solaire_norme", "Couple de radiation solaire (total)", norme<&attitude_record::c_solaire>),
    intensite("magnetique_norme", "Couple magnétique (total)", norme<&attitude_record::c_magnetique>),
    intensite("ctot_norme", "Couple total (total)", norme<&attitude_record::ctot>),
};

/// In the order of the record; the names are those of the results file.
constexpr variable resultats[nb_colonnes_resultats] = {
    integre<0>("Date", "j", 6, "date du début du pas, en jours depuis le 1er janvier 1950"),
    integre<1>("Rotation x", deg_s, 4, du_corps),
    integre<2>("Rotation y", deg_s, 4, du_corps),
    integre<3>("Rotation z", deg_s, 4, du_corps),
    integre<4>("Accélération x", "°/s²", 6, sa_derivee),
    integre<5>("Accélération y", "°/s²", 6, sa_derivee),
    integre<6>("Accélération z", "°/s²", 6, sa_derivee),
    integre<7>("Roulis", "°", 2, "par rapport au repère orbital local"),
    integre<8>("Tangage", "°", 2, "par rapport au repère orbital local"),
    integre<9>("Lacet", "°", 2, "par rapport au repère orbital local"),
    integre<10>("Vitesse de roulis", tr_min, 4, "par rapport au repère orbital local"),
    integre<11>("Vitesse de tangage", tr_min, 4, "par rapport au repère orbital local"),
    integre<12>("Vitesse de lacet", tr_min, 4, "par rapport au repère orbital local"),
    integre<13>("Angle inertiel 0", "°", 2, des_angles),
    integre<14>("Angle inertiel 1", "°", 2, des_angles),
    integre<15>("Angle inertiel 2", "°", 2, des_angles),
    integre<16>("Vitesse inertielle 0", tr_min, 4, leur_vitesse),
    integre<17>("Vitesse inertielle 1", tr_min, 4, leur_vitesse),
    integre<18>("Vitesse inertielle 2", tr_min, 4, leur_vitesse),
    integre<19>("Roue x", deg_s, 2, de_la_roue),
    integre<20>("Roue y", deg_s, 2, de_la_roue),
    integre<21>("Roue z", deg_s, 2, de_la_roue),
    integre<22>("Couple x", "N·m", 9, perturbateur),
    integre<23>("Couple y", "N·m", 9, perturbateur),
    integre<24>("Couple z", "N·m", 9, perturbateur),
};

} // namespace

std::span<const variable> variables_attitude() {
    static const std::vector<variable> toutes = [] {
        std::vector<variable> t(std::begin(couples), std::end(couples));
        for (std::size_t k = 0; k < nb_colonnes_resultats; ++k) {
            t.push_back(resultats[k]);
            t.back().nom = colonnes_resultats[k];
        }
        return t;
    }();
    return toutes;
}
