// The style cycles, by which sets are told apart, and colours.
#include "chart/CHART.h"
#include "chart/Device.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

template <class T> T Nth(const std::vector<T>& order, int i) {
    return order.empty() ? T{} : order[static_cast<std::size_t>(i) % order.size()];
}

ChartColor FromParts(double red, double green, double blue) {
    const auto part = [](double value) { return static_cast<ChartColor>(std::nearbyint(255.0 * value)); };
    return part(red) | part(green) << 8 | part(blue) << 16;
}

ChartColor Invalid(const char* what) {
    Tell(std::string("Invalid ") + what + " Value", ProgramTitle(), BoxIcon::Warning);
    return 0;
}

} // namespace

ChartColor BasicColor(int index) {
    static constexpr std::array<ChartColor, 16> colors = {
        0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
        0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
    return colors[static_cast<std::size_t>(index & 15)];
}

Rgb ToRgb(ChartColor color) {
    const Rgb c = static_cast<Rgb>(color);
    return (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
}

void BuildCycles() {
    const bool screen = Chart.Target == Targets::Screen;
    const ChartStyle& style = Chart.Style;
    const std::vector<ChartColor>& colors = screen ? style.ScreenColors : style.PrintColors;
    const bool two = !screen && HasSurface() && !TargetSurface().HasColor() && Chart.UseColorOnBW == 0;
    const int count = std::max(1, static_cast<int>(std::min<std::size_t>(colors.size(), two ? 2 : 32767)));
    Chart.State.NColors = ToInt16(count);
    StyleCycles& cycles = Chart.Cycles;
    for (int i = 0; i <= CycleLen; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int round = i / count; // how often the colours have run out
        cycles.Symbol[at] = Nth(style.SymbolOrder, i);
        cycles.Color[at] = Nth(colors, i % count);
        cycles.Pattern[at] = i == 0 ? std::int16_t{0} : Nth(style.PatternStyleOrder, i);
        cycles.Line[at] = i == 0 ? std::int16_t{0} : Nth(style.LineStyleOrder, round % 5);
        cycles.Border[at] = i == 0 ? std::int16_t{0} : Nth(style.BorderStyleOrder, round % 5);
        cycles.Line2[at] = Nth(style.LineStyleOrder, i % 5);
    }
    Chart.State.CyclesBuilt = 1;
}

ChartColor HSBtoColor(float hue, float saturation, float brightness) {
    if (!(hue >= 0.0F && hue <= 360.0F)) return Invalid("Hue");
    if (!(saturation >= 0.0F && saturation <= 1.0F)) return Invalid("Saturation");
    if (!(brightness >= 0.0F && brightness <= 1.0F)) return Invalid("Brightness");
    const double b = brightness;
    const double s = saturation;
    if (s == 0.0) return FromParts(b, b, b);
    const double m2 = b <= 0.5 ? b * (1.0 + s) : b + s - b * s;
    const double m1 = 2.0 * b - m2;
    // A part of the colour is full for 120 degrees about its own hue and falls off over 60 on either side.
    const auto part = [&](double ownHue) {
        const double apart = std::fabs(static_cast<double>(hue) - ownHue);
        const double h = std::min(apart, 360.0 - apart);
        if (h <= 60.0) return m2;
        return h >= 120.0 ? m1 : m1 + (m2 - m1) * (120.0 - h) / 60.0;
    };
    return FromParts(part(0.0), part(120.0), part(240.0));
}

} // namespace Quillon
