#include "chart/records/Palettes.h"

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

// black, blue, orange, bluish green, reddish purple, vermilion, sky blue, brown
std::vector<ChartColor> Safe() {
    std::vector<ChartColor> colors;
    for (const std::int32_t rgb :
         {0x000000, 0x0072B2, 0xD47E12, 0x009E73, 0xC17CA8, 0xBB5702, 0x0998F4, 0x8A744C})
        colors.push_back(FromRgb(rgb));
    return colors;
}

} // namespace

const std::vector<Palette>& Palettes() {
    static const std::vector<Palette> palettes = {{"Classic", Classic()}, {"Safe", Safe()}};
    return palettes;
}

void BeginWithSafeColors(bool safe) {
    Kept.ClassicColors = Flag(!safe);
}

const std::vector<ChartColor>& StandardColors() {
    return Palettes()[Kept.ClassicColors != 0 ? 0 : 1].Colors;
}

} // namespace Quillon
