/// Round values along an axis.
#pragma once

#include <QString>

#include <vector>

struct graduation {
    double valeur;
    QString texte;
    QString jour = {}; ///< of a date: the day, under the first one and where it changes
};

/// At most about `nombre` round values within [min, max], with just the decimals that tell them apart.
std::vector<graduation> graduations(double min, double max, int nombre);
/// Round hours and days within [min, max], in days since 1950.
std::vector<graduation> graduations_dates(double min, double max, int nombre);

/// "21/03/2001 13:12:00", to the nearest second.
QString texte_instant(double j);
