/// The notes of an étude as the summary shows them.
#pragma once

#include <QString>

#include "project/etude.h"

/// Rich text: lines that begin with "- " are a list, the line above it is its title; lists stand side by side
/// below the paragraphs. A field that a line names ("bat_c=6") is a link to where it is set,
/// "power_conf:3".
QString notes_en_html(const etude& e);
