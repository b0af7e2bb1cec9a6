// The data of a graph as text.
#include "chart/files/DataText.h"

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/SetTable.h"
#include "chart/scale/AxisScale.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"

#include <algorithm>
#include <new>

namespace Quillon {

namespace {

// A line for each point, gap where a value is missing.
std::string Lines(char delimiter, const std::string& gap) {
    const auto text = [&](float value) { return value == MissingValue ? gap : SingleText(value); };
    std::string lines;
    const long points = LongestSetOfGraph();
    for (long point = 1; point <= points; ++point) {
        for (long set = 1; set <= Chart.DataX.Sets(); ++set) {
            if (set > 1) lines += delimiter;
            lines += text(Chart.DataX(point, set)) + delimiter + text(Chart.DataY(point, set));
        }
        lines += "\r\n";
    }
    return lines;
}

// --- heads -------------------------------------------------------------------------------------------------

// One line, and what stands in it: nothing in a head may end its column or line.
std::string OneLine(std::string text) {
    for (char& c : text)
        if (c == '\t' || c == '\r' || c == '\n') c = ' ';
    return text;
}

std::string InQuotes(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

bool ReadsAsNumber(std::string text) {
    std::replace(text.begin(), text.end(), ',', '.'); // a decimal comma
    std::size_t used = 0;
    try {
        NumericPrefix(text, &used);
    } catch (const RuntimeError&) { // too large, and a number all the same
    }
    return used > 0 && used == text.find_last_not_of(' ') + 1;
}

// Between tabs quotes stand only where a reader would go astray without them.
std::string BetweenTabs(const std::string& text) {
    return text.find('"') != std::string::npos || ReadsAsNumber(text) ? InQuotes(text) : text;
}

std::string FirstOf(const std::string& text, const std::string& otherwise) {
    return text.find_first_not_of(' ') != std::string::npos ? OneLine(text) : otherwise;
}

// The heads of X and Y of a set.
std::string HeadX() {
    const GraphAxis& axis = Chart.Spec.AxisX1;
    return AsStored(FirstOf(axis.Title.Text.Str(), "X"), axis, Chart.LoadFactorX);
}
std::string HeadY(long set) {
    const GraphAxis& axis = Chart.Spec.AxisY1;
    const std::string name = set <= Chart.SetNames.Hi() ? Chart.SetNames[set] : "";
    return AsStored(FirstOf(name, FirstOf(axis.Title.Text.Str(), "Y")), axis, Chart.LoadFactorY);
}

std::string HeadLine(const std::string& delimiter, std::string (*form)(const std::string& head)) {
    std::string line;
    for (long set = 1; set <= Chart.DataX.Sets(); ++set)
        line += (set > 1 ? delimiter : "") + form(HeadX()) + delimiter + form(HeadY(set));
    return line + "\r\n";
}

void CopyText(std::string (*make)()) {
    if (Chart.GraphHeld == 0) return;
    try {
        if (!Host.SetClipboardText(make())) RaiseError("the clipboard cannot be used");
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while copying the graph", ProgramTitle(), BoxIcon::Warning);
    } catch (const std::bad_alloc&) {
        Tell("There is too much data to convert it to a string for the clipboard (64 Kbytes max).  Use 'copy "
             "to file' instead.  Aborting...",
             ProgramTitle(), BoxIcon::Warning);
    }
}

} // namespace

long LongestSetOfGraph() {
    for (long point = Chart.DataX.Points(); point >= 1; --point)
        for (long set = 1; set <= Chart.DataX.Sets(); ++set)
            if (Chart.DataX(point, set) != MissingValue || Chart.DataY(point, set) != MissingValue)
                return point;
    return 0;
}

std::string DataText(char delimiter) {
    return Lines(delimiter, delimiter == ' ' ? "\" \"" : " "); // between blanks a gap is seen only in quotes
}

std::string AsStored(const std::string& text, const GraphAxis& axis, float loadFactor) {
    const std::string value = loadFactor == 1.0F ? text : text + " / " + SingleText(loadFactor);
    if (axis.ScaleType != ScaleTypes::Logarithmic) return value;
    if (IsLog10(axis)) return "log10 (" + value + ")";
    return value.starts_with("Ln (") ? value : "Ln (" + value + ")";
}

std::string DataTextWithHeads() {
    return HeadLine("\t", BetweenTabs) + Lines('\t', "");
}

std::string DataCsv() {
    return HeadLine(",", InQuotes) + Lines(',', "");
}

void EditCopyData() {
    CopyText([] { return DataText('\t'); });
}

void EditCopyDataWithHeads() {
    CopyText(DataTextWithHeads);
}

char AsciiDelimiterChar() {
    constexpr std::int16_t notChosen = 1; // the standing value of the setting, which is a tab
    const std::int16_t code = Chart.Style.AsciiDelimiter;
    return code <= notChosen ? '\t' : static_cast<char>(code);
}

} // namespace Quillon
