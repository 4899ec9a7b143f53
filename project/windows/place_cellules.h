/// Whether the cells have room on what carries them: their number makes the power, the area of the panel only
/// its temperature, and nothing else holds the two together.
#pragma once

#include <QLabel>

#include "power/power.h"

class place_cellules : public QLabel {
public:
    explicit place_cellules(const QString& nom);
    /// Says it of the record, set off where they do not fit.
    void montre(const power_record& p);
};
