#include "shell/windows/menu_actions.h"

namespace {

using enum genre_entree;

// clang-format off
constexpr entree_menu entrees[] = {
    {0, titre, "mn_fichier", "&Fichier", "", "", -1, ""},
    {1, etiquette, "mn_fic_etude", "Étude :", "", "", -1, ""},
    {1, commande, "mn_etude_nouvelle", "  Nouvelle étude", "etude", "", -1, "Repartir des réglages par défaut"},
    {1, commande, "mn_etude_ouvrir", "  Ouvrir une étude…", "open", "", -1, "Ouvrir une étude (.kestrel) : orbite, pointage, énergie, attitude et le reste"},
    {1, commande, "mn_etude_enreg", "  Enregistrer l'étude", "save", "", -1, "Enregistrer tout ce qui est réglé en un fichier (.kestrel)"},
    {1, commande, "mn_etude_enregsous", "  Enregistrer l'étude sous…", "", "", -1, "Enregistrer l'étude sous un autre nom"},
    {1, commande, "mn_etude_notes", "  Notes de l'étude…", "", "", -1, "Le texte libre que l'étude garde"},
    {1, commande, "mn_etude_rapport", "  Rapport…", "exp_data", "", -1, "Écrire l'étude en un rapport PDF ou HTML : verdict, dessins, tableaux, limites du modèle"},
    {1, separateur, "z_fic_0", "", "", "", -1, ""},
    {1, etiquette, "mn_fic_pow", "Energie :", "", "", -1, ""},
    {1, commande, "mn_fichier_ouvrir", "  Ouvrir un projet", "open", "", -1, "Ouvrir un projet énergie (.pwr)"},
    {1, commande, "mn_fichier_enreg", "  Enregistrer le projet", "save", "", -1, "Enregistrer le projet énergie"},
    {1, commande, "mn_fichier_enregsous", "  Enregistrer le projet sous...", "", "", -1, "Enregistrer le projet énergie sous un autre nom"},
    {1, separateur, "z_fic_1", "", "", "", -1, ""},
    {1, etiquette, "mn_fic_att", "Contrôle d'attitude :", "", "", -1, ""},
    {1, commande, "mn_attfich_ouvrir", "  Ouvrir un projet", "open", "", -1, "Ouvrir un projet de contrôle d'attitude (.att)"},
    {1, commande, "mn_attfich_enreg", "  Enregistrer le projet", "save", "", -1, "Enregistrer le projet de contrôle d'attitude"},
    {1, commande, "mn_attfich_enregsous", "  Enregistrer le projet sous...", "", "", -1, "Enregistrer le projet de contrôle d'attitude sous un autre nom"},
    {1, separateur, "z_fic_2", "", "", "", -1, ""},
    {1, sous_menu, "mn_exemples", "Exemples", "", "", -1, "Projets d'exemple, orbite comprise"},
    {1, sous_menu, "mn_recents", "Projets récents", "", "", -1, "Les derniers projets ouverts ou enregistrés"},
    {1, commande, "mn_accueil", "Page d'accueil", "kestrel", "", -1, "Montrer la page d'accueil ou le résumé du projet"},
    {1, separateur, "z_fic_3", "", "", "", -1, ""},
    {1, commande, "mn_fichier_quit", "Quitter", "quit", "", -1, "Quitter le programme"},

    {0, titre, "mn_edition", "É&dition", "", "", -1, ""},
    {1, commande, "mn_annuler", "&Annuler", "annuler", "", -1, "Revenir sur la dernière modification"},
    {1, commande, "mn_refaire", "&Rétablir", "refaire", "", -1, "Refaire ce qui a été annulé"},

    {0, titre, "mn_pow", "S&ytème énergie", "", "", -1, ""}, // spelt as it has always been
    {1, sous_menu, "mn_pow_conf", "Configuration", "", "", -1, ""},
    {2, commande, "mn_conf_pow_pan", "Géométrie des panneaux", "pan", "power_conf", 0, "Forme du corps, panneaux et leur orientation"},
    {2, commande, "mn_conf_pow_perf", "Performance des cellules", "cell", "power_conf", 1, "Caractéristique et vieillissement des cellules solaires"},
    {2, commande, "mn_conf_pow_prop", "Définition du modèle thermique", "therm", "power_conf", 2, "Masses, revêtements et liaisons thermiques"},
    {2, commande, "mn_conf_pow_bat", "Propriétés des batteries", "bat", "power_conf", 3, "Type, capacité et courbes des accumulateurs"},
    {2, commande, "mn_conf_pow_oper", "Gestion du sous-système", "oper", "power_conf", 4, "Charge, régulation et puissance demandée"},
    {2, commande, "mn_conf_pow_rad", "Environnement thermique", "rad", "orbito_conf", 2, "Flux solaire, albédo et rayonnement de la Terre"},
    {1, sous_menu, "mn_pow_sim", "Simulation", "", "", -1, ""},
    {2, commande, "mn_sim_pow_com", "Sous-système complet", "sim_all", "power_sim_all", -1, "Simuler panneaux, batterie et charge utile, vue 3D"},
    {2, commande, "mn_sim_pow_gs", "Générateurs solaires", "sim_pow", "power_exp_pan", -1, "Étudier le générateur solaire sur la période"},
    {1, sous_menu, "mn_pow_exp_data", "Exploitation", "", "", -1, ""},
    {2, commande, "mn_exp_pow_bat", "Charge/Décharge des batteries", "exp_bat", "power_exp_bat", -1, "Étudier une décharge et une recharge"},
    {2, commande, "mn_exp_pow_data", "Exploitation de données", "exp_data", "power_exp_data", -1, "Tableaux et courbes du système énergie"},

    {0, titre, "mn_att", "Contrôle d'attit&ude", "", "", -1, ""},
    {1, sous_menu, "mn_att_conf", "Configuration", "", "", -1, ""},
    {2, commande, "mn_conf_att_masses", "Masses/Géométrie", "masses", "att_conf", 0, "Masse, dimensions et inerties"},
    {2, commande, "mn_conf_att_prop", "Propriétés satellite", "proprietes", "att_conf", 1, "Coefficients de surface et dipôle résiduel"},
    {2, commande, "mn_conf_att_act", "Actionneurs", "actuators", "att_conf", 2, "Magnétocoupleurs, tuyères, roues et amortisseurs"},
    {2, commande, "mn_conf_att_gest", "Gestion du sous-système", "gestatt", "att_conf", 3, "Consignes et paramètres de contrôle"},
    {1, sous_menu, "mn_att_sim", "Simulation", "", "", -1, ""},
    {2, commande, "mn_sim_att_com", "Sous-système complet", "simulation", "att_sim", -1, "Simuler l'attitude sur la période"},
    {1, sous_menu, "mn_att_exp", "Exploitation", "", "", -1, ""},
    {2, commande, "mn_exp_att_data", "Exploitation de données", "expatt", "att_exp_data", -1, "Tableaux et courbes de l'attitude"},

    {0, titre, "mn_orbito", "Or&bitographie/Environnement", "", "", -1, ""},
    {1, commande, "mn_sim_car", "Orbite/Attitude", "orbite", "orbito_conf", 0, "Éléments de l'orbite et pointage"},
    {1, separateur, "z_orb_1", "", "", "", -1, ""},
    {1, sous_menu, "mn_modele", "Modèle de calcul", "", "", -1, "Le modèle que suivent les calculs : il fait partie de l'étude"},
    {2, commande, "mn_modele_reference", "De référence", "", "", -1, "Le modèle de toujours : orbite sans dérive, couples au pointage nominal"},
    {2, commande, "mn_modele_physique", "Physique", "", "", -1, "Dérive de l'orbite, pénombre, champ de degré 13, couples à l'attitude atteinte"},
    {2, separateur, "z_modele_1", "", "", "", -1, ""},
    {2, commande, "mn_modele_j2", "Dérive J2 de l'orbite", "", "", -1, "Modèle physique : nœud, périgée et anomalie dérivent"},
    {2, commande, "mn_modele_gradient", "Gradient de gravité", "", "", -1, "Modèle physique : couple de gradient de gravité"},
    {2, commande, "mn_modele_aero", "Frottement de l'air", "", "", -1, "Modèle physique : couple du frottement de l'air"},
    {2, commande, "mn_modele_solaire", "Pression de rayonnement", "", "", -1, "Modèle physique : couple de la pression de rayonnement"},
    {2, commande, "mn_modele_magnetique", "Couple magnétique", "", "", -1, "Modèle physique : couple du dipôle dans le champ terrestre"},
    {2, commande, "mn_modele_amortisseurs", "Amortisseurs", "", "", -1, "Modèle physique : amortisseurs à ressort"},
    {2, commande, "mn_modele_roues", "Roues cinétiques", "", "", -1, "Modèle physique : roues cinétiques"},
    {2, separateur, "z_modele_2", "", "", "", -1, ""},
    {2, commande, "mn_modele_banc", "Banc d'attitude", "page_banc", "", -1, "Contrôle, départ et durée : la page du banc"},

    {0, titre, "mn_affichage", "Affic&hage", "", "", -1, ""},
    {1, commande, "mn_chercher", "Chercher…", "", "", -1, "Trouver une action, une page, un réglage ou une variable par son nom"},
    {1, commande, "mn_outils", "Outils et période", "", "", -1, "Montrer ou cacher les outils et « Contrôle simulation », pour laisser leur place à la page"},
    {1, separateur, "z_aff_1", "", "", "", -1, ""},

    {0, titre, "mn_fenetre", "Fe&nêtre", "", "", -1, "Les fenêtres ouvertes"},

    {0, titre, "mn_aide", "&Aide", "", "", -1, ""},
    {1, commande, "mn_aide_guide", "&Guide", "", "guide", -1, "Ouvrir le guide de l'utilisateur"},
    {1, commande, "mn_aide_apropos", "À &propos", "", "", -1, "Version et licence du programme"},
};

constexpr touche_barre touches[] = {
    {"Toolbar_orb", "orbite", "mn_sim_car", "Définir l'orbite"},
    {"Toolbar_orb", "envir", "mn_conf_pow_rad", "Définir l'environnement"},

    {"Toolbar_power", "quit", "mn_fichier_quit", "Quitter le programme"},
    {"Toolbar_power", "open", "mn_fichier_ouvrir", "Ouvrir un fichier énergie"},
    {"Toolbar_power", "save", "mn_fichier_enreg", "Enregistrer le projet du sous-système énergie"},
    {"Toolbar_power", "cell", "mn_conf_pow_perf", "Performance des cellules"},
    {"Toolbar_power", "therm", "mn_conf_pow_prop", "Définition du modèle thermique"},
    {"Toolbar_power", "pan", "mn_conf_pow_pan", "Géométrie des panneaux"},
    {"Toolbar_power", "bat", "mn_conf_pow_bat", "Propriétés des batteries"},
    {"Toolbar_power", "oper", "mn_conf_pow_oper", "Gestion du sous-système"},
    {"Toolbar_power", "rad", "mn_conf_pow_rad", "Environnement thermique"},
    {"Toolbar_power", "orb", "mn_sim_car", "Orbite et attitude"},
    {"Toolbar_power", "sim_pow", "mn_sim_pow_gs", "Simulation des générateurs solaires"},
    {"Toolbar_power", "sim_all", "mn_sim_pow_com", "Simulation du sous-système complet"},
    {"Toolbar_power", "exp_bat", "mn_exp_pow_bat", "Charge/Décharge des batteries"},
    {"Toolbar_power", "exp_data", "mn_exp_pow_data", "Exploitation de données"},

    {"Toolbar_att", "open", "mn_attfich_ouvrir", "Ouvrir un projet pour le sous-système attitude"},
    {"Toolbar_att", "save", "mn_attfich_enreg", "Enregistrer le projet du sous-système attitude"},
    {"Toolbar_att", "masses", "mn_conf_att_masses", "Masse/Géométrie"},
    {"Toolbar_att", "proprietes", "mn_conf_att_prop", "Propriétés satellite"},
    {"Toolbar_att", "actuators", "mn_conf_att_act", "Définir les actionneurs"},
    {"Toolbar_att", "gestatt", "mn_conf_att_gest", "Gestion du sous-système"},
    {"Toolbar_att", "simulation", "mn_sim_att_com", "Simulation"},
    {"Toolbar_att", "expatt", "mn_exp_att_data", "Exploitation des données"},
};
// clang-format on

} // namespace

std::span<const entree_menu> entrees_menu() { return entrees; }
std::span<const touche_barre> touches_barres() { return touches; }
