#include "graphs/Figure.h"

#include "chart/CHART.h"
#include "chart/pens/BaseFonts.h"
#include "chart/records/Kept.h"
#include "chart/records/SetLooks.h"
#include "chart/targets/SvgFile.h"
#include "graphs/FitGraphs.h"
#include "graphs/GraphParts.h"
#include "graphs/Latin1.h"
#include "graphs/ResidualGraphs.h"
#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "reporting/Statistics.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double MillimetresPerInch = 25.4, PointsPerInch = 72.0, TwipsPerPoint = 20.0;

// The em of the letters and the widths of lines, points; lengths in millimetres.
constexpr double TextPoints = 7.0, SmallPoints = 6.0, LeastPoints = 5.0;
constexpr double CurvePoints = 0.75, ThinPoints = 0.5;
constexpr double GapLength = 0.6, TicLength = 1.0;
constexpr double SymbolLength = 1.1, SmallSymbol = 0.8;

// From how many points on along the frame symbols are small ones, and below which width a head takes two
// lines.
constexpr double DensePoints = 2.0; // for each millimetre
constexpr double NarrowCell = 45.0;

constexpr std::int16_t Nowhere = 0; // AutoPlace of a legend that has its own place

// Open shapes first: the curve is seen through them.
const std::vector<std::int16_t> FigureSymbols = {6, 4, 8, 2, 10, 12, 14, 0,  16,
                                                 5, 3, 7, 1, 9,  11, 13, 15, 17};

// --- names -------------------------------------------------------------------------------------------------

std::string PlainName(long set) {
    const long row = Work.SetRow[set];
    std::string name = Latin1Text(FileTitle(Work.SetLabel[set]));
    const int channel = Work.DataChannel[row];
    const bool told = name.find(" Ch ") != std::string::npos; // labels that were not changed tell it
    if (channel >= 1 && channel <= 4 && !told)
        name += std::string(" Ch ") + static_cast<char>('A' + channel - 1);
    return name + ", " + SingleText(Work.ScanRPM[row]) + " rpm";
}

// --- the scope of a figure
// -----------------------------------------------------------------------------------

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
}

// The graph at hand with all that belongs to it, put back on every way out. Graphs are laid out and painted
// on Surface; the builders plot on another one that nobody sees, and residuals stand about one line.
struct FigureScope {
    ChartModule FormerChart = Chart;
    ChartSeams FormerSeams = Seams;
    ChartsForm FormerWindow = Charts;
    ChartKept FormerKept = Kept;
    SetLooks FormerLooks = Looks;
    std::int16_t FormerSpread = Work.SpreadResiduals;
    DrawingSurface Surface;

    explicit FigureScope(const PictureRequest& request) : Surface(OpenSvg(request).Surface) {
        Chart = ChartModule{};
        Work.SpreadResiduals = FlagFalse;
        Seams.KeepsPicture = FlagFalse;
        Seams.CancelFlag = nullptr;
        Seams.NewGraph = nullptr;
        SetScreenSurface(OpenSvg(request).Surface);
        SetMetafileMaker([this](const MetafileRequest&) { return MetafileTarget{Surface, {}, {}}; });
        TakeFigureStyle();
    }
    ~FigureScope() {
        Chart = std::move(FormerChart);
        Seams = std::move(FormerSeams);
        Charts = std::move(FormerWindow);
        Kept = std::move(FormerKept);
        Looks = std::move(FormerLooks);
        Work.SpreadResiduals = FormerSpread;
    }
    FigureScope(const FigureScope&) = delete;
    FigureScope& operator=(const FigureScope&) = delete;
};

// --- from millimetres and points to the chart
// ------------------------------------------------------------------

struct Page {
    double Dots{};
    int Units(double millimetres) const {
        return static_cast<int>(std::nearbyint(millimetres / MillimetresPerInch * Dots));
    }
    double Millimetres(double units) const { return units / Dots * MillimetresPerInch; }
    // The height of letters of an em.
    double LetterUnits(double points) const {
        const BaseFont& font = BaseFontFor("Arial", false);
        return points / PointsPerInch * Dots * (font.Ascent + font.Descent) / 1000.0;
    }
    GraphBox Box(const FigureRect& rect) const {
        GraphBox box;
        box.X1 = ToInt16(Units(rect.Left));
        box.Y1 = ToInt16(Units(rect.Top));
        box.X2 = ToInt16(Units(rect.Right));
        box.Y2 = ToInt16(Units(rect.Bottom));
        box.Color = 15;
        return box;
    }
};

