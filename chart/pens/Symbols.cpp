#include "chart/pens/Symbols.h"

#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"

#include <cmath>

namespace Quillon {

namespace {

enum SymbolCode : std::int16_t {
    Plus = 0,
    SolidDiamond = 1,
    SolidSquare = 3,
    SolidCircle = 5,
    SolidUp = 7,
    SolidDown = 9,
    SolidLeft = 11,
    SolidRight = 13,
    DiamondPlus = 15,
    CrossedLines = 16,
    SquareCross = 17
};

constexpr double SquarePart = 0.8; // a square of the full half width would look larger than the circle

bool Solid(std::int16_t code) {
    return code >= SolidDiamond && code <= SolidRight && code % 2 == 1;
}

int Part(int half) {
    return static_cast<int>(std::nearbyint(half * SquarePart));
}

void DrawShape(const std::vector<DevicePoint>& corners) {
    TargetSurface().Polygon(corners);
}

void DrawPlus(int x, int y, int r, int h) {
    const DrawingSurface& surface = TargetSurface();
    surface.Line(x - r, y, x + r, y);
    surface.Line(x, y + h, x, y - h);
}

void DrawCross(int x, int y, int r, int h) {
    const DrawingSurface& surface = TargetSurface();
    surface.Line(x - r, y - h, x + r, y + h);
    surface.Line(x - r, y + h, x + r, y - h);
}

void DrawDiamond(int x, int y, int r, int h) {
    DrawShape({{x - r, y}, {x, y + h}, {x + r, y}, {x, y - h}});
}

void DrawSquare(int x, int y, int a, int b) {
    DrawShape({{x - a, y - b}, {x + a, y - b}, {x + a, y + b}, {x - a, y + b}});
}

} // namespace

std::int16_t SymbolOf(int set) {
    if (const SetLook* look = LookOf(set)) return Chart.Cycles.Symbol[CyclePlace(look->Dash)];
    const bool own = Alternating() && NumberOfSet(set) == 0;
    return Chart.Cycles.Symbol[CyclePlace(own ? set - 1 : SetIndex(set))];
}

void SelectSymbolPen(int set, std::int16_t code) {
    const Rgb color = SetColor(set);
    SelectPen(color, PenWidth(Chart.Style.SymbolWidth));
    if (Solid(code))
        TargetSurface().SetBrush({BrushKind::Solid, color});
    else if (Chart.Target == Targets::Metafile)
        SelectNoBrush();
    else
        TargetSurface().SetBrush({BrushKind::Solid, BoxColor(Chart.Spec.Frame)});
}

void DrawSymbol(int x, int y, std::int16_t code) {
    const int r = Chart.State.SymbolHalfX;
    const int h = Chart.State.SymbolHalfY;
    // An open shape has the number behind that of the solid one.
    switch (code == Plus || code >= DiamondPlus ? code : static_cast<std::int16_t>(code - (code + 1) % 2)) {
    case SolidDiamond:
        return DrawDiamond(x, y, r, h);
    case SolidSquare:
        return DrawSquare(x, y, Part(r), Part(h));
    case SolidCircle:
        return TargetSurface().Ellipse({x - r, y - h, x + r, y + h});
    case SolidUp:
        return DrawShape({{x, y - h - 1}, {x + r, y + h - 1}, {x - r, y + h - 1}});
    case SolidDown:
        return DrawShape({{x, y + h + 1}, {x - r, y - h + 1}, {x + r, y - h + 1}});
    case SolidLeft:
        return DrawShape({{x - r - 1, y}, {x + r - 1, y - h}, {x + r - 1, y + h}});
    case SolidRight:
        return DrawShape({{x - r + 1, y - h}, {x + r + 1, y}, {x - r + 1, y + h}});
    case DiamondPlus:
        DrawDiamond(x, y, r, h);
        return DrawPlus(x, y, r, h);
    case CrossedLines:
        return DrawCross(x, y, r, h);
    case SquareCross:
        DrawSquare(x, y, Part(r), Part(h));
        return DrawCross(x, y, Part(r), Part(h));
    default:
        return DrawPlus(x, y, r, h);
    }
}

void DrawPoint(int x, int y, std::int16_t code) {
    // Some symbols are drawn in any case: those that alternating sets consist of, and the few along lines.
    const std::int16_t mode = Chart.Spec.SymbolMode == 3 ? std::int16_t{1} : Chart.Spec.SymbolMode;
    if (mode == 0 || mode == 1) DrawSymbol(x, y, code);
    if (mode == 0 || mode == 2) TargetSurface().Line(x, y, x, y);
}

} // namespace Quillon
