/// Calendar and small helpers shared by all models and windows.
///
/// Dates are days since 1950-01-01 00:00 (double). The calendar is the program's own: every fourth year is a
/// leap year, 1900 and 2100 too, so that it agrees with the civil one from 1901 to 2099 only.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

inline constexpr double secondes_par_jour = 86400.0;

/// A calendar date.
struct date_record {
    int16_t an = 1950;    ///< year, four digits
    int16_t mois = 1;     ///< month, 1 to 12
    int16_t jour_sem = 0; ///< day of the week, unused
    int16_t jour = 1;     ///< day of the month
    int16_t heure = 0;    ///< hour, 0 to 23
    int16_t minute = 0;
    int16_t seconde = 0;
    int32_t ms = 0;
};

/// Day count of a calendar date. Dates before 1901 are not checked.
double date_vers_jour(const date_record& d);

/// Calendar date of a day count; the seconds are truncated, the rest goes to `ms`. A count
/// beyond some 27,000 years, or none at all, gives that limit.
date_record jour_vers_date(double j);

/// Day count of 1 January of the year `an` at 00:00 plus `jour` days, by the rule of the orbit propagation.
double date_epoque(int an, double jour);

/// "dd/mm/yyyy hh:mm:ss".
std::string date_vers_texte(const date_record& d);

/// Reads "AAAA-MM-JJ", "AAAA-MM-JJ hh:mm:ss" or a plain day count; false when the text is neither.
bool texte_vers_jour(std::string_view texte, double& jour);

/// True when the path is a directory; any error counts as not a directory.
bool est_dossier(const std::string& chemin);

/// x less its floor.
inline double frac(double x) { return x - std::floor(x); }

/// x brought silently into [min, max].
double borne(double x, double min, double max);

/// The part of a configuration line that holds its value: its first 14 characters, or the whole line when it
/// is a comment ("!").
std::string_view ligne_valeur(std::string_view ligne);
