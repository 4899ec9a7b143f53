/// A picture of the satellite from its settings: the body with its cells, the wings, the masts of the
/// external masses, seen from +X, +Y, +Z. In proportion, but for a mast or a wing that would not fit.
#pragma once

#include <QWidget>

#include "attitude/att_global.h"
#include "power/power.h"

class dessin_satellite : public QWidget {
public:
    /// Both records must outlive the picture.
    dessin_satellite(const power_record& p, const attitude_record& a, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    const power_record& power_;
    const attitude_record& attitude_;
};
