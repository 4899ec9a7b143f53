/// The arrangement of the panels on the body, seen from above: where panel 1 is and how they are counted.
#pragma once

#include <QWidget>

class image_panneaux : public QWidget {
    Q_OBJECT
public:
    /// 4 or 6 lateral faces, 36 strips of a cylinder, or 1 for external panels.
    image_panneaux(int panneaux, const QString& nom, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint() * 3 / 4; }

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    void dessine_corps(QPainter& p, double rayon) const;
    void dessine_externes(QPainter& p, double rayon) const;

    int panneaux_;
};