double DiagonalOf(const GraphBox& box) {
    return std::max(std::trunc(std::hypot(box.X2 - box.X1, box.Y2 - box.Y1)), 1.0);
}

// A graph of a cell before it has its place.
struct FigureGraph {
    ChartModule Module;
    SetLooks Looks;
};

struct CellGraphs {
    long Set{}; // 0 all of them
    FigureGraph Upper, Lower;
};

void Require(bool made) {
    if (!made) RaiseError("it could not be drawn (" + std::to_string(Chart.GraphStatus) + ")");
}

FigureGraph Taken() {
    return {Chart, Looks};
}

CellGraphs BuildCell(long set) {
    CellGraphs cell{set, {}, {}};
    Require(MakeFitGraph(FitGraph::Overlay, set, {}));
    Chart.Spec.AxisX1.TicMode = TicModes::MarksOnly;
    cell.Upper = Taken();
    Require(MakeResidualGraph(ResidualAxis::X, set));
    Chart.Spec.LineWidth = ToInt16(ThinPoints * TwipsPerPoint); // of the line at zero
    Chart.Spec.Legend.Show = 0;
    cell.Lower = Taken();
    return cell;
}

// --- one graph at its place
// ------------------------------------------------------------------------------------

// What a graph of a cell is to show beside its axes.
struct PartText {
    std::string Head1, Head2, Left, Below;
};

void SetTextSizes(const Page& page, double small) {
    GraphSpec& spec = Chart.Spec;
    const double diagonal = DiagonalOf(spec.View);
    const auto text = static_cast<float>(page.LetterUnits(TextPoints) / diagonal);
    const auto least = static_cast<float>(page.LetterUnits(small) / diagonal);
    for (GraphAxis* axis : {&spec.AxisX1, &spec.AxisX2, &spec.AxisY1, &spec.AxisY2})
        axis->Title.Size = axis->LabelSize = text;
    spec.Title1.Size = spec.Title2.Size = spec.Legend.Size = least;
    Chart.Style.Clearance = static_cast<float>(page.Units(GapLength) / diagonal);
}

// Symbols are small where they would run into one.
double SymbolOf(const Page& page, const GraphBox& frame) {
    const double across = page.Millimetres(frame.X2 - frame.X1);
    return Chart.State.Npts > DensePoints * across ? SmallSymbol : SymbolLength;
}

