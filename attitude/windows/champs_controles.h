/// Binds a box of the attitude windows to the field of the record that it edits.
#pragma once

#include "attitude/att_global.h"

class boite_att;

/// Binds by the name of the box: number, limits, unit conversion and tooltip. The limits of the centre of
/// mass follow the dimensions and are set by `borne_centre`.
void relie_champ(boite_att& b, attitude_record& a);
