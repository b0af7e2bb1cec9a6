#include "fit/LongWaves.h"

#include "platform/Four.h"
#include "platform/VectorWidth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <numbers>

namespace Quillon {

namespace {

constexpr std::size_t LongOnes = 6;
constexpr std::size_t UpToMiddle = 30;

using Amplitudes = std::array<double, UpToMiddle>;

void FitTo(FirstWave& wave, std::size_t points) {
    if (wave.Cosines.size() == points) return;
    wave.Cosines.resize(points);
    const double step = std::numbers::pi / static_cast<double>(points);
    for (std::size_t i = 0; i < points; ++i)
        wave.Cosines[i] = std::cos(step * (static_cast<double>(i) + 0.5));
}

// Four values from a place on, with zeros behind the last one.
void TakeFour(const std::vector<double>& values, std::size_t first, Four& four) {
    const std::size_t left = std::min(values.size() - first, std::size_t{VectorLength});
    four = Four{};
    if (left == VectorLength)
        std::memcpy(&four, &values[first], sizeof four);
    else
        for (std::size_t i = 0; i < left; ++i)
            four[i] = values[first + i];
}

// The sums of r_i cos(k x_i), each cosine from the two before it: cos k x = 2 cos x cos (k-1) x - cos (k-2)
// x. Every fourth residual has a sum of its own.
Amplitudes SumsOfCosines(const std::vector<double>& residuals, const FirstWave& wave, std::size_t waves) {
    Four sums[UpToMiddle] = {};
    OnVectors([&] {
        for (std::size_t i = 0; i < residuals.size(); i += VectorLength) {
            Four residual, first;
            TakeFour(residuals, i, residual);
            TakeFour(wave.Cosines, i, first);
            Four before = first, now = {1.0, 1.0, 1.0, 1.0}; // cos(-x) and cos 0
            for (std::size_t k = 0; k < waves; ++k) {
                sums[k] += residual * now;
                const Four next = 2.0 * first * now - before;
                before = now;
                now = next;
            }
        }
    });
    Amplitudes amplitudes{};
    for (std::size_t k = 0; k < waves; ++k)
        amplitudes[k] = (sums[k][0] + sums[k][1]) + (sums[k][2] + sums[k][3]);
    return amplitudes;
}

double SumOfSquares(const std::vector<double>& residuals) {
    double sum = 0.0;
    for (const double r : residuals)
        sum += r * r;
    return sum;
}

} // namespace

Waves WavesOf(const std::vector<double>& residuals, FirstWave& wave) {
    const std::size_t points = residuals.size();
    const std::size_t longOnes = std::min(LongOnes, points / 4);
    const std::size_t known = std::min(UpToMiddle, points);
    FitTo(wave, points);
    const Amplitudes sums = SumsOfCosines(residuals, wave, known);
    const auto n = static_cast<double>(points);
    Waves waves;
    for (std::size_t k = 0; k < known; ++k)
        (k < longOnes ? waves.Long : waves.Middle).Add({sums[k] * sums[k] * (k == 0 ? 1.0 : 2.0) / n, 1.0});
    waves.Others.Sum = std::max(0.0, SumOfSquares(residuals) - waves.Long.Sum);
    waves.Others.Count = n - waves.Long.Count;
    return waves;
}

double DeviationsAbove(const WaveSquares& squares, const WaveSquares& noise) {
    if (!(squares.Sum > 0.0) || !(noise.Count > 0.0)) return 0.0;
    if (!(noise.Sum > 0.0)) return std::numeric_limits<double>::infinity();
    const double own = 2.0 / (9.0 * squares.Count);
    const double others = 2.0 / (9.0 * noise.Count);
    const double root = std::cbrt(squares.Mean() / noise.Mean());
    return ((1.0 - others) * root - (1.0 - own)) / std::sqrt(others * root * root + own);
}

} // namespace Quillon
