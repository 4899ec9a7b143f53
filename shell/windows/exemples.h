/// The sample projects that come with the program.
#pragma once

#include <QList>
#include <QString>

struct exemple {
    QString base; ///< path of its files without the ending: .pwr, with .orb and .att where they exist
    QString titre;
    QString contenu; ///< what it is
    QString a_voir;  ///< what to look at
    QString icone;   ///< key of `style::icone`
    double spin = 0; ///< [turns/min] about the yaw; no project file holds it
};

/// Reads `exemples/exemples.txt` in the folder: one line for each sample, "base;title;what it is;what to look
/// at;icon;spin". Lines that are not of this form ("#" comments), and samples without a .pwr file, are left
/// out.
QList<exemple> lit_exemples(const QString& dossier);
