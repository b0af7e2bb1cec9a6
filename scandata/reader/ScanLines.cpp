#include "scandata/reader/ScanLines.h"

#include "input/NUMINPUT.h"
#include "input/PlainNumber.h"
#include "platform/Words.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr std::string_view PointSeparators = "\t ,";
constexpr std::size_t PrefixLength = 3;      // type letter, blank, cell number
constexpr std::size_t LongestShown = 60;     // characters of a line that a message quotes
constexpr float LargestRadius = 100.0F;      // cm; no rotor is that wide
constexpr float LongestWavelength = 2000.0F; // nm
constexpr const char* TooLarge = "a number that is too large for its field";

std::string ShownText(std::string_view text) {
    std::string shown(text.substr(0, LongestShown));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < 32 || c == 127) c = ' ';
    return shown + (text.size() > LongestShown ? "..." : "");
}

// Why an item holds no second number.
const char* WhyNoValue(const TextItems& file, std::size_t place, std::string_view item) {
    const std::string_view line = LineAt(file, place).Text;
    if (item.empty() && line.find(',') == std::string_view::npos)
        return "an empty line within the list of points";
    if (line.find(',') == std::string_view::npos) return "a radius without a value";
    return line.find('.') == std::string_view::npos
               ? "a decimal comma; numbers in a scan have a decimal point"
               : "a comma between the numbers of a point; they are parted by blanks";
}

constexpr const char* NoSecondReading =
    "an intensity scan has two readings at each radius, of sample and reference";

// A text of which nothing counts as a number.
bool IsNoNumber(std::string_view text) {
    std::size_t used = 0;
    NumericPrefix(text, &used);
    return used == 0;
}

PointLine ReadPointItem(TextItems& file, std::size_t place, ThirdNumber third) {
    const std::string_view item = WithoutLeadingBlanks(ReadTextItem(file));
    std::string_view rest = item;
    PointLine point;
    long position = 1;
    point.Radius = SingleOf(NumberOf(TokenAt(position, rest, PointSeparators)));
    const auto goOn = [&] {
        rest = WithoutLeadingBlanks(rest.substr(static_cast<std::size_t>(position) - 1));
        position = 1;
    };
    if (position == 0) RaiseError(WhyNoValue(file, place, item)); // a radius alone is no point
    goOn();
    if (rest.empty()) RaiseError(WhyNoValue(file, place, item)); // nor is one with a blank behind it
    const std::string_view value = TokenAt(position, rest, PointSeparators);
    point.Value = SingleOf(NumberOf(value));
    point.NoNumber = IsNoNumber(value);
    const bool more = position != 0;
    if (more) goOn();
    if (third == ThirdNumber::Reading) {
        if ((!more || rest.empty()) && point.Radius != 0.0F) RaiseError(NoSecondReading);
        const std::string_view second = TokenAt(position, rest, PointSeparators);
        point.Second = SingleOf(NumberOf(second));
        point.NoNumber = point.NoNumber || IsNoNumber(second);
    } else if (more) {
        const std::string_view deviation = TokenAt(position, rest, PointSeparators);
        point.Excluded = deviation.starts_with('-') && NumberOf(deviation) < 0.0; // nothing else counts
    }
    return point;
}

void SkipBlanks(const char*& at, const char* end) {
    while (at < end && *at == ' ')
        ++at;
}

// As TakeFrom, without the function object: there is one for each line of a scan.
template <class Take> void TakenFrom(const TextItems& file, std::size_t place, Take&& take) {
    try {
        take();
    } catch (const RuntimeError& error) {
        RaiseAt(file, place, error.Text);
    }
}

// The end of the line, with what may stand behind the third number; false where a comma ends the item before.
bool SkipToLineEnd(const char*& at, const char* end) {
    // Digits, letters, point and minus stand behind the comma in the alphabet: one question for most of them.
    while (at < end && (*at > ',' || (!EndsLine(*at) && *at != ',')))
        ++at;
    return at == end || EndsLine(*at);
}

// Ordinary numbers between blanks, up to the end of the line.
struct PlainNumbers {
    double Radius = 0.0, Value = 0.0, Third = 0.0;
};
bool TakePlainNumbers(const char*& at, const char* end, ThirdNumber third, PlainNumbers& numbers) {
    const bool needed = third == ThirdNumber::Reading;
    SkipBlanks(at, end);
    if (!TakePlainNumber(at, end, numbers.Radius) || at == end || *at != ' ') return false;
    SkipBlanks(at, end);
    if (!TakePlainNumber(at, end, numbers.Value)) return false;
    if (at < end && *at != ' ') return !needed && EndsLine(*at);
    SkipBlanks(at, end);
    if (needed || (at < end && *at == '-')) { // a deviation above 0 says nothing
        if (!TakePlainNumber(at, end, numbers.Third)) return false;
        if (at < end && *at != ' ' && !EndsLine(*at)) return false;
    }
    return SkipToLineEnd(at, end);
}

} // namespace

void RaiseAt(const TextItems& file, std::size_t place, const std::string& why) {
    const TextLine line = LineAt(file, place);
    RaiseError("line " + std::to_string(line.Number) + ", '" + ShownText(line.Text) + "': " + why);
}

void TakeFrom(const TextItems& file, std::size_t place, const std::function<void()>& take) {
    TakenFrom(file, place, take);
}

void RaiseTooLarge() {
    RaiseError(TooLarge);
}

double NumberOf(std::string_view text) {
    try {
        return NumericPrefix(text);
    } catch (const RuntimeError& error) {
        RaiseError(std::string(TooLarge) + " (" + error.Text + ")");
    }
}

