/// The coastlines of the program's data, as drawing paths.
#pragma once

class QPainterPath;

/// Land to be filled and coasts to be drawn, in degrees, x the longitude, y the latitude downwards. The land
/// is cut at the date line; the coasts leave that cut out.
void lit_cotes(QPainterPath& terres, QPainterPath& cotes);
