#include "graphs/kinds/StudyGraphs.h"

#include "graphs/kinds/GraphParts.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace Quillon {

namespace {

GraphSpec StartStudy(const std::string& xTitle, const std::string& yTitle) {
    GraphSpec spec = StartGraph(PlotStyles::Lines);
    spec.SymbolMode = 3;
    spec.Title1.Text = Work.FitTitle;
    spec.AxisX1.Title.Text = xTitle;
    spec.AxisY1.Title.Text = yTitle;
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    return spec;
}

// A round step, 1, 2 or 5 times a power of ten, that goes into a range five to ten times or so.
double RoundStep(double range) {
    const double power = std::pow(10.0, std::floor(std::log10(range / 5.0)));
    const double part = range / 5.0 / power;
    return power * (part >= 5.0 ? 5.0 : part >= 2.0 ? 2.0 : 1.0);
}

// The scale of an axis over so much and no more, from one round number to another: an axis that chooses for
// itself leaves a narrow range in a corner.
void Cover(GraphAxis& axis, double low, double high) {
    if (!(high > low) || !std::isfinite(high - low)) return;
    const double step = RoundStep(high - low);
    const int decimals = std::clamp(-static_cast<int>(std::floor(std::log10(step) + 1e-9)), 0, 7);
    ImposeScale(axis, false, static_cast<float>(std::floor(low / step + 1e-9) * step),
                static_cast<float>(std::ceil(high / step - 1e-9) * step), decimals);
    axis.TicInterval = static_cast<float>(step);
}

// One series from points, x and y by turns.
void Fill(SetTable& x, SetTable& y, long series, long point, double atX, double atY) {
    x(point, series) = static_cast<float>(atX);
    y(point, series) = static_cast<float>(atY);
}

// The line of a level is a set of its own, behind that of the curve, so that the legend can name it.
void FillLevels(const ProfileCurve& curve, SetTable& x, SetTable& y) {
    for (long k = 1; k <= std::ssize(curve.Levels); ++k) {
        const double level = curve.Levels[static_cast<std::size_t>(k - 1)];
        Fill(x, y, 1 + k, 1, curve.Values.front(), level);
        Fill(x, y, 1 + k, 2, curve.Values.back(), level);
    }
}

double QuartileOf(const std::vector<double>& rising, double p) {
    const double place = p * static_cast<double>(rising.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, rising.size() - 1);
    return rising[below] + (place - static_cast<double>(below)) * (rising[above] - rising[below]);
}

std::size_t BarCount(const std::vector<double>& rising) {
    constexpr double Fewest = 5.0, Most = 60.0;
    const double range = rising.back() - rising.front();
    const double middle = QuartileOf(rising, 0.75) - QuartileOf(rising, 0.25);
    if (!(range > 0.0)) return 1;
    if (!(middle > 0.0)) return static_cast<std::size_t>(Fewest);
    const double width = 2.0 * middle / std::cbrt(static_cast<double>(rising.size()));
    return static_cast<std::size_t>(std::clamp(std::ceil(range / width), Fewest, Most));
}

// A corner of a cell: its place and how high the map is there above the level.
struct Corner {
    double X, Y, Height;
};

double HeightOf(double ratio) {
    return std::isfinite(ratio) ? std::sqrt(std::max(ratio - 1.0, 0.0)) : 1e3;
}

// Where the level is crossed between two corners, one above and one below. Cells on both sides of the pair
// have to come to the same bits.
std::array<double, 2> Crossing(const Corner& a, const Corner& b) {
    if (a.X > b.X || a.Y > b.Y) return Crossing(b, a);
    const double share = a.Height / (a.Height - b.Height);
    return {a.X + share * (b.X - a.X), a.Y + share * (b.Y - a.Y)};
}

// The crossings of a cell's sides, in order round the cell; two or four of them.
void AddCell(const std::array<Corner, 4>& cell, std::vector<ContourPiece>& pieces) {
    std::vector<std::array<double, 2>> crossings;
    for (std::size_t i = 0; i < 4; ++i) {
        const Corner& a = cell[i];
        const Corner& b = cell[(i + 1) % 4];
        if ((a.Height < 0.0) != (b.Height < 0.0)) crossings.push_back(Crossing(a, b));
    }
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
        pieces.push_back({crossings[i][0], crossings[i][1], crossings[i + 1][0], crossings[i + 1][1]});
}

double LinearAt(const std::vector<double>& at, const std::vector<double>& values, std::size_t cell,
                double x) {
    const double share = (x - at[cell]) / (at[cell + 1] - at[cell]);
    if (share <= 0.0) return values[cell];
    return share >= 1.0 ? values[cell + 1] : values[cell] + share * (values[cell + 1] - values[cell]);
}

// The value at x of the cubic through four places (or of what lower order there are places for), around the
// cell that holds x.
double CubicAt(const std::vector<double>& at, const std::vector<double>& values, std::size_t cell, double x) {
    const std::size_t last = at.size() - 1;
    const std::size_t begin = std::min(cell > 0 ? cell - 1 : 0, last >= 3 ? last - 3 : 0);
    const std::size_t end = std::min(begin + 3, last);
    double sum = 0.0;
    for (std::size_t i = begin; i <= end; ++i) {
        double weight = 1.0;
        for (std::size_t j = begin; j <= end; ++j)
            if (j != i) weight *= (x - at[j]) / (at[i] - at[j]);
        if (weight != 0.0) sum += weight * values[i];
    }
    return std::isfinite(sum) ? sum : LinearAt(at, values, cell, x);
}

// Every cell of the values in so many parts.
std::vector<double> Divided(const std::vector<double>& values, std::size_t parts) {
    std::vector<double> fine;
    for (std::size_t i = 0; i + 1 < values.size(); ++i)
        for (std::size_t k = 0; k < parts; ++k)
            fine.push_back(values[i] +
                           (values[i + 1] - values[i]) * static_cast<double>(k) / static_cast<double>(parts));
    fine.push_back(values.back());
    return fine;
}

// Rows of a grid along its second axis, each made finer.
std::vector<double> RefinedRow(const std::vector<double>& at, const std::vector<double>& values,
                               const std::vector<double>& fine, std::size_t parts) {
    std::vector<double> row;
    for (std::size_t k = 0; k < fine.size(); ++k)
        row.push_back(CubicAt(at, values, std::min(k / parts, at.size() - 2), fine[k]));
    return row;
}

// Along the second axis, with the axes exchanged in the result: twice is once for each.
ContourMap RefinedAcross(const ContourMap& map, std::size_t parts) {
    const std::size_t rows = map.Values[0].size(), columns = map.Values[1].size();
    ContourMap fine = map;
    fine.Values = {Divided(map.Values[1], parts), map.Values[0]};
    fine.Ratios.assign(fine.Values[0].size() * rows, 0.0);
    for (std::size_t i = 0; i < rows; ++i) {
        const auto begin = map.Ratios.begin() + static_cast<std::ptrdiff_t>(i * columns);
        const std::vector<double> row = RefinedRow(
            map.Values[1], {begin, begin + static_cast<std::ptrdiff_t>(columns)}, fine.Values[0], parts);
        for (std::size_t k = 0; k < row.size(); ++k)
            fine.Ratios[k * rows + i] = std::isfinite(row[k]) ? row[k] : INFINITY;
    }
    return fine;
}

// The points of a map's contour as one series, lifted between two lines by a point that is missing.
void FillContour(const std::vector<ContourLine>& lines, SetTable& x, SetTable& y, long series) {
    long point = 0;
    for (const ContourLine& line : lines) {
        for (const std::array<double, 2>& at : line)
            Fill(x, y, series, ++point, at[0], at[1]);
        ++point;
    }
}

GraphMark EllipseAt(const ContourMap& map) {
    constexpr std::int16_t ellipse = 5;
    constexpr double part = 0.008; // of the axis
    GraphMark mark;
    mark.Kind = ellipse;
    mark.X1 = static_cast<float>(map.Minimum[0]);
    mark.Y1 = static_cast<float>(map.Minimum[1]);
    mark.X2 = static_cast<float>(part * (map.Values[0].back() - map.Values[0].front()));
    mark.Y2 = static_cast<float>(part * (map.Values[1].back() - map.Values[1].front()));
    return mark;
}

} // namespace

