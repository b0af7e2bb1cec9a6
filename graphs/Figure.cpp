#include "graphs/Figure.h"

#include "chart/layout/LegendLayout.h"
#include "chart/pens/Fonts.h"
#include "fit/Sums.h"
#include "graphs/FigureGraphs.h"
#include "graphs/FigureScales.h"
#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/Latin1.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double NarrowCell = 45.0; // mm; below it a head takes two lines
constexpr std::int16_t Nowhere = 0; // AutoPlace of a legend that has its own place

// --- names ---------------------------------------------------------------------------------------------

std::string PlainName(SetNo set) {
    const RowNo row = RowOf(set);
    std::string name = Latin1Text(FileTitle(Work.SetLabel[set.Number]));
    const int channel = Work.DataChannel[row];
    const bool told = name.find(" Ch ") != std::string::npos; // labels that were not changed tell it
    if (channel >= 1 && channel <= 4 && !told)
        name += std::string(" Ch ") + static_cast<char>('A' + channel - 1);
    return name;
}

std::string Speed(SetNo set) {
    return SingleText(Work.ScanRPM[RowOf(set)]) + " rpm";
}

// The number of a set that is called as another one; "" where it is not.
std::string NumberText(SetNo set) {
    for (const SetNo other : EachSet())
        if (other != set && PlainName(other) == PlainName(set) && Speed(other) == Speed(set))
            return ", set " + std::to_string(set.Number);
    return "";
}

// --- the whole -----------------------------------------------------------------------------------------

struct Figure {
    FigureChoice Choice;
    Page Paper;
    std::vector<CellGraphs> Cells;
    FigureScales Scales;
    FigureTexts Texts;
    FigurePlan Plan;
    double Small = SmallPoints; // the em of legend and heads, points
};

std::vector<CellGraphs> BuildCells(const FigureChoice& choice) {
    std::vector<CellGraphs> cells;
    if (!choice.PanelPerSet || choice.Set > 0) {
        cells.push_back(BuildCell(SetNo(choice.Set)));
        return cells;
    }
    for (const SetNo set : EachSet())
        cells.push_back(BuildCell(set));
    return cells;
}

PartText UpperText(const Figure& figure, std::size_t place) {
    PartText text;
    if (figure.Plan.Cells[place].TitleLeft) text.Left = Work.DataTypeName;
    if (figure.Texts.Heads == 0) return text;
    const SetNo set = figure.Cells[place].Set;
    if (figure.Texts.Heads == 1) {
        text.Head1 = FigureName(set) + ", " + FigureRms(set);
    } else {
        text.Head1 = PlainName(set) + NumberText(set);
        text.Head2 = Speed(set) + ", " + FigureRms(set);
    }
    return text;
}

PartText LowerText(const FigureCell& cell) {
    PartText text;
    if (cell.TitleLeft) text.Left = "Residual";
    return text;
}

void PlaceLegendBox(const Figure& figure) {
    GraphLegend& legend = Chart.Spec.Legend;
    const FigureRect& place = figure.Plan.Legend;
    legend.Show = place.Right > place.Left ? 1 : 0;
    legend.Where = figure.Texts.LegendBeside ? LegendPlaces::Right : LegendPlaces::Below;
    legend.AutoPlace = Nowhere;
    legend.Box = figure.Paper.Box(place);
    const SetRange sets = SetsOf(SetNo(figure.Choice.Set));
    for (const SetNo set : sets) // of data and curve the first one names both
        Chart.SetNames[2 * PlaceIn(sets, set) - 1] = FigureName(set) + ", " + FigureRms(set);
}

