#include "chart/records/Colors.h"

#include "chart/records/ChartSeams.h"
#include "platform/Letters.h"
#include "platform/Platform.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Quillon {

namespace {

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

std::string ColorText(ChartColor color) {
    char digits[16] = {};
    const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<std::uint32_t>(color), 16);
    return "&H" + CapitalLetters({digits, end.ptr});
}

bool ReadColorText(const std::string& text, ChartColor& color) {
    if (text.size() < 3 || text[0] != '&' || (text[1] != 'H' && text[1] != 'h')) return false;
    const std::size_t close = text.back() == '&' ? text.size() - 1 : text.size();
    std::uint32_t value = 0;
    const auto read = std::from_chars(text.data() + 2, text.data() + close, value, 16);
    if (read.ec != std::errc{} || read.ptr != text.data() + close || value > 0xFFFFFF) return false;
    color = static_cast<ChartColor>(value);
    return true;
}

} // namespace Quillon
