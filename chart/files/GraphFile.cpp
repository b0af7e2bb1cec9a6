// Graph files: the codec's checks, and the commands around it.
#include "chart/files/GraphFile.h"

#include "chart/draw/DrawGraph.h"
#include "chart/files/GraphFields.h"
#include "chart/files/GraphTrailer.h"
#include "chart/hand/ChartMarkers.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/Layout.h"
#include "chart/layout/LegendLayout.h"
#include "chart/pens/Device.h"
#include "chart/records/ChartDefaults.h"
#include "chart/records/Kept.h"
#include "input/NUMINPUT.h"
#include "platform/Letters.h"
#include "platform/Platform.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace Quillon {

namespace {

constexpr const char* Filter = "graph save files (*.GRF)|*.GRF|all files (*.*)|*.*";

bool Between(int value, int least, int most) {
    return value >= least && value <= most;
}

bool AxisStands(const GraphAxis& axis) {
    return Between(axis.Show, 0, 1) && Between(axis.TicMode, 0, 2) && Between(axis.ScaleType, 1, 2) &&
           Between(axis.ScaleMode, 0, 3) && Between(axis.TicFormat, 1, 2) &&
           Between(axis.Title.Justify, 0, 5);
}

bool IsShown(const std::string& text) {
    return text.size() <= 64 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

// --- checks of what was read
// --------------------------------------------------------------------------------

void CheckOrder(const std::vector<std::int16_t>& order, int most, const char* name) {
    for (const std::int16_t entry : order)
        if (!Between(entry, 0, most)) GraphReader::Damaged(name);
}

void CheckCycles(const StyleCycles& cycles) {
    const auto check = [](const auto& cycle, int most) {
        CheckOrder({cycle.begin(), cycle.end()}, most, "the cycles");
    };
    check(cycles.Line, 4);
    check(cycles.Line2, 4);
    check(cycles.Border, 4);
    check(cycles.Pattern, 6);
    check(cycles.Symbol, 17);
}

void CheckStyle(const ChartModule& m) {
    const ChartStyle& style = m.Style;
    CheckOrder(style.LineStyleOrder, 4, "LineStyleOrder");
    CheckOrder(style.BorderStyleOrder, 4, "BorderStyleOrder");
    CheckOrder(style.SymbolOrder, 17, "SymbolOrder");
    CheckOrder(style.PatternStyleOrder, 6, "PatternStyleOrder");
    if (m.CyclesOfFile) CheckCycles(*m.CyclesOfFile);
    for (const float size : {style.TicSize, style.Clearance})
        if (!(size >= -1.0F && size <= 1.0F)) GraphReader::Damaged("the sizes");
    for (const float width : {style.AxisWidth, style.TicWidth, style.LineWidth, style.TitleFont,
                              style.TicLabelFont, style.LegendFont, style.SymbolWidth})
        if (!(width >= 0.0F && width <= 32767.0F)) GraphReader::Damaged("the sizes");
    for (const std::int16_t points :
         {style.ScreenMaxFont, style.ScreenMinFont, style.PrinterMaxFont, style.PrinterMinFont})
        if (!Between(points, 1, 1000)) GraphReader::Damaged("the limits of fonts");
}

void CheckSizes(const ChartModule& m) {
    for (const float length : {m.Style.LeftMargin, m.Style.RightMargin, m.Style.TopMargin,
                               m.Style.BottomMargin, m.Style.CustomHeight, m.Style.CustomWidth})
        if (!(length >= 0.0F && length <= 1000.0F)) GraphReader::Damaged("the margins");
    for (const float size :
         {m.Style.TitleSize, m.Style.TicFontSize, m.Spec.Title1.Size, m.Spec.Title2.Size, m.Spec.Legend.Size})
        if (!(size >= 0.0F && size <= 1.0F)) GraphReader::Damaged("the sizes of texts");
}

// Arrays of sets count from the first set that is shown. Other writers let them count by the numbers of the
// sets: what stands before the first one is none of theirs.
template <class T> void CountFromFirst(OneBased<T>& array, const GraphState& state) {
    const long before = array.Hi() - state.Nsets;
    if (state.FirstSet > 1 && before > 0 && array.Hi() == state.LastSet) {
        std::rotate(array.begin(), array.begin() + before, array.end());
        array.Resize(state.Nsets);
    }
    if (array.Hi() < state.Nsets) array.Resize(state.Nsets);
}

// What the engine goes by and never checks again.
void Settle(ChartModule& m) {
    GraphState& state = m.State;
    if (m.Spec.GraphType == 0 && state.Nsets != 0) GraphReader::Damaged("GraphSpec");
    state.Busy = state.CyclesBuilt = 0;
    std::tie(state.KindX, state.KindY) = KindsOfType(m.Spec.GraphType);
    CountFromFirst(m.SetNames, state);
    CountFromFirst(m.SetFlags, state);
    if (m.CatLabels.Empty()) m.CatLabels.Resize(1);
}

ChartModule WithSettingsOf(const ChartModule& present) {
    ChartModule fresh;
    fresh.Style = present.Style;
    fresh.Style.MetricUnits = FlagFalse; // version 1.0 has none
    fresh.Style.LineStyleOrder = ChartStyle{}.LineStyleOrder;
    fresh.Style.BorderStyleOrder = ChartStyle{}.BorderStyleOrder;
    fresh.Style.SymbolOrder = ChartStyle{}.SymbolOrder;
    fresh.Style.PatternStyleOrder = ChartStyle{}.PatternStyleOrder;
    fresh.Style.SymbolWidth = ChartStyle{}.SymbolWidth;
    fresh.UseColorOnBW = present.UseColorOnBW;
    fresh.UseOnlyBW = present.UseOnlyBW;
    fresh.SetShift = present.SetShift; // what was typed last is offered again for as long as the run lasts
    fresh.SeparateMode = present.SeparateMode;
    return fresh;
}

// --- the commands' own
// --------------------------------------------------------------------------------------

struct HourglassScope {
    HourglassScope() { Host.SetPointer(Pointer::Hourglass); }
    ~HourglassScope() { Host.SetPointer(Pointer::Standard); }
    HourglassScope(const HourglassScope&) = delete;
    HourglassScope& operator=(const HourglassScope&) = delete;
};

FileRequest RequestFor(const std::string& what) {
    FileRequest request;
    request.Title = ProgramTitle() + what;
    request.Filter = Filter;
    request.Name = "*.grf";
    request.DefaultType = "GRF";
    return request;
}

// False, told, while whoever made the graph at hand still waits for it.
bool MayBeReplaced() {
    if (!Charts.Needed && Chart.Painting == 0) return true;
    Tell("The graph in the window is still waited for.  A graph file can be shown when that has ended.",
         ProgramTitle(), BoxIcon::Warning);
    return false;
}

// False when the file is another program's and the user does not want it, or newer than this engine.
bool Welcome(const GraphFileHeader& header) {
    const std::string foreign = ForeignGraphText(header);
    if (!foreign.empty()) {
        const BoxRequest question{foreign, ProgramTitle(), BoxIcon::Warning, BoxButtons::OkCancel,
                                  BoxAnswer::Ok};
        if (Host.MessageBoxAnswer(question) != BoxAnswer::Ok) return false;
    }
    if (NumericPrefix(header.Version) <= NewestGraphFile) return true;
    Tell("This file is a graph from chart module version " + header.Version +
             ", which cannot be used with the present version (" + GraphFileVersion + ").  Aborting...",
         ProgramTitle(), BoxIcon::Warning);
    return false;
}

// The frame is kept where the graph comes back to a box like the one that it left.
void SuitTheBox(const GraphBox& formerView, const GraphState& saved) {
    GraphSpec& spec = Chart.Spec;
    const GraphState& state = Chart.State;
    if (spec.View == formerView && state.DeviceW == saved.DeviceW && state.DeviceH == saved.DeviceH) return;
    spec.Relayout = 1;
    for (GraphBox* box : {&spec.View, &spec.Frame})
        box->X1 = box->Y1 = box->X2 = box->Y2 = 0;
    ReadView(spec.View);
    CarryLegend(saved);
}

// Takes the graph to the picture box. No room in it is a RuntimeError: what cannot be seen replaces nothing.
// [decision: restore-needs-room]
void TakeToBox(ChartModule&& module, const GraphBox& formerView) {
    const GraphState saved = module.State;
    Chart = std::move(module);
    Chart.State.IniRead = 1;
    Chart.Spec.Device = "0";
    SelectTarget(Chart.Spec);
    SuitTheBox(formerView, saved);
    Replot();
    if (Chart.GraphStatus >= GraphStatuses::Stop) RaiseError("the graph has no room");
}

// The description of no graph at all. Where it would stand on a device says nothing.
bool IsNoGraph(GraphSpec spec) {
    spec.View = spec.Frame = GraphBox{};
    spec.Relayout = 0;
    spec.Device = "";
    return spec == GraphSpec{};
}

} // namespace

bool SpecStands(const GraphSpec& spec) {
    if (IsNoGraph(spec)) return true;
    return Between(spec.GraphType, 1, 5) && Between(spec.PlotStyle, 1, 3) && Between(spec.SymbolMode, 0, 3) &&
           Between(spec.Relayout, 0, 1) && AxisStands(spec.AxisX1) && AxisStands(spec.AxisX2) &&
           AxisStands(spec.AxisY1) && AxisStands(spec.AxisY2);
}

bool NamesGraphFile(const std::string& path) {
    return EndsWithLetters(path, ".grf");
}

GraphFileHeader ReadGraphHeader(const std::string& bytes) {
    GraphFileHeader header;
    GraphReader reader(bytes);
    const auto refuse = [] { RaiseError("this is not a graph file"); };
    try {
        reader.Value("the program", header.Program);
        reader.Value("the version", header.Version);
    } catch (const RuntimeError&) { // it ends before its first two fields
        refuse();
    }
    if (header.Program.empty() || !IsShown(header.Program) || !IsShown(header.Version)) refuse();
    header.Size = reader.At;
    return header;
}

std::string EncodeGraph(const GraphContents& graph) {
    GraphWriter writer;
    writer.Value("the program", ChartIniSection());
    writer.Value("the version", std::string(GraphFileVersion));
    GraphFields(writer, graph);
    WriteTrailer(writer, graph.Module);
    return std::move(writer.Bytes);
}

GraphContents DecodeGraph(const std::string& bytes, const ChartModule& present) {
    const GraphFileHeader header = ReadGraphHeader(bytes);
    GraphContents graph{WithSettingsOf(present), {}, 0};
    GraphReader reader(bytes);
    reader.At = header.Size;
    reader.Version = NumericPrefix(header.Version);
    if (reader.Version > NewestGraphFile) RaiseError("this is a graph of version " + header.Version);
    GraphFields(reader, graph);
    ReadTrailer(reader, graph.Module);
    CheckStyle(graph.Module);
    CheckSizes(graph.Module);
    Settle(graph.Module);
    return graph;
}

std::string ForeignGraphText(const GraphFileHeader& header) {
    if (header.Program == ChartIniSection()) return "";
    return "This file is a graph from " + header.Program + " not " + ProgramTitle() +
           ".  It should display properly, but current special options under the Options heading may be "
           "inappropriate.";
}

std::string GraphFileBytes() {
    if (Chart.State.IniRead == 0) ReadChartDefaults();
    return EncodeGraph({Chart, Kept.BoxTable, Charts.ZoomState != 0 ? Charts.ZoomState : Kept.ZoomState});
}

void AdoptGraph(const std::string& bytes) {
    if (Chart.State.IniRead == 0) ReadChartDefaults();
    GraphContents graph = DecodeGraph(bytes, Chart);
    if (!Seams.HasPicBox) RaiseError("there is no window for the graph");
    CloseMetafile();
    ChartModule former = Chart;
    try {
        TakeToBox(std::move(graph.Module), former.Spec.View);
    } catch (const RuntimeError&) {
        Chart = std::move(former);
        throw;
    }
    Kept.BoxTable = std::move(graph.BoxTable);
    Kept.ZoomState = graph.ZoomState;
    Kept.StyleOfFile = FlagTrue;
}

std::string ChosenFile(const FileRequest& request) {
    const FileAnswer answer = Host.AskFile(request);
    const bool blank = answer.Path.find_first_not_of(' ') == std::string::npos;
    return answer.Cancelled || blank ? "" : answer.Path;
}

void DoSaveGraph() {
    if (Chart.GraphHeld == 0 && Chart.GraphDrawn != 0)
        return Tell("Sorry, the data to reproduce this graph is no longer available, so it cannot be saved.",
                    ProgramTitle(), BoxIcon::Warning);
    FileRequest request = RequestFor(" - Save Graph to Disk");
    request.Save = true;
    if (Seams.DataDirectory) request.Directory = Seams.DataDirectory();
    const std::string path = ChosenFile(request);
    if (!path.empty()) SaveGraphFile(path);
}

bool SaveGraphFile(const std::string& path) {
    const HourglassScope scope;
    try {
        Host.WriteFile(path, GraphFileBytes());
        return true;
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while saving graph information --- terminating.",
             ProgramTitle(), BoxIcon::Warning);
        return false;
    }
}

bool RestoreGraphFile(const std::string& path) {
    if (!MayBeReplaced()) return false;
    const HourglassScope scope;
    try {
        const std::string bytes = Host.ReadFile(path);
        if (!Welcome(ReadGraphHeader(bytes))) return false;
        AdoptGraph(bytes);
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text +
                 "' occurred while restoring graph information --- terminating.  This could cause this "
                 "program to become unstable.",
             ProgramTitle(), BoxIcon::Warning);
        return false;
    }
    RemoveMarkers();
    Charts.StatusLine.Text.clear();
    ClearZoom();
    ClearSpecialOptions();
    if (Chart.DataY.Empty()) ClearDrawing();
    RedrawAsLaidOut();
    ChartMenuStatus(Charts);
    return true;
}

bool RestoreChosenGraph() {
    if (!MayBeReplaced()) return false;
    const std::string path = ChosenFile(RequestFor(" - Restore Graph from Disk"));
    return !path.empty() && RestoreGraphFile(path);
}

void DoRestoreGraph() {
    RestoreChosenGraph();
}

} // namespace Quillon
