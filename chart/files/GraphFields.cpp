// The layout of a graph file, written down once: each field stands here at its place in the order of the
// file, and the same walk writes them (GraphWriter) and reads them (GraphReader), so that the two directions
// cannot drift apart. What a version of the format has and what it has not is said at each field; Version is
// the number of the file's own.
#include "chart/files/GraphFields.h"

#include "chart/records/Kept.h"

#include <algorithm>
#include <array>
#include <string>
#include <type_traits>
#include <vector>

namespace Quillon {

namespace {

// Files keep SymbolSize within these ends; a value beyond shows a header that is two bytes longer.
bool IsSymbolSize(float size) {
    return size >= 0.0F && size <= LargestSymbolSize;
}

// A box in device units, its colour and three words of zero.
template <class Stream, class Box> void BoxFields(Stream& s, Box& box) {
    s.Value("GraphBox", box.X1);
    s.Value("GraphBox", box.Y1);
    s.Value("GraphBox", box.X2);
    s.Value("GraphBox", box.Y2);
    s.Value("GraphBox", box.Color);
    for (auto& word : box.Spare)
        s.Value("GraphBox", word);
}

// A title; Justify is 0 left, 1 centre, 2 right of the frame and 3 to 5 the same of the view.
template <class Stream, class Title> void TitleFields(Stream& s, Title& title) {
    s.Value("GraphTitle", title.Text);
    s.Value("GraphTitle", title.Font);
    s.Value("GraphTitle", title.Size);
    s.Value("GraphTitle", title.Color);
    s.Value("GraphTitle", title.Justify);
}

// An axis. On a logarithmic scale Min, Max and FirstTic are logarithms to the base LogBase, on a prescaled
// one they are in units of Factor; widths are twips.
template <class Stream, class Axis> void AxisFields(Stream& s, Axis& axis) {
    s.Value("GraphAxis", axis.Show);
    s.Value("GraphAxis", axis.Grid);
    s.Value("GraphAxis", axis.TicSide);
    TitleFields(s, axis.Title);
    s.Value("GraphAxis", axis.Color);
    s.Value("GraphAxis", axis.TicMode);
    s.Value("GraphAxis", axis.ScaleType);
    s.Value("GraphAxis", axis.LogBase);
    s.Value("GraphAxis", axis.ScaleMode);
    s.Value("GraphAxis", axis.Min);
    s.Value("GraphAxis", axis.Max);
    s.Value("GraphAxis", axis.Factor);
    s.Value("GraphAxis", axis.FactorName);
    s.Value("GraphAxis", axis.LabelFont);
    s.Value("GraphAxis", axis.LabelSize);
    s.Value("GraphAxis", axis.FirstTic);
    s.Value("GraphAxis", axis.TicInterval);
    s.Value("GraphAxis", axis.TicFormat);
    s.Value("GraphAxis", axis.Decimals);
    s.Value("GraphAxis", axis.AxisWidth);
    s.Value("GraphAxis", axis.TicWidth);
}

// The legend; its box is in device units of the target that the graph was last laid out for.
template <class Stream, class Legend> void LegendFields(Stream& s, Legend& legend) {
    s.Value("GraphLegend", legend.Show);
    s.Value("GraphLegend", legend.Where);
    s.Value("GraphLegend", legend.TextColor);
    s.Value("GraphLegend", legend.Font);
    s.Value("GraphLegend", legend.Size);
    s.Value("GraphLegend", legend.AutoPlace);
    BoxFields(s, legend.Box);
}

// What makes a graph what it is: GraphSpecBytes of them, whatever the version.
template <class Stream, class Spec> void SpecFields(Stream& s, Spec& spec) {
    s.Value("GraphSpec", spec.GraphType);
    s.Value("GraphSpec", spec.PlotStyle);
    s.Value("GraphSpec", spec.SymbolMode);
    s.Value("GraphSpec", spec.Relayout);
    BoxFields(s, spec.View);
    BoxFields(s, spec.Frame);
    TitleFields(s, spec.Title1);
    TitleFields(s, spec.Title2);
    AxisFields(s, spec.AxisX1);
    AxisFields(s, spec.AxisX2);
    AxisFields(s, spec.AxisY1);
    AxisFields(s, spec.AxisY2);
    LegendFields(s, spec.Legend);
    s.Value("GraphSpec", spec.LineWidth);
    s.Value("GraphSpec", spec.Spare);
    s.Value("GraphSpec", spec.Device);
}

// The bytes that GraphState takes. Files of today have 84; there are writers of 86 (without the zero word,
// six words of the mouse) and of 88 (with both). The GraphSpec behind it tells: only at its own place does it
// make sense.
int StateBytes(const GraphWriter&) {
    return 84;
}
int StateBytes(const GraphReader& s) {
    for (const int size : {84, 86, 88}) {
        if (s.Left() < static_cast<std::size_t>(size)) break;
        GraphReader behind = s;
        behind.At += static_cast<std::size_t>(size);
        GraphSpec spec;
        if (behind.Left() < GraphSpecBytes) break;
        SpecFields(behind, spec);
        if (SpecStands(spec)) return size;
    }
    s.Need(84 + GraphSpecBytes);
    GraphReader::Damaged("GraphSpec");
}

// Where the graph stood when it was written: device and view in device units, counts of points and sets from
// 1, lengths of tics and halves of symbols. All of it is found anew when the graph is laid out.
template <class Stream, class State> void StateFields(Stream& s, State& state) {
    const int bytes = StateBytes(s);
    s.Value("Busy", state.Busy);
    s.Value("IniRead", state.IniRead);
    s.Value("CyclesBuilt", state.CyclesBuilt);
    s.Value("Aspect", state.Aspect);
    for (auto* word :
         {&state.DeviceW,  &state.DeviceH,      &state.NColors,      &state.ViewW,        &state.ViewH,
          &state.Diagonal, &state.ViewLeft,     &state.ViewTop,      &state.ViewRight,    &state.ViewBottom,
          &state.Stagger,  &state.LabelWidthX1, &state.LabelWidthY1, &state.LabelWidthX2, &state.LabelWidthY2,
          &state.Npts,     &state.Nsets,        &state.FirstSet,     &state.LastSet,      &state.MultiSet,
          &state.KindX,    &state.KindY,        &state.TicLenX,      &state.TicLenY,      &state.ClearX,
          &state.ClearY,   &state.SymbolHalfX,  &state.SymbolHalfY})
        s.Value("GraphState", *word);
    std::int16_t zero = 0;
    if (bytes != 86) s.Value("GraphState", zero);
    s.Value("FontMax", state.FontMax);
    s.Value("FontMin", state.FontMin);
    const std::size_t words = bytes == 84 ? 4 : state.Mouse.size();
    for (std::size_t i = 0; i < words; ++i)
        s.Value("GraphState", state.Mouse[i]);
}

// What text beside an axis takes of the view, outwards from the frame, device units.
template <class Stream, class Space> void AxisSpaceFields(Stream& s, Space& space) {
    for (auto* word : {&space.TicGap1, &space.TicHeight, &space.TicGap2, &space.TitleGap1, &space.TitleHeight,
                       &space.TitleGap2})
        s.Value("the layout", *word);
}

template <class Stream, class Layout> void LayoutFields(Stream& s, Layout& layout) {
    AxisSpaceFields(s, layout.Left);
    AxisSpaceFields(s, layout.Bottom);
    AxisSpaceFields(s, layout.Top);
    AxisSpaceFields(s, layout.Right);
    auto& titles = layout.Titles;
    for (auto* word :
         {&titles.Gap1, &titles.Height1, &titles.Gap2, &titles.Height2, &titles.Gap3, &titles.Total})
        s.Value("the layout", *word);
    auto& legend = layout.Legend;
    for (auto* word : {&legend.Columns, &legend.Rows, &legend.EntryWidth, &legend.EntryHeight,
                       &legend.SampleWidth, &legend.Gap, &legend.Width, &legend.Height})
        s.Value("the layout", *word);
}

// How a graph lies on paper. Lengths are inches, or centimetres where the style is metric; flags are 0 and
// -1. What a member holds: chart/records/ChartStyle.h.
template <class Stream, class Style> void PageFields(Stream& s, Style& style) {
    s.Value("LeftMargin", style.LeftMargin);
    s.Value("RightMargin", style.RightMargin);
    s.Value("TopMargin", style.TopMargin);
    s.Value("BottomMargin", style.BottomMargin);
    s.Value("KeepAspect", style.KeepAspect);
    s.Value("PageCustom", style.PageCustom);
    s.Value("CustomHeight", style.CustomHeight);
    s.Value("CustomWidth", style.CustomWidth);
    s.Value("PageFull", style.PageFull);
    s.Value("PageHalf", style.PageHalf);
    s.Value("LineWidthFixed", style.LineWidthFixed);
    s.Value("LineWidthIncrease", style.LineWidthIncrease);
    s.Value("DashedLines", style.DashedLines);
    s.Value("AxisFrame", style.AxisFrame);
}

// What stands up to SymbolSize.
template <class Stream, class Graph> void FrontFields(Stream& s, Graph& graph) {
    auto& m = graph.Module;
    s.Value("GraphHeld", m.GraphHeld);
    s.Value("GraphDrawn", m.GraphDrawn);
    PageFields(s, m.Style);
    s.Value("ZoomState", graph.ZoomState);
    float unused = 0.0F;
    if (s.Version < 1.2) s.Value("an unused single", unused);
    s.Value("SymbolSize", m.Style.SymbolSize);
}

// What such fields can hold: a flag is -1, 0 or 1, a length 0 or a thousandth to a thousand of its unit, a
// choice one of three singles.
bool IsFlag(std::int16_t flag) {
    return flag >= -1 && flag <= 1;
}
bool IsLength(float length) {
    return length == 0.0F || (length >= 0.001F && length <= 1000.0F);
}
bool IsChoice(float choice) {
    return choice == 0.0F || choice == 1.0F || choice == -1.0F;
}

// True when these fields can have been read from their own places: two bytes beside them lengths are far
// beyond any paper.
bool FrontStands(const GraphContents& graph) {
    const ChartModule& m = graph.Module;
    const ChartStyle& style = m.Style;
    const auto all = [](const auto& values, auto is) {
        return std::all_of(values.begin(), values.end(), is);
    };
    const std::array flags = {m.GraphHeld,       m.GraphDrawn,         style.KeepAspect,
                              style.PageCustom,  style.LineWidthFixed, style.LineWidthIncrease,
                              style.DashedLines, style.AxisFrame};
    const std::array lengths = {style.LeftMargin,   style.RightMargin,  style.TopMargin,
                                style.BottomMargin, style.CustomHeight, style.CustomWidth};
    return all(flags, IsFlag) && all(lengths, IsLength) && IsChoice(style.PageFull) &&
           IsChoice(style.PageHalf);
}

// Reads the fields before SymbolSize, which is found already, two bytes behind their places; where they make
// no sense there either they stay as they are in use.
void ReadFrontLater(GraphReader later, const ChartStyle& present, GraphContents& graph) {
    ChartModule& m = graph.Module;
    const float found = m.Style.SymbolSize;
    later.At += 2;
    FrontFields(later, graph);
    if (FrontStands(graph)) return;
    m.Style = present;
    m.Style.SymbolSize = found;
    m.GraphHeld = m.GraphDrawn = FlagTrue;
    graph.ZoomState = 0;
}

// A header that is two bytes longer, as an early writer had it, shows by a SymbolSize that is none: the right
// one stands two bytes behind its place. Where the two bytes stand is not known: the fields before are taken
// from their places where they make sense. [decision: longer-header]
void Front(GraphWriter& s, const GraphContents& graph) {
    FrontFields(s, graph);
}
void Front(GraphReader& s, GraphContents& graph) {
    const ChartStyle present = graph.Module.Style;
    const GraphReader start = s;
    float& size = graph.Module.Style.SymbolSize;
    FrontFields(s, graph);
    if (IsSymbolSize(size)) return;
    s.At -= 2;
    s.Value("SymbolSize", size);
    if (!IsSymbolSize(size)) GraphReader::Damaged("SymbolSize");
    if (!FrontStands(graph)) ReadFrontLater(start, present, graph);
}

// Parts of a diagonal, degrees, font codes and twips, each as the style has it.
template <class Stream, class Style> void SizeFields(Stream& s, Style& style) {
    for (auto* size : {&style.TicSize, &style.Clearance, &style.ArrowAngle, &style.TitleSize,
                       &style.TicFontSize, &style.TitleFont, &style.TicLabelFont, &style.LegendFont,
                       &style.AxisWidth, &style.TicWidth, &style.LineWidth})
        s.Value("the sizes", *size);
}

// The target that the graph was laid out for (0 a metafile, 1 the screen, 2 the printer), and the points that
// fonts keep within.
template <class Stream, class Graph> void TargetFields(Stream& s, Graph& graph) {
    auto& m = graph.Module;
    // The mapping is worked out in double and kept as singles: it is found anew before anything is drawn.
    float mapping[] = {static_cast<float>(m.XScale), static_cast<float>(m.YScale),
                       static_cast<float>(m.XOffset), static_cast<float>(m.YOffset)};
    for (float& value : mapping)
        s.Value("the mapping", value);
    std::int16_t zero = 0;
    s.Value("Target", m.Target);
    s.Value("a zero word", zero);
    s.Value("PlotterFonts", m.PlotterFonts);
    s.Value("Log10Axis", m.Log10Axis);
    s.Value("ColorDevice", m.ColorDevice);
    s.Value("ScreenMaxFont", m.Style.ScreenMaxFont);
    s.Value("ScreenMinFont", m.Style.ScreenMinFont);
    s.Value("PrinterMaxFont", m.Style.PrinterMaxFont);
    s.Value("PrinterMinFont", m.Style.PrinterMinFont);
    s.Value("ZoomState", graph.ZoomState);
}

// The tables of colours, those of the screen first. Version 1.0 had 14 and 7 of them without saying so.
template <class Stream, class Style> void ColorFields(Stream& s, Style& style) {
    if (s.Version > 1.0) {
        s.UpperIndex("the colours", style.ScreenColors);
        s.UpperIndex("the colours", style.PrintColors);
    } else {
        s.Standing(style.ScreenColors, 14);
        s.Standing(style.PrintColors, 7);
    }
    s.Items("the colours", style.ScreenColors);
    s.Items("the colours", style.PrintColors);
}

// The borders of bars are written at the length of the lines: their order goes round.
std::vector<std::int16_t> BordersAs(const ChartStyle& style) {
    std::vector<std::int16_t> borders(style.LineStyleOrder.size());
    for (std::size_t i = 0; i < borders.size() && !style.BorderStyleOrder.empty(); ++i)
        borders[i] = style.BorderStyleOrder[i % style.BorderStyleOrder.size()];
    return borders;
}
void Borders(GraphWriter& s, const ChartStyle& style) {
    s.Items("BorderStyleOrder", BordersAs(style));
}
void Borders(GraphReader& s, ChartStyle& style) {
    s.Standing(style.BorderStyleOrder, style.LineStyleOrder.size());
    s.Items("BorderStyleOrder", style.BorderStyleOrder);
}

// The orders in which sets take lines, borders, symbols and hatches: upper indices first, then the items.
template <class Stream, class Style> void OrderFields(Stream& s, Style& style) {
    s.UpperIndex("LineStyleOrder", style.LineStyleOrder);
    s.UpperIndex("SymbolOrder", style.SymbolOrder);
    s.UpperIndex("PatternStyleOrder", style.PatternStyleOrder);
    s.Items("LineStyleOrder", style.LineStyleOrder);
    Borders(s, style);
    s.Items("SymbolOrder", style.SymbolOrder);
    s.Items("PatternStyleOrder", style.PatternStyleOrder);
}

// Up to version 1.2 the cycles themselves stood where their orders stand today. They are used as they are.
void FormerCycles(GraphWriter&, const ChartModule&, long) {}
void FormerCycles(GraphReader& s, ChartModule& m, long upper) {
    StyleCycles& cycles = m.CyclesOfFile.emplace();
    const auto take = [&](auto& cycle) {
        using Item = std::decay_t<decltype(cycle[0])>;
        std::vector<Item> items;
        s.Standing(items, static_cast<std::size_t>(upper) + 1);
        s.Items("the cycles", items);
        for (std::size_t i = 0; i < cycle.size(); ++i)
            cycle[i] = items[i % items.size()];
    };
    take(cycles.Color);
    take(cycles.Line);
    take(cycles.Line2);
    take(cycles.Pattern);
    take(cycles.Symbol);
    take(cycles.Border);
}

// The cycles by version: their orders since 1.3, before that they themselves, with places 0 to upper.
template <class Stream, class Module> void CycleFields(Stream& s, Module& m) {
    std::int16_t upper = CycleLen;
    if (s.Version > 1.0) s.Value("the cycles", upper);
    if (upper < 0) GraphReader::Damaged("the cycles");
    if (s.Version > 1.2)
        OrderFields(s, m.Style);
    else
        FormerCycles(s, m, upper);
}

// A line, an arrow or an ellipse at a place of the graph, in the units of the stored data.
template <class Stream, class Mark> void MarkFields(Stream& s, Mark& mark) {
    s.Value("GraphMark", mark.Kind);
    s.Value("GraphMark", mark.Fill);
    s.Value("GraphMark", mark.Color);
    s.Value("GraphMark", mark.XorDraw);
    s.Value("GraphMark", mark.X1);
    s.Value("GraphMark", mark.Y1);
    s.Value("GraphMark", mark.X2);
    s.Value("GraphMark", mark.Y2);
}

// A text on the graph, its place in the units of the stored data.
template <class Stream, class Note> void NoteFields(Stream& s, Note& note) {
    s.Value("GraphNote", note.Text);
    s.Value("GraphNote", note.Font);
    s.Value("GraphNote", note.Size);
    s.Value("GraphNote", note.Color);
    s.Value("GraphNote", note.Direction);
    s.Value("GraphNote", note.Align);
    s.Value("GraphNote", note.X);
    s.Value("GraphNote", note.Y);
}

template <class Stream, class Graph> void ListFields(Stream& s, Graph& graph) {
    auto& m = graph.Module;
    s.Count("GraphMark", m.Marks, 24);
    for (auto& mark : m.Marks)
        MarkFields(s, mark);
    s.Count("GraphNote", m.Notes, 100);
    for (auto& note : m.Notes)
        NoteFields(s, note);
    s.Bounded("SetFlags", m.SetFlags);
    s.Square("ChartBoxTable", graph.BoxTable);
    s.Bounded("SetNames", m.SetNames);
    s.Bounded("CatLabels", m.CatLabels);
}

// In the order of the file.
template <class Stream, class Graph> void AllFields(Stream& s, Graph& graph) {
    auto& m = graph.Module;
    Front(s, graph);
    SizeFields(s, m.Style);
    TargetFields(s, graph);
    StateFields(s, m.State);
    SpecFields(s, m.Spec);
    LayoutFields(s, m.Layout);
    s.Table("DataX", m.DataX, m.State.Npts, m.State.Nsets);
    s.Table("DataY", m.DataY, m.State.Npts, m.State.Nsets);
    ColorFields(s, m.Style);
    CycleFields(s, m);
    ListFields(s, graph);
    if (s.Version > 1.0) s.Value("MetricUnits", m.Style.MetricUnits);
    if (s.Version > 1.3) s.Value("SymbolWidth", m.Style.SymbolWidth);
}

} // namespace

void GraphFields(GraphWriter& writer, const GraphContents& graph) {
    AllFields(writer, graph);
}

void GraphFields(GraphReader& reader, GraphContents& graph) {
    AllFields(reader, graph);
}

} // namespace Quillon
