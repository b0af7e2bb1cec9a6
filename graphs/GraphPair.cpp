#include "graphs/GraphPair.h"

#include "chart/CHART.h"
#include "chart/draw/Legend.h"
#include "chart/layout/LegendLayout.h"
#include "chart/pens/Pens.h"
#include "chart/records/Kept.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"
#include "graphs/Figure.h"
#include "graphs/kinds/AnalysisDigest.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "input/NUMINPUT.h"
#include "platform/FormControls.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "reporting/values/FitNotes.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Quillon {

GraphPairRecord GraphPair;

namespace {

constexpr double DataPart = 0.7; // of the height of both frames

// The gap between the frame and labels, in heights of a letter: the lowest label of one axis reaches half of
// one below the corner where the first label of the other stands.
constexpr double LabelGap = 0.55;

// --- one's own charts --------------------------------------------------------------------------------------

// While it lives the engine is lent to the workbench: it paints on a surface of the workbench, asks nobody
// and serves no events.
class Lent {
public:
    explicit Lent(const DrawingSurface& surface)
        : FormerChart(std::move(Chart)), FormerSeams(Seams), FormerWindow(std::move(Charts)),
          FormerKept(Kept), FormerEvents(std::exchange(Host.ServeEvents, [] {})),
          FormerPointer(std::exchange(Host.SetPointer, [](Pointer) {})) {
        Chart = ChartModule{};
        Charts = ChartsForm{};
        Seams.KeepsPicture = FlagFalse;
        LeaveCancelAside();
        Seams.NewGraph = nullptr;
        SetScreenSurface(surface);
    }
    ~Lent() {
        Chart = std::move(FormerChart);
        Seams = std::move(FormerSeams);
        Charts = std::move(FormerWindow);
        Kept = std::move(FormerKept);
        Host.ServeEvents = std::move(FormerEvents);
        Host.SetPointer = std::move(FormerPointer);
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

private:
    ChartModule FormerChart;
    ChartSeams FormerSeams;
    ChartsForm FormerWindow;
    ChartKept FormerKept;
    std::function<void()> FormerEvents;
    std::function<void(Pointer)> FormerPointer;
};

// Works on one of the two graphs as the graph at hand.
template <class Piece> void With(ChartModule& module, const Piece& work) {
    Chart = std::move(module);
    work();
    module = std::move(Chart);
    Chart = ChartModule{};
}

// A surface that measures nothing and shows nothing, for building: the layout comes with the painting.
DrawingSurface NoSurface() {
    constexpr int side = 1000;
    DrawingSurface s;
    s.Width = s.Height = [] { return side; };
    s.DotsPerInchX = s.DotsPerInchY = [] { return 96.0; };
    s.HasColor = [] { return true; };
    s.SetPen = [](const SurfacePen&) {};
    s.SetBrush = [](const SurfaceBrush&) {};
    s.SetFont = [](const SurfaceFont&) {};
    s.SetTextColor = [](Rgb) {};
    s.Line = [](int, int, int, int) {};
    s.Polyline = s.Polygon = [](const std::vector<DevicePoint>&) {};
    s.Rectangle = s.Ellipse = s.SetClip = [](const DeviceRect&) {};
    s.PieSlice = [](DevicePoint, int, int, double, double) {};
    s.Text = [](int, int, const std::string&) {};
    s.Measure = [](const std::string& text) { return TextSize{static_cast<int>(text.size()) * 6, 12, 3}; };
    s.ClearClip = s.Refresh = [] {};
    return s;
}

// --- what is shown -----------------------------------------------------------------------------------------

std::uint64_t ContentsNow() {
    Digest digest;
    digest.Value = DigestOfAnalysis();
    digest.Add(Kept.ClassicColors);
    digest.Add(Kept.DarkCanvas);
    for (const SetNo set : EachSet())
        digest.Add(Flag(IsLeftOut(set)));
    return digest.Value;
}

// --- building ----------------------------------------------------------------------------------------------

// Takes the points of a set out of the graph at hand, where each set has so many columns.
void LeaveOut(SetNo set, long columns) {
    for (long column = columns * (set.Number - 1) + 1; column <= columns * set.Number; ++column)
        for (SetTable* table : {&Chart.DataX, &Chart.DataY})
            std::fill_n(table->Set(column), table->Points(), MissingValue);
}

// What the pair needs no title and no legend for: it has its own.
void StripTexts(const char* left) {
    GraphSpec& spec = Chart.Spec;
    spec.Title1.Text = spec.Title2.Text = "";
    spec.Legend.Show = 0;
    if (left != nullptr) spec.AxisY1.Title.Text = left;
    CopyOppositeAxes(spec);
}

// Builds a graph without painting it.
ChartModule Built(long columns, const char* left, bool (*make)()) {
    Chart = ChartModule{};
    Chart.Painting = FlagTrue;
    make();
    Chart.Painting = FlagFalse;
    if (Chart.DataY.Empty()) return {};
    for (const SetNo set : EachSet())
        if (IsLeftOut(set)) LeaveOut(set, columns);
    StripTexts(left);
    return std::exchange(Chart, ChartModule{});
}

bool MakeOverlay() {
    return MakeFitGraph(FitGraph::Overlay, AllSets, {});
}
bool MakeData() {
    return MakeFitGraph(FitGraph::Data, AllSets, {});
}
bool MakeResiduals() {
    return MakeResidualGraph(ResidualAxis::X, AllSets);
}

void BuildGraphs() {
    const Lent lent(NoSurface());
    GraphPair.Upper = GraphPair.HasCurves ? Built(2, nullptr, MakeOverlay) : Built(1, nullptr, MakeData);
    GraphPair.Lower = GraphPair.HasResiduals ? Built(1, "Residual", MakeResiduals) : ChartModule{};
}

// --- the legend --------------------------------------------------------------------------------------------

std::string PointsText(SetNo set) {
    return Counted(TruePointsOf(set), "point");
}

std::string NoteOf(SetNo set) {
    const std::string note = GraphPair.HasResiduals ? SetNote(set) : "";
    return note.empty() ? "" : "; " + note;
}

void FillLegend() {
    GraphPair.Legend.clear();
    for (const SetNo set : EachSet()) {
        const std::string rms = GraphPair.HasResiduals ? ", " + FigureRms(set) : "";
        const bool leftOut = IsLeftOut(set);
        Control entry = Captioned(FigureName(set));
        entry.Value = leftOut ? 0 : 1;
        entry.ToolTip = Work.SetLabel[set] + ", " + PointsText(set) + rms + NoteOf(set) +
                        (leftOut ? ". A click shows it." : ". A click hides it.");
        GraphPair.Legend.push_back(entry);
    }
}

void FillRemark() {
    GraphPair.Remark =
        Captioned(GraphPair.HasCurves ? "Data or constraints have changed: residuals come with the next fit."
                                      : "Curves and residuals come with the fit.");
    GraphPair.Remark.Visible = !GraphPair.HasResiduals;
}

void EmptyPair() {
    GraphPair.Upper = GraphPair.Lower = ChartModule{};
    GraphPair.Legend.clear();
}

// To look at an analysis changes nothing in it, whatever becomes of the look.
struct ResidualsKept {
    ResidualsKept() : Former(Work.PtResid) {}
    ~ResidualsKept() { Work.PtResid = std::move(Former); }
    ResidualsKept(const ResidualsKept&) = delete;
    ResidualsKept& operator=(const ResidualsKept&) = delete;

private:
    OneBased<float> Former;
};

bool Follow() {
    const std::uint64_t now = ContentsNow();
    if (now == GraphPair.Contents && GraphPair.Builds > 0) return false;
    GraphPair.Contents = now;
    ++GraphPair.Builds;
    const bool data = Work.DataChosen != 0 && Work.NumSets > 0;
    GraphPair.HasCurves = data && Work.FitValid != 0;
    GraphPair.HasResiduals = GraphPair.HasCurves && Work.NewData == Changed::Nothing;
    EmptyPair();
    FillRemark();
    if (!data) return true;
    const ResidualsKept residuals;
    BuildGraphs();
    FillLegend();
    return true;
}

// An analysis that is not whole, say, has no graphs; false where the same has been told already.
bool ShowNothing(const std::string& reason) {
    const std::string text = "There is nothing to show: " + reason + ".";
    if (GraphPair.Remark.Visible && GraphPair.Remark.Text == text) return false;
    EmptyPair();
    GraphPair.HasCurves = GraphPair.HasResiduals = false;
    GraphPair.Remark = Captioned(text);
    ++GraphPair.Builds;
    return true;
}

// --- layout ------------------------------------------------------------------------------------------------

struct PairLayout {
    const DrawingSurface& Surface;
    int Letters{};
    int Width{}, Height{}; // of the surface
    bool Pair = false;     // both graphs are there
};

GraphBox ViewFrom(const PairLayout& pair, int top, int bottom) {
    GraphBox view = DefaultBox();
    view.X1 = 0;
    view.X2 = ToInt16(pair.Width - 1);
    view.Y1 = ToInt16(top);
    view.Y2 = ToInt16(bottom);
    return view;
}

// Lays the graph at hand out in a view, with a frame of its own choice or one that is given.
void LayOut(const PairLayout& pair, const GraphBox& view, const GraphBox* frame) {
    GraphSpec& spec = Chart.Spec;
    spec.View = view;
    spec.Device = "0";
    spec.Relayout = frame == nullptr ? 1 : 0;
    if (frame != nullptr) spec.Frame = *frame;
    const auto size = static_cast<float>(pair.Letters / DiagonalOf(view));
    Chart.Style.Clearance =
        std::max(ChartStyle{}.Clearance, static_cast<float>(LabelGap * pair.Letters / DiagonalOf(view)));
    for (GraphAxis* axis : {&spec.AxisX1, &spec.AxisX2, &spec.AxisY1, &spec.AxisY2})
        axis->Title.Size = axis->LabelSize = size;
    SelectTarget(spec);
    Replot();
}

// What stands around the frame of the graph at hand, in its view.
struct Margins {
    int Left{}, Right{}, Top{}, Bottom{};
};
Margins MarginsOf() {
    const GraphBox& view = Chart.Spec.View;
    const GraphBox& frame = Chart.Spec.Frame;
    return {frame.X1 - view.X1, view.X2 - frame.X2, frame.Y1 - view.Y1, view.Y2 - frame.Y2};
}

// Symbols and tics of the lower graph are as large as those of the upper one, though its frame is smaller.
void MatchSizes(const GraphBox& upper, const GraphBox& lower) {
    const auto larger = static_cast<float>(DiagonalOf(upper) / DiagonalOf(lower));
    ChartStyle& style = GraphPair.Lower.Style;
    style.TicSize = GraphPair.Upper.Style.TicSize * larger;
    style.SymbolSize = GraphPair.Upper.Style.SymbolSize * larger;
}

Margins Measured(const PairLayout& pair, ChartModule& module, int top, int bottom) {
    Margins margins;
    With(module, [&] {
        Chart.Spec.AxisX1.ScaleMode = ScaleModes::Autorange;
        LayOut(pair, ViewFrom(pair, top, bottom), nullptr);
        margins = MarginsOf();
    });
    return margins;
}

// Gives the graph at hand the x axis of the other one, with its tics, which keep clear of their labels.
void TakeAxis(const GraphAxis& x) {
    GraphAxis taken = x;
    taken.ScaleMode = ScaleModes::Manual;
    taken.TicMode = TicModes::MarksOnly;
    taken.Title = Chart.Spec.AxisX1.Title;
    Chart.Spec.AxisX1 = taken;
    CopyOppositeAxes(Chart.Spec);
}

// Where few labels have room, the range of the axis, which ends at tics, is far wider than the data: then it
// ends beside them, as long as two tics are left.
void KeepCloseToData() {
    constexpr double leastPart = 0.75, margin = 0.03;
    GraphAxis& axis = Chart.Spec.AxisX1;
    float low = axis.Max, high = axis.Min;
    for (long set = 1; set <= Chart.DataX.Sets(); ++set)
        for (long i = 1; i <= Chart.DataX.Points(); ++i) {
            const float x = Chart.DataX(i, set);
            if (x == MissingValue) continue;
            low = std::min(low, x);
            high = std::max(high, x);
        }
    const double span = static_cast<double>(high) - low, interval = axis.TicInterval;
    if (span <= 0.0 || span >= leastPart * (static_cast<double>(axis.Max) - axis.Min)) return;
    const double min = low - margin * span, max = high + margin * span;
    const double first = std::ceil(min / interval) * interval;
    if (first + interval > max) return;
    axis.ScaleMode = ScaleModes::Manual;
    axis.Min = static_cast<float>(min);
    axis.Max = static_cast<float>(max);
    axis.FirstTic = static_cast<float>(first);
    CopyOppositeAxes(Chart.Spec);
}

// The frames one above the other, of one width, in the proportion of the pair.
void LayOutPair(const PairLayout& pair) {
    const int half = static_cast<int>(DataPart * pair.Height);
    GraphPair.Upper.Spec.AxisX1.TicMode = TicModes::MarksOnly;
    GraphPair.Upper.Spec.AxisX1.Title.Text = "";
    const Margins up = Measured(pair, GraphPair.Upper, 0, half);
    const Margins low = Measured(pair, GraphPair.Lower, half + 1, pair.Height - 1);
    const int frames = pair.Height - up.Top - up.Bottom - low.Top - low.Bottom;
    GraphBox upper = DefaultBox();
    upper.X1 = ToInt16(std::max(up.Left, low.Left));
    upper.X2 = ToInt16(pair.Width - 1 - std::max(up.Right, low.Right));
    upper.Y1 = ToInt16(up.Top);
    upper.Y2 = ToInt16(up.Top + DataPart * frames);
    GraphBox lower = upper;
    lower.Y1 = ToInt16(upper.Y2 + up.Bottom + low.Top);
    lower.Y2 = ToInt16(pair.Height - 1 - low.Bottom);
    const int between = upper.Y2 + up.Bottom;
    MatchSizes(upper, lower);
    With(GraphPair.Lower, [&] {
        KeepCloseToData();
        LayOut(pair, ViewFrom(pair, between + 1, pair.Height - 1), &lower);
    });
    With(GraphPair.Upper, [&] {
        TakeAxis(GraphPair.Lower.Spec.AxisX1);
        LayOut(pair, ViewFrom(pair, 0, between), &upper);
    });
}

// --- points under the pointer ------------------------------------------------------------------------------

struct Nearest {
    PairPoint Found;
    double Distance; // squared
};

// Looks through the series of the graph at hand that show points: every columns-th one.
void LookThrough(long columns, bool residuals, int x, int y, Nearest& nearest) {
    SetFrameMapping();
    const double byX = DrawDivisor(Chart.Spec.AxisX1, Chart.LoadFactorX);
    const double byY = DrawDivisor(Chart.Spec.AxisY1, Chart.LoadFactorY);
    for (const SetNo set : EachSet()) {
        const long column = columns * (set.Number - 1) + 1;
        const long points = std::min<long>(TruePointsOf(set), Chart.DataX.Points());
        for (long i = 1; column <= Chart.DataX.Sets() && i <= points; ++i) {
            const float px = Chart.DataX(i, column), py = Chart.DataY(i, column);
            if (px == MissingValue || py == MissingValue) continue;
            const double distance = std::pow(MapX(static_cast<double>(px) / byX) - x, 2) +
                                    std::pow(MapY(static_cast<double>(py) / byY) - y, 2);
            if (distance > nearest.Distance) continue;
            nearest = {{set, FirstPointOf(set) + i - 1, residuals}, distance};
        }
    }
}

std::string Told(const char* what, double value, const char* picture) {
    return std::string(what) + " " + FormatNumber(value, picture);
}

} // namespace

bool IsLeftOut(SetNo set) {
    const auto found = GraphPair.LeftOut.find(RowOf(set).Number);
    return found != GraphPair.LeftOut.end() && found->second == Work.SetLabel[set];
}

void ToggleSet(SetNo set) {
    const long row = RowOf(set).Number;
    if (IsLeftOut(set))
        GraphPair.LeftOut.erase(row);
    else
        GraphPair.LeftOut[row] = Work.SetLabel[set];
}

bool FollowAnalysis() {
    try {
        return Follow();
    } catch (const RuntimeError& error) {
        return ShowNothing(error.Text);
    }
}

void PaintGraphPair(const DrawingSurface& surface, int letters) {
    const Lent lent(surface);
    surface.ClearClip();
    surface.SetPen({false, 0, 1});
    surface.SetBrush({BrushKind::Solid, CanvasColor()});
    surface.Rectangle({0, 0, surface.Width() - 1, surface.Height() - 1});
    if (GraphPair.Upper.DataY.Empty()) return;
    const bool both = !GraphPair.Lower.DataY.Empty();
    const PairLayout pair{surface, letters, surface.Width(), surface.Height(), both};
    if (both)
        LayOutPair(pair);
    else
        Measured(pair, GraphPair.Upper, 0, pair.Height - 1);
    With(GraphPair.Upper, DrawGraph);
    if (both) With(GraphPair.Lower, DrawGraph);
}

void PaintSetSample(const DrawingSurface& surface, SetNo set) {
    const Lent lent(surface);
    surface.SetPen({false, 0, 1});
    surface.SetBrush({BrushKind::Solid, CanvasColor()});
    surface.Rectangle({0, 0, surface.Width() - 1, surface.Height() - 1});
    const int series = static_cast<int>(GraphPair.HasCurves ? 2 * set.Number - 1 : set.Number);
    if (series > GraphPair.Upper.DataY.Sets()) return;
    With(GraphPair.Upper, [&] {
        const LegendSpace former = Chart.Layout.Legend;
        Chart.Layout.Legend.SampleWidth = ToInt16(surface.Width());
        Chart.Layout.Legend.EntryHeight = ToInt16(surface.Height());
        SelectTarget(Chart.Spec);
        DrawLegendSample({GraphPair.HasCurves ? series + 1 : 0, series, 0, ""}, 0, 0);
        Chart.Layout.Legend = former;
    });
}

bool IsInResiduals(int y) {
    return !GraphPair.Lower.DataY.Empty() && y >= GraphPair.Lower.Spec.View.Y1;
}

PairPoint PairPointAt(int x, int y, int reach) {
    Nearest nearest{{}, static_cast<double>(reach) * reach};
    const Lent lent(Seams.PicBox);
    if (IsInResiduals(y))
        With(GraphPair.Lower, [&] { LookThrough(1, true, x, y, nearest); });
    else if (!GraphPair.Upper.DataY.Empty())
        With(GraphPair.Upper, [&] { LookThrough(GraphPair.HasCurves ? 2 : 1, false, x, y, nearest); });
    return nearest.Found;
}

std::string PairPointText(const PairPoint& point) {
    if (point.Set == NoSet || point.Point > Work.NumPts) return "";
    const RowNo row = RowOf(point.Set);
    const long place = point.Point - FirstPointOf(point.Set);
    std::string text = FigureName(point.Set) + "\n";
    text +=
        Told("radius", static_cast<double>(Work.ScanRadius[row][Work.FitRange[0][row] + place]), "0.0000");
    text += " cm, " + Told("signal", static_cast<double>(Work.PtY[point.Point]), "0.0000");
    if (GraphPair.HasResiduals)
        text += ", " + Told("residual", static_cast<double>(Work.PtY[point.Point] - Work.PtFit[point.Point]),
                            "0.0000");
    return text;
}

} // namespace Quillon
