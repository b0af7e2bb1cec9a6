#pragma once
// The window of the graph: its record `Charts`, what mouse and keys do on it, its scale commands and options,
// and the markers over the graph.

#include "chart/hand/ChartMarkers.h"
#include "chart/hand/ChartMouse.h"
#include "chart/hand/ChartScale.h"
#include "chart/hand/ChartWheel.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
