// Fonts: the family table, font codes, and fonts taken into force on the target.
#include "chart/pens/Fonts.h"

#include "chart/pens/Device.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr std::array<const char*, FontFamilies> Faces = {"Roman", "Modern",      "Times New Roman",
                                                         "Arial", "Courier New", "Symbol"};

constexpr std::array<const char*, FontFamilies> ListNames = {"Roman (plotter)",      "Modern (plotter)",
                                                             "Times New Roman (TT)", "Arial (TT)",
                                                             "Courier New (TT)",     "Symbol (TT)"};

std::size_t FamilyOf(std::int16_t code) {
    return static_cast<std::size_t>(std::min(code & 15, FontFamilies - 1));
}

// The table that says which family the target uses for text in a direction.
const std::array<std::int16_t, 6>& FamilyTable(bool vertical) {
    const ChartStyle& style = Chart.Style;
    if (Chart.Target == Targets::Screen) return vertical ? style.ScreenVFonts : style.ScreenHFonts;
    if (Chart.PlotterFonts != 0) return vertical ? style.PlotterVFonts : style.PlotterHFonts;
    return vertical ? style.PrinterVFonts : style.PrinterHFonts;
}

} // namespace

const char* FontFace(int entry) {
    return Faces[static_cast<std::size_t>(std::clamp(entry, 0, FontFamilies - 1))];
}

std::vector<std::string> FontListNames() {
    std::vector<std::string> names(ListNames.begin(), ListNames.end());
    for (const char* name : ListNames)
        names.push_back(std::string(name) + " Bold");
    return names;
}

int FontListIndex(std::int16_t code) {
    return (code & 15) + FontFamilies * (code / 16);
}

std::int16_t FontCode(int listIndex) {
    return static_cast<std::int16_t>(listIndex % FontFamilies + 16 * (listIndex / FontFamilies));
}

float ClampFontSize(float size) {
    const float most = std::min(size, Chart.State.FontMax);
    return most > Chart.State.FontMin ? most : Chart.State.FontMin; // also where the size is no number
}

TextSize SelectFont(std::int16_t code, float size, int direction) {
    const DrawingSurface& surface = TargetSurface();
    const bool vertical = direction == 1 || direction == 3;
    const double height = static_cast<double>(ClampFontSize(size)) * Chart.State.Diagonal;
    SurfaceFont font;
    font.Face = FontFace(FamilyTable(vertical)[FamilyOf(code)]);
    font.Height = std::max<int>(DeviceUnits(height), 1);
    font.Bold = (code & BoldFont) != 0;
    font.Angle = 90 * (direction & 3);
    surface.SetFont(font);
    return surface.Measure("0");
}

int TextWidth(const std::string& text) {
    return text.empty() ? 0 : TargetSurface().Measure(text).Width;
}

} // namespace Quillon
