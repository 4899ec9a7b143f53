/// What the windows that write files ask and say alike.
#pragma once

#include <QString>

class QWidget;

/// Asks for the name of a file to write, beginning with the folder or the file `propose`. A name without an
/// ending gets that of the filter in force ("Fichier texte (*.txt);;..."), before the question whether a file
/// may be replaced. Empty when the user gives up.
QString demande_nom(QWidget* parent, const QString& titre, const QString& propose, const QString& filtres);

/// Says that results could not be written to the file, and that they are not lost; false.
bool dit_echec_ecriture(QWidget* parent, const QString& chemin, const QString& raison);
