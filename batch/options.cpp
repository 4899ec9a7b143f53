#include "batch/options.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>

#include "analysis/jeux.h"
#include "analysis/modes.h"
#include "batch/commandes.h"
#include "batch/modele.h"
#include "batch/options_etude.h"
#include "orbit/orb_trajecto.h"
#include "orbit/pointage.h"
#include "project/att_fichier.h"
#include "project/etude_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "project/tle_fichier.h"
#include "shell/formats.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"

const std::vector<option_batch>& options_batch() {
    static const std::vector<option_batch> table = {
        {"--etude", g_etude, &options::etude, "FICHIER",
         "étude (.kestrel) ; les autres fichiers et options l'emportent", option_batch::fichier_lu},
        {"--champ", g_etude, &options::champs, "NOM=VALEUR",
         "un réglage, par son nom, dans l'unité de sa fenêtre (bat_c=20, p_demand[0]=30)",
         option_batch::repetable},
        {"--orb", g_orbite, &options::orb, "FICHIER", "orbite (.orb) ; sans elle, l'orbite par défaut",
         option_batch::fichier_lu},
        {"--tle", g_orbite, &options::tle, "FICHIER", "orbite en éléments à deux lignes",
         option_batch::fichier_lu},
        {"--pwr", g_energie, &options::pwr, "FICHIER",
         "projet énergie (.pwr), qui apporte sa période et son pas", option_batch::fichier_lu},
        {"--att", g_attitude, &options::att, "FICHIER", "projet attitude (.att)", option_batch::fichier_lu},
        {"--debut", g_periode, &options::debut, "DATE",
         "en jours depuis 1950 ou \"AAAA-MM-JJ hh:mm:ss\", de 1901 à 2099 ; sans elle, l'époque de l'orbite"},
        {"--fin", g_periode, &options::fin, "DATE",
         "de même ; sans elle, un tour de l'orbite après l'époque"},
        {"--pas", g_periode, &options::pas, "SECONDES", "nombre entier, 120 par défaut"},
        {"--roulis", g_pointage, &options::roulis, "DEG", "l'un des trois angles donné met les autres à 0"},
        {"--tangage", g_pointage, &options::tangage, "DEG", ""},
        {"--lacet", g_pointage, &options::lacet, "DEG", ""},
        {"--spin", g_pointage, &options::spin, "TR/MIN", "rotation en lacet"},
        {"--eol", g_cellules, &options::eol, "", "cellules en fin de vie"},
        {"--modele", g_modele, &options::modele, "MODELE", "reference (par défaut) ou physique"},
        {"--sans-j2", g_modele, &options::sans_j2, "", "modèle physique : orbite sans dérive"},
        {"--sans", g_modele, &options::sans, "PARTIE,PARTIE",
         "modèle physique : gradient, aero, solaire, magnetique, amortisseurs, roues"},
        {"--controle", g_modele, &options::controle, "LOI,NOM=VALEUR",
         "modèle physique : b_dot (gain, dipole_max) ou pd (cible, face, frequence, amortissement, "
         "couple_max, "
         "vitesse_max)"},
        {"--station", g_stations, &options::stations, "STATION",
         "NOM,LATITUDE,LONGITUDE[,ALTITUDE_KM[,MASQUE]], en degrés ; sans elle, celles du programme",
         option_batch::repetable},
        {"--tecl", g_batterie, &options::tecl, "MINUTES", "durée de la décharge (l'éclipse)"},
        {"--temp", g_batterie, &options::temp, "DEG_C", "température"},
        {"--k", g_batterie, &options::k, "RAPPORT", "coefficient de recharge"},
        {"--vmax", g_batterie, &options::vmax, "VOLTS", "tension maximale de la recharge"},
        {"--ich", g_batterie, &options::ich, "C", "courant de charge, en unités de la capacité"},
        {"--pde", g_batterie, &options::pde, "V/H", "décharge à puissance constante, ou"},
        {"--ide", g_batterie, &options::ide, "C", "décharge à courant constant"},
        {"--modes", g_modes, &options::modes, "FICHIER", "modes de consommation, une liste JSON",
         option_batch::fichier_lu},
        {"--orbites", g_orbites, &options::orbites, "N",
         "orbites calculées ; sans elle, jusqu'à ce que la charge se répète, de 2 à 16"},
        {"--varie", g_balayage, &options::varie, "CHAMP",
         "NOM=a:b:pas, NOM=v1,v2, NOM~U(a,b) ou NOM~N(moyenne,écart) ; les listes forment une grille, la "
         "dernière varie le "
         "plus vite",
         option_batch::repetable},
        {"--mesures", g_balayage, &options::mesures, "NOM,NOM",
         "colonnes du bilan et tient ; sans elle marge, dod, soc_min, t_bat_max, tient"},
        {"--tirages", g_balayage, &options::tirages, "N", "tirages au hasard en chaque point de la grille"},
        {"--graine", g_balayage, &options::graine, "S", "nombre dont dépendent les tirages, 0 par défaut"},
        {"--coeurs", g_balayage, &options::coeurs, "N", "fils de calcul, tous les cœurs par défaut"},
        {"--reprise", g_balayage, &options::reprise, "FICHIER",
         "reprend une sortie interrompue après sa dernière ligne entière ; la complète, ou écrit le tout par "
         "-o"},
        {"--de", g_dimension, &options::de, "A", "la plus petite valeur du champ que nomme --champ"},
        {"--a", g_dimension, &options::a, "B", "la plus grande"},
        {"--entier", g_dimension, &options::entier, "", "valeurs entières seulement"},
        {"--but", g_dimension, &options::but, "MESURE>=X",
         "ce qui doit être atteint : >=, <=, > ou <, ou « tient »"},
        {"--verdict", g_bilan, &options::verdict, "", "un objet JSON : tient, raisons et la dernière orbite"},
        {"--exige", g_bilan, &options::exige, "", "statut 4 quand le satellite ne tient pas"},
        {"--annee", g_bilan, &options::annee, "", "une ligne par date de l'année"},
        {"--dates", g_bilan, &options::dates, "N", "nombre de ces dates, 24 par défaut"},
        {"--ecriture", g_ecriture, &options::ecriture, "N", "une ligne tous les N pas"},
        {"--note", g_note, &options::note, "TEXTE", "notes de l'étude"},
        {"--colonnes", g_colonnes, &options::colonnes, "NOM,NOM", "dans cet ordre, ou « toutes »"},
        {"-o", g_sortie, &options::sortie, "FICHIER", "au lieu de la sortie standard"},
    };
    return table;
}

