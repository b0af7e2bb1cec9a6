#include "chart/records/Palettes.h"

#include "chart/records/ChartState.h"
#include "chart/records/Cycles.h"
#include "chart/records/Kept.h"
#include "platform/Narrow.h"

namespace Quillon {

namespace {

std::vector<ChartColor> Classic() {
    std::vector<ChartColor> colors;
    for (const std::int16_t index : DefaultColorOrder)
        colors.push_back(BasicColor(index));
    return colors;
}

// Red and blue change places.
constexpr ChartColor FromRgb(std::int32_t rgb) {
    return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

struct NamedColor {
    ChartColor Color;
    Rgb OnDark;
    const char* Name;
};

// Behind black.
constexpr NamedColor SafeColors[] = {
    {FromRgb(0x0072B2), 0x2268EA, "Blue"},         {FromRgb(0xD47E12), 0xFFC62C, "Orange"},
    {FromRgb(0x009E73), 0x38B68A, "Bluish Green"}, {FromRgb(0xC17CA8), 0xC283BA, "Reddish Purple"},
    {FromRgb(0xBB5702), 0xEF2400, "Vermilion"},    {FromRgb(0x0998F4), 0x61E0FF, "Sky Blue"},
    {FromRgb(0x8A744C), 0x877956, "Brown"}};

std::vector<ChartColor> Safe() {
    std::vector<ChartColor> colors{BasicColor(0)};
    for (const NamedColor& each : SafeColors)
        colors.push_back(each.Color);
    return colors;
}

} // namespace

const std::vector<Palette>& Palettes() {
    static const std::vector<Palette> palettes = {{"Classic", Classic()}, {"Safe", Safe()}};
    return palettes;
}

std::string SafeColorName(ChartColor color) {
    for (const NamedColor& each : SafeColors)
        if (each.Color == color) return each.Name;
    return "";
}

std::optional<Rgb> SafeTintOnDark(Rgb color) {
    for (const NamedColor& each : SafeColors)
        if (ToRgb(each.Color) == color) return each.OnDark;
    return {};
}

void BeginWithSafeColors(bool safe) {
    Kept.ClassicColors = Flag(!safe);
}

const std::vector<ChartColor>& StandardColors() {
    return Palettes()[Kept.ClassicColors != 0 ? 0 : 1].Colors;
}

void TakeStandardColors() {
    Chart.Style.ScreenColors = Chart.Style.PrintColors = StandardColors();
    BuildCyclesOfNewColors();
}

} // namespace Quillon
