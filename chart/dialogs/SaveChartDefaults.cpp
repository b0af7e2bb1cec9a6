// The command that makes present settings the defaults, one question at a time.
#include "chart/dialogs/SaveChartDefaults.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/records/ChartDefaults.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Kept.h"
#include "input/IniFile.h"
#include "input/NUMINPUT.h"
#include "platform/Letters.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

namespace Quillon {

namespace {

void Write(const std::string& key, const std::string& value) {
    WriteIniValue(ChartIniPath(), ChartIniSection(), key, value);
}

std::string LengthText(float length) {
    return FormatNumber(static_cast<double>(length), "0.000");
}

// The user has left the questions: none is asked any more. What was answered before is written already.
bool Left = false;

BoxAnswer Asked(const std::string& question, BoxButtons buttons, BoxAnswer standard) {
    if (Left) return BoxAnswer::WayOut;
    const BoxAnswer answer = Host.MessageBoxAnswer(
        {question, ProgramTitle(), BoxIcon::Question, buttons, standard, WayOutCaption});
    Left = answer == BoxAnswer::WayOut;
    return answer;
}

BoxAnswer AskThree(const std::string& question, BoxAnswer standard) {
    return Asked(question, BoxButtons::YesNoCancel, standard);
}

bool Ask(const std::string& question) {
    return Asked(question, BoxButtons::YesNo, BoxAnswer::No) == BoxAnswer::Yes;
}

// Writes one text on Yes, another on No, and nothing on Cancel. Gives the answer.
BoxAnswer AskAndWrite(const std::string& question, const std::string& key, const std::string& yes,
                      const std::string& no) {
    const BoxAnswer answer = AskThree(question, BoxAnswer::Cancel);
    if (answer == BoxAnswer::Yes) Write(key, yes);
    if (answer == BoxAnswer::No) Write(key, no);
    return answer;
}

void SaveStyle() {
    AskAndWrite("Do you want the default graph style to include grids across the graph body at the tic mark "
                "positions (Yes), or no grids (No), or to leave the default unchanged (Cancel)?",
                "UseGrids", "1", "0");
    const BoxAnswer rainbow = AskAndWrite(
        "Do you want the default to be to use 'rainbow' gradient colors (rather than a discrete set of 14 "
        "colors) to delimit different data sets on graphs (Yes), or to inhibit line dashing (No), or leave "
        "the default unchanged (Cancel)?",
        "UseRainbowColors", "True", "False");
    if (rainbow != BoxAnswer::Cancel) // the graphs of this run begin with it too
        Kept.RainbowDefault = Flag(rainbow == BoxAnswer::Yes);
    AskAndWrite(
        "Do you want the default to be to use dashed lines (4 styles + solid) to delimit different data sets "
        "on graphs (Yes), or to inhibit line dashing (No), or leave the default unchanged (Cancel)? (Note "
        "that this has no effect when in 'rainbow' mode.)",
        "DashedLines", "True", "False");
}

// The keys of lengths on paper, all in the unit that MetricUnits of the same file names.
constexpr const char* LengthKeys[] = {"LeftMargin",   "TopMargin",    "RightMargin",
                                      "BottomMargin", "CustomHeight", "CustomWidth"};

std::string Saved(const char* key) {
    return IniValue(ReadIniFile(ChartIniPath()), ChartIniSection(), key);
}

bool SavedMetric() {
    return SameLetters(Saved("MetricUnits"), "TRUE");
}

// A length from one unit to the other.
float Converted(float length, bool fromMetric, bool toMetric) {
    if (fromMetric == toMetric) return length;
    return toMetric ? length * CentimetresPerInch : length / CentimetresPerInch;
}

// What is saved stays as long as it is when the unit of the file has changed.
void ConvertSavedLengths(bool toMetric) {
    std::vector<IniSetting> settings;
    for (const char* key : LengthKeys)
        if (const std::string text = Saved(key); !text.empty())
            settings.push_back({key, LengthText(Converted(NumValue(text), !toMetric, toMetric))});
    if (!settings.empty()) WriteIniValues(ChartIniPath(), ChartIniSection(), settings);
}

void SavePageSize(bool metric) {
    const ChartStyle& style = Chart.Style;
    const auto text = [&](float length) {
        return LengthText(Converted(length, style.MetricUnits != 0, metric));
    };
    const char* const page = style.PageCustom != 0 ? "Custom" : style.PageHalf != 0.0F ? "Half" : "Full";
    std::vector<IniSetting> settings{{"LeftMargin", text(style.LeftMargin)},
                                     {"TopMargin", text(style.TopMargin)},
                                     {"RightMargin", text(style.RightMargin)},
                                     {"BottomMargin", text(style.BottomMargin)},
                                     {"PageSize", page}};
    if (style.PageCustom != 0) {
        settings.push_back({"CustomHeight", text(style.CustomHeight)});
        settings.push_back({"CustomWidth", text(style.CustomWidth)});
    }
    WriteIniValues(ChartIniPath(), ChartIniSection(), settings);
}

void SavePrinting() {
    const bool before = SavedMetric();
    AskAndWrite(
        "Do you want the default to be to specify page layout in inches (Yes) or centimeters (No), or to "
        "leave the default unchanged (Cancel)?",
        "MetricUnits", "False", "True");
    const bool metric = SavedMetric();
    if (metric != before) ConvertSavedLengths(metric);
    if (Ask("Do you want to save the present printing size and margins and page size (set on the Printing "
            "Options "
            "form) as the default values?"))
        SavePageSize(metric);
    AskAndWrite(
        "Do you want the default to be that when a 'Custom' sized graph is printed, the size specified is "
        "that of the whole graph (with titles, axis labels, etc.) (Yes) or that the size is that of the axis "
        "frame (the data area of the graph) (No), or to leave the default unchanged (Cancel)?",
        "AxisFrame", "False", "True");
    AskAndWrite(
        "Do you want the default to be to vary line widths after each 5 sets to help distinguish different "
        "data sets for black & white printing (Yes) or to keep line widths fixed (No), or to leave the "
        "default unchanged (Cancel)?",
        "LineWidthFixed", "False", "True");
    AskAndWrite(
        "Do you want the default to be that when line widths are varied the first 5 sets have the minimum "
        "width and then increase up to the normal setting (this prints faster) (Yes) or to start at the "
        "normal width and decrease (No), or to leave the default unchanged (Cancel)?",
        "LineWidthIncrease", "True", "False");
}

void SaveDelimiter() {
    const BoxAnswer answer = AskThree(
        "When copying graph data to disk, do you want the delimiter between data columns to be a tab (Yes), "
        "a comma (No), or a space (Cancel)? The default setting is a Tab character; any change will come "
        "into effect immediately.",
        BoxAnswer::Yes);
    if (answer == BoxAnswer::WayOut) return;
    const std::int16_t code = answer == BoxAnswer::Yes ? 9 : answer == BoxAnswer::No ? 44 : 32;
    Chart.Style.AsciiDelimiter = code;
    Write("AsciiDelimiter", std::to_string(code));
}

} // namespace

void SaveChartDefaults() {
    Left = false;
    try {
        SaveStyle();
        if (Ask("Do you want to save printing option defaults?")) SavePrinting();
        SaveDelimiter();
    } catch (const RuntimeError& error) {
        Tell("Error occurred while writing defaults to " + ChartIniPath() + "\n\n" + error.Text,
             ProgramTitle(), BoxIcon::Warning);
    }
}

} // namespace Quillon
