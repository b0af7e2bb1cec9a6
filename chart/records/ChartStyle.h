#pragma once
// The style of graphs: what chart.ini keeps.

#include "chart/records/Colors.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Quillon {

// The entries of the family table, to which the low four bits of a font code lead.
inline constexpr int FontFamilies = 6;

// All settings of chart.ini, in the order in which they are read. Singles unless stated; the flags are -1/0.
struct ChartStyle {
    float TicSize = 0.007F;    // length, fraction of the frame's diagonal; negative: tics point outward
    float SymbolSize = 0.007F; // the same fraction
    float BarWidth = 0.8F;     // part of a category that bars take
    float Clearance = 0.004F;  // gap between text and the rest, fraction of the view's diagonal
    float TitleSize = 0.02F, LegendTextSize = 0.016F, TicFontSize = 0.02F;
    float ArrowAngle = 30.0F; // degrees between an arrow and the arms of its head
    float TitleFont = 3.0F, TicLabelFont = 3.0F, LegendFont = 3.0F; // font codes
    float AxisWidth = 15.0F, TicWidth = 10.0F, LineWidth = 15.0F;   // twips
    std::int16_t MetricUnits = 0;
    float LeftMargin = 1.0F, TopMargin = 1.0F, RightMargin = 1.0F, BottomMargin = 1.0F; // inches or cm
    float PageFull = -1.0F, PageHalf = 0.0F; // one of the three is set
    std::int16_t PageCustom = 0;
    float CustomHeight = 3.0F, CustomWidth = 3.0F;
    std::int16_t KeepAspect = 0; // printing keeps the window's aspect ratio; not in the file
    std::int16_t LineWidthFixed = -1, LineWidthIncrease = 0, DashedLines = -1;
    float LargeStep = 5.0F;
    std::int16_t AxisFrame = 0;      // a custom size is that of the axes' frame
    std::int16_t AsciiDelimiter = 1; // character code between columns; 0 and 1 are a tab
    std::int16_t UseRainbowColors = 0;
    std::vector<std::int16_t> LineStyleOrder = {0, 1, 2, 3, 4};
    std::vector<std::int16_t> BorderStyleOrder = {0, 1, 2, 3, 4};
    std::vector<std::int16_t> PatternStyleOrder = {0, 1, 2, 3, 4, 5, 6};
    std::vector<std::int16_t> SymbolOrder = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
    float SymbolWidth = 7.0F; // twips
    std::int16_t UseGrids = 1;
    // For each font family the entry of the family table that the target uses.
    std::array<std::int16_t, 6> ScreenHFonts = {0, 1, 2, 3, 4, 5}, ScreenVFonts = {0, 1, 2, 3, 4, 5};
    std::array<std::int16_t, 6> PrinterHFonts = {0, 1, 2, 3, 4, 5}, PrinterVFonts = {0, 1, 2, 3, 4, 5};
    std::array<std::int16_t, 6> PlotterHFonts = {0, 1, 0, 1, 1, 5}, PlotterVFonts = {0, 1, 0, 1, 1, 5};
    std::int16_t ScreenMaxFont = 36, ScreenMinFont = 6, PrinterMaxFont = 36, PrinterMinFont = 5; // points
    std::vector<ChartColor> ScreenColors, PrintColors; // filled by ReadChartDefaults

    bool operator==(const ChartStyle&) const = default;
};

} // namespace Quillon
