/// Density of the air at the satellite: an exospheric temperature, then a table of altitude by temperature.
///
/// Temperature after L. G. Jacchia (1965, 1971): solar flux at 10.7 cm, diurnal bulge; the geomagnetic index
/// is 0. Monthly mean fluxes from 1991 to 2007, a sine beyond. Density interpolated linearly between the
/// lines of the table and between two of its temperatures (500, 1000, 2000 K); 0 from 2500 km up.
///
/// Both data files are read once, when the object is built; a run builds its own, so that files are read anew
/// for each run. A file that is missing, or damaged where a run needs it, is a numerical fault: the flag of
/// an invalid operation is raised and `faute()` names the file and the reason.
#pragma once

#include <string>
#include <vector>

#include "orbit/math.h"

class atmosphere {
public:
    /// Reads flux_solaire.txt and densite.txt of the folder (no trailing separator needed).
    explicit atmosphere(const std::string& dossier);

    /// Exospheric temperature [K] at the date (days since 1950), for longitude and latitude [rad] and
    /// altitude [km]; `soleil` is the Sun's position at that date.
    double temperature_exo(double date, double lon, double lat, double alt, const vec3& soleil);

    /// The same, with the Sun's position computed from the date.
    double temperature_exo(double date, double lon, double lat, double alt);

    /// Density [kg/m3] for an exospheric temperature [K] and an altitude [km].
    double densite(double T, double alt);

    /// Solar flux at 10.7 cm [1e-22 W/m2/Hz].
    double flux_solaire(double date);

    /// Which file could not be used and why, in the user's language; empty without a fault.
    const std::string& faute() const { return faute_; }

private:
    struct ligne {
        double alt;
        double d[3]; ///< [kg/m3] at 500, 1000, 2000 K
    };

    void lit_densite(const std::string& chemin);
    double flux_du_mois(int an, int mois);
    double signale(const std::string& raison);

    std::vector<ligne> table_;
    std::string defaut_densite_; ///< why the table ends where it does, when it is not its proper end
    size_t tranche_ = 0;         ///< last bracket found

    std::string chemin_flux_;
    std::string flux_; ///< the file as it is
    std::string defaut_flux_;
    double jour_ = -1;        ///< whole day of the last flux asked for
    bool au_fichier_ = false; ///< its year is one of the file's
    double flux_mois_ = 0;

    std::string faute_;
};
