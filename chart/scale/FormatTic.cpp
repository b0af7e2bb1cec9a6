#include "chart/scale/FormatTic.h"

#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/scale/AxisScale.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Quillon {

namespace {

constexpr double LargestPlain = 2147483648.0; // 2^31: whole numbers below it are written out

std::string WholeText(double m) {
    return std::to_string(static_cast<std::int64_t>(m));
}

double PowerOfTen(int places) {
    constexpr double powers[] = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
    return powers[places];
}

// A number that is not negative, with a fixed number of digits behind the mark.
std::string FixedDigits(double m, int decimals) {
    if (decimals <= 0) return WholeText(std::nearbyint(m));
    const double p = PowerOfTen(decimals);
    double w = std::trunc(m);
    const double q = std::nearbyint((1.0 + m - w) * p); // the leading 1 holds the zeros behind the mark
    if (q >= 2.0 * p) w += 1.0;
    return WholeText(w) + Host.DecimalMark() + WholeText(q).substr(1);
}

// The power of ten that leaves one digit before the mark after rounding to the decimals; divides m by it.
int TakeExponent(double& m, int decimals) {
    if (!(m > 0.0)) return 0;
    int e = static_cast<int>(std::floor(LogBase10(m)));
    m = e > -300 ? m / std::pow(10.0, e) : m * 1e300 / std::pow(10.0, e + 300);
    const double p = PowerOfTen(decimals);
    if (std::nearbyint(m * p) >= 10.0 * p) {
        m /= 10.0;
        e += 1;
    }
    return e;
}

bool AnyDigitButZero(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return c >= '1' && c <= '9'; });
}

} // namespace

std::string FormatTic(double value, int decimals, int format) {
    const bool logarithm = Chart.Log10Axis != 0;
    double m = logarithm ? std::pow(10.0, value) : std::fabs(value);
    if (!std::isfinite(m)) return "";
    decimals = std::clamp(decimals, 0, 6);
    const bool plain = format == TicFormats::Decimal && m < LargestPlain;
    const int e = plain ? 0 : TakeExponent(m, decimals);
    std::string text = FixedDigits(m, decimals);
    const bool nothing = !AnyDigitButZero(text);
    if (!plain) text += std::string(e >= 0 ? "E+" : "E") + std::to_string(e);
    return value < 0.0 && !logarithm && !nothing ? "-" + text : text;
}

} // namespace Quillon
