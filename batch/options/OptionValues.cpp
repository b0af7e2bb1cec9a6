#include "batch/options/OptionValues.h"

#include "batch/console/OneLine.h"
#include "platform/RuntimeError.h"

#include <charconv>
#include <string_view>

namespace Quillon {

namespace {

// The whole text as a number, below least what is none.
long NumberOf(const std::string& text, long least) {
    long number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    return failure == std::errc{} && stop == end ? number : least - 1;
}

bool TakeRow(std::string_view& text, long& row) {
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, row);
    text = std::string_view(stop, static_cast<std::size_t>(end - stop));
    return failure == std::errc{} && row >= 1;
}

} // namespace

long ReadCount(const char* option, const std::string& text, long least, long most) {
    const long count = NumberOf(text, least);
    if (count < least || count > most)
        RaiseError(std::string(option) + " needs a number from " + std::to_string(least) + " to " +
                   std::to_string(most) + ", not " + Quoted(text));
    return count;
}

long ReadCountFrom(const char* option, const std::string& text, long least) {
    const long count = NumberOf(text, least);
    if (count < least)
        RaiseError(std::string(option) + " needs a number from " + std::to_string(least) + " on, not " +
                   Quoted(text));
    return count;
}

RowRange ReadRows(const std::string& text) {
    std::string_view rest = text;
    RowRange rows;
    bool good = TakeRow(rest, rows.First);
    rows.Last = rows.First;
    if (good && rest.starts_with('-')) {
        rest.remove_prefix(1);
        good = TakeRow(rest, rows.Last);
    }
    if (!good || !rest.empty() || rows.Last < rows.First)
        RaiseError("--rows needs rows as 1-100, not " + Quoted(text));
    return rows;
}

bool IsSecond(const char* option, const std::string& text, const char* first, const char* second) {
    if (text == first || text == second) return text == second;
    RaiseError(std::string(option) + " is " + first + " or " + second + ", not " + Quoted(text));
}

void TakeFileName(std::string& target, const char* option, const std::string& value) {
    if (value.empty()) RaiseError(std::string("no file behind ") + option);
    target = value;
}

void TakeValue(std::string& target, const char* option, const char* what, const std::string& value) {
    if (value.empty()) RaiseError(std::string(option) + " needs " + what);
    target = value;
}

} // namespace Quillon
