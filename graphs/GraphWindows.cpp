#include "graphs/GraphWindows.h"

#include "chart/hand/Redraw.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/Palettes.h"
#include "graphs/kinds/AnalysisDigest.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace Quillon {

std::list<GraphWindow> GraphWindows;

namespace {

GraphAside ChartWindow;        // the chart window's own, while another graph is in hand
GraphWindow* InHand = nullptr; // null: the chart window's

GraphAside& AsideOf(GraphWindow* window) {
    return window != nullptr ? window->Aside : ChartWindow;
}

void PutAside(GraphAside& aside) {
    aside.Module = std::move(Chart);
    aside.Form = std::move(Charts);
    aside.BoxTable = std::move(Kept.BoxTable);
    aside.ZoomState = Kept.ZoomState;
    aside.StyleOfFile = Kept.StyleOfFile;
    aside.HasBox = Seams.HasPicBox;
    aside.Box = Seams.PicBox;
}

void TakeInHand(GraphAside& aside) {
    Chart = std::move(aside.Module);
    Charts = std::move(aside.Form);
    Kept.BoxTable = std::move(aside.BoxTable);
    Kept.ZoomState = aside.ZoomState;
    Kept.StyleOfFile = aside.StyleOfFile;
    Seams.HasPicBox = aside.HasBox;
    Seams.PicBox = aside.Box;
}

void Lend(GraphWindow* window) {
    if (window == InHand) return;
    PutAside(AsideOf(InHand));
    TakeInHand(AsideOf(window));
    InHand = window;
}

// What belongs to the window at hand rather than to its graph.
ChartsForm CopyOfForm() {
    ChartsForm form = Charts;
    const ChartsForm fresh;
    form.Markers.clear();
    form.PalePoints.clear();
    form.ZoomState = 0;
    form.CapturedMarker = -1;
    form.ActiveMarker = 0;
    form.WashOutside = form.Zooming = form.Needed = form.Shown = form.ClosesAsEscape = false;
    form.OnShiftBox = {};
    form.OnMarkers = {};
    form.EndsOnKey = {};
    form.Drag = {};
    form.StatusLine = fresh.StatusLine;
    return form;
}

int LeastFreeNumber() {
    int number = 2;
    for (const GraphWindow& window : GraphWindows)
        if (window.Number == number) ++number;
    return number;
}

// Nobody is asked and nothing else begins while graphs are made behind the user's back.
struct Quiet {
    std::function<void()> Events = std::exchange(Host.ServeEvents, [] {});
    std::function<void(Pointer)> Pointers = std::exchange(Host.SetPointer, [](Pointer) {});
    Quiet() = default;
    ~Quiet() {
        Host.ServeEvents = std::move(Events);
        Host.SetPointer = std::move(Pointers);
    }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
};

bool MakeAnew(const GraphOrigin& origin, std::string& why) {
    try {
        return origin.Make && origin.Make();
    } catch (const RuntimeError& error) {
        why = error.Text;
        return false;
    }
}

// The graph in hand from the analysis as it is; false, and the graph as it was, where that makes none.
bool Remake(std::uint64_t contents, std::string& why) {
    const ChartModule former = Chart;
    const ChartsForm form = Charts;
    if (!MakeAnew(form.Origin, why)) {
        Chart = former;
        Charts = form;
        RedrawChart();
        return false;
    }
    ZoomAgain(std::exchange(Charts.FormerZoom, {}));
    Charts.Origin = form.Origin;
    Charts.Origin.Contents = contents;
    return true;
}

void FollowColors(GraphWindow& window) {
    if (window.ClassicColors == Kept.ClassicColors && window.DarkCanvas == Kept.DarkCanvas) return;
    const bool other = window.ClassicColors != Kept.ClassicColors;
    window.ClassicColors = Kept.ClassicColors;
    window.DarkCanvas = Kept.DarkCanvas;
    const GraphInHand hand(&window);
    if (other) TakeStandardColors();
    RedrawChart();
}

void FollowAnalysis(GraphWindow& window, std::uint64_t contents) {
    const GraphOrigin& origin = FormOf(&window).Origin;
    if (!origin.Make || origin.Contents == contents) return;
    const GraphInHand hand(&window);
    window.WhyOlder.clear();
    window.Older = !Remake(contents, window.WhyOlder);
    if (window.Older) Charts.Origin.Contents = contents; // it is tried again when the analysis has changed
}

} // namespace

void NewGraphWindow() {
    if (!GraphMayChange() || Charts.Needed) return;
    GraphWindow window;
    window.Number = LeastFreeNumber();
    window.Aside.Module = Chart;
    window.Aside.Form = CopyOfForm();
    window.Aside.BoxTable = Kept.BoxTable;
    window.Aside.ZoomState = Kept.ZoomState;
    window.Aside.StyleOfFile = Kept.StyleOfFile;
    window.ClassicColors = Kept.ClassicColors;
    window.DarkCanvas = Kept.DarkCanvas;
    const auto place = std::find_if(GraphWindows.begin(), GraphWindows.end(),
                                    [&](const GraphWindow& other) { return other.Number > window.Number; });
    GraphWindows.insert(place, std::move(window));
}

void CloseGraphWindow(int number) {
    GraphWindows.remove_if(
        [number](const GraphWindow& window) { return window.Number == number && !IsInHand(&window); });
}

GraphInHand::GraphInHand(GraphWindow* window) : Former(InHand) {
    Lend(window);
}

GraphInHand::~GraphInHand() {
    Lend(Former);
}

bool IsInHand(const GraphWindow* window) {
    return window == InHand;
}

const ChartModule& ModuleOf(const GraphWindow* window) {
    if (IsInHand(window)) return Chart;
    return window != nullptr ? window->Aside.Module : ChartWindow.Module;
}

ChartsForm& FormOf(const GraphWindow* window) {
    if (IsInHand(window)) return Charts;
    return AsideOf(const_cast<GraphWindow*>(window)).Form;
}

void SetBoxOf(GraphWindow* window, const DrawingSurface& box) {
    if (IsInHand(window)) return SetScreenSurface(box);
    AsideOf(window).Box = box;
    AsideOf(window).HasBox = true;
}

std::string CaptionOf(const GraphWindow* window) {
    if (window == nullptr) return "Graph";
    const std::string& name = FormOf(window).Origin.Name;
    std::string caption = "Graph " + std::to_string(window->Number);
    if (!name.empty()) caption += ": " + name;
    if (window->Older) caption += ", of an older fit";
    return window->WhyOlder.empty() ? caption : caption + " (" + window->WhyOlder + ")";
}

void FollowInGraphWindows() {
    static bool following = false;
    if (following || GraphWindows.empty() || InHand != nullptr || Chart.Painting != 0) return;
    following = true;
    const Quiet quiet;
    const std::uint64_t contents = DigestOfAnalysis();
    for (GraphWindow& window : GraphWindows) {
        if (!window.Aside.HasBox) continue;
        FollowColors(window);
        FollowAnalysis(window, contents);
    }
    following = false;
}

} // namespace Quillon
