/// A pass as it is seen from its station: azimuth around, elevation from the rim (0 degrees) to the middle
/// (90).
#pragma once

#include <QWidget>

#include <optional>
#include <vector>

#include "orbit/station.h"

struct point_ciel {
    double azimut = 0, elevation = 0; ///< [deg]
    bool eclipse = false;
};

class dessin_polaire : public QWidget {
    Q_OBJECT
public:
    explicit dessin_polaire(QWidget* parent = nullptr);

    /// The pass in the order of time; empty: none is chosen. `masque` in degrees.
    void montre(std::vector<point_ciel> points, double masque);
    /// Where the satellite stands in the pass, if it is under way.
    void montre_present(const std::optional<visee>& v);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    QPointF place(double azimut, double elevation) const;
    double rayon(double elevation) const; ///< [px] of its circle
    void peint_ciel(QPainter& p) const;
    void peint_mots(QPainter& p) const;
    void peint_passage(QPainter& p) const;

    std::vector<point_ciel> points_;
    double masque_ = 0;
    std::optional<visee> present_;
};
