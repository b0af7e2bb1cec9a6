#include "chart/records/ChartDefaults.h"

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Colors.h"
#include "chart/records/Cycles.h"
#include "chart/records/Kept.h"
#include "chart/records/Palettes.h"
#include "chart/records/Records.h"
#include "input/IniFile.h"
#include "input/NUMINPUT.h"
#include "platform/Letters.h"
#include "platform/Narrow.h"
#include "platform/Paths.h"
#include "platform/Platform.h"

#include <algorithm>

namespace Quillon {

namespace {

// One key with a number, and what it may be: a value outside gives the default.
struct NumberKey {
    const char* Key;
    float ChartStyle::*Member;
    float Least, Most;
};

constexpr float Widest = 32767.0F; // widths and font codes go into 16-bit fields

constexpr NumberKey NumberKeys[] = {
    {"TicSize", &ChartStyle::TicSize, -1.0F, 1.0F},
    {"SymbolSize", &ChartStyle::SymbolSize, 0.0F, LargestSymbolSize},
    {"BarWidth", &ChartStyle::BarWidth, 0.0F, 1.0F},
    {"Clearance", &ChartStyle::Clearance, 0.0F, 1.0F},
    {"TitleSize", &ChartStyle::TitleSize, 0.0F, 1.0F},
    {"LegendTextSize", &ChartStyle::LegendTextSize, 0.0F, 1.0F},
    {"TicFontSize", &ChartStyle::TicFontSize, 0.0F, 1.0F},
    {"ArrowAngle", &ChartStyle::ArrowAngle, 0.0F, 90.0F},
    {"TitleFont", &ChartStyle::TitleFont, 0.0F, Widest},
    {"TicLabelFont", &ChartStyle::TicLabelFont, 0.0F, Widest},
    {"LegendFont", &ChartStyle::LegendFont, 0.0F, Widest},
    {"AxisWidth", &ChartStyle::AxisWidth, 0.0F, Widest},
    {"TicWidth", &ChartStyle::TicWidth, 0.0F, Widest},
    {"LineWidth", &ChartStyle::LineWidth, 0.0F, Widest},
    {"LeftMargin", &ChartStyle::LeftMargin, 0.0F, 1000.0F},
    {"TopMargin", &ChartStyle::TopMargin, 0.0F, 1000.0F},
    {"RightMargin", &ChartStyle::RightMargin, 0.0F, 1000.0F},
    {"BottomMargin", &ChartStyle::BottomMargin, 0.0F, 1000.0F},
    {"CustomHeight", &ChartStyle::CustomHeight, 0.0F, 1000.0F},
    {"CustomWidth", &ChartStyle::CustomWidth, 0.0F, 1000.0F},
    {"LargeStep", &ChartStyle::LargeStep, 0.0F, Widest},
    {"SymbolWidth", &ChartStyle::SymbolWidth, 0.0F, Widest},
};

struct FlagKey {
    const char* Key;
    std::int16_t ChartStyle::*Member;
};

constexpr FlagKey FlagKeys[] = {
    {"MetricUnits", &ChartStyle::MetricUnits},
    {"LineWidthFixed", &ChartStyle::LineWidthFixed},
    {"LineWidthIncrease", &ChartStyle::LineWidthIncrease},
    {"DashedLines", &ChartStyle::DashedLines},
    {"AxisFrame", &ChartStyle::AxisFrame},
    {"UseRainbowColors", &ChartStyle::UseRainbowColors},
};

struct CountKey {
    const char* Key;
    std::int16_t ChartStyle::*Member;
    int Least, Most;
};

constexpr CountKey CountKeys[] = {
    {"AsciiDelimiter", &ChartStyle::AsciiDelimiter, 0, 255},
    {"ScreenMaxFont", &ChartStyle::ScreenMaxFont, 1, 1000},
    {"ScreenMinFont", &ChartStyle::ScreenMinFont, 1, 1000},
    {"PrinterMaxFont", &ChartStyle::PrinterMaxFont, 1, 1000},
    {"PrinterMinFont", &ChartStyle::PrinterMinFont, 1, 1000},
};

struct OrderKey {
    const char* Key;
    std::vector<std::int16_t> ChartStyle::*Member;
};

constexpr OrderKey OrderKeys[] = {
    {"LineStyleOrder", &ChartStyle::LineStyleOrder},
    {"BorderStyleOrder", &ChartStyle::BorderStyleOrder},
    {"PatternStyleOrder", &ChartStyle::PatternStyleOrder},
    {"SymbolOrder", &ChartStyle::SymbolOrder},
};

struct FontKey {
    const char* Key;
    std::array<std::int16_t, 6> ChartStyle::*Member;
};

constexpr FontKey FontKeys[] = {
    {"ScreenHFonts", &ChartStyle::ScreenHFonts},   {"ScreenVFonts", &ChartStyle::ScreenVFonts},
    {"PrinterHFonts", &ChartStyle::PrinterHFonts}, {"PrinterVFonts", &ChartStyle::PrinterVFonts},
    {"PlotterHFonts", &ChartStyle::PlotterHFonts}, {"PlotterVFonts", &ChartStyle::PlotterVFonts},
};

// A key's number; false when there is none, or none that a single can hold.
bool ReadNumber(const std::string& text, double& value) {
    std::size_t used = 0;
    try {
        value = NumericPrefix(text, &used);
    } catch (const RuntimeError&) { // too large: what the key would set stays as it is
        return false;
    }
    return used > 0;
}

// A list of whole numbers from 0 to most, of which the first ones count; empty when it cannot be read.
std::vector<std::int16_t> ReadList(const std::string& text, int most, std::size_t count) {
    std::vector<std::int16_t> list;
    std::size_t at = 0;
    while (list.size() < count) {
        const std::size_t comma = std::min(text.find(',', at), text.size());
        double value = 0.0;
        if (!ReadNumber(text.substr(at, comma - at), value)) return {};
        if (!(value >= 0.0 && value <= most) || value != static_cast<int>(value)) return {};
        list.push_back(static_cast<std::int16_t>(value));
        if (comma == text.size()) break;
        at = comma + 1;
    }
    return list;
}

// The section of chart.ini that is this program's.
struct Section {
    std::string Bytes, Name;
    // A key's text; false when it is missing.
    bool Text(const std::string& key, std::string& text) const {
        static const std::string missing(1, '\n'); // no value holds a line end
        text = IniValue(Bytes, Name, key, missing);
        return text != missing;
    }
    bool Number(const std::string& key, double& value) const {
        std::string text;
        return Text(key, text) && ReadNumber(text, value);
    }
};

void ReadNumbers(const Section& ini, ChartStyle& style) {
    double value = 0.0;
    for (const NumberKey& key : NumberKeys)
        if (ini.Number(key.Key, value) && value >= static_cast<double>(key.Least) &&
            value <= static_cast<double>(key.Most))
            style.*key.Member = static_cast<float>(value);
    for (const CountKey& key : CountKeys)
        if (ini.Number(key.Key, value) && value >= key.Least && value <= key.Most)
            style.*key.Member = ToInt16(value);
    if (ini.Number("UseGrids", value)) style.UseGrids = value >= 1.0 ? 1 : 0;
    std::string text;
    for (const FlagKey& key : FlagKeys)
        if (ini.Text(key.Key, text)) style.*key.Member = Flag(CapitalLetters(text) == "TRUE");
}

void ReadPageSize(const Section& ini, ChartStyle& style) {
    std::string text;
    if (!ini.Text("PageSize", text)) return;
    text = CapitalLetters(text);
    style.PageHalf = text == "HALF" ? -1.0F : 0.0F;
    style.PageCustom = Flag(text == "CUSTOM");
    style.PageFull = text != "HALF" && text != "CUSTOM" ? -1.0F : 0.0F;
}

void ReadLists(const Section& ini, ChartStyle& style) {
    std::string text;
    for (const OrderKey& key : OrderKeys) {
        std::vector<std::int16_t>& order = style.*key.Member;
        if (!ini.Text(key.Key, text)) continue;
        const std::vector<std::int16_t> list =
            ReadList(text, static_cast<int>(order.size()) - 1, order.size());
        if (!list.empty()) order = list;
    }
    for (const FontKey& key : FontKeys) {
        if (!ini.Text(key.Key, text)) continue;
        const std::vector<std::int16_t> list = ReadList(text, FontFamilies - 1, FontFamilies);
        std::copy(list.begin(), list.end(), (style.*key.Member).begin());
    }
}

// A table of which the file holds colours is the engine's own with these in it; any other is the palette.
// count: of its colours; the engine's own number where it is none that may be.
std::vector<ChartColor> ReadColors(const Section& ini, const std::string& key, double count) {
    std::vector<ChartColor> colors = Palettes()[0].Colors;
    if (count >= 1.0 && count <= CycleLen + 1) colors.resize(static_cast<std::size_t>(count));
    bool any = false;
    std::string text;
    for (std::size_t i = 0; i < colors.size(); ++i)
        if (ini.Text(key + std::to_string(i), text)) any |= ReadColorText(text, colors[i]);
    return any ? colors : StandardColors();
}

void ReadKept(const Section& ini) {
    std::string text;
    if (ini.Text("ClassicColors", text)) Kept.ClassicColors = Flag(CapitalLetters(text) == "TRUE");
    if (ini.Text("DarkCanvas", text)) Kept.DarkCanvas = Flag(CapitalLetters(text) == "TRUE");
}

} // namespace

std::string ChartIniPath() {
    return JoinPath(Host.ConfigDirectory(), "chart.ini");
}

std::string ChartIniSection() {
    return CapitalLetters(ProgramTitle());
}

void ReadChartDefaults() {
    Section ini;
    ini.Name = ChartIniSection();
    try {
        ini.Bytes = ReadIniFile(ChartIniPath());
    } catch (const RuntimeError&) { // as if there were none: why is told by the reading of the settings in it
    }
    ChartStyle style;
    style.KeepAspect = Chart.Style.KeepAspect;
    ReadNumbers(ini, style);
    ReadPageSize(ini, style);
    ReadLists(ini, style);
    ReadKept(ini);
    double screen = 0.0;
    double print = 0.0;
    ini.Number("ScreenColors", screen);
    ini.Number("PrintColors", print);
    style.ScreenColors = ReadColors(ini, "ScreenColor", screen);
    style.PrintColors = ReadColors(ini, "PrintColor", print);
    Chart.Style = style;
    Chart.CyclesOfFile.reset();
    Chart.State.IniRead = 1;
    Kept.StyleOfFile = FlagFalse;
    Kept.RainbowDefault = style.UseRainbowColors;
    Chart.State.CyclesBuilt = 0;
}

GraphTitle DefaultTitle() {
    GraphTitle title;
    title.Font = ToInt16(Chart.Style.TitleFont);
    title.Size = Chart.Style.TitleSize;
    title.Justify = 1;
    return title;
}

GraphAxis DefaultAxis() {
    const ChartStyle& style = Chart.Style;
    GraphAxis axis;
    axis.Show = 1;
    axis.Grid = style.UseGrids >= 1 ? 1 : 0;
    axis.TicSide = 2;
    axis.Title = DefaultTitle();
    axis.TicMode = TicModes::MarksAndLabels;
    axis.ScaleType = ScaleTypes::Linear;
    axis.LogBase = 10.0F;
    axis.ScaleMode = ScaleModes::Manual;
    axis.Factor = 1.0F;
    axis.LabelFont = ToInt16(style.TicLabelFont);
    axis.LabelSize = style.TicFontSize;
    axis.TicFormat = TicFormats::Decimal;
    axis.AxisWidth = ToInt16(style.AxisWidth);
    axis.TicWidth = ToInt16(style.TicWidth);
    return axis;
}

GraphBox DefaultBox() {
    GraphBox box;
    box.Color = 15;
    return box;
}

GraphLegend DefaultLegend() {
    GraphLegend legend;
    legend.Where = LegendPlaces::Below;
    legend.Font = ToInt16(Chart.Style.LegendFont);
    legend.Size = Chart.Style.LegendTextSize;
    legend.AutoPlace = 1;
    legend.Box = DefaultBox();
    return legend;
}

} // namespace Quillon
