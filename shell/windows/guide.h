/// The user's guide in a window of its own.
#pragma once

#include "shell/windows/fenetre.h"

class guide : public fenetre {
    Q_OBJECT
public:
    explicit guide(session& s, QWidget* parent = nullptr);

    /// The guide's file in the program's folder (HTML or Markdown), empty without one.
    static QString fichier(const session& s);
};
