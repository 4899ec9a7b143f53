/// The fields of an étude as attributes of Python objects: e.energie.bat_c, e.orbite.orb_demi ...
#pragma once

#include <pybind11/pybind11.h>

#include "project/etude.h"

/// Declares a class for each section of the étude, with a property for each field of the tables: unit, limits
/// and meaning in its docstring.
void declare_champs(pybind11::module_& m);

/// The object of a section ("energie"), which keeps the étude alive.
pybind11::object section(const pybind11::object& etude, const char* nom);
/// The names of all of them.
std::vector<const char*> noms_sections();

/// The étude that a section shows.
const etude& etude_de(const pybind11::object& section);

/// One number by its name with its indices; KeyError for a name that is none, ValueError for a value that is
/// not permitted.
double lit_champ(const etude& e, const std::string& nom);
void pose_champ(etude& e, const std::string& nom, double x);