bool MakeProfileGraph(const ProfileCurve& curve) {
    const long points = std::ssize(curve.Values), levels = std::ssize(curve.Levels);
    SetTable x(std::max(points, 2L), 1 + levels), y(std::max(points, 2L), 1 + levels);
    for (long i = 1; i <= points; ++i) {
        const auto place = static_cast<std::size_t>(i - 1);
        if (std::isfinite(curve.Ratios[place])) Fill(x, y, 1, i, curve.Values[place], curve.Ratios[place]);
    }
    GraphSpec spec = StartStudy(curve.Parameter, "Sum of Squares over the Lowest");
    double highest = 1.0;
    for (const double ratio : curve.Ratios)
        if (std::isfinite(ratio)) highest = std::max(highest, ratio);
    if (points > 0) Cover(spec.AxisX1, curve.Values.front(), curve.Values.back());
    Cover(spec.AxisY1, 1.0, highest);
    if (points > 0) FillLevels(curve, x, y);
    std::vector<std::string> names{curve.Parameter};
    names.insert(names.end(), curve.Names.begin(), curve.Names.end());
    return HandOver(spec, x, y, names, {}, {});
}

HistogramBars BarsOf(const std::vector<double>& values) {
    std::vector<double> rising = values;
    std::sort(rising.begin(), rising.end());
    const std::size_t count = BarCount(rising);
    const double first = rising.front();
    const double width = (rising.back() - first) / static_cast<double>(count);
    HistogramBars bars;
    bars.Counts.resize(count);
    for (std::size_t i = 0; i <= count; ++i)
        bars.Edges.push_back(first + width * static_cast<double>(i));
    for (const double value : rising) {
        const double place = width > 0.0 ? (value - first) / width : 0.0;
        ++bars.Counts[std::min(static_cast<std::size_t>(place), count - 1)];
    }
    return bars;
}

