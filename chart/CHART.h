#pragma once
// The chart engine: a general two-dimensional chart that knows nothing of what it shows. Start here.
//
// A caller fills a GraphSpec (chart/records/Records.h), hands over its data, and the engine scales, lays out
// and paints the graph on the picture box, the printer or a metafile. One graph is held at a time, in the
// record Chart (chart/records/ChartState.h). What a caller does, step by step:
//
//     Chart.GraphHeld = FlagFalse;
//     GraphInit(spec, GraphTypes::XYPlot, PlotStyles::Lines);
//     spec.Title1.Text = "..."; spec.AxisX1.Title.Text = "..."; ...
//     SetTable x(points, sets), y(points, sets);   // MissingValue where there is nothing
//     Chart.GraphHeld = FlagTrue;                  // keep it for redraw, zoom and save
//     PlotSets(spec, x, y, points, 1, sets, names, {}, {});
//     ChartMenuStatus(Charts);
//
// Every operation leaves Chart.GraphStatus set: below 100 something was put right, from 100 it stopped. The
// spec comes back with the scale that was chosen. After a change of Chart.Spec or Chart.Style: Replot, then
// ShowGraph. A count of points or sets that does not fit 16 bits is the run-time error "Overflow".
//
// What it is made of stands in folders, one upon the other: records, pens, scale, layout, draw, targets,
// hand, files, dialogs. Each includes only from those below it; this header brings what a caller needs of
// them.

#include "chart/CHARTEX.h"
#include "chart/Charts.h"
#include "chart/draw/DrawGraph.h"
#include "chart/files/DataText.h"
#include "chart/hand/Separation.h"
#include "chart/layout/Layout.h"
#include "chart/pens/Device.h"
#include "chart/records/ChartState.h"

#include <string>
#include <vector>

namespace Quillon {

// Fills a spec with the defaults for a graph type (GraphTypes) and plot style (PlotStyles) and selects the
// target. chart.ini is read before the first.
void GraphInit(GraphSpec& spec, int graphType, int plotStyle);

// Plots several sets: columns firstSet to lastSet of x and y, points 1 to nPts of each; what a table does not
// have is missing. Name i of setNames (from 0) is that of set firstSet + i. Values that are infinite or no
// number are missing.
void PlotSets(GraphSpec& spec, const SetTable& x, const SetTable& y, int nPts, int firstSet, int lastSet,
              const std::vector<std::string>& setNames, const std::vector<GraphNote>& notes,
              const std::vector<GraphMark>& marks);

// Plots one set. It has no legend.
void PlotSingle(GraphSpec& spec, const OneBased<float>& x, const OneBased<float>& y, int nPts,
                const std::vector<GraphNote>& notes, const std::vector<GraphMark>& marks);

// Takes data in, scales and lays out; what PlotSets does before it draws. A stop before the data are in
// leaves the former graph untouched.
void LoadSets(GraphSpec& spec, const SetTable& x, const SetTable& y, int nPts, int firstSet, int lastSet,
              const std::vector<std::string>& setNames);

// Checks a spec and repairs it: sets GraphStatus; a scale with Min equal to Max becomes an autorange.
void CheckSpec(GraphSpec& spec, int nPts, int firstSet, int lastSet);

} // namespace Quillon
