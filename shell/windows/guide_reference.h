/// The reference of the settings: a chapter of the guide made from the tables of fields.
#pragma once

#include <QString>
#include <QStringList>

/// The heading level of its entries.
inline constexpr int niveau_reglage = 5;

/// The chapter in Markdown: of each setting its meaning, symbol, unit, range, default, window, formula and
/// source.
QString reference_reglages();

/// The entries in the order of the chapter, by their path without indices: "energie.bat_c".
QStringList reglages_de_reference();

/// "energie.p_demand[1]" without its indices.
QString sans_indices(const QString& chemin);
