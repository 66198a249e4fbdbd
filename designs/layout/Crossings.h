#pragma once

#include "designs/model/Design.h"

namespace design {

/// Takes the ends from straight lines that run through boxes which they do not join: they say nothing that the boxes do
/// not, and lines without points are led around boxes by what draws the host's file.
void openCrossingLines(Diagram& diagram);

} // namespace design
