#pragma once
// The scale commands and options of the chart window. All of them need a graph that is held; while one is
// being painted they do nothing.

namespace Quillon {

// Limits of AxisX1 and AxisY1, in axis units.
struct ChartScale {
    float XMin, XMax, YMin, YMax;
    bool operator==(const ChartScale&) const = default;
};
ChartScale PresentScale();

// Lays the graph out with that scale. Its tics are those of before as long as two of them are left on an
// axis; RoundOnZoom asks for new ones, and rounds the scale outward to them. Not drawn, and no zoom to step
// back from.
void TakeScale(const ChartScale& scale, bool round);

// Zooms to a scale and draws; LastZoom leads back. A scale without length is none.
void ZoomTo(const ChartScale& scale);

// Brings the graph to a scale with tics chosen for it, and draws. goesOn: it is a further step of the zoom
// before, so that LastZoom leads back to where that began.
void MoveScale(const ChartScale& scale, bool goesOn);

void DoLastZoom();  // back to the scale before the latest zoom
void DoAutoScale(); // both axes to the full range
void DoAutoX();
void DoAutoY();

// --- options of the window -------------------------------------------------------------------------------
void ToggleRoundOnZoom();
void ToggleShowCursor();
void ToggleShowGrids();
void ToggleRainbow();

// Without a graph, too. Both are remembered in chart.ini; a failure to write it is told.
void ToggleClassicColors(); // the tables of colours become the other palette's (chart/records/Palettes.h)
void ToggleDarkCanvas();    // on the picture box alone

void SetPlotKind(int style, int symbolMode); // the items LinePlot, BothPlot, SymbolPlot, AltPlot
void ToggleDotCenter();

} // namespace Quillon
