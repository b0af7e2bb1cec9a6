#include "studies/methods/BlockLength.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// R(k) = sum of (e(i) - mean) (e(i + k) - mean) over n, for k = 0..last.
std::vector<double> Autocovariances(const std::vector<double>& e, std::size_t last) {
    const auto n = static_cast<double>(e.size());
    double mean = 0.0;
    for (const double value : e)
        mean += value / n;
    std::vector<double> R(last + 1);
    for (std::size_t k = 0; k <= last; ++k)
        for (std::size_t i = 0; i + k < e.size(); ++i)
            R[k] += (e[i] - mean) * (e[i + k] - mean) / n;
    return R;
}

// The lag behind which so many autocorrelations in a row are below the noise of their estimate.
std::size_t LagOfLast(const std::vector<double>& R, double noise, std::size_t inARow) {
    for (std::size_t m = 0; m + inARow < R.size(); ++m) {
        bool vanished = true;
        for (std::size_t k = 1; k <= inARow; ++k)
            vanished = vanished && std::fabs(R[m + k]) < noise * R[0];
        if (vanished) return m;
    }
    return R.size() - 1 - inARow;
}

// The flat-topped window of the estimate.
double WindowAt(double t) {
    return t <= 0.5 ? 1.0 : std::max(0.0, 2.0 * (1.0 - t));
}

} // namespace

long BlockLength(const std::vector<double>& residuals) {
    constexpr std::size_t Fewest = 10; // fewer tell nothing of their neighbourhood
    if (residuals.size() < Fewest) return 1;
    const auto n = static_cast<double>(residuals.size());
    const std::size_t inARow = std::max<std::size_t>(5, static_cast<std::size_t>(std::sqrt(std::log10(n))));
    const std::size_t longest =
        std::min(residuals.size() - 1, static_cast<std::size_t>(std::sqrt(n)) + 1 + inARow);
    const std::vector<double> R = Autocovariances(residuals, longest);
    double square = 0.0;
    for (const double e : residuals)
        square += e * e / n;
    constexpr double Rounding = 1e-12; // of their size: residuals that are all alike
    if (!(R[0] > Rounding * square) || longest <= inARow) return 1;
    const std::size_t m = LagOfLast(R, 2.0 * std::sqrt(std::log10(n) / n), inARow);
    if (m == 0) return 1;
    const std::size_t M = std::min(2 * m, longest);
    double g = R[0], G = 0.0;
    for (std::size_t k = 1; k <= M; ++k) {
        const double weighted = 2.0 * WindowAt(static_cast<double>(k) / static_cast<double>(M)) * R[k];
        g += weighted;
        G += weighted * static_cast<double>(k);
    }
    const double D = 4.0 / 3.0 * g * g;
    const double most = std::min(3.0 * std::sqrt(n), n / 3.0);
    if (!(D > 0.0)) return static_cast<long>(most);
    const double best = std::cbrt(2.0 * G * G / D * n);
    return static_cast<long>(std::ceil(std::clamp(best, 1.0, most)));
}

long BlockForLimits(const std::vector<double>& residuals) {
    const long block = BlockLength(residuals);
    const long most = std::max(block, static_cast<long>(residuals.size()) / 3);
    return block == 1 ? 1 : std::min(2 * block, most);
}

double BlockStretch(long block, long points) {
    if (block <= 1) return 1.0;
    const double b = static_cast<double>(block) / static_cast<double>(points);
    return 1.0 + b * (1.515 + b * (0.212 - b * 0.272));
}

} // namespace Quillon
