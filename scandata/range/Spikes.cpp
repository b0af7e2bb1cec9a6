#include "scandata/range/Spikes.h"

#include "scandata/table/BaselineAt.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Quillon {

namespace {

constexpr double Deviations = 6.0;
constexpr double MedianToSigma = 1.4826; // of normal deviates
constexpr double LeastNoise = 1e-4;      // of the span of the values: rounding in the file
constexpr double FinestReading = 1e-5;   // signal units
constexpr std::size_t Neighbours = 8;
constexpr std::size_t Around = 20;
constexpr std::size_t FewestForSpikes = 30;

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

// --- the gradient ----------------------------------------------------------------------------------------

constexpr std::size_t Terms = 9; // of the polynomial
using Powers = std::array<double, Terms>;

// Legendre polynomials at the place of a radius between -1 and 1, which keep the equations well apart.
Powers PowersAt(double t) {
    Powers p{1.0, t};
    for (std::size_t k = 2; k < Terms; ++k) {
        const auto n = static_cast<double>(k);
        p[k] = ((2.0 * n - 1.0) * t * p[k - 1] - (n - 1.0) * p[k - 2]) / n;
    }
    return p;
}

std::vector<Powers> PowersOf(const std::vector<double>& x) {
    const auto [low, high] = std::minmax_element(x.begin(), x.end());
    const double half = std::max((*high - *low) / 2.0, 1e-9);
    std::vector<Powers> powers;
    for (const double each : x)
        powers.push_back(PowersAt((each - *low) / half - 1.0));
    return powers;
}

// Solves equations of Terms rows, the right side in the last column, by elimination.
Powers Solve(std::array<std::array<double, Terms + 1>, Terms> m) {
    for (std::size_t k = 0; k < Terms; ++k) {
        for (std::size_t i = k + 1; i < Terms && m[k][k] != 0.0; ++i) {
            const double factor = m[i][k] / m[k][k];
            for (std::size_t j = k; j <= Terms; ++j)
                m[i][j] -= factor * m[k][j];
        }
    }
    Powers solution{};
    for (std::size_t k = Terms; k-- > 0;) {
        double rest = m[k][Terms];
        for (std::size_t j = k + 1; j < Terms; ++j)
            rest -= m[k][j] * solution[j];
        solution[k] = m[k][k] != 0.0 ? rest / m[k][k] : 0.0;
    }
    return solution;
}

double ValueAt(const Powers& coefficients, const Powers& powers) {
    double sum = 0.0;
    for (std::size_t k = 0; k < Terms; ++k)
        sum += coefficients[k] * powers[k];
    return sum;
}

// Weighted least squares.
Powers FitPolynomial(const std::vector<Powers>& powers, const std::vector<double>& y,
                     const std::vector<double>& weights) {
    std::array<std::array<double, Terms + 1>, Terms> sums{};
    for (std::size_t i = 0; i < y.size(); ++i)
        for (std::size_t a = 0; a < Terms; ++a) {
            const double weighted = weights[i] * powers[i][a];
            for (std::size_t b = 0; b < Terms; ++b)
                sums[a][b] += weighted * powers[i][b];
            sums[a][Terms] += weighted * y[i];
        }
    return Solve(sums);
}

// What is left without the gradient. Points far off lose their weight round by round, which leads from the
// least sum of squares to that of absolute values.
std::vector<double> WithoutGradient(const Readings& r) {
    constexpr int rounds = 5;
    const std::vector<Powers> powers = PowersOf(r.X);
    std::vector<double> weights(r.Y.size(), 1.0), rest(r.Y.size());
    for (int round = 0; round < rounds; ++round) {
        const Powers coefficients = FitPolynomial(powers, r.Y, weights);
        for (std::size_t i = 0; i < rest.size(); ++i)
            rest[i] = r.Y[i] - ValueAt(coefficients, powers[i]);
        std::vector<double> sizes = rest;
        for (double& size : sizes)
            size = std::fabs(size);
        const double usual = std::max(Median(sizes), 1e-12);
        for (std::size_t i = 0; i < rest.size(); ++i)
            weights[i] = 1.0 / std::max(std::fabs(rest[i]), usual);
    }
    return rest;
}

// --- the line of the neighbours --------------------------------------------------------------------------

std::vector<std::size_t> NeighboursOf(std::size_t i, std::size_t size) {
    std::vector<std::size_t> near;
    EachNeighbour(i, Neighbours, size, [&](std::size_t k) { near.push_back(k); });
    return near;
}

double MedianSlope(const Readings& r, const std::vector<std::size_t>& near) {
    std::vector<double> slopes;
    for (std::size_t a = 0; a < near.size(); ++a)
        for (std::size_t b = a + 1; b < near.size(); ++b)
            if (r.X[near[a]] != r.X[near[b]])
                slopes.push_back((r.Y[near[b]] - r.Y[near[a]]) / (r.X[near[b]] - r.X[near[a]]));
    return Median(slopes);
}

// The root of 1 + 1/n + (x - mean)^2 / S: the noise of a reading's distance from the line of n others, over
// that of a reading.
double NoiseOfDistance(const Readings& r, std::size_t i, const std::vector<std::size_t>& near) {
    double mean = 0.0, squares = 0.0;
    for (const std::size_t k : near)
        mean += r.X[k] / static_cast<double>(near.size());
    for (const std::size_t k : near)
        squares += (r.X[k] - mean) * (r.X[k] - mean);
    const double away = r.X[i] - mean;
    return std::sqrt(1.0 + 1.0 / static_cast<double>(near.size()) +
                     (squares > 0.0 ? away * away / squares : 0.0));
}

double OffLine(const Readings& r, std::size_t i) {
    const std::vector<std::size_t> near = NeighboursOf(i, r.X.size());
    const double slope = MedianSlope(r, near);
    std::vector<double> heights;
    for (const std::size_t k : near)
        heights.push_back(r.Y[k] + slope * (r.X[i] - r.X[k]));
    return std::fabs(r.Y[i] - Median(heights)) / NoiseOfDistance(r, i, near);
}

// Of the readings next to one, by their distances from their lines.
double NoiseAround(const std::vector<double>& off, std::size_t i) {
    std::vector<double> near;
    EachNeighbour(i, Around, off.size(), [&](std::size_t k) { near.push_back(off[k]); });
    return MedianToSigma * Median(near);
}

double Span(const std::vector<double>& numbers) {
    const auto [low, high] = std::minmax_element(numbers.begin(), numbers.end());
    return *high - *low;
}

// --- where the noise grows -------------------------------------------------------------------------------

constexpr std::size_t Window = 12; // differences that a median is taken of
constexpr double Grown = 2.5;      // times what it is in the lower half

// Of four readings in a row: their mean, and the third difference, which knows nothing of a smooth gradient.
struct Difference {
    double Signal, Size;
};

// By rising signal.
std::vector<Difference> ThirdDifferences(const OneBased<float>& signals, long first, long last) {
    std::vector<Difference> differences;
    for (long p = first; p + 3 <= last; ++p) {
        const auto y = [&](long q) { return static_cast<double>(signals[q]); };
        differences.push_back({(y(p) + y(p + 1) + y(p + 2) + y(p + 3)) / 4.0,
                               std::fabs(y(p) - 3.0 * y(p + 1) + 3.0 * y(p + 2) - y(p + 3))});
    }
    std::sort(differences.begin(), differences.end(),
              [](const Difference& a, const Difference& b) { return a.Signal < b.Signal; });
    return differences;
}

double MedianDifference(const std::vector<Difference>& differences, std::size_t begin, std::size_t end) {
    std::vector<double> sizes;
    for (std::size_t i = begin; i < end; ++i)
        sizes.push_back(differences[i].Size);
    return Median(sizes);
}

// From where on, in the upper half, every window is noisier than the lower half; behind the last one where
// none is.
std::size_t BeginOfNoise(const std::vector<Difference>& differences) {
    const std::size_t half = differences.size() / 2;
    const double quiet = MedianDifference(differences, 0, half);
    std::size_t begin = differences.size();
    while (begin >= half + Window && MedianDifference(differences, begin - Window, begin) > Grown * quiet)
        --begin;
    return begin;
}

} // namespace