float SingleOf(double value) {
    const float single = static_cast<float>(value);
    if (!std::isfinite(single)) RaiseTooLarge();
    return single;
}

std::string_view TokenAt(long& position, std::string_view text, std::string_view separators) {
    const std::size_t start =
        std::min(position < 1 ? std::size_t{0} : static_cast<std::size_t>(position) - 1, text.size());
    const std::size_t found = text.find_first_of(separators, start);
    position = found == std::string_view::npos ? 0 : static_cast<long>(found) + 2;
    return text.substr(start, found == std::string_view::npos ? found : found - start);
}

std::string_view ReadCommentLine(TextItems& file) {
    if (file.Text.empty()) RaiseError("the file is empty");
    return ReadTextLine(file);
}

HeaderFields StartHeader(std::string_view line, bool endsAtComma) {
    if (line.size() < PrefixLength)
        RaiseError(endsAtComma ? CommaInHeader : "the parameter line is shorter than type and cell");
    return {WithoutLeadingBlanks(line.substr(PrefixLength))};
}

double NextHeaderField(HeaderFields& header) {
    header.Width = header.Rest.find(' ') + 1;
    const double value = NumberOf(header.Rest.substr(0, header.Width));
    header.Rest = WithoutLeadingBlanks(header.Rest.substr(header.Width));
    return value;
}

double LastHeaderField(const HeaderFields& header) {
    return NumberOf(header.Rest.substr(0, header.Width));
}

bool TakePlainPoint(TextItems& file, PointLine& point, ThirdNumber third) {
    const char* const start = file.Text.data();
    const char* const end = start + file.Text.size();
    const char* at = start + file.Place;
    PlainNumbers numbers;
    if (!TakePlainNumbers(at, end, third, numbers)) return false;
    PointLine read{static_cast<float>(numbers.Radius), static_cast<float>(numbers.Value)};
    if (third == ThirdNumber::Reading)
        read.Second = static_cast<float>(numbers.Third);
    else
        read.Excluded = numbers.Third < 0.0;
    if (!std::isfinite(read.Radius) || !std::isfinite(read.Value) || !std::isfinite(read.Second))
        return false;
    if (at < end && *at == '\r') ++at;
    if (at < end && *at == '\n') ++at; // of a "\r" before it, or alone
    file.Place = static_cast<std::size_t>(at - start);
    file.AfterComma = false;
    point = read;
    return true;
}

PointList ReadPoints(TextItems& file, const std::function<bool(long i, const PointLine& point)>& store,
                     ThirdNumber third) {
    if (NoItemLeft(file)) RaiseError("the file ends before its first point");
    PointList list;
    long next = 1;
    do {
        list.LastPlace = file.Place;
        PointLine point;
        if (!TakePlainPoint(file, point, third))
            TakenFrom(file, list.LastPlace, [&] { point = ReadPointItem(file, list.LastPlace, third); });
        list.Terminated = point.Radius == 0.0F;
        if (point.NoNumber && !point.Excluded && !list.Terminated && list.NoNumbers++ == 0)
            list.NoNumberPlace = list.LastPlace;
        if (!point.Excluded && list.NoRadius == 0.0F &&
            !(point.Radius >= 0.0F && point.Radius <= LargestRadius)) {
            list.NoRadius = point.Radius;
            list.NoRadiusPlace = list.LastPlace;
        }
        if (point.Excluded)
            ++list.Excluded;
        else
            TakenFrom(file, list.LastPlace, [&] { list.TooMany = !store(next++, point); });
    } while (!list.TooMany && !list.Terminated && !NoItemLeft(file));
    // [decision: terminator-counts]
    list.Points = list.Terminated && !list.TooMany ? next - 2 : next - 1;
    return list;
}

void RequirePoints(const TextItems& file, const PointList& list) {
    if (list.Points > 0) return;
    if (list.Terminated)
        RaiseAt(file, list.LastPlace, "a radius of 0 ends the list of points before the first one");
    RaiseError("there are no points: all " + std::to_string(list.Excluded) +
               " are excluded by a negative third number");
}

void RequireRadii(const TextItems& file, const PointList& list) {
    if (list.NoRadius == 0.0F) return;
    const bool wavelength = list.NoRadius > LargestRadius && list.NoRadius <= LongestWavelength;
    RaiseAt(file, list.NoRadiusPlace,
            SingleText(list.NoRadius) + " is no radius in cm" +
                (wavelength ? "; this is a wavelength scan" : ""));
}

std::string RemarkOnReadings(const TextItems& file, const PointList& list) {
    if (list.NoNumbers == 0) return "";
    const TextLine line = LineAt(file, list.NoNumberPlace);
    const long more = list.NoNumbers - 1;
    return "line " + std::to_string(line.Number) + ", '" + ShownText(line.Text) +
           "': a reading that is no number counts as 0" +
           (more == 0 ? ""
                      : ", and so in " + std::to_string(more) + " more" + (more == 1 ? " line" : " lines"));
}

std::string RemarkOnRest(const TextItems& file, const PointList& list) {
    if (!list.Terminated) return "";
    TextItems rest = file;
    long lines = 0;
    while (!NoItemLeft(rest)) {
        rest.AfterComma = false;
        if (!WithoutBlanks(ReadTextLine(rest)).empty()) ++lines;
    }
    if (lines == 0) return "";
    const TextLine line = LineAt(file, list.LastPlace);
    return "line " + std::to_string(line.Number) + ", '" + ShownText(line.Text) +
           "': a radius of 0 ends the list of points, and " + Counted(lines, "line") + " behind it " +
           (lines == 1 ? "is" : "are") + " not read";
}

} // namespace Quillon
