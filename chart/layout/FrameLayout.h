#pragma once
// The frame: the room that titles and axes take around it, and what is left for it.

#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

namespace Quillon {

// The block of the main titles.
void MeasureTitles();

// The space of an axis outside the frame.
void MeasureAxisSpace(AxisSpace& record, const GraphAxis& axis, int place);

// Finds the frame: the one of the GraphSpec with Relayout 0, text shrinking to fit around it; else a new one
// from the text sizes.
void FitFrame();

} // namespace Quillon
