#pragma once
// Further windows of graphs beside the chart window. Each has a graph of its own, with its own zooms and
// style, and every command of the chart window works on it.
//
// The engine holds one graph. A window lends it its own for as long as something is done to that: it is in
// hand then, and the one of the chart window waits aside. What is said of a window by a pointer is said of
// the chart window by a null one.
//
// A graph that the analysis has made follows it: when there is another fit or there are other data it is made
// anew, with the zoom that it had. Where that cannot be, as before the next fit has ended, the picture stays
// and the window's caption says that it is of an older fit, with the reason where something went wrong.

#include "chart/hand/Charts.h"
#include "chart/records/ChartState.h"
#include "chart/records/Kept.h"

#include <cstdint>
#include <list>
#include <string>

namespace Quillon {

// A graph that is not in hand, with the box that it is painted on.
struct GraphAside {
    ChartModule Module;
    ChartsForm Form;
    OneBasedMatrix<float> BoxTable; // these three of ChartKept go with a graph
    std::int16_t ZoomState{}, StyleOfFile{};
    bool HasBox = false;
    DrawingSurface Box;
};

struct GraphWindow {
    int Number{};           // the chart window is the first
    GraphAside Aside;       // while it is not in hand
    bool Older = false;     // the picture is of an older fit
    std::string WhyOlder{}; // what went wrong when it was to be made anew; "" where there is nothing to make
    std::int16_t ClassicColors{}, DarkCanvas{}; // that it was drawn with (ChartKept)
};

// In the order of their numbers; a window's place in memory stays.
extern std::list<GraphWindow> GraphWindows;

// The command: a further window with a copy of the graph in hand. Markers, and what waits for them, stay with
// the window that has them.
void NewGraphWindow();

// The window was closed by the user. Not while its graph is in hand.
void CloseGraphWindow(int number);

// While it lives the graph of a window is in hand.
class GraphInHand {
public:
    explicit GraphInHand(GraphWindow* window);
    ~GraphInHand();
    GraphInHand(const GraphInHand&) = delete;
    GraphInHand& operator=(const GraphInHand&) = delete;

private:
    GraphWindow* Former;
};
bool IsInHand(const GraphWindow* window);

// Graph and form of a window, in hand or not.
const ChartModule& ModuleOf(const GraphWindow* window);
ChartsForm& FormOf(const GraphWindow* window);

// The box that a window's graph is painted on, from now on.
void SetBoxOf(GraphWindow* window, const DrawingSurface& box);

// "Graph 2: Overlay, of an older fit"; of the chart window "Graph".
std::string CaptionOf(const GraphWindow* window);

// Brings all further windows up to the analysis and to the colours in use. Between two commands only: nobody
// is asked and no events are served meanwhile.
void FollowInGraphWindows();

} // namespace Quillon
