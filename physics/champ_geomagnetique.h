/// The Earth's magnetic field of the physical model: spherical harmonics of degree 13.
///
/// International Geomagnetic Reference Field, 14th generation (IAGA, doi 10.5281/zenodo.14012302), from
/// igrf14.txt; linear between its epochs, and carried on linearly before the first and after the last. Good
/// from 1965 to 2030, within about 50 nT of the main field outside the Earth. Left out: the crust (some 10 nT
/// in a low orbit), currents of the ionosphere and the magnetosphere (20 to 500 nT in a storm).
#pragma once

#include <string>
#include <vector>

#include "orbit/harmoniques.h"

class champ_geomagnetique {
public:
    static constexpr int degre = 13;

    /// Reads igrf14.txt of the folder. A file that is missing or damaged is told when the field is asked for:
    /// the flag of an invalid operation is raised, and `faute()` says why.
    explicit champ_geomagnetique(const std::string& dossier);

    /// Field [nT] in Earth-fixed axes at the Earth-fixed position [km] and the date j (days since 1950). The
    /// coefficients are those of the 84 s step of time that holds j: within 2e-4 nT.
    vec3 terrestre(double j, const vec3& r);

    /// The same from the spherical coordinates: radius [km], sine and cosine of geocentric colatitude and of
    /// longitude; radial outward, southward, eastward.
    vec3 spherique(double j, double r, sinus_cosinus colatitude, sinus_cosinus longitude);

    /// Why the field cannot be computed, in the user's language; empty without a fault.
    const std::string& faute() const { return faute_; }

private:
    using jeu = harmoniques::coefficients<degre>;

    void lit(const std::string& chemin);
    /// False for years that are none or do not rise.
    bool prend_epoques(const std::vector<double>& annees);
    void prend_date(double j);

    std::vector<double> epoques_; ///< [days since 1950]
    std::vector<jeu> tables_;     ///< [nT] Gauss-normalised, an epoch each
    jeu gh_{};                    ///< of the date in hand
    double pas_de_date_;          ///< its step of time; NaN before the first
    std::string defaut_, faute_;
};
