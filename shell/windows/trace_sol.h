/// The ground track of one turn of the orbit over a map of the Earth, its part in eclipse apart.
#pragma once

#include <QPixmap>
#include <QVector>
#include <QWidget>

#include "orbit/orbite.h"

class trace_sol : public QWidget {
    Q_OBJECT
public:
    explicit trace_sol(QWidget* parent = nullptr);

    /// Computes one turn from the date j on a copy of the state. A point that is not finite ends the track.
    void montre(orbit_state o, double j);
    /// Share of the turn in the shadow, 0 to 1.
    double part_eclipse() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    struct point {
        double lon, lat; ///< degrees
        bool eclipse;
    };
    QRectF carte() const;

    QVector<point> points_;
    QPixmap fond_;
};
