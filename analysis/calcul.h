/// A run of the models by dates: the one loop over the steps of a period.
///
/// Batch program, studies, result windows, complete simulation, budget, curves, sweep, Python: all of them
/// make a `calcul`, call `suivant` until it is false, and read rows. (The attitude of the reference model
/// integrates its state and has its own run: `att_run`.)
///
///     const char* noms[] = {"sim_date", "bat_soc", "node_t"};
///     calcul c({s.periode, s.orbit, s.power, s.attitude}, voies_de(noms, s.power));
///     while (c.suivant()) garde(c.ligne());                 // or read c.etat() directly
///     if (c.faute()) dit(c.date(), c.raison());             // the rows before it are good
///
/// The run works on the records that it is given: give it copies to keep the caller's, or to run in another
/// thread (each thread has its own watch, nothing is shared). Numbers depend on the records alone, except
/// that the first step of external panels and cylinder reads the battery temperature `t_bat` that the record
/// holds: 0 in a fresh record, as in the batch program.
///
/// In the physical model (`physics/`) the same columns come from its orbit, Sun, shadow and torques. Its
/// attitude goes by dates too: it is run where a column reads it (`besoin::physique`, or the 25 values of the
/// attitude record), and `couple` lets the panels see the Sun from it instead of from the nominal pointing;
/// the torques told are then those of the attitude reached.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analysis/variables.h"
#include "attitude/att_atmosphere.h"
#include "physics/attitude_physique.h"
#include "shell/surveillance.h"

/// The records that a run works on.
struct modeles {
    simulation_period& periode; ///< `j_courant` is the date of the step in hand
    orbit_state& orbite;
    power_record& energie;
    attitude_record& attitude;
};

struct reglages_calcul {
    unsigned besoins = 0; ///< parts to compute besides those that the columns read
    regle_fin fin = regle_fin::tolerante;
    std::string dossier_donnees = {}; ///< folder of the air's and the field's files, for torques and attitude
    options_modele modele = {};
    int cadence = 1;     ///< rows: one every so many steps, the first one on
    bool couple = false; ///< physical model: the panels turn with the attitude of the run
    /// Another source of the environment of a date than `environment_update`: it sets the same fields.
    std::function<void(double date, power_record&, orbit_state&, const simulation_period&)> environnement =
        {};
    /// Demand of a step [W], asked for when its environment is known; without it that of day or night.
    std::function<double(const etat_calcul&)> demande = {};
    /// Asked at times, within a long step too: true ends the run where it stands.
    std::function<bool()> arret = {};
};

class calcul {
public:
    calcul(const modeles& m, std::vector<voie> voies, reglages_calcul r = {});

    /// The start at the first call, then the next date (that of the next row): its step is made and its row
    /// read. False at the end of the period and at a fault.
    bool suivant();

    // The same by hand, for a caller that chooses its dates: start, step at `periode.j_courant`, next date.
    // The first two are false at a fault.
    bool demarre();
    bool pas();
    void avance();
    /// Environment of another date in the records, without a step; false, with the fault told, when it has
    /// none.
    bool place(double date);
    bool reste() const { return dans_la_periode(m_.periode.j_courant, m_.periode, r_.fin); }

    double date() const { return m_.periode.j_courant; }
    /// Date of the last row; that of the start without one.
    double date_ligne() const { return lignes_ > 0 ? date_ligne_ : m_.periode.j_debut; }
    const etat_calcul& etat() const { return etat_; }
    const std::vector<voie>& voies() const { return voies_; }
    /// The values of these at the last step.
    const std::vector<double>& ligne() const { return ligne_; }
    /// Rows read so far.
    long lignes() const { return lignes_; }

    /// A numerical fault has ended the run at `date()`; the records stay as it left them.
    bool faute() const { return faute_; }
    /// It happened in the initial state, before any step.
    bool faute_initiale() const { return faute_ && !demarre_; }
    /// Ended because `arret` asked for it.
    bool arrete() const { return arrete_; }
    /// A data file is at fault, not the numbers.
    bool faute_de_donnees() const { return !defaut_donnees().empty(); }
    /// What happened, in French; names the data file where one is at fault.
    const std::string& raison() const { return raison_; }
    /// The setting that explains a numerical fault and what to do about it; empty where none does.
    std::string cause() const;

    /// Limits of the attitude control reached and left so far.
    std::span<const evenement_controle> evenements() const;

    /// True once in a run: its charge curve has failed (`message_charge_incompatible` is to be told).
    bool charge_a_signaler();
    /// True once in a run: it has left a temperature, a charge or an efficiency that no satellite has.
    /// `alerte()` says which, and which setting causes it; the run goes on.
    bool alerte_a_signaler();
    const std::string& alerte() const { return alerte_; }

private:
    void un_pas();
    void lieu_reference();
    void lieu_physique();
    void attitude_du_pas();
    void couples_du_pas();
    std::string defaut_donnees() const;
    bool lit(unsigned parts) const { return besoins_ & parts; }
    bool verifie();

    modeles m_;
    std::vector<voie> voies_;
    reglages_calcul r_;
    unsigned besoins_;
    etat_calcul etat_;
    std::unique_ptr<atmosphere> air_;
    std::unique_ptr<champ_geomagnetique> champ_;
    std::optional<environnement_physique> env_;
    std::optional<attitude_physique> attitude_;
    milieu milieu_;
    ligne_attitude physique_;
    surveillance veille_;
    std::vector<double> ligne_;
    long lignes_ = 0, pas_ = 0;
    double date_ligne_ = 0;
    bool ligne_a_lire_ = true;
    bool commence_ = false, demarre_ = false, faute_ = false, arrete_ = false, charge_signalee_ = false,
         alerte_signalee_ = false;
    std::string raison_, alerte_;
};
