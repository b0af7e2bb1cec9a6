#include "chart/files/PastedText.h"

#include "input/NUMINPUT.h"
#include "platform/Letters.h"
#include "platform/Narrow.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace Quillon {

namespace {

struct PastedField {
    std::string Text;
    bool Quoted = false; // it stood between quotes
};
using Fields = std::vector<PastedField>;

constexpr std::string_view Delimiters = "\t;,";

// Places of a table, points by sets. Beyond it stands a long first line over many short ones: gigabytes of
// gaps.
constexpr long MostPlaces = 20'000'000;

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

// The end of what stands between quotes from at on: behind the closing one, or at itself when there is none.
std::size_t EndOfQuotes(const std::string& line, std::size_t at) {
    for (std::size_t i = at + 1; i < line.size(); ++i) {
        if (line[i] != '"') continue;
        if (i + 1 == line.size() || line[i + 1] != '"') return i + 1;
        ++i; // two are one
    }
    return at;
}

// The line without what stands between quotes, which only count where a field may begin.
std::string Unquoted(const std::string& line) {
    std::string rest;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char before = i == 0 ? ' ' : line[i - 1];
        const bool opens = line[i] == '"' && (before == ' ' || Delimiters.find(before) != Delimiters.npos);
        const std::size_t end = opens ? EndOfQuotes(line, i) : i;
        if (end == i)
            rest += line[i];
        else
            i = end - 1;
    }
    return rest;
}

char DelimiterOf(const std::string& line) {
    const std::string rest = Unquoted(line);
    for (const char delimiter : Delimiters)
        if (rest.find(delimiter) != std::string::npos) return delimiter;
    return ' ';
}

// The fields of a line. A quote at the begin of a field opens a text in which a delimiter is text and two
// quotes are one; elsewhere it is a sign like any other ("6\" cell").
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
        if (c == '"' && !Quoted && Trimmed(Field, " ").empty()) {
            const std::size_t end = EndOfQuotes(line, i);
            Quoted = end > i;
            Field = Quoted ? TextOf(line.substr(i + 1, end - i - 2)) : "\"";
            i = Quoted ? end - 1 : i;
            Started = true;
        } else if (c != Delimiter) {
            Field += c;
            Started = true;
        } else if (Delimiter != ' ' || Started) {
            End();
        }
    }
    static std::string TextOf(const std::string& quoted) {
        std::string text;
        for (std::size_t i = 0; i < quoted.size(); ++i) {
            text += quoted[i];
            if (quoted[i] == '"') ++i;
        }
        return text;
    }
    void End() {
        Found.push_back({std::string(Trimmed(Field, " ")), Quoted});
        Field.clear();
        Quoted = Started = false;
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
    } catch (const RuntimeError&) { // larger than any number: whoever asked quotes it as none
        return false;
    }
    return true;
}

// True for a first line that names what stands below: a text, and no number but such as stands in quotes.
bool AreHeads(const Fields& fields, bool decimalComma) {
    const auto isNumber = [&](const PastedField& field) {
        float value = 0.0F;
        return ReadField(field.Text, decimalComma, value);
    };
    const bool text = std::any_of(fields.begin(), fields.end(), [&](const PastedField& field) {
        return !field.Text.empty() && !isNumber(field);
    });
    return text && std::none_of(fields.begin(), fields.end(),
                                [&](const PastedField& field) { return !field.Quoted && isNumber(field); });
}

// One line into its place of the table.
void TakeLine(PastedData& data, const Fields& fields, bool decimalComma, long point) {
    if (fields.size() > static_cast<std::size_t>(2 * data.X.Sets()))
        RaiseError("line " + std::to_string(point) + " of the numbers has a column too many");
    for (std::size_t column = 0; column < fields.size(); ++column) {
        const std::string& text = fields[column].Text;
        if (text.empty()) continue;
        SetTable& table = column % 2 == 0 ? data.X : data.Y;
        if (!ReadField(text, decimalComma, table(point, static_cast<long>(column / 2) + 1)))
            RaiseError("'" + text + "' is no number");
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
    if (AreHeads(first, decimalComma)) {
        for (std::size_t column = 1; column < first.size(); column += 2)
            data.Names.push_back(first[column].Text);
        lines.erase(lines.begin());
    }
    if (lines.empty()) RaiseError("there are no numbers");
    const long points = ToInt16(lines.size());
    const long sets = ToInt16(first.size() / 2);
    if (points * sets > MostPlaces) RaiseError("there are too many numbers");
    data.X.Recreate(points, sets);
    data.Y.Recreate(points, sets);
    for (long point = 1; point <= points; ++point)
        TakeLine(data, LineSplitter(delimiter).Split(lines[static_cast<std::size_t>(point - 1)]),
                 decimalComma, point);
    return data;
}

} // namespace Quillon
