/// The results of an attitude run: the 25 values of a record, and the text file that keeps them.
///
/// The file has five head lines (begin date, end date, step, an empty one, the names) and then one record a
/// line: fields separated by one comma, texts in double quotes, numbers with at most 15 significant digits
/// and a point, lines ending in CR LF.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "attitude/att_global.h"

inline constexpr int nb_colonnes_resultats = 25;
inline constexpr int lignes_par_page = 1000; ///< records of a chart page
using enregistrement_att = std::array<double, nb_colonnes_resultats>;

/// Names of the 25 columns, which are their definitions: degrees for angles, rpm for the Euler rates.
extern const std::array<const char*, nb_colonnes_resultats> colonnes_resultats;

/// The record of the state at the date j; the wheels are written as zeros when none turns.
enregistrement_att enregistrement_de(const attitude_record& a, double j, bool roues_actives);

/// Path of the results file in the program's folder.
std::string chemin_resultats(const std::string& dossier_depart);

/// The results file that a window holds: that path, or another one beside it while a second program or window
/// holds it. Given back (and the other one deleted) when the holder goes, however the program ends.
class place_resultats {
public:
    place_resultats() = default;
    place_resultats(const place_resultats&) = delete;
    place_resultats& operator=(const place_resultats&) = delete;
    ~place_resultats();

    /// Takes a file in the folder, or keeps the one taken before.
    const std::string& prend(const std::string& dossier_depart);

private:
    void rend();

    std::string dossier_, chemin_;
    bool a_effacer_ = false;
    int verrou_ = -1;
};

class ecrivain_resultats {
public:
    ecrivain_resultats() = default;
    ecrivain_resultats(const ecrivain_resultats&) = delete;
    ecrivain_resultats& operator=(const ecrivain_resultats&) = delete;
    ~ecrivain_resultats() { ferme(); }

    /// Makes the file, and its folder when missing, and writes the head. False with the system's reason.
    bool ouvre(const std::string& chemin, double j_debut, double j_fin, double pas_s, std::string& raison);
    void ecrit(const enregistrement_att& e);
    /// False when something could not be written.
    bool ferme();

    int64_t enregistrements() const { return nombre_; }
    /// Where in the file each page begins [bytes].
    const std::vector<int64_t>& pages() const { return pages_; }

private:
    void texte(const char* t);
    void nombre(double x);

    std::FILE* fichier_ = nullptr;
    bool echec_ = false;
    int64_t position_ = 0, nombre_ = 0;
    std::vector<int64_t> pages_;
};

/// Rows of a chart page: column 0 the date; 1 to 3 body rates [deg/s]; 4 to 6 rates of roll, pitch, yaw
/// [rpm]; 7 to 9 wheels [deg/s]; 10 to 12 roll, pitch, yaw [deg].
inline constexpr int nb_colonnes_page = 13;
using ligne_page = std::array<double, nb_colonnes_page>;
ligne_page ligne_de_page(const enregistrement_att& e);
