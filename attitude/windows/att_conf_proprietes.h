/// Page "Propriétés satellites": surface coefficients and residual dipole.
#pragma once

#include "attitude/windows/page_att.h"

class QCheckBox;
class QGroupBox;

class att_conf_proprietes : public page_att {
    Q_OBJECT
public:
    explicit att_conf_proprietes(attitude_record& a, QWidget* parent = nullptr);
    void form_load() override;

private:
    QGroupBox* cadre_coefficients(const QString& nom, const QString& titre, const QString& avant,
                                  const QString& apres);
    void magn(bool coche);

    QCheckBox* chk_magn_;
    boite_att* dip_[3];
};