// Lays the lower graph of a cell out, and the upper one over its scale of X; each is then shown by what is
// given.
using ShowPart = std::function<void(const FigurePart& part, const PartText& text)>;
void ForBoth(const Figure& figure, std::size_t place, const ShowPart& show) {
    const FigureCell& cell = figure.Plan.Cells[place];
    Chart = figure.Cells[place].Lower;
    const PartText below = LowerText(cell);
    PlacePart(figure.Paper, cell.Lower, below, nullptr);
    ScaleLowerPart(figure.Scales, cell.Lower.Frame);
    LayOutPart();
    const GraphAxis x = Chart.Spec.AxisX1;
    show(cell.Lower, below);
    Chart = figure.Cells[place].Upper;
    const PartText above = UpperText(figure, place);
    PlacePart(figure.Paper, cell.Upper, above, &x);
    ScaleUpperPart(cell.Upper.Frame);
    Chart.Spec.Legend.Show = 0;
    if (!figure.Choice.PanelPerSet) PlaceLegendBox(figure);
    SetTextSizes(figure.Paper, figure.Small);
    LayOutPart();
    show(cell.Upper, above);
}

// --- what texts take -----------------------------------------------------------------------------------

constexpr double Slack = 0.15; // so that rounding to units leaves no text without its room

// Before anything is measured: rather more than labels of four digits take.
FigureTexts GuessedTexts(const Figure& figure) {
    FigureTexts texts;
    texts.Line = figure.Paper.Millimetres(figure.Paper.LetterUnits(TextPoints));
    texts.Gap = FigureGap;
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
    figure.Small = std::min(SmallPoints * free / std::max(name, 1.0), SmallPoints);
    if (figure.Small < LeastPoints)
        RaiseError(
            "the figure is too narrow: its legend takes at least " +
            FormatNumber(std::ceil((sample + name * LeastPoints / SmallPoints) * Spare + texts.Gap + 2.0),
                         "0") +
            " mm");
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
        ForBoth(figure, place, [&](const FigurePart&, const PartText&) {
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

// Two significant digits, a zero at the end among them: 0.0040 stands beside 0.0039.
std::string TwoDigits(double value) {
    const double rounded = RoundSignificant(value, 2);
    const double exponent = rounded > 0.0 ? std::floor(std::log10(rounded) + 1e-9) : 1.0;
    const auto behind = static_cast<std::size_t>(std::max(1.0 - exponent, 0.0));
    return FormatNumber(rounded, behind == 0 ? "0" : "0." + std::string(behind, '0'));
}

} // namespace

bool IsFigureEnding(const std::string& ending) {
    return ending == "svg" || ending == "pdf" || ending == "png" || ending == "emf";
}

std::string FigureName(SetNo set) {
    return PlainName(set) + ", " + Speed(set) + NumberText(set);
}

std::string FigureRms(SetNo set) {
    const double rms = RmsOfSet(set);
    const bool plain = rms == 0.0 || (rms >= 0.001 && rms < 1000.0);
    return "rms " + (plain ? TwoDigits(rms) : FormatNumber(rms, "0.0E-##"));
}

std::string FigureBytes(const FigureChoice& choice, const std::string& ending, double dotsPerInch,
                        const PictureOpener& open) {
    if (!IsFigureEnding(ending)) RaiseError("no figure is written as '" + ending + "'");
    if (Chart.Painting != 0) RaiseError("a graph is being drawn");
    if (Work.NumSets < 1) RaiseError("there is no fit to draw");
    if (choice.Set < 0 || choice.Set > Work.NumSets)
        RaiseError("the fit has no data set " + std::to_string(choice.Set));
    CalcResiduals();
    Figure figure{choice, {dotsPerInch}, {}, {}, {}, {}};
    FigureScope scope(RequestFor(figure.Paper, LargestFigure, LargestFigure));
    figure.Cells = BuildCells(choice);
    figure.Scales = ScalesOf(figure.Cells);
    Measure(figure);
    const PictureFile picture = open(ending, RequestFor(figure.Paper, figure.Plan.Width, figure.Plan.Height));
    scope.Surface = picture.Surface;
    PaintPaper(picture.Surface);
    for (std::size_t place = 0; place < figure.Cells.size(); ++place)
        ForBoth(figure, place, [&](const FigurePart& part, const PartText& text) {
            ShowGraph();
            PaintLeftTitle(figure.Paper, part, text.Left);
        });
    PaintTitleBelow(figure.Paper, figure.Plan.Title, Work.XAxisTitle);
    scope.Surface = {};
    return picture.Finish();
}

} // namespace Quillon
