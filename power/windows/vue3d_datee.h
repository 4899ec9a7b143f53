/// The three-dimensional view at a date of its own: records that follow the session's settings and stand at
/// the date that another view shows. No run has set temperatures there: faces show their flux alone.
#pragma once

#include <QWidget>

#include "physics/rotation.h"
#include "shell/session.h"

class vue3d;

class vue3d_datee : public QWidget {
    Q_OBJECT
public:
    explicit vue3d_datee(const session& s, QWidget* parent = nullptr);

    /// What is shown: position, Sun, and the pointing angles of the body.
    const orbit_state& etat() const { return orbit_; }

public slots:
    /// Satellite and Sun as `o` has them at the date j [days]; light, fluxes and panels follow.
    void montre(const orbit_state& o, double j);
    /// The same with the body at an attitude (inertial to body) of its own, in the physical model.
    void montre_attitude(const orbit_state& o, double j, const rotation& attitude);
    /// The camera stands near the satellite, along with it.
    void suit_satellite();

private:
    void place(const orbit_state& o, double j, const options_modele& modele, const rotation* attitude);

    const session& s_;
    orbit_state orbit_;
    power_record power_;
    simulation_period periode_;
    vue3d* vue_;
};
