/// A small drawing of the nominal pointing: the body with its axes, seen in the local orbital frame.
#pragma once

#include <QWidget>

#include "orbit/orbite.h"

class dessin_pointage : public QWidget {
public:
    explicit dessin_pointage(const pointage_record& p, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    const pointage_record& pointage_;
};
