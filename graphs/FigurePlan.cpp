#include "graphs/FigurePlan.h"

#include "input/NUMINPUT.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double Edge = 1.0;       // of the page, free on all sides
constexpr double UpperPart = 0.7;  // of the height of both frames
constexpr double FrameShape = 0.9; // height of both frames to their width
constexpr double TallestPair = 120.0;
// The frames of a cell take at least this, so that the titles of both left axes stand one above the other.
constexpr double LeastPair = 14.0, LeastAcross = 10.0;

std::string Millimetres(double length) {
    return FormatNumber(length, "0") + " mm";
}

void CheckSize(const FigureChoice& choice) {
    const auto fits = [](double length) { return length >= LeastFigure && length <= LargestFigure; };
    if (fits(choice.Width) && (choice.Height == 0.0 || fits(choice.Height))) return;
    RaiseError("a figure is " + Millimetres(LeastFigure) + " to " + Millimetres(LargestFigure) +
               " wide and high");
}

// The sizes of a plan on the way to its cells.
struct Grid {
    int Columns = 1, Rows = 1;
    double Left{}, Across{};  // of the first frame; of each frame
    double Pitch{};           // from frame to frame, across
    double Head{}, Between{}; // above a cell's frames; between its two
    double Pair{};            // the height of both frames
    double Foot{};            // below a cell's frames
    double Step{};            // from cell to cell, down
};

double LegendAcross(const FigureTexts& texts) {
    return texts.LegendBeside && texts.LegendWidth > 0.0 ? texts.LegendWidth + 2.0 * texts.Gap : 0.0;
}
double LegendDown(const FigureTexts& texts) {
    return !texts.LegendBeside && texts.LegendHeight > 0.0 ? texts.LegendHeight + texts.Gap : 0.0;
}

void PlanAcross(Grid& grid, double width, const FigureTexts& texts) {
    grid.Left = Edge + texts.LeftMost;
    const double right = Edge + texts.Right + LegendAcross(texts);
    const double between = texts.Left + texts.Right;
    grid.Across = (width - grid.Left - right - (grid.Columns - 1) * between) / grid.Columns;
    grid.Pitch = grid.Across + between;
    if (grid.Across < LeastAcross)
        RaiseError("the figure is too narrow: its texts and frames take at least " +
                   Millimetres(std::ceil(width + grid.Columns * (LeastAcross - grid.Across))));
}

// What is no frame, down the page.
double TextsDown(const Grid& grid, const FigureTexts& texts) {
    return 2.0 * Edge + grid.Rows * (grid.Head + grid.Between + grid.Foot) + texts.Lowest - texts.Below +
           LegendDown(texts);
}

void PlanDown(Grid& grid, const FigureChoice& choice, const FigureTexts& texts) {
    // The labels at the ends of two scales that meet stand half beyond their frames.
    grid.Between = texts.Line + texts.Gap / 2.0;
    grid.Head = texts.Heads > 0 ? texts.Heads * (texts.Line + texts.Gap) + 2.0 * texts.Gap
                                : texts.Line / 2.0 + texts.Gap;
    grid.Foot = texts.Below;
    const double others = TextsDown(grid, texts);
    grid.Pair = std::clamp(FrameShape * grid.Across, LeastPair, TallestPair);
    if (choice.PanelPerSet)
        grid.Pair = std::max(GridHeight(choice.Width / grid.Columns) - grid.Head - grid.Between - grid.Foot,
                             LeastPair);
    if (choice.Height > 0.0) grid.Pair = (choice.Height - others) / grid.Rows;
    if (grid.Pair < LeastPair)
        RaiseError("the figure is too low: its texts and frames take at least " +
                   Millimetres(std::ceil(others + grid.Rows * LeastPair)));
    grid.Step = grid.Head + grid.Pair + grid.Between + grid.Foot;
}

FigureCell CellAt(const Grid& grid, const FigureTexts& texts, int place) {
    const int column = place % grid.Columns, row = place / grid.Columns;
    FigureCell cell;
    cell.TitleLeft = column == 0;
    const double left = grid.Left + column * grid.Pitch, top = Edge + row * grid.Step;
    const double right = left + grid.Across;
    const double viewLeft = left - (cell.TitleLeft ? texts.LeftMost : texts.Left);
    const double viewRight = right + texts.Right;
    const double upper = top + grid.Head, middle = upper + UpperPart * grid.Pair;
    const double lower = middle + grid.Between, bottom = upper + grid.Pair + grid.Between;
    cell.Upper = {{viewLeft, top, viewRight, middle + grid.Between / 2.0}, {left, upper, right, middle}};
    cell.Lower = {{viewLeft, middle + grid.Between / 2.0, viewRight, bottom + texts.Below},
                  {left, lower, right, bottom}};
    return cell;
}

FigureRect LegendAt(const FigurePlan& plan, const FigureTexts& texts) {
    if (texts.LegendWidth <= 0.0) return {};
    const FigureCell& cell = plan.Cells.front();
    if (texts.LegendBeside) {
        const double left = plan.Width - Edge - texts.LegendWidth, top = cell.Upper.Frame.Top;
        return {left, top, plan.Width - Edge, top + texts.LegendHeight};
    }
    const double top = plan.Height - Edge - texts.LegendHeight;
    const double middle = (cell.Upper.Frame.Left + cell.Upper.Frame.Right) / 2.0;
    const double left = std::clamp(middle - texts.LegendWidth / 2.0, Edge,
                                   std::max(plan.Width - Edge - texts.LegendWidth, Edge));
    return {left, top, left + texts.LegendWidth, top + texts.LegendHeight};
}

} // namespace

double GridHeight(double cellWidth) {
    constexpr double least = 32.0, most = 60.0;
    return std::clamp(0.95 * cellWidth, least, most);
}

int GridColumns(int cells, double width) {
    for (int columns = 1; columns < cells; ++columns) {
        const double across = width / columns;
        const int rows = (cells + columns - 1) / columns;
        if (across <= TwoColumns / 3.0 && rows * GridHeight(across) <= TallestPage) return columns;
    }
    return std::max(cells, 1);
}

FigurePlan PlanFigure(const FigureChoice& choice, int cells, const FigureTexts& texts) {
    CheckSize(choice);
    Grid grid;
    if (choice.PanelPerSet) grid.Columns = GridColumns(cells, choice.Width);
    grid.Rows = (cells + grid.Columns - 1) / grid.Columns;
    PlanAcross(grid, choice.Width, texts);
    PlanDown(grid, choice, texts);
    FigurePlan plan;
    plan.Width = choice.Width;
    plan.Height = TextsDown(grid, texts) + grid.Rows * grid.Pair;
    for (int place = 0; place < cells; ++place)
        plan.Cells.push_back(CellAt(grid, texts, place));
    const double below = Edge + grid.Rows * grid.Step;
    plan.Title = {grid.Left, below, grid.Left + (grid.Columns - 1) * grid.Pitch + grid.Across,
                  below + texts.Lowest - texts.Below};
    plan.Legend = LegendAt(plan, texts);
    if (choice.Height == 0.0) plan.Height = std::max(plan.Height, plan.Legend.Bottom + Edge);
    return plan;
}

} // namespace Quillon
