/// What is in sight of stacked charts, given away: numbers as CSV, pictures as PNG, SVG and PDF.
#pragma once

#include <QByteArray>
#include <QString>

class traces;
class dessin_traces;
class QWidget;

/// How numbers stand in a CSV file.
enum class forme_csv {
    virgule,      ///< 1.5,2.5
    point_virgule ///< 1,5;2,5: what a French spreadsheet opens by itself
};

/// A cell: between quotes where it holds a separator, a quote or a line end.
QByteArray cellule_csv(const QString& texte, forme_csv f);
/// The shortest text that reads back to the same value; empty for a missing one.
QByteArray nombre_csv(double x, forme_csv f);
inline char separateur_csv(forme_csv f) { return f == forme_csv::virgule ? ',' : ';'; }

/// The rows in sight: date, day count, and a column a curve, its unit in the heading. Runs whose steps fall
/// on other dates have empty cells there.
QByteArray csv_traces(const dessin_traces& d, forme_csv f);

/// Writes by the ending of the name (.csv, .png, .svg, .pdf); says and returns false when it cannot.
bool enregistre_traces(QWidget* parent, const traces& t, const QString& chemin,
                       forme_csv f = forme_csv::virgule);
void copie_image_traces(const traces& t);
void copie_donnees_traces(const traces& t);
