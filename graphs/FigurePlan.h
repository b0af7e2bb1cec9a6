#pragma once
// Where the parts of a figure for publication stand on its page. All lengths are millimetres, x to the right,
// y downward, from the page's upper left corner.
//
// A figure is a grid of cells, filled row by row. In a cell the data with their curves stand above, the
// residuals below, seven parts to three, over one x axis. A figure of all data sets is one cell with a legend
// beside it; one of a panel for each set has as many cells as sets, and what a legend would say above each.

#include <string>
#include <vector>

namespace Quillon {

inline constexpr double OneColumn = 85.0, TwoColumns = 170.0; // widths of figures in print
inline constexpr double LeastFigure = 40.0, LargestFigure = 400.0;
inline constexpr double TallestPage = 225.0; // what a page in print leaves to a figure without its caption

// What a user chooses.
struct FigureChoice {
    double Width = OneColumn;
    double Height = 0.0; // 0: as the contents ask
    bool PanelPerSet = false;
    long Set = 0; // one data set alone; 0 all of them
    bool operator==(const FigureChoice&) const = default;
};

// What the texts take, measured in the fonts of the figure.
struct FigureTexts {
    double Line{};             // height of a line of text
    double Gap{};              // between texts and what stands beside them
    double Left{}, LeftMost{}; // left of a frame: the labels with their gaps; with the title of the axis too
    double Right{};            // half of the last label below
    double Below{}, Lowest{};  // below a frame: the labels; with the title of the axis too
    int Heads{};               // lines of text above each cell
    double LegendWidth{}, LegendHeight{}; // 0 without a legend
    bool LegendBeside = false;            // right of the frames; else below them
};

struct FigureRect {
    double Left{}, Top{}, Right{}, Bottom{};
    bool operator==(const FigureRect&) const = default;
};

// One of the two graphs of a cell: the part of the page that is its own, and the frame in it.
struct FigurePart {
    FigureRect View, Frame;
};

struct FigureCell {
    FigurePart Upper, Lower;
    bool TitleLeft = false; // the first cell of a row has the titles of the left axes
};

struct FigurePlan {
    double Width{}, Height{};
    std::vector<FigureCell> Cells;
    FigureRect Title;  // of the x axis, one for all cells: below them, from the first frame to the last
    FigureRect Legend; // empty without one
};

// The columns of a grid of cells: the fewest with which it is no taller than TallestPage and no cell wider
// than a third of two columns. Each cell is as high as GridHeight says.
int GridColumns(int cells, double width);
double GridHeight(double cellWidth); // of one cell

// Lays a figure out. A width or height beyond LeastFigure and LargestFigure, and a size that leaves a frame
// no room, is a RuntimeError that tells the least height or width.
FigurePlan PlanFigure(const FigureChoice& choice, int cells, const FigureTexts& texts);

} // namespace Quillon
