#include "input/SingleText.h"

#include "input/DecimalDigits.h"

#include <cstdlib>

namespace Quillon {
namespace {

std::string PlainText(const DecimalDigits& number) {
    std::string text;
    for (long power = number.Point - 1; power >= 0; --power)
        text += number.At(power);
    if (text.empty()) text += '0';
    if (number.Decimals() > 0) text += '.';
    for (long place = 1; place <= number.Decimals(); ++place)
        text += number.At(-place);
    return text;
}

std::string ExponentText(const DecimalDigits& number) {
    std::string text = number.Digits.substr(0, 1);
    if (number.Digits.size() > 1) text += "." + number.Digits.substr(1);
    const long exponent = number.Point - 1;
    text += exponent < 0 ? "E-" : "E+";
    const std::string power = std::to_string(std::labs(exponent));
    return text + (power.size() < 2 ? "0" : "") + power;
}

// One digit more than the significant ones is still written plainly: whole numbers up to 16777216, all that a
// single can count, stay recognisable.
std::string GeneralText(double value, int significant) {
    const DecimalDigits number = DigitsOf(value, significant);
    if (number.IsZero()) return "0";
    const bool plain = number.Point <= significant + 1 && number.Decimals() <= significant;
    return (value < 0 ? "-" : "") + (plain ? PlainText(number) : ExponentText(number));
}

} // namespace

std::string SingleText(float value) {
    return GeneralText(static_cast<double>(value), 7);
}

std::string DoubleText(double value) {
    return GeneralText(value, 15);
}

} // namespace Quillon
