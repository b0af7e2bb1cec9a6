#include "scandata/range/Spikes.h"

#include "scandata/table/BaselineAt.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double Deviations = 6.0;
constexpr double MedianToSigma = 1.4826; // of normal deviates
constexpr double LeastNoise = 1e-4;      // of the span of the values: rounding in the file
constexpr std::size_t Neighbours = 8;
constexpr std::size_t Around = 30;
constexpr std::size_t FewestPoints = 12;

double Median(std::vector<double> numbers) {
    if (numbers.empty()) return 0.0;
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

struct Readings {
    std::vector<double> X, Y;
};

Readings Stretch(const OneBased<float>& radii, const OneBased<float>& values, long first, long last) {
    Readings r;
    for (long p = first; p <= last; ++p) {
        r.X.push_back(static_cast<double>(radii[p]));
        r.Y.push_back(static_cast<double>(values[p]));
    }
    return r;
}

// The first of count places about i that lie within 0..size - 1.
std::size_t Begin(std::size_t i, std::size_t count, std::size_t size) {
    const std::size_t half = count / 2;
    return std::min(i > half ? i - half : 0, size > count ? size - count : 0);
}

// Calls visit(k) for the places next to i, without i.
template <class Visit> void EachNeighbour(std::size_t i, std::size_t count, std::size_t size, Visit&& visit) {
    const std::size_t begin = Begin(i, count + 1, size);
    for (std::size_t k = begin; k < std::min(begin + count + 1, size); ++k)
        if (k != i) visit(k);
}

// How far a reading lies from the line of its neighbours.
double OffLine(const Readings& r, std::size_t i) {
    std::vector<std::size_t> near;
    EachNeighbour(i, Neighbours, r.X.size(), [&](std::size_t k) { near.push_back(k); });
    std::vector<double> slopes;
    for (std::size_t a = 0; a < near.size(); ++a)
        for (std::size_t b = a + 1; b < near.size(); ++b)
            if (r.X[near[a]] != r.X[near[b]])
                slopes.push_back((r.Y[near[b]] - r.Y[near[a]]) / (r.X[near[b]] - r.X[near[a]]));
    const double slope = Median(slopes);
    std::vector<double> heights;
    for (const std::size_t k : near)
        heights.push_back(r.Y[k] + slope * (r.X[i] - r.X[k]));
    return r.Y[i] - Median(heights);
}

// What curvature does to a reading it does to those around it.
std::vector<double> WithoutCurvature(const std::vector<double>& off) {
    std::vector<double> rest;
    for (std::size_t i = 0; i < off.size(); ++i) {
        std::vector<double> near;
        EachNeighbour(i, Neighbours, off.size(), [&](std::size_t k) { near.push_back(off[k]); });
        rest.push_back(std::fabs(off[i] - Median(near)));
    }
    return rest;
}

double Span(const std::vector<double>& numbers) {
    const auto [low, high] = std::minmax_element(numbers.begin(), numbers.end());
    return *high - *low;
}

} // namespace

std::vector<long> FindSpikes(const OneBased<float>& radii, const OneBased<float>& values, long first,
                             long last) {
    const Readings r = Stretch(radii, values, first, last);
    if (r.X.size() < FewestPoints) return {};
    std::vector<double> off;
    for (std::size_t i = 0; i < r.X.size(); ++i)
        off.push_back(OffLine(r, i));
    const std::vector<double> rest = WithoutCurvature(off);
    const double least = std::max(LeastNoise * Span(r.Y), MedianToSigma * Median(rest));
    std::vector<long> spikes;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        std::vector<double> near;
        EachNeighbour(i, Around, rest.size(), [&](std::size_t k) { near.push_back(rest[k]); });
        if (rest[i] > Deviations * std::max(least, MedianToSigma * Median(near)))
            spikes.push_back(first + static_cast<long>(i));
    }
    return spikes;
}

float ProposeCeiling(const OneBased<float>& signals, long first, long last) {
    constexpr std::size_t window = 12;
    constexpr double grown = 2.5;
    struct Difference {
        double Signal, Size;
    };
    std::vector<Difference> differences;
    for (long p = first; p + 3 <= last; ++p) {
        const auto y = [&](long q) { return static_cast<double>(signals[q]); };
        differences.push_back({(y(p) + y(p + 1) + y(p + 2) + y(p + 3)) / 4.0,
                               std::fabs(y(p) - 3.0 * y(p + 1) + 3.0 * y(p + 2) - y(p + 3))});
    }
    if (differences.size() < 4 * window) return 0.0F;
    std::sort(differences.begin(), differences.end(),
              [](const Difference& a, const Difference& b) { return a.Signal < b.Signal; });
    const auto median = [&](std::size_t begin, std::size_t end) {
        std::vector<double> sizes;
        for (std::size_t i = begin; i < end; ++i)
            sizes.push_back(differences[i].Size);
        return Median(sizes);
    };
    const double quiet = median(0, differences.size() / 2);
    std::size_t begin = differences.size();
    while (begin >= differences.size() / 2 + window && median(begin - window, begin) > grown * quiet)
        --begin;
    if (begin == differences.size()) return 0.0F;
    const double signal = differences[begin > window ? begin - window / 2 : 0].Signal;
    return signal > 0.0 ? static_cast<float>(std::floor(100.0 * signal) / 100.0) : 0.0F;
}

float ProposeCeilingOf(RowNo row, long first, long last) {
    OneBased<float> signals(last);
    ForgetBaselinePlace();
    for (long p = first; p <= last; ++p)
        signals[p] = static_cast<float>(SignalOf(row, Work.ScanRadius[row][p], Work.ScanValue[row][p]));
    return ProposeCeiling(signals, first, last);
}

} // namespace Quillon
