/// The options of the batch program, and the session that they describe.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "shell/session.h"
#include "shell/surveillance.h"

/// Exit statuses.
enum statut : int {
    reussi = 0,
    entree_illisible = 1,
    usage_incorrect = 2,
    faute_numerique = 3,
    ne_tient_pas = 4
};

struct options {
    std::string commande;
    std::string etude, orb, tle, pwr, att;        ///< input files, empty for the defaults
    std::string sortie;                           ///< output file, empty for standard output
    std::string debut, fin;                       ///< a day count or "AAAA-MM-JJ hh:mm:ss"; empty: not given
    std::optional<double> pas;                    ///< [s]
    std::optional<double> roulis, tangage, lacet; ///< [deg]; any of them is an entry of all three
    std::optional<double> spin;                   ///< [turns/min]
    bool eol = false;
    std::vector<std::string> colonnes; ///< as asked; empty for the command's own
    std::vector<std::string> champs;   ///< "NAME=VALUE" each
    std::string note;
    std::vector<std::string> stations; ///< "NAME,LAT,LON[,ALT_KM[,MASK_DEG]]" each
    int ecriture = 1;                  ///< attitude: every n-th record
    std::optional<int> orbites, dates; ///< budget: turns, dates of the year
    bool verdict = false, exige = false, annee = false;
    std::vector<std::string> varie, mesures; ///< sweep
    std::optional<int> tirages, coeurs;
    std::optional<double> graine, de, a;
    std::string reprise; ///< earlier output of a sweep
    std::string but;     ///< sizing: "MEASURE>=VALUE"
    bool entier = false;
    std::string modes;  ///< file of consumption modes
    std::string modele; ///< "reference" or "physique"; empty: that of the étude
    bool sans_j2 = false;
    std::vector<std::string> sans;     ///< parts that the physical model leaves out
    std::vector<std::string> controle; ///< law, then NAME=VALUE each
    /// Battery study: minutes, degC, ratio, V, C units, and the discharge at constant power [V/h] or current.
    std::optional<double> tecl, temp, k, vmax, ich, pde, ide;
};

/// What an option is about; a command takes the options of its groups and refuses the others.
enum groupe : unsigned {
    g_orbite = 1 << 0,
    g_energie = 1 << 1,
    g_attitude = 1 << 2,
    g_periode = 1 << 3,
    g_pointage = 1 << 4,
    g_cellules = 1 << 5,
    g_batterie = 1 << 6,
    g_ecriture = 1 << 7,
    g_colonnes = 1 << 8,
    g_sortie = 1 << 9,
    g_stations = 1 << 10,
    g_note = 1 << 11,
    g_etude = 1u << 31, ///< of every command
    g_bilan = 1 << 12,
    g_modes = 1 << 13,
    g_modele = 1 << 14,
    g_orbites = 1 << 15,
    g_balayage = 1 << 16,
    g_dimension = 1 << 17,
};

/// An option of the command line: where its value goes also says what it accepts (texts and files not empty,
/// numbers finite).
struct option_batch {
    const char* nom;
    groupe de;
    std::variant<std::string options::*, std::optional<double> options::*, int options::*,
                 std::optional<int> options::*, bool options::*, std::vector<std::string> options::*>
        cible;
    const char* forme; ///< what stands for the value in the help
    const char* aide;
    enum { simple, fichier_lu, repetable } genre = simple; ///< the output never goes onto a file that is read
};
const std::vector<option_batch>& options_batch();

/// One line on standard error.
void signale(const std::string& texte);

/// Reads the files and options into the session: defaults, then files, then explicit options. On a failure
/// one line is written and the exit status returned; `reussi` otherwise.
statut prepare(const options& o, session& s);

/// Reports the fault that ended a run ("energie", at a date) and the setting that explains it, if one does;
/// returns its status.
statut signale_faute(const std::string& calcul, double date,
                     const std::string& raison = surveillance::description(), const std::string& cause = {});
