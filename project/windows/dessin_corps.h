/// The body in perspective with its two dimensions, and external panels at their angle.
#pragma once

#include <QWidget>

class dessin_corps : public QWidget {
    Q_OBJECT
public:
    /// `cotes`: lateral faces, 0 for a cylinder.
    explicit dessin_corps(int cotes, QWidget* parent = nullptr);

    /// Height and width in metres; external panels at `angle` degrees, or cells on the lateral faces.
    void montre(double hauteur, double largeur, bool panneaux_externes, double angle);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    int cotes_;
    double hauteur_ = 1, largeur_ = 1, angle_ = 0;
    bool externes_ = false;
};
