#pragma once
// The scales of a figure: what its panels share, so that they can be compared, and limits that follow the
// data closely, since paper is dear: only their tics are round. Lengths are millimetres.

#include "chart/records/Records.h"
#include "graphs/FigureGraphs.h"

#include <vector>

namespace Quillon {

struct FigureRange {
    double Low{}, High{};
    bool operator==(const FigureRange&) const = default;
};

// What is one for all cells: the range of X of all data and curves, and the scale of the residuals that is
// the widest of all.
struct FigureScales {
    FigureRange X;
    GraphAxis Residual;
};

// Of at least one cell as BuildCell has made it.
FigureScales ScalesOf(const std::vector<CellGraphs>& cells);

// The range of data and curves of the graph at hand along Y. Data that are all above zero, and a third of
// their height or less away from it, begin at zero.
FigureRange SignalRange();

// A manual scale over a range, free by a part of it at both ends but where the range begins or ends at zero.
// Its tics are 1, 2 or 5 times a power of ten apart, as near as labels that take a length each allow, but two
// at least.
void ScaleFigureAxis(GraphAxis& axis, FigureRange range, double length, double label);

// The length that a label takes with what keeps it from the next one: across the page, and down it.
inline constexpr double LabelAcross = 9.0, LabelDown = 5.0;

// The scales of the graph at hand, in its place: residuals, below, and data with their curves, above. The
// scale of X of the upper graph is that of the lower one.
void ScaleLowerPart(const FigureScales& scales, const FigureRect& frame);
void ScaleUpperPart(const FigureRect& frame);

} // namespace Quillon
