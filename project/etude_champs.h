/// Every number of the étude by its name, whichever record holds it.
///
/// The fields come from the tables of orbit, power, attitude and control; the étude's file, `--champ`, the
/// labels of undo steps, sweeps and Python go by this one list. A field is a single number, a list or a
/// matrix, its elements numbered as in the record (a matrix row by row here).
///
/// Two units are in play: the stored one (radians where the record holds radians), which the file keeps so
/// that nothing is lost, and the one that the settings window shows, in which people enter values.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "power/power_champs.h"
#include "project/etude.h"

struct champ_att;
struct champ_orb;

/// The section of the file that a field stands in.
enum class rubrique : uint8_t {
    orbite,
    pointage,
    energie,
    attitude,
    periode,
    modele,
    modes,
    stations,
    criteres,
};
/// "energie".
const char* nom_rubrique(rubrique r);

enum class genre_nombre : uint8_t { reel, simple, entier, drapeau };

struct champ_etude {
    rubrique dans = rubrique::energie;
    std::string nom;            ///< as in the record: "bat_c", "p_demand", "ch_pt", "I_corps"
    std::string autre_nom = {}; ///< another accepted one: "j_debut" of the period's "debut"
    std::array<int, 2> dims{};  ///< {0, 0} a number, {n, 0} a list, {n, m} a matrix
    genre_nombre genre = genre_nombre::reel;
    limites bornes{};                                           ///< of an entry, in the unit that is shown
    double entier_min = -2147483648., entier_max = 2147483647.; ///< what the type of a whole number holds
    bool symetrique = false;                                    ///< setting (i, j) sets (j, i)
    bool demi_dim = false; ///< limits are minus and plus half the body's dimension on the axis
    bool degres = false;   ///< stored in radians
    bool annexe = false;   ///< follows from other fields: not for entry, in the file where it differs
    bool liste = false;    ///< of each entry of a list: modes[2].puissance
    std::string titre = {}, unite = {}, sens = {}; ///< short caption, unit shown, meaning; in French
    std::vector<const char*> choix = {}; ///< what its whole values stand for, from `premier_choix` on
    int premier_choix = 0;
    const char* groupe = "";  ///< "Batterie": the subject that a label begins with
    const char* fenetre = ""; ///< the window or page of the workbench that edits it, and its tab
    int page = 0;

    /// How an element is reached: an entry of one of the tables and its element there, or its routines.
    struct acces {
        const champ* energie = nullptr;
        const champ_att* attitude = nullptr;
        const champ_orb* orbite = nullptr;
        int element = 0;
        std::string nom = {}; ///< the element for people, "de nuit", "+x"; empty for a single one
    };
    std::vector<acces> elements = {};
    double (*lit)(const etude&, int rang) = nullptr; ///< instead of the tables; `rang` in its list
    void (*ecrit)(etude&, int rang, double) = nullptr;
    // Or a number of the attitude control, of a station (of rank `rang`), a criterion.
    double controle_attitude::*controle = nullptr;
    double station::*de_station = nullptr;
    const champ_critere* critere = nullptr;

    int nombre() const { return static_cast<int>(elements.size()); }
    /// Reached by the tables of the records, or of the period.
    bool de_table() const { return !liste && !lit && !controle && !critere; }
};

std::span<const champ_etude> etude_champs();

/// One number of the étude.
struct element_etude {
    const champ_etude* champ = nullptr;
    int rang = 0;    ///< place in its list, for `liste`
    int element = 0; ///< row by row
};

/// The element that a text names: "bat_c", "energie.bat_c", "p_demand[0]", "I_corps[0][0]",
/// "modes[0].puissance". False with the reason in French.
bool cherche_champ(std::string_view texte, const etude& e, element_etude& trouve, std::string& raison);
/// The element of the étude that an entry of a table stands for; no field when the étude does not hold it.
element_etude element_de(const struct champ& entree, int element = 0);
element_etude element_de(const champ_att& entree, int element = 0);
element_etude element_de(const champ_orb& entree, int element = 0);
/// The element of a name of the program's own, "bat_c" or "p_demand[1]"; the program's own error (std::abort)
/// for one that is not there.
element_etude element_nomme(std::string_view nom);
/// "p_demand[0]"; `chemin` puts the section before it: "energie.p_demand[0]".
std::string nom_element(const element_etude& x);
std::string chemin_element(const element_etude& x);
/// "Puissance demandée par la charge utile, de jour".
std::string titre_element(const element_etude& x);

/// The value as it is stored, and as it is shown.
double valeur(const etude& e, const element_etude& x);
double valeur_montree(const etude& e, const element_etude& x);

/// Limits of an entry, in the unit that is shown; those of the type where the table has none.
limites bornes_element(const etude& e, const element_etude& x);
/// "supérieur à 0", "de 0 à 100", "au moins 1"; empty without limits.
std::string texte_bornes(const limites& b);

/// Stores a value in its stored unit, and nothing else.
void pose(etude& e, const element_etude& x, double stocke);

/// An entry: a value in the unit that is shown, judged as it would be stored, stored with what follows from
/// it. False with "0 n'est pas permis (supérieur à 0)"; nothing has changed then.
bool change_champ(etude& e, const element_etude& x, double montre, std::string& raison);

/// The same checks for a value in its stored unit, without storing it.
bool permis(const etude& e, const element_etude& x, double stocke, std::string& raison);

/// "NAME=VALUE" entries together: the order does not matter (orbit before pointing, dimensions before
/// centres). False with the name and the reason; some may have been stored then.
bool change_champs(etude& e, std::span<const std::string> entrees, std::string& raison);
