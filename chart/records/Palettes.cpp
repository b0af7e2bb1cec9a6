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
    const char* Name;
};

// Behind black.
constexpr NamedColor SafeColors[] = {
    {FromRgb(0x0072B2), "Blue"},         {FromRgb(0xD47E12), "Orange"},
    {FromRgb(0x009E73), "Bluish Green"}, {FromRgb(0xC17CA8), "Reddish Purple"},
    {FromRgb(0xBB5702), "Vermilion"},    {FromRgb(0x0998F4), "Sky Blue"},
    {FromRgb(0x8A744C), "Brown"}};

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
