/// How power flows between generator, battery and payload, with the settings that bear on each road.
#pragma once

#include <QWidget>

#include "power/power.h"

class dessin_bus : public QWidget {
    Q_OBJECT
public:
    explicit dessin_bus(QWidget* parent = nullptr);
    void montre(const power_record& p);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    QString bus_, generateur_, rendement_gs_, batterie_, transfert_, charge_jour_, charge_nuit_, recharge_;
};
