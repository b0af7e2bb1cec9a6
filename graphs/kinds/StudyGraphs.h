#pragma once
// Pictures of what studies find, from plain numbers: the curve of a profile, the histogram of a resampling,
// the contours of a map. Each builds its graph without showing the window; false when the chart refused it.

#include <array>
#include <string>
#include <vector>

namespace Quillon {

// A profile: the ratio of sums over the parameter, with a line across at the ratio of each level. Values
// whose ratio is not finite are left out.
struct ProfileCurve {
    std::string Parameter; // title of the x axis
    std::vector<double> Values, Ratios;
    std::vector<double> Levels;     // ratios
    std::vector<std::string> Names; // of the levels, one for each, for the legend
};
bool MakeProfileGraph(const ProfileCurve& curve);

// How often a quantity came to lie where, as a line around the bars; lines at the limits, of a set of their
// own, so that they have another colour. The bars are
// 2 (q3 - q1) / cbrt(n) wide with the quartiles q1 and q3 (D. Freedman and P. Diaconis, Zeitschrift fuer
// Wahrscheinlichkeitstheorie 57 (1981) 453), at least 5 and at most 60 of them.
struct Histogram {
    std::string Quantity;
    std::vector<double> Values; // in any order, at least one
    double Lower = 0.0, Upper = 0.0;
    std::string Level; // what lies between them, for the legend: "95.0%"
};
bool MakeHistogramGraph(const Histogram& histogram);

// The counts behind it: the edges of the bars, one more than bars, and how many values lie in each.
struct HistogramBars {
    std::vector<double> Edges;
    std::vector<long> Counts;
};
HistogramBars BarsOf(const std::vector<double>& values);

// A map: for each level the line where the ratio is that of the level, on a grid made finer by cubics where
// it is coarse, and a small ellipse at the minimum. Ratios: for each value of the first parameter all of the
// second.
struct ContourMap {
    std::array<std::string, 2> Parameters;
    std::array<std::vector<double>, 2> Values;
    std::vector<double> Ratios;
    std::vector<double> Levels;     // ratios
    std::vector<std::string> Names; // of the levels, for the legend
    std::array<double, 2> Minimum{};
};
bool MakeContourGraph(const ContourMap& map);

// A piece of a contour between two sides of a cell of the grid.
struct ContourPiece {
    double X1, Y1, X2, Y2;
};

// The same map on a finer grid, with about so many cells along each axis: between the values of the grid the
// cubic through the four next to each other, which leaves a paraboloid as it is. Ratios that are not finite
// stay so in the cells that touch them. A map that is fine enough is given back as it is.
ContourMap RefinedMap(const ContourMap& map, std::size_t cells);

// The contour of a level, cell by cell, linear along the sides in the root of ratio - 1, in which a map is
// nearly a cone (W. E. Lorensen and H. E. Cline, Computer Graphics 21 (1987) 163, in two dimensions).
std::vector<ContourPiece> ContourPieces(const ContourMap& map, double level);

// Pieces in an order in which each begins where the one before has ended, as far as they do: lines of points,
// closed ones with their first point at the end once more.
using ContourLine = std::vector<std::array<double, 2>>;
std::vector<ContourLine> ContourLines(std::vector<ContourPiece> pieces);

} // namespace Quillon