void signale(const std::string& texte) {
    std::string ligne = texte;
    for (char& c : ligne)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    std::fprintf(stderr, "kestrel_batch : %s\n", ligne.c_str());
}

statut signale_faute(const std::string& calcul, double date, const std::string& raison,
                     const std::string& cause) {
    signale(calcul + " : faute numérique (" + raison + ") à la date " + format_image(date, "0.000000") +
            ", " + date_vers_texte(jour_vers_date(date)) + (cause.empty() ? "" : ". " + cause));
    return faute_numerique;
}

namespace {

bool lit_date(const char* option, const std::string& texte, double& jour) {
    if (texte.empty()) return true;
    if (!texte_vers_jour(texte, jour)) {
        signale(std::string(option) + " « " + texte +
                " » n'est ni un nombre de jours ni \"AAAA-MM-JJ hh:mm:ss\" de 1901 à 2099");
        return false;
    }
    // The calendar agrees with the civil one in these years only.
    const double premier = date_vers_jour({.an = 1901}), dernier = date_vers_jour({.an = 2100});
    if (jour >= premier && jour < dernier) return true;
    signale(std::string(option) + " « " + texte + " » n'est pas une date de 1901 à 2099");
    return false;
}

/// The first elements of the file; the others are told.
bool lit_elements(const options& o, record_orbite& orbite) {
    std::vector<elements_tle> lus;
    std::string raison;
    if (!charge_tle(o.tle, lus, raison)) {
        signale(o.tle + " : " + raison);
        return false;
    }
    if (lus.size() > 1)
        signale(o.tle + " : " + std::to_string(lus.size()) + " satellites, le premier est pris (" +
                lus[0].nom + ")");
    orbite = lus[0].orbite;
    return true;
}

/// The reader takes a short file's missing bytes for zeros; an empty one, or numbers that no orbit has, are
/// told here instead of the fault that they would end in.
bool lit_orbite(const std::string& chemin, record_orbite& o, std::string& raison) {
    if (!charge_orbite(chemin, o, raison)) return false;
    std::error_code erreur;
    if (std::filesystem::is_empty(chemin, erreur) && !erreur) raison = "fichier vide";
    for (const double x : {o.orb_inclinaison, o.orb_ascension, o.orb_excentricite, o.orb_argument,
                           o.orb_anomalie, o.orb_moy_mvt, o.orb_jour, o.orb_demi})
        if (!(std::fabs(x) < 1e15)) raison = "ce n'est pas une orbite (" + format_court(x) + ")";
    return raison.empty();
}

statut lit_fichiers(const options& o, session& s) {
    if (const statut lue = lit_etude(o, s); lue != reussi) return lue;
    std::string raison;
    if (!o.orb.empty() && !lit_orbite(o.orb, s.orbit.orbite, raison)) {
        signale(o.orb + " : " + raison);
        return entree_illisible;
    }
    if (!o.orb.empty()) s.nom_orbite = extrait_nom_fichier(o.orb);
    if (!o.tle.empty() && !lit_elements(o, s.orbit.orbite)) return entree_illisible;
    if (o.etude.empty()) s.periode = periode_par_defaut(s.orbit.orbite);
    if (erreur_fichier erreur; !o.pwr.empty() && !charge_energie(o.pwr, s.power, s.periode, erreur)) {
        signale(erreur.texte());
        return entree_illisible;
    }
    if (!o.att.empty() && !charge_attitude(o.att, s.attitude, raison)) {
        signale(o.att + " : " + raison);
        return entree_illisible;
    }
    return reussi;
}

constexpr std::string_view commandes_de_periode[] = {"orbite", "energie",  "attitude", "couples",
                                                     "couple", "panneaux", "passages"};

statut regle_periode(const options& o, simulation_period& p) {
    if (!lit_date("--debut", o.debut, p.j_debut) || !lit_date("--fin", o.fin, p.j_fin))
        return usage_incorrect;
    if (o.pas) {
        if (*o.pas != std::floor(*o.pas) || *o.pas > std::numeric_limits<int32_t>::max() || *o.pas < 1) {
            signale("le pas doit être un nombre entier de secondes, au moins 1");
            return usage_incorrect;
        }
        p.pas_sim = static_cast<int32_t>(*o.pas);
    }
    if (p.pas_sim < 1) {
        signale("le pas de simulation (" + std::to_string(p.pas_sim) + " s) doit être d'au moins 1 s");
        return usage_incorrect;
    }
    if (!avance_toujours(p)) {
        signale("période de " + format_court(p.j_debut) + " à " + format_court(p.j_fin) +
                " jours : aucun pas n'y avance");
        return usage_incorrect;
    }
    // Otherwise their output is a header without a row, and nobody knows why. The budget counts turns.
    const bool suit = std::ranges::count(commandes_de_periode, o.commande) > 0;
    if (!suit || p.j_fin >= p.j_debut) return reussi;
    signale("la fin de la période (" + date_vers_texte(jour_vers_date(p.j_fin)) + ") précède son début (" +
            date_vers_texte(jour_vers_date(p.j_debut)) + ")" +
            (o.fin.empty() && !o.debut.empty() ? " : donnez --fin" : ""));
    return usage_incorrect;
}

/// The nominal pointing, converted with the orbit at its epoch.
void regle_pointage(const options& o, orbit_state& orbit) {
    if (o.spin) {
        orbit.pointage.spin = vrai;
        orbit.pointage.vspin = *o.spin;
    }
    if (!o.roulis && !o.tangage && !o.lacet) return;
    orb_position(date_epoque(orbit.orbite.orb_an, orbit.orbite.orb_jour - 1.0), orbit);
    pointage_orbital(orbit, o.roulis.value_or(0), o.tangage.value_or(0), o.lacet.value_or(0));
}

/// A mode in view of a station that is not there would never be in force: the commands that run with modes
/// refuse it, the one that only writes them down tells it.
statut regle_modes(std::string_view commande, const etude& e) {
    for (const auto& c : commandes())
        if (commande == c.nom && !(c.groupes & g_modes)) return reussi;
    const std::vector<std::string> inconnues = modes_sans_station(e);
    for (const std::string& raison : inconnues) signale(raison);
    return inconnues.empty() || commande == "etude" ? reussi : usage_incorrect;
}

} // namespace

statut prepare(const options& o, session& s) {
    if (!o.orb.empty() && !o.tle.empty()) {
        signale("--orb et --tle donnent chacun l'orbite : un seul des deux");
        return usage_incorrect;
    }
    session_init(s);
    if (const statut lu = lit_fichiers(o, s); lu != reussi) return lu;
    if (std::string raison; !o.modes.empty() && !charge_modes(o.modes, s.modes, raison)) {
        signale(raison);
        return entree_illisible;
    }
    if (const statut regle = applique_etude(o, s); regle != reussi) return regle;
    if (const statut regle = regle_periode(o, s.periode); regle != reussi) return regle;
    if (o.eol) s.power.cel_opt_beol = 1;
    regle_pointage(o, s.orbit);
    if (!regle_modele(o, s.modele)) return usage_incorrect;
    return regle_modes(o.commande, s);
}