// Gives the graph at hand its place and texts; the scale of a given X axis, where there is one.
void Place(const Page& page, const FigurePart& part, const PartText& text, const GraphAxis* x) {
    GraphSpec& spec = Chart.Spec;
    spec.View = page.Box(part.View);
    spec.Frame = page.Box(part.Frame);
    spec.Relayout = 0;
    spec.Device = "figure"; // no target's number: the page
    spec.Title1.Text = text.Head1;
    spec.Title2.Text = text.Head2;
    spec.Title1.Justify = spec.Title2.Justify = 0;
    spec.AxisY1.Title.Text = text.Left;
    spec.AxisX1.Title.Text = text.Below;
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

void LayOut() {
    SelectTarget(Chart.Spec);
    Replot();
    if (Chart.GraphStatus >= GraphStatuses::Stop) RaiseError("the figure leaves its frames no room");
}

// --- the whole
// -------------------------------------------------------------------------------------------------

struct Figure {
    FigureChoice Choice;
    Page Paper;
    std::vector<CellGraphs> Cells;
    FigureTexts Texts;
    FigurePlan Plan;
    double Small = SmallPoints; // the em of legend and heads, points
};

std::vector<CellGraphs> BuildCells(const FigureChoice& choice) {
    std::vector<CellGraphs> cells;
    if (!choice.PanelPerSet || choice.Set > 0) {
        cells.push_back(BuildCell(choice.Set));
        return cells;
    }
    for (long set = 1; set <= Work.NumSets; ++set)
        cells.push_back(BuildCell(set));
    return cells;
}

PartText UpperText(const Figure& figure, std::size_t place) {
    PartText text;
    if (figure.Plan.Cells[place].TitleLeft) text.Left = Work.DataTypeName;
    if (figure.Texts.Heads == 0) return text;
    const long set = figure.Cells[place].Set;
    text.Head1 = FigureName(set);
    if (figure.Texts.Heads == 1)
        text.Head1 += ", " + FigureRms(set);
    else
        text.Head2 = FigureRms(set);
    return text;
}

PartText LowerText(const FigureCell& cell) {
    PartText text;
    if (cell.TitleLeft) text.Left = "Residual";
    if (cell.TitleBelow) text.Below = Work.XAxisTitle;
    return text;
}

void PlaceLegendBox(const Figure& figure) {
    GraphLegend& legend = Chart.Spec.Legend;
    const FigureRect& place = figure.Plan.Legend;
    legend.Show = place.Right > place.Left ? 1 : 0;
    legend.Where = figure.Texts.LegendBeside ? LegendPlaces::Right : LegendPlaces::Below;
    legend.AutoPlace = Nowhere;
    legend.Box = figure.Paper.Box(place);
    const auto [first, last] = SetsOf(figure.Choice.Set);
    for (long set = first; set <= last; ++set) // of data and curve the first one names both
        Chart.SetNames[2 * (set - first) + 1] = FigureName(set) + ", " + FigureRms(set);
}

void TakeUp(const FigureGraph& graph) {
    Chart = graph.Module;
    Looks = graph.Looks;
}

// Lays the upper graph of a cell out, and the lower one under it; each is then shown by what is given.
void ForBoth(const Figure& figure, std::size_t place, const std::function<void()>& show) {
    const FigureCell& cell = figure.Plan.Cells[place];
    TakeUp(figure.Cells[place].Upper);
    Place(figure.Paper, cell.Upper, UpperText(figure, place), nullptr);
    Chart.Spec.Legend.Show = 0;
    if (!figure.Choice.PanelPerSet) PlaceLegendBox(figure);
    SetTextSizes(figure.Paper, figure.Small);
    LayOut();
    const GraphAxis x = Chart.Spec.AxisX1;
    show();
    TakeUp(figure.Cells[place].Lower);
    Place(figure.Paper, cell.Lower, LowerText(cell), &x);
    LayOut();
    show();
}

// --- what texts take
// --------------------------------------------------------------------------------------------

constexpr double Slack = 0.15; // so that rounding to units leaves no text without its room

// Before anything is measured: rather more than labels of four digits take.
FigureTexts GuessedTexts(const Figure& figure) {
    FigureTexts texts;
    texts.Line = figure.Paper.Millimetres(figure.Paper.LetterUnits(TextPoints));
    texts.Gap = GapLength;
    texts.Left = 9.0;
    texts.Right = 3.0;
    texts.Below = texts.Line + 3.0 * texts.Gap + Slack;
    texts.Lowest = texts.Below + texts.Line + texts.Gap;
    const int cells = static_cast<int>(figure.Cells.size());
    const double cell =
        figure.Choice.Width / (figure.Choice.PanelPerSet ? GridColumns(cells, figure.Choice.Width) : 1);
    if (figure.Choice.PanelPerSet) texts.Heads = cell < NarrowCell ? 2 : 1;
    texts.LeftMost = texts.Left + texts.Line + texts.Gap;
    if (!figure.Choice.PanelPerSet) texts.LegendWidth = texts.LegendHeight = 10.0;
    return texts;
}

// Raises what the graph at hand takes. A label that found no room was made smaller: it takes what it would at
// its own size.
void MeasureGraph(const Page& page, FigureTexts& texts) {
    const AxisSpace& left = Chart.Layout.Left;
    const double full = static_cast<double>(Chart.Spec.AxisY1.LabelSize) /
                        static_cast<double>(Chart.Layout.Sizes.Label[LeftAxis]);
    const double labels = page.Millimetres(left.TicHeight) * std::max(full, 1.0);
    texts.Left = std::max(texts.Left, labels + 3.0 * texts.Gap + Slack);
    if (!HasLabels(Chart.Spec.AxisX1)) return;
    texts.Right = std::max(texts.Right, page.Millimetres(Chart.State.LabelWidthX1 / 2.0) + texts.Gap + Slack);
}

// The width of the longest line of the legend at the em of the graph at hand, device units.
int LongestName() {
    SelectFont(Chart.Spec.Legend.Font, Chart.Layout.Sizes.Legend, 0);
    int longest = 0;
    for (long entry = 1; entry <= Chart.SetNames.Hi(); entry += 2)
        longest = std::max(longest, TextWidth(Chart.SetNames[entry]));
    return longest;
}

// The sample of a line grows with the page, whose size is not known yet.
constexpr double Spare = 1.02;

void ArrangeLegend(FigureTexts& texts, double width, double entryWidth, double entryHeight) {
    const int entries = Chart.State.Nsets / 2;
    const double across = entryWidth * Spare, free = width - 2.0;
    texts.LegendBeside = entries > 1 && width >= 120.0 && across <= 0.4 * width;
    const int most = std::max(static_cast<int>((free - texts.Gap) / across), 1);
    const int rows = texts.LegendBeside ? entries : (entries + most - 1) / most;
    const int columns = (entries + rows - 1) / rows;
    texts.LegendWidth = std::min(columns * across + texts.Gap, free);
    texts.LegendHeight = rows * entryHeight * Spare + 2.0 * texts.Gap;
}

// The size of the legend, and the em at which its longest line fits.
void MeasureLegend(Figure& figure, FigureTexts& texts) {
    const LegendSpace& space = Chart.Layout.Legend;
    const double sample = figure.Paper.Millimetres(space.SampleWidth + 3.0 * space.Gap);
    const double name = figure.Paper.Millimetres(LongestName());
    const double free = (figure.Choice.Width - 2.0 - texts.Gap) / Spare - sample;
    figure.Small = std::clamp(SmallPoints * free / std::max(name, 1.0), LeastPoints, SmallPoints);
    ArrangeLegend(texts, figure.Choice.Width, sample + name * figure.Small / SmallPoints,
                  figure.Paper.Millimetres(space.EntryHeight));
}

void Measure(Figure& figure) {
    figure.Texts = GuessedTexts(figure);
    figure.Plan = PlanFigure({figure.Choice.Width, 0.0, figure.Choice.PanelPerSet, 0},
                             static_cast<int>(figure.Cells.size()), figure.Texts);
    FigureTexts texts = figure.Texts;
    texts.Left = texts.Right = 0.0;
    for (std::size_t place = 0; place < figure.Cells.size(); ++place)
        ForBoth(figure, place, [&] {
            MeasureGraph(figure.Paper, texts);
            if (Chart.Spec.Legend.Show != 0) MeasureLegend(figure, texts);
        });
    texts.LeftMost = texts.Left + texts.Line + texts.Gap;
    figure.Texts = texts;
    figure.Plan = PlanFigure(figure.Choice, static_cast<int>(figure.Cells.size()), texts);
}

void PaintPaper(const DrawingSurface& surface) {
    surface.SetPen({false, 0, 1});
    surface.SetBrush({BrushKind::Solid, 0xFFFFFF});
    surface.Rectangle({0, 0, surface.Width() - 1, surface.Height() - 1});
}

PictureRequest RequestFor(const Page& page, double width, double height) {
    PictureRequest request;
    request.Description = ProgramTitle() + std::string("\0Figure\0\0", 9);
    request.Width = page.Units(width);
    request.Height = page.Units(height);
    request.DotsPerInchX = request.DotsPerInchY = page.Dots;
    return request;
}

} // namespace

