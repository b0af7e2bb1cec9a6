#pragma once
// Whole tables of colours by which sets are told apart.

#include "chart/records/Colors.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

struct Palette {
    const char* Name;
    std::vector<ChartColor> Colors; // by cycle index; the first one, black, is that of texts and axes too
};

// The palettes that are offered, the engine's own one first: "Classic", the 14 of DefaultColorOrder, and
// "Safe", eight colours that keep apart on white. Each of these is a line of contrast 3 : 1 or more on white
// (W3C, WCAG 2.1, relative luminance); any two are more than 10 apart by CIEDE2000 (CIE 142-2001), neighbours
// more than 15, to a full eye and with no red, green or blue receptors (Machado, Oliveira and Fernandes, IEEE
// Trans. Vis. Comput. Graph. 15 (2009) 1291, severity 1). They are those of Okabe and Ito (2008) and a brown,
// of which orange, sky blue, vermilion and purple had to be made darker. [decision: safe-colors]
const std::vector<Palette>& Palettes();

// What a colour of the safe palette is called, "Sky Blue"; "" for another colour, and for black, which is a
// basic one.
std::string SafeColorName(ChartColor color);

// What stands for a colour of the safe palette on the dark canvas, where turned lightness brings orange and
// vermilion together: a tint of much its hue, of contrast 3.3 : 1 or more on that ground; any two of these
// and white, which stands for black, are more than 13 apart by CIEDE2000 to each of those eyes, neighbours
// more than 20, and any two more than 24 to a full one. Nothing for another colour.
std::optional<Rgb> SafeTintOnDark(Rgb color);

// Says which of them tables begin with where chart.ini does not: before the first graph.
void BeginWithSafeColors(bool safe);

// The colours that a table begins with while Kept.ClassicColors is as it is.
const std::vector<ChartColor>& StandardColors();

// The tables of the graph at hand become those, for screen and print, and its cycles go by them.
void TakeStandardColors();

} // namespace Quillon