bool MakeHistogramGraph(const Histogram& histogram) {
    const HistogramBars bars = BarsOf(histogram.Values);
    const long corners = std::max(4 * std::ssize(bars.Counts), 5L);
    SetTable x(corners, 2), y(corners, 2);
    const auto highest = static_cast<double>(*std::max_element(bars.Counts.begin(), bars.Counts.end()));
    long point = 0;
    for (std::size_t i = 0; i < bars.Counts.size(); ++i) {
        const auto height = static_cast<double>(bars.Counts[i]);
        Fill(x, y, 1, ++point, bars.Edges[i], 0.0);
        Fill(x, y, 1, ++point, bars.Edges[i], height);
        Fill(x, y, 1, ++point, bars.Edges[i + 1], height);
        Fill(x, y, 1, ++point, bars.Edges[i + 1], 0.0);
    }
    GraphSpec spec = StartStudy(histogram.Quantity, "Fits");
    for (const double limit : {histogram.Lower, histogram.Upper}) {
        const long first = limit == histogram.Lower ? 1 : 4; // a point between them is missing
        Fill(x, y, 2, first, limit, 0.0);
        Fill(x, y, 2, first + 1, limit, highest);
    }
    Cover(spec.AxisX1, bars.Edges.front(), bars.Edges.back());
    Cover(spec.AxisY1, 0.0, highest);
    return HandOver(spec, x, y, {histogram.Quantity, histogram.Level}, {}, {});
}

std::vector<ContourPiece> ContourPieces(const ContourMap& map, double level) {
    const std::vector<double>& xs = map.Values[0];
    const std::vector<double>& ys = map.Values[1];
    const double target = HeightOf(level);
    const auto corner = [&](std::size_t i, std::size_t j) {
        return Corner{xs[i], ys[j], HeightOf(map.Ratios[i * ys.size() + j]) - target};
    };
    std::vector<ContourPiece> pieces;
    for (std::size_t i = 0; i + 1 < xs.size(); ++i)
        for (std::size_t j = 0; j + 1 < ys.size(); ++j)
            AddCell({corner(i, j), corner(i + 1, j), corner(i + 1, j + 1), corner(i, j + 1)}, pieces);
    return pieces;
}

ContourMap RefinedMap(const ContourMap& map, std::size_t cells) {
    const std::size_t least = std::min(map.Values[0].size(), map.Values[1].size());
    if (least < 2 || least - 1 >= cells) return map;
    const std::size_t parts = (cells + least - 2) / (least - 1);
    return RefinedAcross(RefinedAcross(map, parts), parts);
}

std::vector<ContourLine> ContourLines(std::vector<ContourPiece> pieces) {
    std::multimap<std::array<double, 2>, std::size_t> ends; // each end, and the piece that has it
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        ends.emplace(std::array{pieces[i].X1, pieces[i].Y1}, i);
        ends.emplace(std::array{pieces[i].X2, pieces[i].Y2}, i);
    }
    std::vector<bool> used(pieces.size());
    // The far end of a piece not used yet that has this end; nothing without one.
    const auto next = [&](const std::array<double, 2>& end) -> std::optional<std::array<double, 2>> {
        const auto [first, behind] = ends.equal_range(end);
        for (auto it = first; it != behind; ++it) {
            if (used[it->second]) continue;
            used[it->second] = true;
            const ContourPiece& piece = pieces[it->second];
            return std::array{piece.X1, piece.Y1} == end ? std::array{piece.X2, piece.Y2}
                                                         : std::array{piece.X1, piece.Y1};
        }
        return std::nullopt;
    };
    std::vector<ContourLine> lines;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (used[i]) continue;
        used[i] = true;
        ContourLine line{{pieces[i].X1, pieces[i].Y1}, {pieces[i].X2, pieces[i].Y2}};
        for (int side = 0; side < 2; ++side) { // first from its end, then from its beginning
            while (const auto further = next(line.back()))
                line.push_back(*further);
            std::reverse(line.begin(), line.end());
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

bool MakeContourGraph(const ContourMap& map) {
    constexpr std::size_t SmoothCells = 288; // along an axis: long thin regions end in a tip
    const ContourMap fine = RefinedMap(map, SmoothCells);
    std::vector<std::vector<ContourLine>> contours;
    std::size_t longest = 1;
    for (const double level : map.Levels) {
        contours.push_back(ContourLines(ContourPieces(fine, level)));
        std::size_t points = 0;
        for (const ContourLine& line : contours.back())
            points += line.size() + 1;
        longest = std::max(longest, points);
    }
    const long series = std::ssize(contours);
    SetTable x(static_cast<long>(longest), series), y(static_cast<long>(longest), series);
    for (long k = 1; k <= series; ++k)
        FillContour(contours[static_cast<std::size_t>(k - 1)], x, y, k);
    GraphSpec spec = StartStudy(map.Parameters[0], map.Parameters[1]);
    Cover(spec.AxisX1, map.Values[0].front(), map.Values[0].back());
    Cover(spec.AxisY1, map.Values[1].front(), map.Values[1].back());
    return HandOver(spec, x, y, map.Names, {}, {EllipseAt(map)});
}

} // namespace Quillon
