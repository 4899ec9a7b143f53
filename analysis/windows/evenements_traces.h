/// The events of a run as the strip of stacked charts shows them.
#pragma once

#include "widgets/dessin_traces.h"

/// A kind for each `evenement`, with its colour and its sign.
QVector<genre_trace> genres_evenements();
