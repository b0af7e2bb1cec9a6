#pragma once
// Colours as the chart keeps them: the 16 basic ones, the form that surfaces take, and their text in
// chart.ini.

#include "platform/Surface.h"

#include <array>
#include <cstdint>
#include <string>

namespace Quillon {

// A colour as chart.ini and graph files keep it: 0x00BBGGRR.
using ChartColor = std::int32_t;

// The 16 basic colours: 0 black, 1 to 6 dark blue, green, cyan, red, magenta, yellow, 7 light grey, 8 grey,
// 9 to 14 the bright ones in the same order, 15 white.
ChartColor BasicColor(int index); // the low four bits count

// The surface's form of a colour.
Rgb ToRgb(ChartColor color);

// The colours that sets take in turn, unless chart.ini has others.
inline constexpr std::array<std::int16_t, 14> DefaultColorOrder = {0, 9, 10, 11, 12, 13, 8,
                                                                   1, 2, 3,  4,  5,  6,  14};

// A colour from hue (degrees, 0 to 360), saturation and brightness (0 to 1) by the hexcone model. An argument
// out of range is told in a message, and the colour is black.
ChartColor HSBtoColor(float hue, float saturation, float brightness);

// The text of a colour in chart.ini, "&H" and hexadecimal digits, and back. False when it is none.
std::string ColorText(ChartColor color);
bool ReadColorText(const std::string& text, ChartColor& color);

} // namespace Quillon
