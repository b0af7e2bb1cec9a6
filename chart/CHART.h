#pragma once
// The chart engine: a general two-dimensional chart that knows nothing of what it shows. Start here.
//
// A caller fills a GraphSpec (chart/Records.h), hands over its data, and the engine scales, lays out and
// paints the graph on the picture box, the printer or a metafile. One graph is held at a time, in the record
// Chart (chart/ChartState.h). What a caller does, step by step:
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

#include "chart/CHARTEX.h"
#include "chart/ChartState.h"
#include "chart/Charts.h"
#include "chart/Records.h"
#include "chart/SetTable.h"

#include <string>
#include <vector>

namespace Quillon {

// --- targets -------------------------------------------------------------------------------------------

// The surfaces of the targets. A surface is asked for its size and resolution at each painting.
void SetScreenSurface(const DrawingSurface& surface);
void RemoveScreenSurface();
void SetPrinterSurface(const DrawingSurface& surface, bool plotter = false);
void RemovePrinterSurface();
void SetMetafileMaker(std::function<MetafileTarget(const MetafileRequest&)> make);

// Chooses the target by Device of the GraphSpec ("0" the picture box, "1" the printer, else a metafile of
// that name, which is begun), reads its size, resolution and view, and builds the cycles. Without a surface
// the status is NoSurface, and a message says so.
void SelectTarget(const GraphSpec& spec);

// The surface of the target. Only after a SelectTarget that found one.
const DrawingSurface& TargetSurface();

// Finishes the metafile that SelectTarget has begun; nothing on other targets.
void CloseMetafile();

// --- the calling interface -----------------------------------------------------------------------------

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

// Reads the view afresh and repeats scaling and layout for the current spec and data. Does not draw.
void Replot();

// Shows the graph: on the picture box cleared, painted and refreshed if the box keeps its own picture, else
// left to its paint event; on other targets painted. A cancel that is raised while it paints the picture box
// ends that painting and no more; one that stood before is left standing and does not touch it.
void ShowGraph();

// Paints the graph on the target. The shared cancel flag, tested between the steps and every 50 points, ends
// it early, with the picture incomplete but valid; on a metafile it is not tested.
void DrawGraph();

// --- data exchange and separation ----------------------------------------------------------------------

// The stored data as text: one line for each point of the longest set, in it X and Y of each set, columns
// separated by delimiter, a missing value as one blank, lines ended by CR LF.
std::string DataText(char delimiter);

// The command: the data of a graph that is held go to the clipboard, with tabs between the columns.
void EditCopyData();

// The character that AsciiDelimiter stands for: tab, comma or blank.
char AsciiDelimiterChar();

// Sets in SetShift: the number of sets, or of pairs where sets alternate as symbols and lines.
int SeparationCount();

// Shifts the stored data of each set by SetShift along X, Y or both after SeparateMode, scales and lays out
// afresh, and shows the graph.
void ApplySeparation();

} // namespace Quillon
