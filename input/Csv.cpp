#include "input/Csv.h"

#include "input/Utf8Text.h"
#include "platform/RuntimeError.h"

namespace Quillon {

namespace {

struct CsvReader {
    std::string_view Text;
    std::size_t Place = 0;
    long Line = 1;
    bool AtEnd() const { return Place >= Text.size(); }
    bool AtLineEnd() const { return Text[Place] == '\n' || Text.substr(Place, 2) == "\r\n"; }
};

// What stands between quotes, from behind the first one.
std::string QuotedCell(CsvReader& reader) {
    const long line = reader.Line;
    std::string cell;
    for (; !reader.AtEnd(); ++reader.Place) {
        const char c = reader.Text[reader.Place];
        if (c == '"') {
            if (reader.Text.substr(reader.Place + 1, 1) != "\"") {
                ++reader.Place;
                return cell;
            }
            ++reader.Place;
        }
        if (c == '\n') ++reader.Line;
        cell += c;
    }
    RaiseError("line " + std::to_string(line) + ": a quote is not closed");
}

std::string Cell(CsvReader& reader) {
    std::string cell;
    if (!reader.AtEnd() && reader.Text[reader.Place] == '"') {
        ++reader.Place;
        cell = QuotedCell(reader);
    }
    while (!reader.AtEnd() && reader.Text[reader.Place] != ',' && !reader.AtLineEnd())
        cell += reader.Text[reader.Place++];
    return cell;
}

CsvCells Line(CsvReader& reader) {
    CsvCells cells{Cell(reader)};
    while (!reader.AtEnd() && reader.Text[reader.Place] == ',') {
        ++reader.Place;
        cells.push_back(Cell(reader));
    }
    if (!reader.AtEnd()) reader.Place = reader.Text.find('\n', reader.Place) + 1;
    ++reader.Line;
    return cells;
}

} // namespace

std::vector<CsvCells> ParseCsv(std::string_view text) {
    CsvReader reader{text.starts_with(ByteOrderMark) ? text.substr(ByteOrderMark.size()) : text};
    std::vector<CsvCells> lines;
    while (!reader.AtEnd()) {
        CsvCells cells = Line(reader);
        if (cells.size() > 1 || !cells.front().empty()) lines.push_back(std::move(cells));
    }
    return lines;
}

std::string CsvLine(const CsvCells& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) line += ',';
        if (cells[i].find_first_of(",\"\r\n") == std::string::npos) {
            line += cells[i];
            continue;
        }
        line += '"';
        for (const char c : cells[i])
            line += c == '"' ? "\"\"" : std::string(1, c);
        line += '"';
    }
    return line + '\n';
}

} // namespace Quillon
