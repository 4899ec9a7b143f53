/// The power budget: the energy model run over whole turns of the orbit, what each turn brings and costs, and
/// whether the satellite lives by it.
///
/// A turn lasts T = 2 pi sqrt(a3/mu). A step at the date d belongs to the turn 1 + floor((d - start)/T +
/// 1e-9) and counts for its whole length: energies are sums of power x step / 3600.
#pragma once

#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "analysis/environnement_pas.h"
#include "project/etude.h"

/// One turn. Energies in Wh, temperatures in degC, charges from 0 to 1.
struct tour_bilan {
    double orbite = 0;  ///< number of the turn, from 1
    double debut = 0;   ///< [days] first step
    double duree = 0;   ///< [s]
    double eclipse = 0; ///< [s]
    double e_gen = 0, e_demande = 0, e_utile = 0, e_manque = 0, e_excedent = 0, e_pertes = 0;
    double e_charge = 0, e_decharge = 0; ///< at the battery's terminals
    double e_perte_charge = 0;           ///< the part of e_pertes that is lost inside e_charge; no column
    double soc_min = 0, soc_fin = 0;
    double dod = 0; ///< [%] 100 (1 - soc_min)
    double t_bat_min = 0, t_bat_max = 0, t_pan_min = 0, t_pan_max = 0;
    double marge = 0; ///< [%] of the demand that is left over; not a number where nothing is asked for
};

/// A column of the budget; the order of the table is that of the output.
struct colonne_bilan {
    const char* nom;
    const char* titre; ///< French
    const char* unite;
    int decimales;
    double tour_bilan::*valeur;
    bool entier = false;
};
std::span<const colonne_bilan> colonnes_bilan();
/// Null for an unknown name.
const colonne_bilan* cherche_colonne_bilan(std::string_view nom);

/// What a satellite that does not hold fails by.
struct raison_bilan {
    const char* critere; ///< "manque", "derive", "dod", "t_bat" or "marge"
    double valeur, limite;
    int orbite; ///< the turn concerned, from 1
};

struct faute_calcul {
    double date = 0; ///< [days]
    std::string raison;
    std::string cause{}; ///< the setting that explains it, empty where none does
};

struct bilan {
    std::vector<tour_bilan> tours; ///< whole turns
    bool tient = false;
    std::vector<raison_bilan> raisons;
    std::optional<faute_calcul> faute; ///< ended the run; the turns before it are good
    bool charge_incompatible = false;  ///< the battery's charge curve has failed
    bool interrompu = false;
};

struct reglages_bilan {
    int orbites = 0; ///< turns to run; 0: until the charge settles, 2 to 16 turns
    std::string dossier_donnees;
    std::stop_token arret{};
    /// The environment of each step, where it is known already (`environnement_pas.h`).
    const std::vector<environnement_pas>* environnement = nullptr;
};

/// Turns that a budget is given when its charge does not settle.
inline constexpr int orbites_max_bilan = 16;

/// The budget from the start of the étude's period, by its step. Works on a copy: give it one per thread.
bilan calcule_bilan(etude e, const reglages_bilan& r = {});

/// The budget through the year: `dates` starts from that of the étude on, 365.25/dates days apart, each from
/// the étude's initial charge.
struct date_bilan {
    double date = 0; ///< [days]
    double beta = 0; ///< [deg] Sun over the orbit's plane
    bilan resultat;
};
std::vector<date_bilan> calcule_annee(const etude& e, int dates, const reglages_bilan& r = {});

/// Angle of the Sun over the orbit's plane [deg] at a date: asin(Sun direction . orbit normal).
double angle_beta(const etude& e, double date);
