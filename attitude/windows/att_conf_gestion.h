/// Page "Gestion SCA": set points and control parameters. They are notes: no simulation reads them and no
/// file holds them, the attitude control being passive; they live as long as the window.
#pragma once

#include <initializer_list>

#include "attitude/windows/page_att.h"

class att_conf_gestion : public page_att {
    Q_OBJECT
public:
    explicit att_conf_gestion(attitude_record& a, QWidget* parent = nullptr);
    void form_load() override;

private:
    boite_att* note(const QString& nom, double& valeur, const QString& aide);
    struct choix_axe {
        const char *nom, *titre, *aide;
    };
    struct valeur_par_axe {
        const char *nom, *titre, *aide, *unite;
        vec3& valeurs;
    };
    /// A frame whose boxes hold the values of the axis chosen in it.
    QWidget* cadre_par_axe(const QString& titre, const choix_axe& choix,
                           std::initializer_list<valeur_par_axe> valeurs);

    vec3 a_con_{};   ///< [deg] set points: roll, pitch, yaw
    vec3 gain_{};    ///< control gain of each axis
    vec3 t_const_{}; ///< [s] time constant of each axis
    vec3 vs_r_{};    ///< [rpm] saturation speed of each wheel
    vec3 in_roue_{}; ///< [kg m2] inertia of each wheel
};
