/// What the windows that read and write files ask and say alike.
///
/// The first dialog of the program begins in the folder told; those after it in the folder last used.
#pragma once

#include <QByteArray>
#include <QString>

class QWidget;

/// A file is there that must not be replaced.
bool protege_en_ecriture(const QString& chemin);

/// The name with the ending of a filter ("Image PNG (*.png)"), added unless the name ends with one of the
/// filter's own, letter case ignored: points in the name are part of it.
QString avec_suffixe(const QString& nom, const QString& filtre);

/// Asks for the name of a file to write, beginning with the folder or the file `propose`. The name gets the
/// ending of the filter in force, of the first one under "*.*", before the question whether a file may be
/// replaced; files that cannot be written are not offered. Empty when the user gives up.
QString demande_nom(QWidget* parent, const QString& titre, const QString& propose, const QString& filtres);

/// The folder of a file opened without a dialog (argument, dropped, recent) counts as used too.
void retient_dossier(const QString& chemin);

/// Asks for a file to read. Empty when the user gives up.
QString demande_lecture(QWidget* parent, const QString& titre, const QString& dossier,
                        const QString& filtres);

/// Writes a whole file; a failure leaves an older one as it was and is told, false.
bool enregistre_octets(QWidget* parent, const QString& chemin, const QByteArray& octets);
/// Says that results could not be written to the file, and that they are not lost; false.
bool dit_echec_ecriture(QWidget* parent, const QString& chemin, const QString& raison);
