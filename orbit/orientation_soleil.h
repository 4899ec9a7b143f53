/// A nominal pointing that turns a face of the body to the Sun.
#pragma once

#include "orbit/orbite.h"

/// The faces in the order of their choice: +X, +Y, +Z, -X, -Y, -Z.
inline constexpr const char* noms_faces[] = {"+X", "+Y", "+Z", "-X", "-Y", "-Z"};

/// Points by the three angles of the inertial frame, so that the face (0 to 5) looks at the Sun at the date
/// j, within 0.02 degree. The roll is taken equal to the yaw: the turn of the fluxes, which puts the yaw in
/// the place of the roll, and the turn that has each angle in its place then agree. The angles are entered
/// with the orbit at its epoch, where `o` stands afterwards. False, and `o` as it was, for an orbit that
/// gives no position.
bool oriente_vers_soleil(orbit_state& o, int face, double j);
