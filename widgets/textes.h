/// Numbers as the windows show them.
#pragma once

#include <QString>

#include "shell/formats.h"

/// A number in a picture of `format_image`.
inline QString texte_image(double x, std::string_view image) {
    return QString::fromStdString(format_image(x, image));
}
