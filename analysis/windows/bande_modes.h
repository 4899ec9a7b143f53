/// A day of consumption modes: a line each, filled where the mode is in force.
#pragma once

#include <QWidget>

#include <vector>

#include "analysis/journee_modes.h"

class bande_modes : public QWidget {
    Q_OBJECT
public:
    explicit bande_modes(QWidget* parent = nullptr);

    void montre(const std::vector<mode_conso>& modes, journee_de_modes j);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    std::vector<mode_conso> modes_;
    journee_de_modes journee_;
};
