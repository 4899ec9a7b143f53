/// Page "Masses/Dimensions": central body, external mass, totals.
#pragma once

#include "attitude/windows/page_att.h"

class QScrollBar;

class att_conf_masses : public page_att {
    Q_OBJECT
public:
    explicit att_conf_masses(attitude_record& a, QWidget* parent = nullptr);
    void form_load() override;
    /// Shows the totals of the record.
    void montre_bilan();

private:
    QWidget* cadre_corps();
    QWidget* cadre_externe();
    QWidget* cadre_bilan();
    void dimension_changee();
    void borne_centre();
    void lit_masse_externe();
    void place_masse_externe();
    void lie_externe();

    boite_att* cm_[3];
    boite_att *masse_grad_, *dist_grad_;
    QScrollBar* scroll_axe_;
    QLabel* lab_axe_;
    QLabel* mt_;
    QLabel* bilan_[6];
    double masse_ = 0, distance_ = 0; ///< the external mass as it stands in the boxes, [kg] and [m]
};
