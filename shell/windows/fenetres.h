/// The windows that the main window can open, by name.
#pragma once

#include <QString>
#include <QStringList>

#include "shell/session.h"

class fenetre;

/// Makes a window; the caller owns it.
using fabrique_fenetre = fenetre* (*)(session&);

/// The maker of the window `nom`, nullptr when the program has no such window.
fabrique_fenetre fabrique(const QString& nom);

/// The windows of the program, those of the subsystems first.
QStringList noms_fenetres();
