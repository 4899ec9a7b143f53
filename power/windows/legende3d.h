/// The legend over the three-dimensional view: the arrows in sight, and the scale of coloured faces.
#pragma once

#include <QWidget>

#include "power/windows/scene3d.h"

class legende3d : public QWidget {
    Q_OBJECT
public:
    explicit legende3d(QWidget* parent = nullptr);

    void montre(const affichage3d& a);
    /// The limits of the scale; drawn again only where they change.
    void echelle(double min, double max);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    int lignes() const;

    affichage3d affichage_;
    double min_ = 0, max_ = 1;
};
