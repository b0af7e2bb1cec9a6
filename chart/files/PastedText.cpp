// Columns of numbers from a text that another program has put on the clipboard.
#include "chart/files/Exchange.h"
#include "input/NUMINPUT.h"
#include "platform/Narrow.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

using Fields = std::vector<std::string>;

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
        at = end + 1;
    }
    while (!lines.empty() && lines.back().find_first_not_of(" \t") == std::string::npos)
        lines.pop_back();
    return lines;
}

char DelimiterOf(const std::string& line) {
    for (const char delimiter : {'\t', ';', ','})
        if (line.find(delimiter) != std::string::npos) return delimiter;
    return ' ';
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The fields of a line. Between quotes a delimiter is text, and two quotes are one.
class LineSplitter {
public:
    explicit LineSplitter(char delimiter) : Delimiter(delimiter) {}
    Fields Split(const std::string& line) {
        for (std::size_t i = 0; i < line.size(); ++i)
            Take(line, i);
        if (Delimiter != ' ' || Started) End();
        return std::move(Found);
    }

private:
    void Take(const std::string& line, std::size_t& i) {
        const char c = line[i];
        if (Quoted && c == '"' && i + 1 < line.size() && line[i + 1] == '"')
            Field += line[++i];
        else if (c == '"')
            Quoted = !Quoted, Started = true;
        else if (c != Delimiter || Quoted)
            Field += c, Started = true;
        else if (Delimiter != ' ' || Started)
            End();
    }
    void End() {
        Found.push_back(Trimmed(Field));
        Field.clear();
        Started = false;
    }
    char Delimiter;
    bool Quoted = false, Started = false;
    std::string Field;
    Fields Found;
};

// A number that takes the whole field; false when it is none.
bool ReadField(std::string field, bool decimalComma, float& value) {
    if (decimalComma) std::replace(field.begin(), field.end(), ',', '.');
    std::size_t used = 0;
    try {
        const double number = NumericPrefix(field, &used);
        if (used != field.size() || field.empty()) return false;
        value = ToSingle(number);
    } catch (const RuntimeError&) {
        return false;
    }
    return true;
}

bool HasNumber(const Fields& fields, bool decimalComma) {
    float value = 0.0F;
    return std::any_of(fields.begin(), fields.end(),
                       [&](const std::string& field) { return ReadField(field, decimalComma, value); });
}

// One line into its place of the table.
void TakeLine(PastedData& data, const Fields& fields, bool decimalComma, long point) {
    if (fields.size() > static_cast<std::size_t>(2 * data.X.Sets()))
        RaiseError("line " + std::to_string(point) + " of the numbers has a column too many");
    for (std::size_t column = 0; column < fields.size(); ++column) {
        if (fields[column].empty()) continue;
        SetTable& table = column % 2 == 0 ? data.X : data.Y;
        if (!ReadField(fields[column], decimalComma, table(point, static_cast<long>(column / 2) + 1)))
            RaiseError("'" + fields[column] + "' is no number");
    }
}

} // namespace

PastedData ReadPastedText(const std::string& text) {
    std::vector<std::string> lines = LinesOf(text);
    if (lines.empty()) RaiseError("there are no numbers");
    const char delimiter = DelimiterOf(lines[0]);
    const bool decimalComma = delimiter != ',';
    const Fields first = LineSplitter(delimiter).Split(lines[0]);
    if (first.empty() || first.size() % 2 != 0) RaiseError(OddColumns);
    PastedData data;
    if (!HasNumber(first, decimalComma)) {
        for (std::size_t column = 1; column < first.size(); column += 2)
            data.Names.push_back(first[column]);
        lines.erase(lines.begin());
    }
    if (lines.empty()) RaiseError("there are no numbers");
    const long points = ToInt16(lines.size());
    const long sets = ToInt16(first.size() / 2);
    data.X.Recreate(points, sets);
    data.Y.Recreate(points, sets);
    for (long point = 1; point <= points; ++point)
        TakeLine(data, LineSplitter(delimiter).Split(lines[static_cast<std::size_t>(point - 1)]),
                 decimalComma, point);
    return data;
}

} // namespace Quillon