bool IsFigureEnding(const std::string& ending) {
    return ending == "svg" || ending == "pdf" || ending == "png" || ending == "emf";
}

double FigureDots(const std::string& ending) {
    return ending == "png" ? 600.0 : 1200.0;
}

std::string FigureName(long set) {
    const std::string name = PlainName(set);
    for (long other = 1; other <= Work.NumSets; ++other)
        if (other != set && PlainName(other) == name) return name + ", set " + std::to_string(set);
    return name;
}

std::string FigureRms(long set) {
    const double rms = RmsOfSet(set);
    const bool plain = rms == 0.0 || (rms >= 0.001 && rms < 1000.0);
    return "rms " +
           (plain ? SingleText(static_cast<float>(RoundSignificant(rms, 2))) : FormatNumber(rms, "0.0E-##"));
}

std::string FigureBytes(const FigureChoice& choice, const std::string& ending, double dotsPerInch,
                        const PictureOpener& open) {
    if (!IsFigureEnding(ending)) RaiseError("no figure is written as '" + ending + "'");
    if (Chart.Painting != 0) RaiseError("a graph is being drawn");
    CalcResiduals();
    Figure figure{choice, {dotsPerInch}, {}, {}, {}};
    FigureScope scope(RequestFor(figure.Paper, LargestFigure, LargestFigure));
    figure.Cells = BuildCells(choice);
    Measure(figure);
    const PictureFile picture = open(ending, RequestFor(figure.Paper, figure.Plan.Width, figure.Plan.Height));
    scope.Surface = picture.Surface;
    PaintPaper(picture.Surface);
    for (std::size_t place = 0; place < figure.Cells.size(); ++place)
        ForBoth(figure, place, ShowGraph);
    scope.Surface = {};
    return picture.Finish();
}

} // namespace Quillon