std::vector<long> FindSpikes(const OneBased<float>& radii, const OneBased<float>& values, long first,
                             long last) {
    Readings r = Stretch(radii, values, first, last);
    if (r.X.size() < FewestForSpikes) return {};
    const double least = std::max(LeastNoise * Span(r.Y), FinestReading);
    r.Y = WithoutGradient(r);
    std::vector<double> off;
    for (std::size_t i = 0; i < r.X.size(); ++i)
        off.push_back(OffLine(r, i));
    const double noise = std::max(least, MedianToSigma * Median(off));
    std::vector<long> spikes;
    for (std::size_t i = 0; i < off.size(); ++i)
        if (off[i] > Deviations * std::max(noise, NoiseAround(off, i)))
            spikes.push_back(first + static_cast<long>(i));
    return spikes;
}

float ProposeCeiling(const OneBased<float>& signals, long first, long last) {
    const std::vector<Difference> differences = ThirdDifferences(signals, first, last);
    if (differences.size() < 4 * Window) return 0.0F;
    const std::size_t begin = BeginOfNoise(differences);
    if (begin == differences.size()) return 0.0F;
    const double signal = differences[begin > Window ? begin - Window / 2 : 0].Signal;
    return signal > 0.0 ? static_cast<float>(std::floor(100.0 * signal) / 100.0) : 0.0F;
}

float ProposeCeilingOf(RowNo row, long first, long last) {
    OneBased<float> signals(last);
    BaselinePlace baseline;
    for (long p = first; p <= last; ++p)
        signals[p] =
            static_cast<float>(SignalOf(row, Work.ScanRadius[row][p], Work.ScanValue[row][p], baseline));
    return ProposeCeiling(signals, first, last);
}

} // namespace Quillon
