#include "input/NumericPrefix.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Quillon {
namespace {

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool IsSign(char c) {
    return c == '+' || c == '-';
}
constexpr bool IsExponentLetter(char c) {
    return c == 'E' || c == 'e' || c == 'D' || c == 'd';
}

// Where a number stands in a text, as subscripts.
struct NumberSpan {
    std::size_t Begin = 0;    // "-" or the mantissa; a "+" lies before it
    std::size_t Exponent = 0; // the exponent letter; End where there is none
    std::size_t End = 0;      // one behind the number; 0: there is no number
};

std::size_t SkipDigits(std::string_view text, std::size_t i) {
    while (i < text.size() && IsDigit(text[i]))
        ++i;
    return i;
}

// One behind the exponent that starts at i, or i where there is none: a letter without digits is none.
std::size_t SkipExponent(std::string_view text, std::size_t i) {
    if (i >= text.size() || !IsExponentLetter(text[i])) return i;
    std::size_t digits = i + 1;
    if (digits < text.size() && IsSign(text[digits])) ++digits;
    const std::size_t end = SkipDigits(text, digits);
    return end > digits ? end : i;
}

// One behind the mantissa that starts at i: digits with at most one point among them. i where there is no
// digit.
std::size_t SkipMantissa(std::string_view text, std::size_t i) {
    const std::size_t whole = SkipDigits(text, i);
    if (whole >= text.size() || text[whole] != '.') return whole;
    const std::size_t end = SkipDigits(text, whole + 1);
    return end - i > 1 ? end : i; // a point alone is none
}

NumberSpan FindNumber(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    NumberSpan span;
    span.Begin = i;
    if (i < text.size() && IsSign(text[i])) {
        if (text[i] == '+') ++span.Begin;
        ++i;
    }
    span.Exponent = SkipMantissa(text, i);
    if (span.Exponent == i) return {};
    span.End = SkipExponent(text, span.Exponent);
    return span;
}

// True when the first digit of the number that is not 0 stands for a positive power of ten. Asked only of
// numbers beyond one end of the range, where that tells which end.
bool IsLarge(std::string_view mantissa, std::string_view exponent) {
    constexpr long Far = 1000000000;
    long power = 0;
    if (!exponent.empty() && exponent[0] == '+') exponent.remove_prefix(1);
    if (std::from_chars(exponent.data(), exponent.data() + exponent.size(), power).ec != std::errc{})
        power = exponent.empty() ? 0 : exponent[0] == '-' ? -Far : Far;
    const std::size_t first = mantissa.find_first_of("123456789");
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    if (first == std::string_view::npos) return false;
    return power + static_cast<long>(point) - static_cast<long>(first) > 0;
}

double ReadNumber(std::string_view text, const NumberSpan& span) {
    std::string_view number = text.substr(span.Begin, span.End - span.Begin);
    const std::size_t letter = span.Exponent - span.Begin;
    std::string withE;
    if (letter < number.size() && (number[letter] == 'D' || number[letter] == 'd')) {
        withE = number;
        withE[letter] = 'E';
        number = withE;
    }
    double value = 0.0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    if (read.ec == std::errc{} && std::isfinite(value)) return value;
    if (IsLarge(number.substr(0, letter), number.substr(std::min(letter + 1, number.size()))))
        RaiseError(ErrorText::Overflow);
    return 0.0;
}

} // namespace

double NumericPrefix(std::string_view text, std::size_t* used) {
    const NumberSpan span = FindNumber(text);
    if (used) *used = span.End;
    return span.End == 0 ? 0.0 : ReadNumber(text, span);
}

} // namespace Quillon
