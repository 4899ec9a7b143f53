/// What the settings of the surroundings need besides the record: the Sun's flux over a year, and two ways to
/// fill the monthly tables.
///
/// The months' distances to the Sun are those of a mean year; the simulation takes the distance of its date.
#pragma once

#include <array>

#include "power/power.h"

/// [km] Sun-Earth distance, January first.
extern const std::array<double, 12> distance_mois;
inline constexpr double distance_soleil_max = 152101686.718472; ///< [km] largest of the year
inline constexpr double distance_soleil_min = 147090267.044645; ///< [km] smallest of the year

/// Solar flux [W/m2] at a distance [km], rounded to a single.
float flux_solaire_page(const power_record& p, double distance);

/// Radiated power [W] of a Sun that gives `flux` [W/m2] at a distance [km].
double puissance_de_flux(double flux, double distance);

/// Infrared of an isothermal Earth that radiates what it absorbs, for each month.
void modele_isoterre(power_record& p);

/// Albedo base + amplitude sin(month - month_0), rounded to two digits, for each month.
void modele_sinus(power_record& p, double base, double amplitude, int mois_0);
