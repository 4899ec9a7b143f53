/// The drawing of the attitude configuration: the central body with its dimensions to scale, and over it the
/// parts that are in use, each a transparent layer that is shown or hidden.
#pragma once

#include <QWidget>

#include "attitude/att_global.h"

class calque;
class QLabel;

class dessin_configuration : public QWidget {
    Q_OBJECT
public:
    explicit dessin_configuration(const attitude_record& a, QWidget* parent = nullptr);

    /// Shows the layers of what is in use and redraws: dipole, wheels and dampers by the three flags, a mass
    /// on an axis where it is not 0, on the side of its distance.
    void montre_config(bool magn, bool roue, bool damp);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    QString description(bool magn, bool roue, bool damp) const;

    const attitude_record& a_;
    QWidget* scene_;
    QList<calque*> calques_;
    QLabel* legende_;
};
