/// A day of consumption modes: a line each, filled where the mode is in force.
#pragma once

#include <QWidget>

#include <vector>

#include "project/etude.h"

class bande_modes : public QWidget {
    Q_OBJECT
public:
    /// For each mode the parts of the day, from 0 to 1, in which it is in force.
    using journee = std::vector<std::vector<std::pair<double, double>>>;

    explicit bande_modes(QWidget* parent = nullptr);

    void montre(const std::vector<mode_conso>& modes, journee j);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    std::vector<mode_conso> modes_;
    journee journee_;
};
