/// The examples that come with the program: études that open as copies.
#pragma once

#include <QList>
#include <QString>

struct exemple {
    QString base; ///< path of its étude without the ending .kestrel
    QString titre;
    QString contenu; ///< what it is, in a line
    QString icone;   ///< key of `style::icone`
};

/// Reads `exemples/exemples.txt` in the folder: one line for each example, "base;title;what it is;icon".
/// Lines that are not of this form ("#" comments), and examples without an étude, are left out.
QList<exemple> lit_exemples(const QString& dossier);
