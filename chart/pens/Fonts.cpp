// Fonts: the family table, font codes, and fonts taken into force on the target.
#include "chart/pens/Fonts.h"

#include "chart/pens/Device.h"
#include "chart/pens/RaisedText.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"

#include <algorithm>
#include <cmath>

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

// The font in force, from which that of exponents is made.
SurfaceFont InForce;

SurfaceFont RaisedFont() {
    SurfaceFont font = InForce;
    font.Height = std::max(static_cast<int>(std::nearbyint(InForce.Height * RaisedHeight)), 1);
    return font;
}

bool MayHoldExponents(const std::string& text) {
    return text.find('^') != std::string::npos && InForce.Face != Faces[SymbolFamily];
}

// The stroke fonts of plotters end at the letters of ASCII.
std::vector<TextPiece> PiecesInForce(const std::string& text) {
    return PiecesOf(text, InForce.Face != Faces[0] && InForce.Face != Faces[1]);
}

// Does something with each piece while its font is in force on the surface.
template <class Take> void ForPieces(const std::string& text, const Take& take) {
    const DrawingSurface& surface = TargetSurface();
    bool raised = false;
    for (const TextPiece& piece : PiecesInForce(text)) {
        if (piece.Raised != raised) surface.SetFont(piece.Raised ? RaisedFont() : InForce);
        raised = piece.Raised;
        take(piece);
    }
    if (raised) surface.SetFont(InForce);
}

// The place that lies so far along the line of text and above it.
DevicePoint Along(DevicePoint from, int along, int above) {
    switch (InForce.Angle) {
    case 90:
        return {from.X - above, from.Y - along};
    case 180:
        return {from.X - along, from.Y + above};
    case 270:
        return {from.X + above, from.Y + along};
    default:
        return {from.X + along, from.Y - above};
    }
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
    InForce = font;
    surface.SetFont(font);
    return surface.Measure("0");
}

int TextWidth(const std::string& text) {
    if (text.empty()) return 0;
    const DrawingSurface& surface = TargetSurface();
    if (!MayHoldExponents(text)) return surface.Measure(text).Width;
    int width = 0;
    ForPieces(text, [&](const TextPiece& piece) { width += surface.Measure(piece.Text).Width; });
    return width;
}

void PaintText(int x, int y, const std::string& text) {
    const DrawingSurface& surface = TargetSurface();
    if (!MayHoldExponents(text)) return surface.Text(x, y, text);
    const int rise = static_cast<int>(std::nearbyint(InForce.Height * RaisedBy));
    DevicePoint place{x, y};
    ForPieces(text, [&](const TextPiece& piece) {
        const DevicePoint start = Along(place, 0, piece.Raised ? rise : 0);
        surface.Text(start.X, start.Y, piece.Text);
        place = Along(place, surface.Measure(piece.Text).Width, 0);
    });
}

} // namespace Quillon
