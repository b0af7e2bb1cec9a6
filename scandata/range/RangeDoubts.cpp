#include "scandata/range/RangeDoubts.h"

#include "input/NUMINPUT.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Quillon {

namespace {

constexpr double TimesMedian = 10.0;

// values(p + 1) - values(p) for p = first .. last - 1, from subscript 0.
std::vector<double> StepsOf(const OneBased<float>& values, long first, long last) {
    std::vector<double> steps;
    for (long p = first; p < last; ++p)
        steps.push_back(static_cast<double>(values[p + 1]) - static_cast<double>(values[p]));
    return steps;
}

// Steps of 0 are readings that the instrument has rounded alike.
double MedianSize(std::vector<double> steps) {
    std::erase(steps, 0.0);
    if (steps.empty()) return 0.0;
    for (double& step : steps)
        step = std::fabs(step);
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    return *middle;
}

// The next step of a gradient is less than twice the last one, also where the radii are unevenly spaced.
bool StandsOut(double step, double neighbour, double size) {
    return std::fabs(step - neighbour) > std::max(size, std::fabs(neighbour));
}

// A jump that begins with step i: up to three large steps in one direction, which stand out from the steps
// before and behind them. A reading in the middle of an edge parts its jump in two, a slit of the optics in
// three.
bool Jumps(const std::vector<double>& steps, std::size_t i, double size) {
    constexpr std::size_t Longest = 3;
    if (i > 0 && !StandsOut(steps[i], steps[i - 1], size)) return false;
    for (std::size_t last = i; last < std::min(i + Longest, steps.size()); ++last) {
        const bool large = std::fabs(steps[last]) > size && (steps[last] > 0.0) == (steps[i] > 0.0);
        if (!large) return false;
        if (last + 1 == steps.size() || StandsOut(steps[last], steps[last + 1], size)) return true;
    }
    return false;
}

std::string Centimetres(float radius) {
    return FormatNumber(static_cast<double>(radius), "0.0000");
}

} // namespace

long FirstJump(const OneBased<float>& values, long first, long last) {
    const std::vector<double> steps = StepsOf(values, first, last);
    const double size = TimesMedian * MedianSize(steps);
    if (size == 0.0) return 0;
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (Jumps(steps, i, size)) return first + static_cast<long>(i);
    return 0;
}

std::string RangeDoubts(RowNo row, bool chosen) {
    const long first = Work.FitRange[0][row];
    const long last = Work.FitRange[1][row];
    const OneBased<float>& radii = Work.ScanRadius[row];
    if (first < 1 || last < first || last > radii.Hi()) return "";
    const bool whole =
        !chosen && Work.DataChannel[row] == Channel::None && first == 1 && last == Work.ScanPoints[row];
    const long jump = FirstJump(Work.ScanValue[row], first, last);
    if (!whole && jump == 0) return "";
    std::string doubts =
        whole ? "no fitting range is chosen, so that the whole scan is fitted" : "the fitting range";
    if (jump == 0) return doubts + ", meniscus and bottom too where it holds them";
    doubts += whole ? "; it holds jumps"
                    : " " + Centimetres(radii[first]) + " to " + Centimetres(radii[last]) + " cm holds jumps";
    return doubts + ", the first at " + Centimetres(radii[jump]) +
           " cm: meniscus, bottom or the edge of a column is then fitted as signal";
}

} // namespace Quillon
