#include "batch/graphs/Graphs.h"

#include "batch/console/BatchPlatform.h"
#include "batch/graphs/PictureLoader.h"
#include "chart/CHART.h"
#include "chart/files/Exchange.h"
#include "chart/files/GraphFile.h"
#include "chart/records/Palettes.h"
#include "chart/targets/SvgFile.h"
#include "graphs/Figure.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/MassGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "graphs/kinds/SpeciationGraph.h"
#include "graphs/kinds/SpeciesGraphs.h"
#include "models/table/ModelTable.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <utility>

namespace Quillon {

namespace {

// The outline of a symbol: half a point, two dots of the figure. The 7 twips of the screen would be one dot,
// which is hardly seen on paper.
constexpr float SymbolTwips = 10.0F;

// The gap between texts and the rest: half as wide again as on the screen, so that the labels of two axes do
// not run into one where they meet.
constexpr float Clearance = 0.006F;

struct GraphKind {
    const char* Name;
    bool (*Make)(const GraphOption& option);
};

constexpr GraphKind Kinds[] = {
    {"data", [](const GraphOption& o) { return MakeFitGraph(FitGraph::Data, SetNo(o.Set), {}); }},
    {"function", [](const GraphOption& o) { return MakeFitGraph(FitGraph::Function, SetNo(o.Set), {}); }},
    {"overlay", [](const GraphOption& o) { return MakeFitGraph(FitGraph::Overlay, SetNo(o.Set), {}); }},
    {"residuals", [](const GraphOption& o) { return MakeResidualGraph(ResidualAxis::X, SetNo(o.Set)); }},
    {"residuals-y",
     [](const GraphOption& o) { return MakeResidualGraph(ResidualAxis::Fitted, SetNo(o.Set)); }},
    {"residuals-r",
     [](const GraphOption& o) { return MakeResidualGraph(ResidualAxis::Radius, SetNo(o.Set)); }},
    {"species",
     [](const GraphOption& o) { return MakeSpeciesGraph(SpeciesGraph::Concentration, SetNo(o.Set)); }},
    {"species-fraction",
     [](const GraphOption& o) { return MakeSpeciesGraph(SpeciesGraph::Fraction, SetNo(o.Set)); }},
    {"speciation", [](const GraphOption&) { return MakeSpeciationGraph(); }},
    {"mass-c",
     [](const GraphOption& o) { return MakeMassGraph(MassAxis::Concentration, SetNo(o.Set), o.Mass); }},
    {"mass-r", [](const GraphOption& o) { return MakeMassGraph(MassAxis::Radius, SetNo(o.Set), o.Mass); }}};

[[noreturn]] void FailGraph(const GraphOption& option, const std::string& reason) {
    RaiseError("--graph " + GraphName(option) + "=" + option.Path + ": " + reason);
}

// A chart of its own, gone with the graph. Builders plot on the picture box: one as large as the figure, on
// which text is measured and nothing is drawn.
struct FigureChart {
    explicit FigureChart(GraphColors colors) {
        Chart = ChartModule{};
        BeginWithColors(colors);
        ReadChartDefaults();
        Chart.Style.SymbolWidth = SymbolTwips;
        Chart.Style.Clearance = Clearance;
        Seams.KeepsPicture = 0;
        SetScreenSurface(OpenSvg(FigureRequest()).Surface);
    }
    ~FigureChart() {
        Seams = ChartSeams{};
        Chart = ChartModule{};
        BeginWithSafeColors(false);
    }
    FigureChart(const FigureChart&) = delete;
    FigureChart& operator=(const FigureChart&) = delete;
};

// A graph file is taken as it is, but for colours that were asked for.
void MakeFromFile(const GraphOption& option) {
    try {
        const std::string bytes = Host.ReadFile(option.Source);
        const std::string foreign = ForeignGraphText(ReadGraphHeader(bytes));
        AdoptGraph(bytes);
        if (!foreign.empty()) WriteConsole(option.Source + ": " + foreign);
        if (option.Colors != GraphColors::Unsaid) TakeStandardColors();
    } catch (const RuntimeError& error) {
        FailGraph(option, error.Text);
    }
}

// What a builder says in words is said of the graph.
bool Made(const GraphOption& option, const GraphKind& kind) {
    try {
        return kind.Make(option);
    } catch (const RuntimeError& error) {
        FailGraph(option, error.Text);
    }
}

// What the status line of the chart window would tell.
void TellStatus() {
    if (!Charts.StatusLine.Text.empty()) WriteConsole(Charts.StatusLine.Text);
    Charts.StatusLine.Text.clear();
}

void Make(const GraphOption& option) {
    if (!option.Source.empty()) return MakeFromFile(option);
    for (const GraphKind& kind : Kinds)
        if (option.Kind == kind.Name && Made(option, kind)) return TellStatus();
    FailGraph(option, "it could not be drawn (" + std::to_string(Chart.GraphStatus) + ")");
}

std::string Figure(const GraphOption& option) {
    FigureChoice choice = option.Figure;
    choice.Set = option.Set;
    const std::string ending = GraphEnding(option);
    try {
        return FigureBytes(choice, ending, FigureDots, OpenPictureAs);
    } catch (const RuntimeError& error) {
        FailGraph(option, error.Text);
    }
}

// Draws the graph at hand once more, into a picture.
std::string Painted(const GraphOption& option) {
    std::string bytes;
    SetMetafileMaker([&](const MetafileRequest& asked) {
        PictureRequest request = FigureRequest();
        request.Description = asked.Description;
        const PictureFile picture = OpenPictureAs(GraphEnding(option), request);
        return MetafileTarget{picture.Surface, picture.SetWindow,
                              [&bytes, finish = picture.Finish] { bytes = finish(); }};
    });
    Chart.Spec.Device = "picture"; // no target's number: it is painted once and closed
    Chart.Spec.Relayout = 1;
    SelectTarget(Chart.Spec);
    Replot();
    ShowGraph();
    if (Chart.GraphStatus >= GraphStatuses::Stop)
        FailGraph(option, "it could not be drawn (" + std::to_string(Chart.GraphStatus) + ")");
    CloseMetafile();
    return bytes;
}

// The graph at hand by the ending of its file.
std::string BytesOf(const GraphOption& option) {
    const std::string ending = GraphEnding(option);
    const bool numbers = ending == "grf" || ending == "dat" || ending == "csv";
    return numbers ? GraphAs(ending) : Painted(option);
}

} // namespace

std::vector<std::string> GraphKinds() {
    std::vector<std::string> names;
    for (const GraphKind& kind : Kinds)
        names.emplace_back(kind.Name);
    names.emplace_back(HistogramKind);
    names.emplace_back(ApproachKind);
    names.emplace_back(FigureKind);
    return names;
}

PictureRequest FigureRequest() {
    PictureRequest request;
    request.Width = 1800;
    request.Height = 1350;
    request.DotsPerInchX = request.DotsPerInchY = 300.0;
    return request;
}

void CheckGraphFormat(const GraphOption& option) {
    const std::string ending = GraphEnding(option);
    if (ending != "png" && ending != "pdf") return;
    OpenToolkitPicture = LoadedPicture; // by which all kinds are drawn, those of a run among them
    try {
        LoadedPicture(ending, {"", 1, 1});
    } catch (const RuntimeError& error) {
        FailGraph(option, error.Text);
    }
}

void CheckGraphSet(const GraphOption& option, long sets) {
    if (option.Set <= sets) return;
    FailGraph(option,
              "the fit has no data set " + std::to_string(option.Set) + ", it has " + std::to_string(sets));
}

void CheckGraphModel(const GraphOption& option, int model) {
    if (option.Kind != "mass-c" || !option.Mass.SpeciesB || TraitsOfModel(model).TwoSpecies) return;
    FailGraph(option, "--mass-species B: the model has no species B");
}

std::string GraphBytesOf(const std::string& name, const std::string& path, GraphColors colors,
                         const std::function<bool()>& make) {
    const FigureChart chart(colors);
    GraphOption option;
    option.Kind = name;
    option.Path = path;
    if (!make()) RaiseError(name + "=" + path + ": it could not be drawn");
    TellStatus();
    return BytesOf(option);
}

void BeginWithColors(GraphColors colors) {
    BeginWithSafeColors(colors != GraphColors::Classic);
}

std::string GraphBytes(const GraphOption& option) {
    const FigureChart chart(option.Colors);
    if (option.Kind == FigureKind) return Figure(option);
    Make(option);
    return BytesOf(option);
}

} // namespace Quillon
