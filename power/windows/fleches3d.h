/// The arrows of the three-dimensional view, for the drawing and for its legend.
#pragma once

#include <QColor>

#include <span>

#include "power/windows/scene3d.h"

struct fleche3d {
    char lettre; ///< at its tip
    const char* nom;
    bool affichage3d::*montree;
    QColor (*couleur)();
};
std::span<const fleche3d> fleches3d();
