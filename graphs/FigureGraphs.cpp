#include "graphs/FigureGraphs.h"

#include "chart/draw/Titles.h"
#include "chart/pens/BaseFonts.h"
#include "chart/pens/Pens.h"
#include "chart/targets/SvgFile.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "platform/Printer.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Quillon {

namespace {

constexpr double TwipsPerPoint = 20.0;
constexpr double CurvePoints = 0.75, ThinPoints = 0.5;
constexpr double TicLength = 1.0, SymbolLength = 1.1, SmallSymbol = 0.8; // mm

// The least height of letters, whole points: an em of SmallPoints, and one of less than LeastPoints.
constexpr std::int16_t LeastLetters = 7, SmallestLetters = 5;

// From how many points on along the frame symbols are small ones.
constexpr double DensePoints = 2.0; // for each millimetre

// Shapes through which the curve is seen. They are one more than colours, so that eight sets later neither
// comes with the same of the other.
const std::vector<std::int16_t> FigureSymbols = {6, 4, 8, 2, 10, 12, 14, 0, 16};

// The style of a figure: thin lines, open symbols, no grid, and sets in their own colours.
void TakeFigureStyle() {
    ReadChartDefaults();
    Kept.StyleOfFile = Kept.RainbowDefault = FlagFalse;
    ChartStyle& style = Chart.Style;
    style.SymbolOrder = FigureSymbols;
    style.UseGrids = 0;
    style.SymbolWidth = style.AxisWidth = style.TicWidth = static_cast<float>(ThinPoints * TwipsPerPoint);
    style.LineWidth = static_cast<float>(CurvePoints * TwipsPerPoint);
    style.LineWidthFixed = FlagTrue;
    style.PrinterMinFont = LeastLetters;
}

void Require(bool made) {
    if (!made) RaiseError("it could not be drawn (" + std::to_string(Chart.GraphStatus) + ")");
}

// Symbols are small where those of the longest set would run into one: of one size in all panels.
double SymbolOf(const Page& page, const GraphBox& frame) {
    const double across = page.Millimetres(frame.X2 - frame.X1);
    return static_cast<double>(LongestSet(EachSet())) > DensePoints * across ? SmallSymbol : SymbolLength;
}

} // namespace

int Page::Units(double millimetres) const {
    return static_cast<int>(std::nearbyint(millimetres / MillimetresPerInch * Dots));
}

double Page::Millimetres(double units) const {
    return units / Dots * MillimetresPerInch;
}

double Page::LetterUnits(double points) const {
    const BaseFont& font = BaseFontFor("Arial", false);
    return points / PointsPerInch * Dots * (font.Ascent + font.Descent) / 1000.0;
}

GraphBox Page::Box(const FigureRect& rect) const {
    GraphBox box;
    box.X1 = ToInt16(Units(rect.Left));
    box.Y1 = ToInt16(Units(rect.Top));
    box.X2 = ToInt16(Units(rect.Right));
    box.Y2 = ToInt16(Units(rect.Bottom));
    box.Color = 15;
    return box;
}

FigureScope::FigureScope(const PictureRequest& request)
    : Surface(OpenSvg(request).Surface), FormerSpread(Work.SpreadResiduals) {
    Chart = ChartModule{};
    Work.SpreadResiduals = FlagFalse;
    Seams.KeepsPicture = FlagFalse;
    LeaveCancelAside();
    Seams.NewGraph = nullptr;
    SetScreenSurface(OpenSvg(request).Surface);
    SetMetafileMaker([this](const MetafileRequest&) { return MetafileTarget{Surface, {}, {}}; });
    TakeFigureStyle();
}

FigureScope::~FigureScope() {
    Chart = std::move(FormerChart);
    Seams = std::move(FormerSeams);
    Charts = std::move(FormerWindow);
    Kept = std::move(FormerKept);
    Work.SpreadResiduals = FormerSpread;
}

