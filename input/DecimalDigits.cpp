#include "input/DecimalDigits.h"

#include "platform/RuntimeError.h"

#include <array>
#include <charconv>
#include <cmath>

namespace Quillon {
namespace {

void DropTrailingZeros(DecimalDigits& number) {
    const std::size_t last = number.Digits.find_last_not_of('0');
    number.Digits.resize(last == std::string::npos ? 0 : last + 1);
    if (number.IsZero()) number.Point = 0;
}

} // namespace

DecimalDigits DigitsOf(double value, int significant) {
    if (!std::isfinite(value)) RaiseError(ErrorText::Overflow);
    std::array<char, 64> text; // "d.ddd...e+ddd"
    const auto written = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                       std::chars_format::scientific, significant - 1);
    const std::string scientific(text.data(), written.ptr);
    const std::size_t letter = scientific.find('e');
    DecimalDigits number;
    for (std::size_t i = 0; i < letter; ++i)
        if (scientific[i] != '.') number.Digits += scientific[i];
    number.Point = std::stol(scientific.substr(letter + 1)) + 1;
    DropTrailingZeros(number);
    return number;
}

void RoundHalfAway(DecimalDigits& number, long count) {
    if (count >= static_cast<long>(number.Digits.size())) return;
    std::string& digits = number.Digits;
    const bool up = count >= 0 && digits[static_cast<std::size_t>(count)] >= '5';
    digits.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    if (up) {
        while (!digits.empty() && digits.back() == '9')
            digits.pop_back();
        if (digits.empty()) {
            digits.push_back('1');
            ++number.Point;
        } else {
            ++digits.back();
        }
    }
    DropTrailingZeros(number);
}

} // namespace Quillon
