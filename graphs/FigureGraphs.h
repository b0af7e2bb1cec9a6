#pragma once
// One graph of a figure (graphs/Figure.h): the page that it stands on, its style, how it is built from the
// fit and how it comes to its place there. Lengths are millimetres, letters and lines points.

#include "chart/CHART.h"
#include "chart/records/Kept.h"
#include "graphs/FigurePlan.h"
#include "graphs/kinds/AllSets.h"
#include "platform/PictureFile.h"

#include <string>

namespace Quillon {

// Ems of letters: of axes; of legends and heads; and of a legend whose lines are too long otherwise.
inline constexpr double TextPoints = 7.0, SmallPoints = 6.3, LeastPoints = 5.0;
inline constexpr double FigureGap = 0.7; // between texts and what stands beside them, mm

// From millimetres and points to device units, at a resolution in dots per inch.
struct Page {
    double Dots{};
    int Units(double millimetres) const;
    double Millimetres(double units) const;
    double LetterUnits(double points) const; // the height of letters of that em
    GraphBox Box(const FigureRect& rect) const;
};

// While it lives the chart is one of its own, in the style of figures: open symbols, thin lines, no grid,
// residuals about one line. Graphs are laid out and painted on Surface; builders plot on another one that
// nobody sees. Graph, window, settings and preference are put back on every way out.
struct FigureScope {
    explicit FigureScope(const PictureRequest& request);
    ~FigureScope();
    FigureScope(const FigureScope&) = delete;
    FigureScope& operator=(const FigureScope&) = delete;

    DrawingSurface Surface;

private:
    ChartModule FormerChart = Chart;
    ChartSeams FormerSeams = Seams;
    ChartsForm FormerWindow = Charts;
    ChartKept FormerKept = Kept;
    std::int16_t FormerSpread;
};

// The graphs of a cell before they have their places.
struct CellGraphs {
    SetNo Set = AllSets;
    ChartModule Upper, Lower;
};

// The overlay and the residuals of a set, or of AllSets. A graph that the chart refuses is a RuntimeError.
CellGraphs BuildCell(SetNo set);

// What a graph shows beside its axes.
struct PartText {
    std::string Head1, Head2;
    std::string Left; // painted apart, by PaintLeftTitle
};

// Gives the graph at hand its place and texts; the scale of a given X axis, where there is one.
void PlacePart(const Page& page, const FigurePart& part, const PartText& text, const GraphAxis* x);

// The letters of the graph at hand: TextPoints on axes, and an em for heads and legend.
void SetTextSizes(const Page& page, double small);

// Scale and layout of the graph at hand on the page. No room for its frame is a RuntimeError.
void LayOutPart();

// The title of a left axis, upward at the edge of its view, so that those of both graphs stand in one line.
void PaintLeftTitle(const Page& page, const FigurePart& part, const std::string& text);

// The title of the x axis of all graphs, in the middle of its place.
void PaintTitleBelow(const Page& page, const FigureRect& place, const std::string& text);

} // namespace Quillon
