// The data of a graph as text.
#include "chart/files/DataText.h"

#include "chart/files/Exchange.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/SetTable.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"

#include <new>

namespace Quillon {

namespace {

// Between blanks a gap is seen only in quotes.
std::string ValueText(float value, char delimiter) {
    if (value != MissingValue) return SingleText(value);
    return delimiter == ' ' ? "\" \"" : " ";
}

// Nothing in a head may end its column or line.
std::string HeadText(std::string text) {
    for (char& c : text)
        if (c == '\t' || c == '\r' || c == '\n') c = ' ';
    return text;
}

void CopyText(std::string (*make)()) {
    if (Chart.GraphHeld == 0) return;
    try {
        Host.SetClipboardText(make());
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
    std::string text;
    const long points = LongestSetOfGraph();
    for (long point = 1; point <= points; ++point) {
        for (long set = 1; set <= Chart.DataX.Sets(); ++set) {
            if (set > 1) text += delimiter;
            text += ValueText(Chart.DataX(point, set), delimiter) + delimiter +
                    ValueText(Chart.DataY(point, set), delimiter);
        }
        text += "\r\n";
    }
    return text;
}

std::string DataTextWithHeads() {
    std::string text;
    for (long set = 1; set <= Chart.DataX.Sets(); ++set) {
        const std::string name = set <= Chart.SetNames.Hi() ? Chart.SetNames[set] : "";
        text += (set > 1 ? "\t" : "") + HeadText(Chart.Spec.AxisX1.Title.Text.Str()) + "\t" + HeadText(name);
    }
    return text + "\r\n" + DataText('\t');
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
