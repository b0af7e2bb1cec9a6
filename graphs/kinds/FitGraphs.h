#pragma once
// What the analysis hands to the chart engine: data, fitted function and both together.
//
// A builder fills the chart from the flat vectors of the fit and shows the window "Charts". Pseudo-points of
// constraints never appear.

#include "graphs/kinds/AllSets.h"

#include <cstdint>

namespace Quillon {

// What a builder shows, beside the axes.
enum class FitGraph { Data, Function, Overlay };

// Imposed axes; limits of 0 and 0 mean autorange. A negative number of decimals asks for exponential labels.
struct GraphLimits {
    bool XLog = false, YLog = false;
    float XMin = 0.0F, XMax = 0.0F, YMin = 0.0F, YMax = 0.0F;
    int XDecimals = 0, YDecimals = 0;
};

// Builds the graph of one set, or of AllSets, without showing its window; false when the chart refused it
// (Chart.GraphStatus).
bool MakeFitGraph(FitGraph kind, SetNo set, const GraphLimits& limits);

// The overlay (mode 1) or the fitted function (any other mode) of all sets, shown.
void BuildFitGraph(int mode, bool xLog, bool yLog, float xMin, float xMax, float yMin, float yMax,
                   int xDecimals, int yDecimals);

// The commands: build and show.
void GraphData();
void GraphFunc();
void GraphOverlay();
void GraphFuncSet();    // asks for the set by PickSet
void GraphOverlaySet(); // asks for the set by PickSet

} // namespace Quillon