CellGraphs BuildCell(SetNo set) {
    CellGraphs cell{set, {}, {}};
    Require(MakeFitGraph(FitGraph::Overlay, set, {}));
    Chart.Spec.AxisX1.TicMode = TicModes::MarksOnly;
    cell.Upper = Chart;
    Require(MakeResidualGraph(ResidualAxis::X, set));
    Chart.Spec.LineWidth = ToInt16(ThinPoints * TwipsPerPoint); // of the line at zero
    Chart.Spec.Legend.Show = 0;
    cell.Lower = Chart;
    return cell;
}

void SetTextSizes(const Page& page, double small) {
    GraphSpec& spec = Chart.Spec;
    const double diagonal = DiagonalOf(spec.View);
    const auto text = static_cast<float>(page.LetterUnits(TextPoints) / diagonal);
    const auto least = static_cast<float>(page.LetterUnits(small) / diagonal);
    for (GraphAxis* axis : {&spec.AxisX1, &spec.AxisX2, &spec.AxisY1, &spec.AxisY2})
        axis->Title.Size = axis->LabelSize = text;
    spec.Title1.Size = spec.Title2.Size = spec.Legend.Size = least;
    Chart.Style.PrinterMinFont = small < SmallPoints ? SmallestLetters : LeastLetters;
    Chart.Style.Clearance = static_cast<float>(page.Units(FigureGap) / diagonal);
}

void PlacePart(const Page& page, const FigurePart& part, const PartText& text, const GraphAxis* x) {
    GraphSpec& spec = Chart.Spec;
    spec.View = page.Box(part.View);
    spec.Frame = page.Box(part.Frame);
    spec.Relayout = 0;
    spec.Device = "figure"; // no target's number: the page
    spec.Title1.Text = text.Head1;
    spec.Title2.Text = text.Head2;
    spec.Title1.Justify = spec.Title2.Justify = 0;
    spec.AxisX1.Title.Text = spec.AxisY1.Title.Text = ""; // painted apart
    const double diagonal = DiagonalOf(spec.Frame);
    Chart.Style.TicSize = static_cast<float>(page.Units(TicLength) / diagonal);
    Chart.Style.SymbolSize = static_cast<float>(page.Units(SymbolOf(page, spec.Frame)) / diagonal);
    SetTextSizes(page, SmallPoints);
    if (x == nullptr) return;
    GraphAxis taken = *x;
    taken.ScaleMode = ScaleModes::Manual;
    taken.TicMode = spec.AxisX1.TicMode;
    taken.Title = spec.AxisX1.Title;
    taken.LabelSize = spec.AxisX1.LabelSize;
    spec.AxisX1 = taken;
    CopyOppositeAxes(spec);
}

void LayOutPart() {
    SelectTarget(Chart.Spec);
    Replot();
    if (Chart.GraphStatus >= GraphStatuses::Stop) RaiseError("the figure leaves its frames no room");
}

void PaintLeftTitle(const Page& page, const FigurePart& part, const std::string& text) {
    if (text.empty()) return;
    const GraphTitle& title = Chart.Spec.AxisY1.Title;
    const GraphBox view = page.Box(part.View), frame = page.Box(part.Frame);
    const float size = FitTitle(title, text, title.Size, frame.Y2 - frame.Y1, 1);
    const TextSize font = SelectFont(title.Font, size, 1);
    const int width = TextWidth(text);
    const int start = (frame.Y1 + frame.Y2 + width) / 2;
    TargetSurface().SetTextColor(CycleColor(title.Color));
    DrawTextLine(text, std::min<int>(std::max(start, view.Y1 + width), view.Y2), view.X1 + 1, 1, font);
}

void PaintTitleBelow(const Page& page, const FigureRect& place, const std::string& text) {
    const GraphTitle& title = Chart.Spec.AxisX1.Title;
    const GraphBox box = page.Box(place);
    const float size = FitTitle(title, text, title.Size, box.X2 - box.X1, 0);
    const TextSize font = SelectFont(title.Font, size, 0);
    TargetSurface().SetTextColor(CycleColor(title.Color));
    DrawTextLine(text, (box.X1 + box.X2 - TextWidth(text)) / 2, box.Y1, 0, font);
}

} // namespace Quillon
