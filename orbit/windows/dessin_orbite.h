/// A small drawing of an orbit in its own plane: the Earth to scale, apogee, perigee, node and the satellite.
#pragma once

#include <QWidget>

#include "orbit/orbite.h"

class dessin_orbite : public QWidget {
public:
    explicit dessin_orbite(const record_orbite& o, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    const record_orbite& orbite_;
};
