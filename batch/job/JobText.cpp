#include "batch/job/JobText.h"

#include "batch/console/OneLine.h"
#include "platform/RuntimeError.h"

#include <charconv>
#include <cmath>

namespace Quillon {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// The text of a number without its plus sign; "" where none can begin, as in "inf" or "+-1".
std::string_view NumberText(std::string_view text) {
    std::string_view digits = text;
    if (digits.starts_with('+') || digits.starts_with('-')) digits.remove_prefix(1);
    if (digits.empty() || !((digits[0] >= '0' && digits[0] <= '9') || digits[0] == '.')) return "";
    return text[0] == '+' ? digits : text;
}

} // namespace

void JobReader::Fail(const std::string& reason) const {
    RaiseError(JobErrorLine(Result.Path, Line, Section, Key, reason));
}

std::string JobErrorLine(const std::string& path, int line, std::string_view section, std::string_view key,
                         const std::string& reason) {
    std::string text = path;
    if (line > 0) text += ":" + std::to_string(line);
    text += ":";
    if (!section.empty()) text += " [" + std::string(section) + "]";
    if (!key.empty()) text += " " + std::string(key);
    if (!section.empty() || !key.empty()) text += ":";
    return OneLine(text + " " + reason);
}

std::string_view NextWord(std::string_view& rest) {
    rest = Trimmed(rest);
    std::size_t length = 0;
    while (length < rest.size() && !IsBlank(rest[length]))
        ++length;
    const std::string_view word = rest.substr(0, length);
    rest.remove_prefix(length);
    return word;
}

double ReadDouble(const JobReader& reader, std::string_view text) {
    const std::string_view number = NumberText(text);
    const char* const end = number.data() + number.size();
    double value = 0.0;
    const auto [stop, failure] = std::from_chars(number.data(), end, value);
    if (number.empty() || stop != end || failure == std::errc::invalid_argument)
        reader.Fail(Quoted(text) + " is no number");
    if (failure != std::errc{} || std::fabs(value) >= 1e38)
        reader.Fail(Quoted(text) + " is outside the range of single precision");
    return value;
}

float ReadNumber(const JobReader& reader, std::string_view text) {
    return static_cast<float>(ReadDouble(reader, text));
}

float ReadPositive(const JobReader& reader, std::string_view text) {
    const float value = ReadNumber(reader, text);
    if (!(value > 0.0F)) reader.Fail(Quoted(text) + " is not above 0");
    return value;
}

float ReadNotNegative(const JobReader& reader, std::string_view text) {
    const float value = ReadNumber(reader, text);
    if (value < 0.0F) reader.Fail(Quoted(text) + " is below 0");
    return value;
}

int ReadWhole(const JobReader& reader, std::string_view text, int lowest, int highest) {
    const char* const end = text.data() + text.size();
    int value = 0;
    const auto [stop, failure] = std::from_chars(text.data(), end, value);
    if (stop != end || failure == std::errc::invalid_argument)
        reader.Fail(Quoted(text) + " is no whole number");
    if (failure != std::errc{} || value < lowest || value > highest)
        reader.Fail(Quoted(text) + " is not within " + std::to_string(lowest) + " to " +
                    std::to_string(highest));
    return value;
}

int ReadChoice(const JobReader& reader, std::string_view text, std::initializer_list<const char*> choices) {
    const std::string small = SmallLetters(text);
    std::string all;
    int place = 0;
    for (const char* choice : choices) {
        if (small == choice) return place;
        if (place > 0) all += place + 1 == static_cast<int>(choices.size()) ? " or " : ", ";
        all += choice;
        ++place;
    }
    reader.Fail(Quoted(text) + " is not " + all);
}

bool ReadYesNo(const JobReader& reader, std::string_view text) {
    return ReadChoice(reader, text, {"no", "yes"}) == 1;
}

} // namespace Quillon
