#pragma once
// The style of graphs: defaults and their file chart.ini, the cycles by which sets are told apart, fonts,
// titles and legends.

#include "chart/Records.h"
#include "platform/Surface.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

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
    std::int16_t AsciiDelimiter = 1; // character code between columns; anything but 9, 32, 44 is a tab
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

// Takes the settings from chart.ini in the configuration folder into Chart.Style and marks it as read. A key
// that is missing or cannot be read gives its default; there is no message.
void ReadChartDefaults();

// The command: asks which of the present settings become defaults, and writes those.
void SaveChartDefaults();

// Where chart.ini lies, and the section in it that is this program's.
std::string ChartIniPath();
std::string ChartIniSection();

// The text of a colour in chart.ini, "&H" and hexadecimal digits, and back. False when it is none.
std::string ColorText(ChartColor color);
bool ReadColorText(const std::string& text, ChartColor& color);

// The default records, from Chart.Style.
GraphTitle DefaultTitle();
GraphAxis DefaultAxis();
GraphBox DefaultBox();
GraphLegend DefaultLegend();

// --- cycles --------------------------------------------------------------------------------------------

inline constexpr int CycleLen = 69; // the upper index of the cycles

// What tells sets apart, by index 0 to CycleLen.
struct StyleCycles {
    std::array<std::int16_t, CycleLen + 1> Symbol{};
    std::array<ChartColor, CycleLen + 1> Color{};
    std::array<std::int16_t, CycleLen + 1> Pattern{}; // fill: 0 solid, 1 to 6 the hatches
    std::array<std::int16_t, CycleLen + 1> Line{};    // dash style; a new one begins when the colours run out
    std::array<std::int16_t, CycleLen + 1> Line2{};   // dash style on a target without colour
    std::array<std::int16_t, CycleLen + 1> Border{};  // dash style of the outline of bars
    bool operator==(const StyleCycles&) const = default;
};

// Fills Chart.Cycles for the target and Chart.State.NColors, and marks them as valid.
void BuildCycles();

// A colour from hue (degrees, 0 to 360), saturation and brightness (0 to 1) by the hexcone model. An argument
// out of range is told in a message, and the colour is black.
ChartColor HSBtoColor(float hue, float saturation, float brightness);

// --- fonts ---------------------------------------------------------------------------------------------

inline constexpr int FontFamilies = 6;
inline constexpr std::int16_t BoldFont = 16; // the bit of a font code

// The face of an entry of the family table: "Roman", "Modern", "Times New Roman", ...
const char* FontFace(int entry);

// The names in a font list box: entry i of the list is the code whose (code and 15) + 6 * (code \ 16) is i.
std::vector<std::string> FontListNames();
int FontListIndex(std::int16_t code);
std::int16_t FontCode(int listIndex);

// A text size, a fraction of the diagonal, limited to what may be read on the target.
float ClampFontSize(float size);

// Takes a font into force on the target's surface and gives the height of a line in it and its descent.
// Direction: 0 horizontal, 1 upward, 2 upside down, 3 downward. The size is clamped.
TextSize SelectFont(std::int16_t code, float size, int direction);

// The width of a text in the font in force.
int TextWidth(const std::string& text);

// --- titles and legend ---------------------------------------------------------------------------------

// Writes a headline on the graph: the part before the first "\" is the first title, the rest the second.
// Without "\" a second title that has text keeps its place as a blank line. "" clears both. A graph that
// stands on the target is brought up to date.
void SetGraphComment(const std::string& text);

// The command: blanks both titles and lays out again.
void DeleteTitles();

// The command: shows or hides the legend and lays out again.
void ShowLegend();

// What stands beside an axis: its title, and behind it the name of its prescale.
std::string AxisTitleText(const GraphAxis& axis);

} // namespace Quillon
