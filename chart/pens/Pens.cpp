#include "chart/pens/Pens.h"

#include "chart/pens/DashLine.h"
#include "chart/pens/Device.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Colors.h"
#include "chart/records/Cycles.h"
#include "chart/records/Kept.h"
#include "chart/records/Palettes.h"
#include "chart/records/Records.h"
#include "chart/records/SetLooks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace Quillon {

namespace {

bool Rainbow() {
    return Chart.Style.UseRainbowColors != 0 && Chart.State.Nsets >= 2;
}

// The least width that shows: 4.36 twips above 360 dots per inch, one unit below. A display of finer units
// than usual takes as many of them as make up a usual one, so that grids and symbols look alike on all
// displays.
int LeastWidth() {
    if (Chart.PlotterFonts != 0) return 0;
    const double pix = Chart.PixY;
    if (Chart.Target == Targets::Screen) return std::max(1, static_cast<int>(std::nearbyint(pix * 15.0)));
    return pix > 0.25 ? static_cast<int>(std::nearbyint(pix * 4.36)) : 1;
}

int Units(float twips) {
    return DeviceUnits(static_cast<double>(twips) * static_cast<double>(Chart.PixY));
}

// From violet for the first set to red for the last one, or by the numbers of sets where they have some.
ChartColor RainbowColor(int set) {
    const int number = NumberOfSet(set);
    int last = Chart.State.Nsets;
    if (number > 0) last = *std::max_element(Chart.SetFlags.begin(), Chart.SetFlags.end()) - NumberMark;
    const int place = number == 0 ? set : number;
    const double index = std::nearbyint((place - 1) * 10000.0 / std::max(last - 1, 1));
    const double hue = (10000.0 - std::clamp(index, 0.0, 10000.0)) * 280.0 / 10000.0;
    return HSBtoColor(static_cast<float>(hue), 1.0F, 0.5F);
}

// Without colours the dash style changes with each line. Where sets alternate, only every second index is
// that of a line, so that these are counted; with colours they are not, since there the dash style changes
// when the colours have run out.
std::int16_t DashOf(int index, bool alternating) {
    if (Chart.Style.DashedLines == 0) return 0;
    if (Chart.ColorDevice != 0) return Chart.Cycles.Line[CyclePlace(index)];
    return Chart.Cycles.Line2[CyclePlace(alternating ? index / 2 : index)];
}

using Parts = std::array<int, 3>; // red, green, blue, 0 to 255

Rgb Joined(const Parts& part) {
    return static_cast<Rgb>(part[0] << 16 | part[1] << 8 | part[2]);
}

// Relative luminance (W3C, WCAG 2.1), 0 to 1.
double Luminance(const Parts& part) {
    const auto linear = [](int value) {
        const double v = value / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(part[0]) + 0.7152 * linear(part[1]) + 0.0722 * linear(part[2]);
}

Rgb OnTarget(Rgb color) {
    return Chart.Target == Targets::Screen && Kept.DarkCanvas != 0 ? OnDarkCanvas(color) : color;
}

} // namespace

bool Alternating() {
    const std::int16_t type = Chart.Spec.GraphType;
    const bool lines = type == GraphTypes::XYPlot || type == GraphTypes::CategoryLines;
    return lines && Chart.Spec.PlotStyle == PlotStyles::Alternating;
}

std::size_t CyclePlace(int index) {
    const int length = CycleLen + 1;
    return static_cast<std::size_t>((index % length + length) % length);
}

Rgb OnDarkCanvas(Rgb color) {
    constexpr int ground = 30;
    if (const std::optional<Rgb> tint = SafeTintOnDark(color)) return *tint;
    Parts part{};
    for (unsigned i = 0; i < 3; ++i)
        part[i] = static_cast<int>(color >> (16U - 8U * i) & 0xFFU);
    const int turn =
        255 - *std::max_element(part.begin(), part.end()) - *std::min_element(part.begin(), part.end());
    for (int& each : part)
        each = ground + (each + turn) * (255 - ground) / 255;
    if (color == 0xFFFFFF || color == 0xC0C0C0) return Joined(part); // grounds and grids stay behind
    while (Luminance(part) + 0.05 < 3.0 * (Luminance({ground, ground, ground}) + 0.05))
        for (int& each : part)
            each += (255 - each + 15) / 16;
    return Joined(part);
}

Rgb CanvasColor() {
    return OnTarget(0xFFFFFF);
}

Rgb TargetColor(ChartColor color) {
    constexpr Rgb white = 0xFFFFFF;
    const Rgb rgb = ToRgb(color);
    return OnTarget(Chart.ColorDevice != 0 || rgb == white ? rgb : 0);
}

Rgb CycleColor(int index) {
    return TargetColor(Chart.Cycles.Color[CyclePlace(index)]);
}

Rgb BoxColor(const GraphBox& box) {
    return OnTarget(ToRgb(BasicColor(Chart.ColorDevice != 0 ? box.Color : 15)));
}

int NumberOfSet(int set) {
    if (set < 1 || set > Chart.SetFlags.Hi()) return 0;
    const int number = Chart.SetFlags[set] - NumberMark;
    return number >= 1 && number <= CycleLen + 1 ? number : 0;
}

const SetLook* LookOf(int set) {
    const auto place = static_cast<std::size_t>(set - 1);
    if (Chart.Looks.Sets.empty() || set < 1) return nullptr;
    if (place < Chart.Looks.Sets.size()) return &Chart.Looks.Sets[place];
    const std::size_t entry = place - Chart.Looks.Sets.size();
    return entry < Chart.Looks.Legend.size() ? &Chart.Looks.Legend[entry].Look : nullptr;
}

bool DashesRunOut() {
    const int styles = Chart.Style.DashedLines != 0 ? 5 : 1; // 0 solid, 1 to 4 the patterns
    return std::any_of(Chart.Looks.Sets.begin(), Chart.Looks.Sets.end(),
                       [styles](const SetLook& look) { return look.Dash >= styles; });
}

int SetIndex(int set) {
    if (const int number = NumberOfSet(set); number > 0) return number - 1;
    const int colors = std::max<int>(Chart.State.NColors, 1);
    const int index = Alternating() && set % 2 == 1 ? set - 1 + (set - 1) / colors : set - 1;
    return static_cast<int>(CyclePlace(index));
}

Rgb SetColor(int set) {
    if (const SetLook* look = LookOf(set)) return look->Color < 0 ? TargetColor(0) : CycleColor(look->Color);
    return Rainbow() ? TargetColor(RainbowColor(set)) : CycleColor(SetIndex(set));
}

int PenWidth(float twips) {
    return Chart.PlotterFonts != 0 ? 0 : std::max(Units(twips), LeastWidth());
}

int SetLineWidth(int index) {
    if (Chart.PlotterFonts != 0) return 0;
    const int full = Units(Chart.Spec.LineWidth);
    const int fives = index / 5;
    int width = full;
    if (Chart.Style.LineWidthFixed == 0 && Chart.Style.LineWidthIncrease != 0)
        width = std::min(fives + 1, full);
    if (Chart.Style.LineWidthFixed == 0 && Chart.Style.LineWidthIncrease == 0)
        width =
            DeviceUnits(static_cast<double>(Chart.Spec.LineWidth) * static_cast<double>(Chart.PixY) - fives);
    return std::max(width, LeastWidth());
}

void SelectSetPen(int set) {
    if (const SetLook* look = LookOf(set)) {
        SelectPen(SetColor(set), SetLineWidth(look->Dash)); // widths go on where the dashes have run out
        BeginDash(Chart.Style.DashedLines ? Chart.Cycles.Line2[CyclePlace(look->Dash)] : std::int16_t{0});
        return;
    }
    const int index = SetIndex(set);
    const bool alternating = Alternating() && NumberOfSet(set) == 0;
    SelectPen(SetColor(set), SetLineWidth(alternating ? index / 2 : index));
    if (!Rainbow()) BeginDash(DashOf(index, alternating));
}

void SelectPen(Rgb color, int width) {
    TargetSurface().SetPen({true, color, width});
    BeginDash(0);
}

void SelectCyclePen(int index, float twips, bool exclusive) {
    TargetSurface().SetPen({true, CycleColor(index), PenWidth(twips), exclusive});
    BeginDash(DashOf(index, false));
}

void SelectPattern(std::int16_t pattern, Rgb color) {
    static constexpr BrushKind kinds[] = {
        BrushKind::Solid,           BrushKind::Horizontal,       BrushKind::Vertical,
        BrushKind::ForwardDiagonal, BrushKind::BackwardDiagonal, BrushKind::Cross,
        BrushKind::DiagonalCross};
    const bool hatch = pattern >= 1 && pattern <= 6;
    TargetSurface().SetBrush({kinds[hatch ? pattern : 0], color});
}

void SelectNoPen() {
    TargetSurface().SetPen({false, 0, 1});
}

void SelectNoBrush() {
    TargetSurface().SetBrush({BrushKind::Hollow, 0});
}

} // namespace Quillon
