#pragma once
// The two graphs of the workbench: the data with their curves, and below them the residuals over the same x
// axis, seven parts to three. They show the points of the analysis as they are; a set can be left out by a
// click on its line of the legend.
//
// They are charts of their own: the graph at hand, its window and the settings are what they were after
// each call. Device units are those of the surface that they were painted on last.

#include "chart/records/ChartState.h"
#include "platform/Controls.h"
#include "platform/Surface.h"
#include "workspace/records/Counts.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Quillon {

struct GraphPairRecord {
    ChartModule Upper, Lower;    // data with curves, residuals; without data where there is nothing to show
    bool HasCurves = false;      // a fitted function stands at all points
    bool HasResiduals = false;   // and belongs to the data as they are
    std::vector<Control> Legend; // by set, from 0: its name, Value 1 where it is shown; the tip tells more
    Control Remark;              // in place of what is not there, with the reason; else not visible
    std::map<long, std::string> LeftOut; // rows whose set is left out, by the label that the set had then
    std::uint64_t Contents = 0;          // of what was shown last
    int Builds = 0;                      // how often the graphs were built
};
extern GraphPairRecord GraphPair;

// Brings the record up to the analysis. False when nothing has changed since the last time: there is nothing
// to paint anew. The analysis is left as it is. Where the graphs cannot be built both are empty, and the
// remark tells why.
bool FollowAnalysis();

// Lays both graphs out on a surface and paints them, with letters so many units high. Nobody is asked and no
// events are served meanwhile.
void PaintGraphPair(const DrawingSurface& surface, int letters);

// Shows a set or leaves it out; the next FollowAnalysis builds the graphs without it.
void ToggleSet(SetNo set);
bool IsLeftOut(SetNo set);

// Paints what stands before a set's name in a legend, symbol and line, over the whole of a small surface.
void PaintSetSample(const DrawingSurface& surface, SetNo set);

// The point of a set that is shown nearest to a place within reach; Set is NoSet without one.
struct PairPoint {
    SetNo Set = NoSet;
    long Point = 0; // of the fit, from 1
    bool OfResidual = false;
    bool operator==(const PairPoint&) const = default;
};
PairPoint PairPointAt(int x, int y, int reach);

// What is told of it: file, channel and speed, then radius, signal, and what the fit leaves of it.
std::string PairPointText(const PairPoint& point);

// True when a place is in the lower graph.
bool IsInResiduals(int y);

} // namespace Quillon
