#include "batch/commandes.h"

namespace {

constexpr unsigned commun = g_periode | g_modele | g_colonnes | g_sortie;
/// A run by dates gives any column of the catalogue, so all of the session counts.
constexpr unsigned par_dates = g_orbite | g_energie | g_attitude | g_pointage | g_cellules | g_modes | commun;

constexpr commande table[] = {
    {"orbite", "positions du satellite et du Soleil, éclipse, point au sol", par_dates, cmd_orbite},
    {"energie", "simulation du système énergie", par_dates, cmd_energie},
    {"attitude", "simulation de l'attitude",
     g_orbite | g_energie | g_attitude | g_pointage | g_ecriture | commun, cmd_attitude},
    {"couples", "couples perturbateurs à chaque date", par_dates, cmd_couples},
    {"couple", "modèle physique : énergie et attitude ensemble, les panneaux suivent l'attitude", par_dates,
     cmd_couple},
    {"batterie", "décharge puis recharge d'un accumulateur", g_energie | g_batterie | g_colonnes | g_sortie,
     cmd_batterie},
    {"passages", "passages du satellite au-dessus de stations", g_orbite | g_energie | g_stations | commun,
     cmd_passages},
    {"bilan", "bilan d'énergie orbite par orbite : le satellite tient-il ?",
     g_orbite | g_energie | g_pointage | g_cellules | g_bilan | g_orbites | g_modes | commun, cmd_bilan},
    {"rapport", "rapport de l'étude, une page HTML : verdict, dessins, tableaux, limites du modèle",
     g_orbite | g_energie | g_attitude | g_pointage | g_cellules | g_periode | g_modele | g_orbites |
         g_modes | g_stations | g_note | g_sortie,
     cmd_rapport},
    {"balayage", "bilan de chaque variante d'une étude",
     g_orbite | g_energie | g_pointage | g_cellules | g_periode | g_modele | g_orbites | g_modes |
         g_balayage | g_sortie,
     cmd_balayage},
    {"dimensionne", "la plus petite valeur d'un champ qui atteint un but",
     g_orbite | g_energie | g_pointage | g_cellules | g_periode | g_modele | g_orbites | g_modes |
         g_dimension | g_sortie,
     cmd_dimensionne},
    {"panneaux", "températures, puissances et flux des panneaux solaires", par_dates, cmd_panneaux},
    {"etude", "écrit l'étude (.kestrel) que fichiers et options décrivent",
     g_orbite | g_energie | g_attitude | g_pointage | g_cellules | g_periode | g_modes | g_modele |
         g_stations | g_note | g_sortie,
     cmd_etude},
    {"variables", "les variables que --colonnes peut demander : nom, titre, unité, éléments, sens", g_sortie,
     cmd_variables},
};

} // namespace

std::span<const commande> commandes() { return table; }
