#include "scandata/reader/ScanNames.h"

#include "platform/Letters.h"

#include <charconv>
#include <vector>

namespace Quillon {

namespace {

constexpr std::size_t MostDigits = 9;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// A text of digits alone.
std::optional<long> Digits(std::string_view text) {
    if (text.empty() || text.size() > MostDigits) return {};
    for (const char c : text)
        if (!IsDigit(c)) return {};
    long number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// Letter and digits of a part, "c2".
std::optional<long> Field(std::string_view part, char letter) {
    return part.size() > 1 && CapitalLetter(part[0]) == letter ? Digits(part.substr(1)) : std::nullopt;
}

char TypeOf(std::string_view ending) {
    if (ending.size() < 2) return 0;
    const char first = CapitalLetter(ending[0]);
    const char second = CapitalLetter(ending[1]);
    if (first == 'R' && (second == 'A' || second == 'I')) return second;
    if (first == 'I' && second == 'P') return 'P';
    if (first == 'F' && second == 'I') return 'F';
    return first == 'W' && (second == 'A' || second == 'I' || second == 'R') ? 'W' : '\0';
}

// The digit behind the letters of an ending; 0 is no cell.
std::optional<long> CellOfEnding(std::string_view ending) {
    if (ending.size() != 3 || TypeOf(ending) == 0) return {};
    return IsDigit(ending[2]) && ending[2] != '0' ? std::optional<long>(ending[2] - '0') : std::nullopt;
}

// Fields of the newer names; false where there is no cell among them. The first "s" before the cell is the
// step of speed, one behind it the number of the scan.
bool TakeFields(std::string_view stem, ScanNameFacts& facts) {
    const std::vector<std::string_view> parts = PartsBetween(stem, '-');
    ScanNameFacts found;
    std::size_t runParts = parts.size();
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const bool known = [&] {
            if (const auto s = Field(parts[i], 'S')) return (found.Cell ? found.Scan : found.Step) = s, true;
            if (const auto c = Field(parts[i], 'C')) return found.Cell = c, true;
            if (const auto w = Field(parts[i], 'W')) return found.Wavelength = w, true;
            if (const auto n = Field(parts[i], 'N')) return found.Replicate = n, true;
            return false;
        }();
        if (known && runParts == parts.size()) runParts = i;
    }
    if (!found.Cell || *found.Cell == 0 || parts.size() < 3) return false;
    found.RunId =
        std::string(stem.substr(0, static_cast<std::size_t>(parts[runParts].data() - stem.data()) - 1));
    found.HasFields = true;
    found.Type = facts.Type;
    facts = found;
    return true;
}

} // namespace

ScanNameFacts ScanNameOf(std::string_view title) {
    const std::size_t point = title.rfind('.');
    const std::string_view stem = title.substr(0, point);
    const std::string_view ending = point == std::string_view::npos ? "" : title.substr(point + 1);
    ScanNameFacts facts;
    facts.Type = TypeOf(ending);
    if (TakeFields(stem, facts)) return facts;
    facts.Cell = CellOfEnding(ending);
    if (stem.size() == 5 || stem.size() == 6) facts.Scan = Digits(stem);
    return facts;
}

} // namespace Quillon
