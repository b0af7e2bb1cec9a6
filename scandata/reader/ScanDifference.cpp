#include "scandata/reader/ScanDifference.h"

#include "scandata/reader/ReadingsAlong.h"

#include <cmath>

namespace Quillon {

namespace {

constexpr long FewestReadings = 3;

bool IsWithin(float radius, float inner, float outer) {
    return radius >= inner && radius <= outer;
}

} // namespace

std::optional<double> NoiseBetween(const ScanReadings& scan, float inner, float outer) {
    const auto value = [&](long p) { return static_cast<double>(scan.Values[p]); };
    double sum = 0.0;
    long count = 0; // of second differences: two fewer than readings
    for (long p = 2; p < scan.Radii.Hi(); ++p) {
        if (!IsWithin(scan.Radii[p - 1], inner, outer) || !IsWithin(scan.Radii[p + 1], inner, outer))
            continue;
        const double bend = value(p - 1) - 2.0 * value(p) + value(p + 1);
        sum += bend * bend;
        ++count;
    }
    if (count + 2 < FewestReadings) return {};
    return std::sqrt(sum / (6.0 * static_cast<double>(count)));
}

std::optional<double> RmsFrom(const ScanReadings& last, const ScanReadings& scan, float inner, float outer) {
    ReadingsAlong<float> along{scan.Radii, scan.Values};
    double sum = 0.0;
    long count = 0;
    for (long p = 1; p <= last.Radii.Hi(); ++p) {
        if (!IsWithin(last.Radii[p], inner, outer)) continue;
        const std::optional<double> other = along(last.Radii[p]);
        if (!other) continue;
        const double difference = *other - static_cast<double>(last.Values[p]);
        sum += difference * difference;
        ++count;
    }
    if (count < FewestReadings) return {};
    return std::sqrt(sum / static_cast<double>(count));
}

} // namespace Quillon
