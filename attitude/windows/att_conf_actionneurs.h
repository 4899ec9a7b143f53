/// Page "Actionneurs": magnetic couplers, jets, wheels, dampers.
#pragma once

#include "attitude/windows/page_att.h"

class QCheckBox;

class att_conf_actionneurs : public page_att {
    Q_OBJECT
public:
    explicit att_conf_actionneurs(attitude_record& a, QWidget* parent = nullptr);
    void form_load() override;

private:
    QWidget* cadre_roues();
    QWidget* cadre_amortisseurs();
    void roue(bool coche);
    void damp(bool coche);

    QCheckBox *chk_roue_, *chk_damp_;
    QList<boite_att*> roues_, amortisseurs_;
};
