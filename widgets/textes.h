/// Texts as the windows show and compare them.
#pragma once

#include <QString>

#include <utility>

#include "shell/formats.h"

/// A number in a picture of `format_image`.
inline QString texte_image(double x, std::string_view image) {
    return QString::fromStdString(format_image(x, image));
}

/// "Flux total (W/m²)" as its name and its unit; a text without a unit in brackets at its end has none.
inline std::pair<QString, QString> separe_unite(const QString& texte) {
    const qsizetype ouvre = texte.lastIndexOf(" (");
    if (ouvre < 0 || !texte.endsWith(')')) return {texte, {}};
    return {texte.left(ouvre), texte.sliced(ouvre + 2).chopped(1)};
}

/// A text without case and accents, as searches compare it.
QString sans_accents(const QString& texte);
