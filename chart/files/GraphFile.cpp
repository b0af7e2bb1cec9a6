// Graph files: the codec's checks, and the commands around it.
#include "chart/files/GraphFile.h"

#include "chart/files/GraphFields.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/Layout.h"
#include "chart/pens/Device.h"
#include "chart/records/ChartDefaults.h"
#include "chart/records/SetLooks.h"
#include "chart/scale/AxisScale.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace Quillon {

namespace {

constexpr const char* Extension = "EXTENSION";
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

// --- what the stated fields do not hold
// ---------------------------------------------------------------------

// Settings that a picture depends on and that the fields have no place for stand behind the last one, each
// with its name. A file that needs none is what it was before there were any; a name that is not known is
// skipped.
struct NamedSetting {
    const char* Name;
    float (*Standard)(const ChartModule&); // what holds where the file has nothing
    float (*Get)(const ChartModule&);
    void (*Set)(ChartModule&, float);
};

// What the data were divided by counts where it cannot be told from the axis: one that was prescaled and has
// a manual scale now.
constexpr NamedSetting Settings[] = {
    {"UseRainbowColors", [](const ChartModule&) { return 0.0F; },
     [](const ChartModule& m) { return m.Style.UseRainbowColors != 0 ? 1.0F : 0.0F; },
     [](ChartModule& m, float v) { m.Style.UseRainbowColors = Flag(v != 0.0F); }},
    {"BarWidth", [](const ChartModule&) { return ChartStyle{}.BarWidth; },
     [](const ChartModule& m) { return m.Style.BarWidth; },
     [](ChartModule& m, float v) {
         if (v >= 0.0F && v <= 1.0F) m.Style.BarWidth = v;
     }},
    {"LoadFactorX", [](const ChartModule& m) { return LoadDivisor(m.Spec.AxisX1); },
     [](const ChartModule& m) { return m.LoadFactorX; }, [](ChartModule& m, float v) { m.LoadFactorX = v; }},
    {"LoadFactorY", [](const ChartModule& m) { return LoadDivisor(m.Spec.AxisY1); },
     [](const ChartModule& m) { return m.LoadFactorY; }, [](ChartModule& m, float v) { m.LoadFactorY = v; }},
};

void WriteSettings(GraphWriter& writer, const ChartModule& m) {
    GraphWriter values;
    for (const NamedSetting& setting : Settings) {
        if (setting.Get(m) == setting.Standard(m)) continue;
        values.Value("", std::string(setting.Name));
        values.Value("", setting.Get(m));
    }
    if (values.Bytes.empty()) return;
    writer.Value("", std::string(Extension));
    writer.Value("", std::int16_t{1});
    writer.Value("", ToInt32(values.Bytes.size()));
    writer.Bytes += values.Bytes;
}

void TakeSetting(const std::string& name, float value, ChartModule& m) {
    for (const NamedSetting& setting : Settings)
        if (name == setting.Name && std::isfinite(value)) setting.Set(m, value);
}

void ReadSettings(GraphReader& reader, ChartModule& m) {
    for (const NamedSetting& setting : Settings)
        setting.Set(m, setting.Standard(m));
    if (!reader.Follows(std::string("\x09\0", 2) + Extension)) return;
    std::string name;
    std::int16_t version = 0;
    std::int32_t length = 0;
    reader.Value(Extension, name);
    reader.Value(Extension, version);
    reader.Value(Extension, length);
    if (length < 0) GraphReader::Damaged(Extension);
    reader.Need(static_cast<std::size_t>(length));
    const std::size_t end = reader.At + static_cast<std::size_t>(length);
    while (reader.At < end) {
        float value = 0.0F;
        reader.Value(Extension, name);
        reader.Value(Extension, value);
        TakeSetting(name, value, m);
    }
}

// --- checks of what was read
// --------------------------------------------------------------------------------

void CheckOrder(const std::vector<std::int16_t>& order, int most, const char* name) {
    for (const std::int16_t entry : order)
        if (!Between(entry, 0, most)) GraphReader::Damaged(name);
}

template <class Cycle> void CheckCycle(const Cycle& cycle, int most, const char* name) {
    CheckOrder({cycle.begin(), cycle.end()}, most, name);
}

void CheckStyle(const ChartModule& m) {
    const ChartStyle& style = m.Style;
    CheckOrder(style.LineStyleOrder, 4, "LineStyleOrder");
    CheckOrder(style.BorderStyleOrder, 4, "BorderStyleOrder");
    CheckOrder(style.SymbolOrder, 17, "SymbolOrder");
    CheckOrder(style.PatternStyleOrder, 6, "PatternStyleOrder");
    CheckCycle(m.Cycles.Line, 4, "the cycles");
    CheckCycle(m.Cycles.Line2, 4, "the cycles");
    CheckCycle(m.Cycles.Border, 4, "the cycles");
    CheckCycle(m.Cycles.Pattern, 6, "the cycles");
    CheckCycle(m.Cycles.Symbol, 17, "the cycles");
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

// What the engine goes by and never checks again.
void Settle(ChartModule& m) {
    GraphState& state = m.State;
    state.Busy = 0;
    std::tie(state.KindX, state.KindY) = KindsOfType(m.Spec.GraphType);
    if (m.SetNames.Hi() < state.Nsets) m.SetNames.Resize(state.Nsets);
    if (m.SetFlags.Hi() < state.Nsets) m.SetFlags.Resize(state.Nsets);
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

FileRequest AskFor(const std::string& what) {
    FileRequest request;
    request.Title = ProgramTitle() + what;
    request.Filter = Filter;
    request.Name = "*.grf";
    request.DefaultType = "GRF";
    return request;
}

bool Declined(const FileAnswer& answer) {
    return answer.Cancelled || answer.Path.find_first_not_of(' ') == std::string::npos;
}

// False when the file is another program's and the user does not want it, or newer than this engine.
bool Welcome(const GraphFileHeader& header) {
    if (header.Program != ChartIniSection()) {
        const BoxRequest question{"This file is a graph from " + header.Program + " not " + ProgramTitle() +
                                      ".  It should display properly, but current special options under the "
                                      "Options heading may be inappropriate.",
                                  ProgramTitle(), BoxIcon::Warning, BoxButtons::OkCancel, BoxAnswer::Ok};
        if (Host.MessageBoxAnswer(question) != BoxAnswer::Ok) return false;
    }
    if (NumericPrefix(header.Version) <= NewestGraphFile) return true;
    Tell("This file is a graph from chart module version " + header.Version +
             ", which cannot be used with the present version (" + GraphFileVersion + ").  Aborting...",
         ProgramTitle(), BoxIcon::Warning);
    return false;
}

// The frame is kept where the graph comes back to a box like the one that it left.
void SuitTheBox(const GraphBox& formerView, std::int16_t savedW, std::int16_t savedH) {
    GraphSpec& spec = Chart.Spec;
    const GraphState& state = Chart.State;
    if (spec.View == formerView && state.DeviceW == savedW && state.DeviceH == savedH) return;
    spec.Relayout = 1;
    for (GraphBox* box : {&spec.View, &spec.Frame})
        box->X1 = box->Y1 = box->X2 = box->Y2 = 0;
    ReadView(spec.View);
}

} // namespace

bool SpecStands(const GraphSpec& spec) {
    return Between(spec.GraphType, 1, 5) && Between(spec.PlotStyle, 1, 3) && Between(spec.SymbolMode, 0, 3) &&
           Between(spec.Relayout, 0, 1) && AxisStands(spec.AxisX1) && AxisStands(spec.AxisX2) &&
           AxisStands(spec.AxisY1) && AxisStands(spec.AxisY2);
}

bool NamesGraphFile(const std::string& path) {
    constexpr std::string_view ending = ".grf";
    if (path.size() < ending.size()) return false;
    return std::equal(
        ending.begin(), ending.end(), path.end() - static_cast<long>(ending.size()),
        [](char small, char c) { return c == small || (c >= 'A' && c <= 'Z' && c + 32 == small); });
}

GraphFileHeader ReadGraphHeader(const std::string& bytes) {
    GraphFileHeader header;
    GraphReader reader(bytes);
    const auto refuse = [] { RaiseError("this is not a graph file"); };
    try {
        reader.Value("the program", header.Program);
        reader.Value("the version", header.Version);
    } catch (const RuntimeError&) {
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
    WriteSettings(writer, graph.Module);
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
    ReadSettings(reader, graph.Module);
    if (reader.Version > 1.2) graph.Module.State.CyclesBuilt = 0;
    CheckStyle(graph.Module);
    CheckSizes(graph.Module);
    Settle(graph.Module);
    return graph;
}

std::string GraphFileBytes() {
    if (Chart.State.IniRead == 0) ReadChartDefaults();
    return EncodeGraph({Chart, Kept.BoxTable, Charts.ZoomState});
}

void AdoptGraph(const std::string& bytes) {
    if (Chart.State.IniRead == 0) ReadChartDefaults();
    GraphContents graph = DecodeGraph(bytes, Chart);
    const GraphBox formerView = Chart.Spec.View;
    const std::int16_t savedW = graph.Module.State.DeviceW;
    const std::int16_t savedH = graph.Module.State.DeviceH;
    CloseMetafile();
    Chart = std::move(graph.Module);
    Chart.State.IniRead = 1;
    Kept.BoxTable = std::move(graph.BoxTable);
    Kept.StyleOfFile = FlagTrue;
    Chart.Spec.Device = "0";
    Charts.ZoomState = graph.ZoomState;
    Looks = {}; // a file keeps none
    SelectTarget(Chart.Spec);
    if (Chart.GraphStatus >= GraphStatuses::Stop) return;
    SuitTheBox(formerView, savedW, savedH);
    Replot();
}

void DoSaveGraph() {
    if (Chart.GraphHeld == 0 && Chart.GraphDrawn != 0)
        return Tell("Sorry, the data to reproduce this graph is no longer available, so it cannot be saved.",
                    ProgramTitle(), BoxIcon::Warning);
    FileRequest request = AskFor(" - Save Graph to Disk");
    request.Save = true;
    if (Seams.DataDirectory) request.Directory = Seams.DataDirectory();
    const FileAnswer answer = Host.AskFile(request);
    if (Declined(answer)) return;
    const HourglassScope scope;
    try {
        Host.WriteFile(answer.Path, GraphFileBytes());
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while saving graph information --- terminating.",
             ProgramTitle(), BoxIcon::Warning);
    }
}

bool RestoreGraphFile(const std::string& path) {
    if (Charts.Needed || Chart.Painting != 0) return false;
    const HourglassScope scope;
    try {
        const std::string bytes = Host.ReadFile(path);
        if (!Welcome(ReadGraphHeader(bytes))) return false;
        AdoptGraph(bytes);
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text +
                 "' occurred while restoring graph information --- terminating.  This could cause this "
                 "program "
                 "to become unstable.",
             ProgramTitle(), BoxIcon::Warning);
        return false;
    }
    Charts.Markers.clear();
    Charts.StatusLine.Text.clear();
    ClearZoom();
    ClearSpecialOptions();
    RedrawAsLaidOut();
    ChartMenuStatus(Charts);
    return true;
}

void DoRestoreGraph() {
    const FileAnswer answer = Host.AskFile(AskFor(" - Restore Graph from Disk"));
    if (!Declined(answer)) RestoreGraphFile(answer.Path);
}

} // namespace Quillon
